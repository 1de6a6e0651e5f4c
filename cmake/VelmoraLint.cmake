# For the presets that only check sources. Their object files record what has been checked: a source is checked again if it,
# a header that it includes, its compile command or the rules have changed.
option(VELMORA_LINT "Check every source with clang-tidy instead of compiling it" OFF)

if(VELMORA_LINT)
    # Version 21 and newer skip what system headers contain, which halves the time.
    find_program(VELMORA_LINT_PROGRAM NAMES clang-tidy-22 clang-tidy REQUIRED DOC "clang-tidy, which checks the sources")
    set(rules .clang-tidy examples/.clang-tidy tests/.clang-tidy cmake/lint.sh)
    list(TRANSFORM rules PREPEND "${PROJECT_SOURCE_DIR}/")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${rules})
    set(digests)
    foreach(file IN LISTS rules)
        file(SHA256 "${file}" digest)
        string(APPEND digests "${digest}")
    endforeach()
    string(SHA256 digest "${digests}")
    set(checked "${PROJECT_BINARY_DIR}/checked")
    file(MAKE_DIRECTORY "${checked}")
    # With the digest, a change of the rules changes every command.
    set(VELMORA_LINT_COMMAND "${PROJECT_SOURCE_DIR}/cmake/lint.sh" "${checked}"
        "${VELMORA_LINT_PROGRAM}" --quiet "--extra-arg=-DVELMORA_LINT_RULES_${digest}" --)
endif()

# velmora_lint(<target>)
function(velmora_lint target)
    set_property(GLOBAL APPEND PROPERTY VELMORA_COMPILED_TARGETS ${target})
    if(VELMORA_LINT)
        set_target_properties(${target} PROPERTIES CXX_COMPILER_LAUNCHER "${VELMORA_LINT_COMMAND}")
    endif()
endfunction()

# velmora_add_compile_target()
# The target compile compiles every source of this project and links nothing.
function(velmora_add_compile_target)
    get_property(targets GLOBAL PROPERTY VELMORA_COMPILED_TARGETS)
    list(TRANSFORM targets REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")
    add_custom_target(compile DEPENDS ${targets})
endfunction()

# velmora_verify_internal_headers()
# Adds the headers that are not installed to all_verify_interface_header_sets: each of them compiles alone.
function(velmora_verify_internal_headers)
    set(public_headers)
    set(public_targets VelmoraTessaport VelmoraLogging VelmoraIO)
    if(TARGET VelmoraTestKit)
        list(APPEND public_targets VelmoraTestKit)
    endif()
    foreach(target IN LISTS public_targets)
        get_target_property(headers ${target} HEADER_SET)
        get_target_property(folder ${target} SOURCE_DIR)
        list(TRANSFORM headers PREPEND "${folder}/" REGEX "^[^/]")
        list(APPEND public_headers ${headers})
    endforeach()
    file(GLOB_RECURSE internal_headers CONFIGURE_DEPENDS
        velmora/*.h tools/*.h tests/*.h)
    list(REMOVE_ITEM internal_headers ${public_headers})
    list(FILTER internal_headers EXCLUDE REGEX "Windows[.]h$")
    add_library(velmora_internal_headers INTERFACE)
    target_sources(velmora_internal_headers INTERFACE
        FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${internal_headers})
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
    find_package(GTest REQUIRED)
    find_package(Boost REQUIRED)
    target_link_libraries(velmora_internal_headers INTERFACE
        NetHost::NetHost CLI11::CLI11 nlohmann_json::nlohmann_json GTest::gtest Boost::headers)
    # Tests of the window are built where the window is.
    if(TARGET velmora_window)
        find_package(Qt6 COMPONENTS Widgets Test REQUIRED)
        target_link_libraries(velmora_internal_headers INTERFACE Qt6::Widgets Qt6::Test)
    endif()
endfunction()
