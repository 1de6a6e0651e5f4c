# Asks for components in an install that lacks the test kit, and reads what find_package says.
#
#   BUILD_DIR   a build tree        CONFIG    its build type
#   WORK_DIR    emptied first       VERSION   the version to ask for
cmake_minimum_required(VERSION 3.25)

function(install_component name)
    execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --config "${CONFIG}"
        --prefix "${WORK_DIR}/prefix" --component "${name}" COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

# Configures a project that asks for the components; gives CMake's exit code and its messages in one line.
function(ask_for components code messages)
    file(REMOVE_RECURSE "${WORK_DIR}/build")
    file(WRITE "${WORK_DIR}/project/CMakeLists.txt"
        "cmake_minimum_required(VERSION 3.25)\n"
        "project(Consumer LANGUAGES NONE)\n"
        "find_package(Velmora ${VERSION} CONFIG REQUIRED COMPONENTS ${components})\n")
    execute_process(COMMAND "${CMAKE_COMMAND}" -S "${WORK_DIR}/project" -B "${WORK_DIR}/build"
        "-DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix" OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    set(${code} "${result}" PARENT_SCOPE)
    set(${messages} "${output}" PARENT_SCOPE)
endfunction()

function(expect_refusal components sentence)
    ask_for("${components}" code messages)
    string(FIND "${messages}" "${sentence}" position)
    if(code EQUAL 0 OR position EQUAL -1)
        message(FATAL_ERROR "asked for '${components}': exit code ${code} and no '${sentence}' in: ${messages}")
    endif()
endfunction()

function(expect_success components)
    ask_for("${components}" code messages)
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "asked for '${components}': exit code ${code}: ${messages}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
install_component(Runtime)
install_component(Development)
expect_success("Tessaport Logging IO")
expect_refusal("Tessaport TestKit" "The component TestKit of Velmora is not installed; install it as well.")
expect_refusal("Tesaport" "Velmora has no component Tesaport; there are Tessaport, Logging, IO and TestKit.")
install_component(TestKit)
expect_success("Tessaport TestKit")
