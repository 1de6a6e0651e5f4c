# Runs an example in an empty folder; it must succeed and print the expected output.
#   cmake -DPROGRAM=... -DFOLDER=... -DEXPECTED=<regular expression> [-DEMULATOR=...] -P run_example.cmake
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND ${EMULATOR} "${PROGRAM}" WORKING_DIRECTORY "${FOLDER}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0 OR NOT output MATCHES "${EXPECTED}")
    message(FATAL_ERROR "${PROGRAM} ended with ${result} and printed:\n${output}${errors}")
endif()
