# Removes export directives from object files, except those of the API. Together with an exported class, the compiler also
# exports the type information of other classes, even of the standard library.
#   OBJCOPY   the compiler's objcopy    OBJECTS   the files    WORK_DIR   a folder to use
#   NAMES     a regular expression that exported names match
cmake_minimum_required(VERSION 3.25)
file(MAKE_DIRECTORY "${WORK_DIR}")
foreach(object IN LISTS OBJECTS)
    set(section "${WORK_DIR}/directives")
    file(REMOVE "${section}")
    execute_process(COMMAND "${OBJCOPY}" --dump-section ".drectve=${section}" "${object}" "${WORK_DIR}/copy"
        RESULT_VARIABLE code OUTPUT_QUIET ERROR_QUIET)
    if(NOT code EQUAL 0 OR NOT EXISTS "${section}")
        continue()
    endif()
    file(READ "${section}" before)
    string(REGEX MATCHALL "-export:[^ ]+" directives "${before}")
    set(after "${before}")
    foreach(directive IN LISTS directives)
        if(NOT directive MATCHES "${NAMES}")
            string(REPLACE "${directive}" "" after "${after}")
        endif()
    endforeach()
    if(NOT after STREQUAL before)
        file(WRITE "${section}" "${after}")
        execute_process(COMMAND "${OBJCOPY}" --update-section ".drectve=${section}" "${object}"
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
