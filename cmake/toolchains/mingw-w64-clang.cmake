# Compiles for Windows with clang, without extensions of the language: a step towards Microsoft's compiler. The C++ library is
# that of mingw-w64, whose compiler reports where its headers are.
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -E -v -x c++ /dev/null
    OUTPUT_QUIET ERROR_VARIABLE search_list COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n /[^\n]*/c[+][+][^\n]*" folders "${search_list}")
set(CMAKE_CXX_FLAGS_INIT "-pedantic-errors")
foreach(folder IN LISTS folders)
    string(STRIP "${folder}" folder)
    string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${folder}")
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-windows-gnu)
# Nothing is linked.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
