# What a Windows build needs beside the library: nethost.dll, and the C++ runtime of mingw-w64.

# velmora_add_nethost(<folder>): the library opens nethost.dll in velmora/bridge of its own folder.
function(velmora_add_nethost folder)
    file(MAKE_DIRECTORY "${folder}/velmora/bridge")
    file(COPY_FILE "${NetHost_LIBRARY}" "${folder}/velmora/bridge/nethost.dll" ONLY_IF_DIFFERENT)
endfunction()

# velmora_find_cxx_runtime(<variable>): the DLLs that every program of the compiler needs.
function(velmora_find_cxx_runtime variable)
    set(files)
    foreach(name IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "'${CMAKE_CXX_COMPILER}' has no '${name}', which programs need at run time.")
        endif()
        file(REAL_PATH "${file}" file)
        list(APPEND files "${file}")
    endforeach()
    set(${variable} "${files}" PARENT_SCOPE)
endfunction()

# velmora_find_cxx_runtime_notices(<variable>): the terms of those DLLs, as Debian's packages have them.
function(velmora_find_cxx_runtime_notices variable)
    set(folder "${PROJECT_BINARY_DIR}/cxx-runtime")
    set(files)
    foreach(notice IN ITEMS doc/gcc-mingw-w64-base/copyright doc/mingw-w64-common/copyright common-licenses/GPL-3)
        if(NOT EXISTS "/usr/share/${notice}")
            message(FATAL_ERROR "'/usr/share/${notice}' is missing; it belongs to what is distributed.")
        endif()
        string(REGEX REPLACE "^doc/|/copyright$|^common-licenses/" "" name "${notice}")
        configure_file("/usr/share/${notice}" "${folder}/${name}.txt" COPYONLY)
        list(APPEND files "${folder}/${name}.txt")
    endforeach()
    set(${variable} "${files}" PARENT_SCOPE)
endfunction()

# velmora_add_version(<target> <description>): what the file's properties show, and setup programs compare.
function(velmora_add_version target description)
    get_target_property(kind ${target} TYPE)
    if(kind STREQUAL "EXECUTABLE")
        set(type 1)
        set(suffix .exe)
    else()
        set(type 2)
        set(suffix .dll)
    endif()
    set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Version.rc.in" "${resource}" @ONLY)
    target_sources(${target} PRIVATE "${resource}")
endfunction()
