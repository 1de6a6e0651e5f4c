# velmora_check_headers_after_macros(<target>...)
# Compiles the public headers of the targets as a host sees them that has included <windows.h>: with the macros min and
# max defined. All of them in one source, because each has been compiled alone elsewhere.
#
# The standard headers come first: a standard library may drop these macros in its first header, so they are defined
# after all that the public headers need.
function(velmora_check_headers_after_macros)
    set(standard "")
    set(public "")
    foreach(target IN LISTS ARGN)
        get_target_property(headers ${target} HEADER_SET)
        get_target_property(source_dir ${target} SOURCE_DIR)
        foreach(header IN LISTS headers)
            cmake_path(ABSOLUTE_PATH header BASE_DIRECTORY "${source_dir}")
            file(STRINGS "${header}" includes REGEX "^#include <[a-z_]+>$")
            list(APPEND standard ${includes})
            cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
            list(APPEND public "#include <${header}>")
        endforeach()
    endforeach()
    list(REMOVE_DUPLICATES standard)
    list(SORT standard)
    list(JOIN standard "\n" standard)
    list(JOIN public "\n" public)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/HeadersAfterMacros.cpp")
    file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT
"@standard@
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
@public@
")
    add_library(velmora_headers_after_macros OBJECT "${source}")
    velmora_target_defaults(velmora_headers_after_macros)
endfunction()
