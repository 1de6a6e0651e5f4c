# The program that the README shows is the one that is compiled and run.
#   README, PROGRAM   the two files
cmake_minimum_required(VERSION 3.25)
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "```cpp\n${program}```\n" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${PROGRAM} as it is; copy it there, between ```cpp and ```")
endif()
