# Builds the example host and a program of the support libraries as a user of Velmora would, and runs both.
#
#   MODE             install, build or subdirectory: how they get Velmora; window: the example with a window, from an
#                    installation; dialogs: the example with dialogs, from what a run with the mode install left
#   SOURCE_DIR       the repository          BUILD_DIR   its build tree
#   WORK_DIR         emptied first, but for the dialogs
#   CONFIG           the build type
#   VERSION          of the repository
#   GENERATOR, CXX   what to build with
#   TOOLCHAIN, EMULATOR   of a cross build, which installs from the archive that cpack makes
#   LIBDIR           the folder of libraries in the prefix
#   DIALOG_TESTS     the tests of the example open_dialog, for Windows
cmake_minimum_required(VERSION 3.25)

# Users have such folders, too. On Windows the arguments of the example host are in the code page of the system.
if(TOOLCHAIN)
    set(PREFIX "${WORK_DIR}/prefix with blanks")
else()
    set(PREFIX "${WORK_DIR}/Präfix mit Lücken")
endif()

function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(expect_equal found wanted what)
    if(NOT found STREQUAL wanted)
        message(FATAL_ERROR "${what}: found '${found}', wanted '${wanted}'")
    endif()
endfunction()

function(unpack_archive prefix)
    get_filename_component(programs "${CMAKE_COMMAND}" DIRECTORY)
    run("${programs}/cpack" --config "${BUILD_DIR}/CPackConfig.cmake" -C "${CONFIG}" -B "${WORK_DIR}/archive")
    file(GLOB archive "${WORK_DIR}/archive/*.zip")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${WORK_DIR}/unpacked")
    file(GLOB folder "${WORK_DIR}/unpacked/*")
    file(RENAME "${folder}" "${prefix}")
endfunction()

# Programs of a cross build find their DLLs in the folders of WINEPATH.
function(find_launcher result)
    set(launcher ${EMULATOR})
    if(TOOLCHAIN AND MODE MATCHES "^(install|dialogs)$")
        set(launcher "${CMAKE_COMMAND}" -E env "WINEPATH=Z:${PREFIX}/bin" ${EMULATOR})
    elseif(TOOLCHAIN AND MODE STREQUAL "build")
        set(launcher "${CMAKE_COMMAND}" -E env "VELMORA_WINE_LIBRARIES=Z:${BUILD_DIR}/bin" ${EMULATOR})
    elseif(TOOLCHAIN)
        set(launcher "${CMAKE_COMMAND}" -E env "VELMORA_WINE_LIBRARIES=Z:${WORK_DIR}/consumer/velmora/bin" ${EMULATOR})
    endif()
    set(${result} "${launcher}" PARENT_SCOPE)
endfunction()

# Moves the tree after the installation: nothing in it may depend on its first place.
function(install_elsewhere prefix)
    if(TOOLCHAIN)
        unpack_archive("${prefix}")
        return()
    endif()
    run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --config "${CONFIG}" --prefix "${prefix}-first")
    file(RENAME "${prefix}-first" "${prefix}")
endfunction()

function(build_consumer)
    if(TOOLCHAIN)
        set(compiler "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}")
    else()
        set(compiler "-DCMAKE_CXX_COMPILER=${CXX}")
    endif()
    run("${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE_DIR}/tests/package/consumer" -B "${WORK_DIR}/consumer"
        ${compiler} "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DVELMORA_VERSION=${VERSION}" "-DHOST_SOURCES=${SOURCE_DIR}/examples/host"
        ${ARGN})
    run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer" --config "${CONFIG}" --parallel 2)
endfunction()

# The window needs no screen here. It lists what the home has, so the library, its managed parts and the service were found.
function(check_window)
    run("${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE_DIR}/tests/package/window" -B "${WORK_DIR}/consumer"
        "-DCMAKE_CXX_COMPILER=${CXX}" -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=${PREFIX}"
        "-DWINDOW_SOURCES=${SOURCE_DIR}/examples/window")
    run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer" --config "${CONFIG}" --parallel 2)
    make_home("${WORK_DIR}/home")
    set(ENV{QT_QPA_PLATFORM} offscreen)
    set(ENV{TESSAPORT_HOME} "${WORK_DIR}/home")
    file(READ "${WORK_DIR}/consumer/local-service.txt" service)
    execute_process(COMMAND "${WORK_DIR}/consumer/window_starts" "${service}"
        RESULT_VARIABLE code OUTPUT_VARIABLE out)
    expect_equal("${out}" "Drawings\nPlan.txt\nRemote.txt\nÜbersicht.txt\n" "the names in the window")
    expect_equal("${code}" 0 "the exit code of the window")
    execute_process(COMMAND "${WORK_DIR}/consumer/window/velmora_window" one two
        RESULT_VARIABLE code ERROR_VARIABLE err)
    if(NOT code EQUAL 2 OR NOT err MATCHES "usage: velmora_window")
        message(FATAL_ERROR "the window's program ended with ${code} after '${err}'")
    endif()
endfunction()

function(make_home home)
    file(WRITE "${home}/service.json" [[{"state": "running"}]])
    file(WRITE "${home}/drives.json" [=[
        [{
            "id": "5b1f7f0e-6c0e-4a53-9a39-0f6a3c1d2b01",
            "name": "Harbour Project",
            "type": "Quorvex.DataSourceType.Drive",
            "workspace": "workspace",
            "server": "server"
        }]
    ]=])
    file(WRITE "${home}/workspace/Plan.txt" "Quay wall\nsecond line\n")
    file(WRITE "${home}/workspace/Übersicht.txt" "Lageplan für alle\n")
    file(WRITE "${home}/server/Remote.txt" "not here\n")
    file(MAKE_DIRECTORY "${home}/server/Drawings")
endfunction()

function(run_host home result output errors)
    file(READ "${WORK_DIR}/consumer/local-service.txt" service)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -E env "TESSAPORT_HOME=${home}" ${launcher} "${host}" "${service}"
        RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
    string(REPLACE "\r" "" out "${out}")
    string(REPLACE "\r" "" err "${err}")
    set(${result} "${code}" PARENT_SCOPE)
    set(${output} "${out}" PARENT_SCOPE)
    set(${errors} "${err}" PARENT_SCOPE)
endfunction()

function(check_host_lists_the_drives)
    make_home("${WORK_DIR}/home")
    run_host("${WORK_DIR}/home" code out err)
    expect_equal("${err}" "" "the host's messages")
    expect_equal("${out}" "Harbour Project:\n  Drawings/\n  Plan.txt: Quay wall\n  Remote.txt\n  Übersicht.txt: Lageplan für alle\n"
        "the host's listing")
    expect_equal("${code}" 0 "the host's exit code")
endfunction()

function(check_host_says_that_nothing_is_installed)
    run_host("${WORK_DIR}/nowhere" code out err)
    expect_equal("${code}" 1 "the host's exit code without a home")
    expect_equal("${out}" "" "the host's listing without a home")
    if(NOT err MATCHES "nowhere")
        message(FATAL_ERROR "the host's message without a home does not name it: '${err}'")
    endif()
endfunction()

# Compiles a source with the flags of a library's pkg-config file.
function(build_with_pkg_config library source program)
    set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
    execute_process(COMMAND pkg-config --cflags --libs "${library}"
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${flags}")
    run("${CXX}" -std=c++17 "${source}" -o "${program}" ${flags} "-Wl,-rpath,${PREFIX}/${LIBDIR}")
endfunction()

function(check_pkg_config)
    build_with_pkg_config(velmora-logging "${SOURCE_DIR}/tests/package/consumer/main.cpp" "${WORK_DIR}/pkg-config-support")
    run("${WORK_DIR}/pkg-config-support")
    set(host "${WORK_DIR}/pkg-config-host")
    build_with_pkg_config(velmora-tessaport "${SOURCE_DIR}/examples/host/main.cpp" "${host}")
    check_host_lists_the_drives()
endfunction()

function(find_program_of_consumer name result)
    file(GLOB_RECURSE found LIST_DIRECTORIES false
        "${WORK_DIR}/consumer/${name}" "${WORK_DIR}/consumer/${name}.exe")
    list(FILTER found EXCLUDE REGEX "CMakeFiles")
    list(LENGTH found count)
    expect_equal("${count}" 1 "programs named ${name}")
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

function(check_dialogs)
    find_program_of_consumer(velmora_open_dialog dialogs)
    file(READ "${WORK_DIR}/consumer/local-service.txt" service)
    find_launcher(launcher)
    run("${CMAKE_COMMAND}" -E env "VELMORA_OPEN_DIALOG=${dialogs}" "VELMORA_LOCAL_SERVICE=${service}" ${launcher}
        "${DIALOG_TESTS}" "--gtest_filter=OpenDialog.OpensTheFileWhoseNameIsTyped:OpenDialog.SavesInANewFolder")
endfunction()

if(MODE STREQUAL "dialogs")
    check_dialogs()
    return()
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
if(MODE STREQUAL "window")
    install_elsewhere("${PREFIX}")
    check_window()
    return()
endif()
if(MODE STREQUAL "install")
    install_elsewhere("${PREFIX}")
    build_consumer("-DCMAKE_PREFIX_PATH=${PREFIX}" "-DINSTALLED_HEADERS=${PREFIX}/include")
    run("${CMAKE_COMMAND}" --build "${WORK_DIR}/consumer" --target all_verify_interface_header_sets --parallel 2)
elseif(MODE STREQUAL "build")
    build_consumer("-DCMAKE_PREFIX_PATH=${BUILD_DIR}")
elseif(MODE STREQUAL "subdirectory")
    build_consumer("-DVELMORA_SOURCES=${SOURCE_DIR}")
else()
    message(FATAL_ERROR "there is no mode '${MODE}'")
endif()
find_program_of_consumer(velmora_host host)
find_program_of_consumer(support support)
find_program_of_consumer(recipes recipes)
find_program_of_consumer(host_recipes host_recipes)

find_launcher(launcher)
run(${launcher} "${support}")
run(${launcher} "${recipes}")
run(${launcher} "${host_recipes}")
check_host_lists_the_drives()
check_host_says_that_nothing_is_installed()
if(MODE STREQUAL "install")
    file(GLOB tool "${PREFIX}/bin/tessaport" "${PREFIX}/bin/tessaport.exe")
    run(${launcher} "${tool}" --home "${WORK_DIR}/home" drives)
    if(NOT TOOLCHAIN)
        check_pkg_config()
    endif()
endif()
