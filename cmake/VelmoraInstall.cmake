# Install rules, in components: a host is built with Development and ships Runtime.
option(VELMORA_INSTALL "Make install rules" ${PROJECT_IS_TOP_LEVEL})

if(WIN32)
    set(VELMORA_INSTALL_BRIDGE_DIR "${CMAKE_INSTALL_BINDIR}/velmora/bridge")
else()
    # The library searches from its own folder.
    set(VELMORA_INSTALL_BRIDGE_DIR "${CMAKE_INSTALL_LIBDIR}/velmora/bridge")
endif()
set(VELMORA_INSTALL_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Velmora")

include(VelmoraPackage)

if(VELMORA_INSTALL)
    install(TARGETS VelmoraTessaport VelmoraLogging VelmoraIO EXPORT VelmoraTargets
        RUNTIME COMPONENT Runtime
        LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
        ARCHIVE COMPONENT Development
        FILE_SET HEADERS DESTINATION include COMPONENT Development)

    install(DIRECTORY "${PROJECT_BINARY_DIR}/${VELMORA_BRIDGE_SUBDIR}/"
        DESTINATION "${VELMORA_INSTALL_BRIDGE_DIR}" COMPONENT Runtime
        PATTERN "*.pdb" EXCLUDE)
    install(DIRECTORY "${PROJECT_BINARY_DIR}/${VELMORA_LOCAL_SERVICE_SUBDIR}/"
        DESTINATION "${VELMORA_LOCAL_SERVICE_SUBDIR}" COMPONENT LocalService
        PATTERN "*.pdb" EXCLUDE)

    if(TARGET VelmoraTestKit)
        # Exported separately, so that the package is complete without this component.
        install(TARGETS VelmoraTestKit EXPORT VelmoraTestKitTargets
            ARCHIVE COMPONENT TestKit
            FILE_SET HEADERS DESTINATION include COMPONENT TestKit)
        install(DIRECTORY "${PROJECT_BINARY_DIR}/${VELMORA_TEST_KIT_SUBDIR}/"
            DESTINATION "${VELMORA_TEST_KIT_SUBDIR}" COMPONENT TestKit
            PATTERN "*.pdb" EXCLUDE)
        install(EXPORT VelmoraTestKitTargets NAMESPACE Velmora::
            DESTINATION "${VELMORA_INSTALL_PACKAGE_DIR}" COMPONENT TestKit)
    endif()

    if(TARGET tessaport)
        file(RELATIVE_PATH velmora_bin_to_lib
            "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
        # The same run path in the build tree: one that is replaced at installation is padded with an empty part there,
        # which stands for the current directory.
        set(velmora_run_path "$ORIGIN/${velmora_bin_to_lib}" "$ORIGIN/../lib")
        list(REMOVE_DUPLICATES velmora_run_path)
        set_target_properties(tessaport PROPERTIES BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "${velmora_run_path}")
        install(TARGETS tessaport RUNTIME COMPONENT Tool)
    endif()

    if(MINGW)
        velmora_find_cxx_runtime(velmora_cxx_runtime)
        velmora_find_cxx_runtime_notices(velmora_cxx_runtime_notices)
        install(FILES ${velmora_cxx_runtime} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime)
        install(FILES ${velmora_cxx_runtime_notices}
            DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/velmora/cxx-runtime" COMPONENT Runtime)
    endif()

    install(EXPORT VelmoraTargets NAMESPACE Velmora::
        DESTINATION "${VELMORA_INSTALL_PACKAGE_DIR}" COMPONENT Development)
    install(FILES ${VELMORA_PACKAGE_FILES}
        DESTINATION "${VELMORA_INSTALL_PACKAGE_DIR}" COMPONENT Development)

    install(FILES ${VELMORA_PKG_CONFIG_FILES}
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT Development)

    if(VELMORA_DEBIAN)
        # Debian packages have the terms in their copyright files, and the changelog under another name.
        set(velmora_doc_dir "${CMAKE_INSTALL_DATADIR}/doc/velmora-tessaport-doc")
    else()
        set(velmora_doc_dir "${CMAKE_INSTALL_DATADIR}/doc/velmora")
        install(FILES LICENSE THIRD-PARTY-NOTICES.md DESTINATION "${velmora_doc_dir}" COMPONENT Runtime)
        install(FILES CHANGELOG.md DESTINATION "${velmora_doc_dir}" COMPONENT Documentation)
    endif()
    install(FILES README.md DESTINATION "${velmora_doc_dir}" COMPONENT Documentation)
    install(DIRECTORY docs DESTINATION "${velmora_doc_dir}" COMPONENT Documentation)
    if(VELMORA_BUILD_SITE)
        install(DIRECTORY "${velmora_site}/html" DESTINATION "${velmora_doc_dir}" COMPONENT Documentation)
    endif()

    if(VELMORA_BUILD_MANUAL)
        include(VelmoraManual)
    endif()
    # Whatever the umask of the user who packs.
    set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/SetTimes.cmake")
    if(VELMORA_DEBIAN)
        include(VelmoraDebian)
    elseif(PROJECT_IS_TOP_LEVEL)
        include(VelmoraArchive)
    endif()
endif()
