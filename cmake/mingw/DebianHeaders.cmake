# velmora_add_debian_headers(<target> <folder of /usr/include>)
# Adds a target for headers that Debian ships for every architecture. Its include folder links to this folder of /usr/include
# only: other headers there belong to the Linux C library.
function(velmora_add_debian_headers target folder)
    if(NOT IS_DIRECTORY "/usr/include/${folder}")
        message(FATAL_ERROR "'/usr/include/${folder}' is missing; ./dev test-windows installs the packages.")
    endif()
    set(view "${CMAKE_BINARY_DIR}/debian-headers/${folder}")
    file(MAKE_DIRECTORY "${view}")
    file(CREATE_LINK "/usr/include/${folder}" "${view}/${folder}" SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE "${view}")
endfunction()
