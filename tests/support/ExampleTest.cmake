# velmora_add_example_test(<target> EXPECTED <regular expression>)
# Runs an example in an empty folder; it must succeed and print the expected output. Adds no test if examples are not built.
set(VELMORA_RUN_EXAMPLE "${CMAKE_CURRENT_LIST_DIR}/run_example.cmake")
function(velmora_add_example_test target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "EXPECTED" "")
    if(NOT TARGET ${target})
        return()
    endif()
    add_test(NAME examples.${target} COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${target}>
        -DFOLDER=${CMAKE_CURRENT_BINARY_DIR}/${target} "-DEMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR}"
        "-DEXPECTED=${ARG_EXPECTED}" -P "${VELMORA_RUN_EXAMPLE}")
    set_tests_properties(examples.${target} PROPERTIES TIMEOUT 60)
endfunction()
