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

# A project that uses add_subdirectory gets the same variables as one that uses find_package.
if(NOT PROJECT_IS_TOP_LEVEL)
    set(Velmora_BRIDGE_DIR "${PROJECT_BINARY_DIR}/${VELMORA_BRIDGE_SUBDIR}" PARENT_SCOPE)
    set(Velmora_LOCAL_SERVICE_DIR "${PROJECT_BINARY_DIR}/${VELMORA_LOCAL_SERVICE_SUBDIR}" PARENT_SCOPE)
    set(Velmora_TEST_KIT_DIR "${PROJECT_BINARY_DIR}/${VELMORA_TEST_KIT_SUBDIR}" PARENT_SCOPE)
endif()
