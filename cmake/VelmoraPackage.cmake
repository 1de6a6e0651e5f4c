# The package Velmora for find_package: one for the install tree and one for the build tree, which have the same layout.
include(CMakePackageConfigHelpers)

# velmora_configure_package(<prefix> <package folder inside it> <bridge folder inside it> <output folder>)
function(velmora_configure_package prefix package_dir bridge_dir output)
    set(VELMORA_PACKAGE_BRIDGE_DIR "${bridge_dir}")
    set(VELMORA_PACKAGE_LOCAL_SERVICE_DIR "${VELMORA_LOCAL_SERVICE_SUBDIR}")
    set(VELMORA_PACKAGE_TEST_KIT_DIR "${VELMORA_TEST_KIT_SUBDIR}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/VelmoraConfig.cmake.in" "${output}/VelmoraConfig.cmake"
        INSTALL_PREFIX "${prefix}"
        INSTALL_DESTINATION "${package_dir}"
        PATH_VARS VELMORA_PACKAGE_BRIDGE_DIR VELMORA_PACKAGE_LOCAL_SERVICE_DIR VELMORA_PACKAGE_TEST_KIT_DIR)
    write_basic_package_version_file("${output}/VelmoraConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
endfunction()

set(velmora_build_package "lib/cmake/Velmora")
velmora_configure_package("${PROJECT_BINARY_DIR}" "${velmora_build_package}" "${VELMORA_BRIDGE_SUBDIR}"
    "${PROJECT_BINARY_DIR}/${velmora_build_package}")
export(TARGETS VelmoraTessaport VelmoraLogging VelmoraIO NAMESPACE Velmora::
    FILE "${PROJECT_BINARY_DIR}/${velmora_build_package}/VelmoraTargets.cmake")
if(TARGET VelmoraTestKit)
    export(TARGETS VelmoraTestKit NAMESPACE Velmora::
        FILE "${PROJECT_BINARY_DIR}/${velmora_build_package}/VelmoraTestKitTargets.cmake")
endif()

set(velmora_install_package "${PROJECT_BINARY_DIR}/install-package")
velmora_configure_package("${CMAKE_INSTALL_PREFIX}" "${VELMORA_INSTALL_PACKAGE_DIR}" "${VELMORA_INSTALL_BRIDGE_DIR}"
    "${velmora_install_package}")
set(VELMORA_PACKAGE_FILES
    "${velmora_install_package}/VelmoraConfig.cmake"
    "${velmora_install_package}/VelmoraConfigVersion.cmake")

# velmora_configure_pkg_config(<name> <library> <description> <required name>...)
# Writes <name>.pc, for compilers that are called without CMake, and adds it to VELMORA_PKG_CONFIG_FILES.
function(velmora_configure_pkg_config name library description)
    set(pc_name "${name}")
    set(pc_library "${library}")
    set(pc_description "${description}")
    list(JOIN ARGN " " pc_requires)
    file(RELATIVE_PATH pc_to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
    set(file "${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/velmora.pc.in" "${file}" @ONLY)
    set(VELMORA_PKG_CONFIG_FILES ${VELMORA_PKG_CONFIG_FILES} "${file}" PARENT_SCOPE)
endfunction()

velmora_configure_pkg_config(velmora-tessaport VelmoraTessaport "${PROJECT_DESCRIPTION}")
velmora_configure_pkg_config(velmora-io VelmoraIO "Serial files, key/value interfaces and a checksum")
velmora_configure_pkg_config(velmora-logging VelmoraLogging "Events and their JSON log" velmora-io)

# A project that uses add_subdirectory gets the same variables as one that uses find_package.
if(NOT PROJECT_IS_TOP_LEVEL)
    set(Velmora_BRIDGE_DIR "${PROJECT_BINARY_DIR}/${VELMORA_BRIDGE_SUBDIR}" PARENT_SCOPE)
    set(Velmora_LOCAL_SERVICE_DIR "${PROJECT_BINARY_DIR}/${VELMORA_LOCAL_SERVICE_SUBDIR}" PARENT_SCOPE)
    set(Velmora_TEST_KIT_DIR "${PROJECT_BINARY_DIR}/${VELMORA_TEST_KIT_SUBDIR}" PARENT_SCOPE)
endif()
