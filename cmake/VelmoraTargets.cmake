# Settings that all targets of this project share. None of them propagates to users of the libraries.
function(velmora_target_defaults target)
    velmora_lint(${target})
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8 /EHsc)
        if(VELMORA_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE /WX)
        endif()
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
        if(VELMORA_WARNINGS_AS_ERRORS)
            target_compile_options(${target} PRIVATE -Werror)
        endif()
    endif()
endfunction()

# velmora_add_public_library(<name> <source>...)
# Adds a static library that is installed: Velmora<name>, with the alias Velmora::<name>.
function(velmora_add_public_library name)
    set(library "Velmora${name}")
    add_library(${library} STATIC ${ARGN})
    add_library(Velmora::${name} ALIAS ${library})
    velmora_target_defaults(${library})
    target_compile_features(${library} PUBLIC cxx_std_17)
    set_target_properties(${library} PROPERTIES EXPORT_NAME ${name})
    target_include_directories(${library} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:include>)
endfunction()

# velmora_prefer_build_time(<target>)
# For code whose speed does not matter: its template libraries compile in two thirds of the time.
function(velmora_prefer_build_time target)
    if(NOT MSVC)
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
    endif()
endfunction()

# velmora_use_boost_headers(<target>)
# Not a link dependency, so that users of the package need no Boost.
function(velmora_use_boost_headers target)
    find_package(Boost REQUIRED)
    target_include_directories(${target} SYSTEM PRIVATE
        $<TARGET_PROPERTY:Boost::headers,INTERFACE_INCLUDE_DIRECTORIES>)
endfunction()

# velmora_use_at_run_time(<target> <other target>...)
# Builds what the target starts or loads together with it. Not by add_dependencies: the sources would wait for it, also where
# nothing but sources is built.
function(velmora_use_at_run_time target)
    if(NOT VELMORA_COMPILE_ONLY)
        add_dependencies(${target} ${ARGN})
    endif()
endfunction()

# velmora_own_allocation(<test>)
# For a program that replaces operator new: the C++ library in a DLL would use its own one.
function(velmora_own_allocation target)
    if(MINGW)
        target_link_options(${target} PRIVATE -static)
    endif()
endfunction()

# velmora_add_test(<name> SOURCES <file>... [LIBRARIES <target>...] [TIMEOUT <seconds>] [FILTER <GoogleTest filter>]
#     [RESOURCE <name>] [NATIVE])
# Adds a GoogleTest program; each of its tests becomes one ctest entry with a time limit. RESOURCE is what only one test at a
# time may use. NATIVE means that the program starts no .NET: its tests also run under the sanitizers.
function(velmora_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "NATIVE" "TIMEOUT;FILTER;RESOURCE" "SOURCES;LIBRARIES")
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set(properties TIMEOUT ${ARG_TIMEOUT})
    add_executable(${name} ${ARG_SOURCES})
    velmora_target_defaults(${name})
    velmora_prefer_build_time(${name})
    # Clang warns about the macros of GoogleTest for typed tests.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
    if(ARG_NATIVE)
        list(APPEND properties LABELS native)
        add_dependencies(velmora_native_tests ${name})
    endif()
    if(ARG_RESOURCE)
        list(APPEND properties RESOURCE_LOCK ${ARG_RESOURCE})
    endif()
    if(ARG_FILTER)
        set(filter TEST_FILTER "${ARG_FILTER}")
    endif()
    gtest_discover_tests(${name} ${filter} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
