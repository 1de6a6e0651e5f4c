# Finds the HTML parser Gumbo, which only tests and fuzzers use: Gumbo::Gumbo.
find_path(GUMBO_INCLUDE_DIR gumbo.h)
find_library(GUMBO_LIBRARY gumbo)
mark_as_advanced(GUMBO_INCLUDE_DIR GUMBO_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Gumbo
    REQUIRED_VARS GUMBO_LIBRARY GUMBO_INCLUDE_DIR
    REASON_FAILURE_MESSAGE "On Debian, install libgumbo-dev.")

if(Gumbo_FOUND AND NOT TARGET Gumbo::Gumbo)
    add_library(Gumbo::Gumbo UNKNOWN IMPORTED)
    set_target_properties(Gumbo::Gumbo PROPERTIES
        IMPORTED_LOCATION "${GUMBO_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${GUMBO_INCLUDE_DIR}")
endif()
