# Fails unless the README shows the program that is compiled and run.
#   README, PROGRAM   the two files
cmake_minimum_required(VERSION 3.25)
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "```cpp\n${program}```\n" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${PROGRAM} unchanged; copy the program to the README, between ```cpp and ```")
endif()
