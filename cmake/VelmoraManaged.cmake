find_program(DOTNET_EXECUTABLE dotnet DOC "The dotnet command of the .NET SDK" REQUIRED)

set(VELMORA_MANAGED_DIR "${PROJECT_BINARY_DIR}/managed")

# Empty: there is no precompiler here for the platform that is built for. "this": the platform of the SDK.
set(VELMORA_PRECOMPILE_PLATFORM "")
if(NOT CMAKE_CROSSCOMPILING)
    set(VELMORA_PRECOMPILE_PLATFORM this)
elseif(WIN32 AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
    set(VELMORA_PRECOMPILE_PLATFORM win-x64)
endif()

# velmora_add_managed(<target> PROJECT <.csproj> OUTPUT <folder> [DEPENDS <target>...] [SOURCES <glob>...] [PROPERTIES <name=value>...]
#                     [PRECOMPILED])
# Builds a managed project into a folder of its own. Intermediate files stay in the build tree, in one folder for each target,
# so that several build trees of one checkout do not disturb each other.
function(velmora_add_managed target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "PRECOMPILED" "PROJECT;OUTPUT" "DEPENDS;SOURCES;PROPERTIES")
    if(NOT VELMORA_BUILD_MANAGED)
        add_custom_target(${target})
        set_target_properties(${target} PROPERTIES VELMORA_OUTPUT_DIR "${ARG_OUTPUT}")
        return()
    endif()
    get_filename_component(project_dir "${ARG_PROJECT}" DIRECTORY)
    get_filename_component(project_name "${ARG_PROJECT}" NAME_WLE)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS
        "${project_dir}/*.cs" "${PROJECT_SOURCE_DIR}/managed/Contract/*.cs" ${ARG_SOURCES})
    set(properties)
    foreach(property IN LISTS ARG_PROPERTIES)
        list(APPEND properties "-p:${property}")
    endforeach()
    if(ARG_PRECOMPILED AND VELMORA_PRECOMPILE)
        list(APPEND properties "-p:VelmoraPrecompileFor=${VELMORA_PRECOMPILE_PLATFORM}")
    endif()
    set(stamp "${VELMORA_MANAGED_DIR}/${target}.stamp")
    add_custom_command(
        OUTPUT "${stamp}"
        COMMAND "${DOTNET_EXECUTABLE}" build "${ARG_PROJECT}" -c Release --nologo -v quiet
            -nodeReuse:false -p:UseSharedCompilation=false -p:NuGetAudit=false
            "-p:VelmoraVersion=${PROJECT_VERSION}" "-p:VelmoraOutputOf=${project_name}" "-p:VelmoraOutputDir=${ARG_OUTPUT}"
            "-p:ArtifactsPath=${VELMORA_MANAGED_DIR}/artifacts/${target}" ${properties}
        COMMAND "${CMAKE_COMMAND}" -E touch "${stamp}"
        DEPENDS ${sources} "${ARG_PROJECT}" "${PROJECT_SOURCE_DIR}/managed/Directory.Build.props" "${PROJECT_SOURCE_DIR}/managed/Directory.Build.targets"
            "${PROJECT_SOURCE_DIR}/.editorconfig"
        COMMENT "Building managed ${target}"
        JOB_POOL velmora_dotnet
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS "${stamp}")
    if(ARG_DEPENDS)
        add_dependencies(${target} ${ARG_DEPENDS})
    endif()
    set_target_properties(${target} PROPERTIES VELMORA_OUTPUT_DIR "${ARG_OUTPUT}")
endfunction()

# One dotnet build at a time: builds are heavy, and two that restore packages wait for each other anyway.
set_property(GLOBAL APPEND PROPERTY JOB_POOLS velmora_dotnet=1)
