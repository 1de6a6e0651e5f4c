# Debian packages, one for each component. docs/packages.md says what is in each of them.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Tool LocalService TestKit Documentation)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Velmora developers <developers@velmora.example>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Each package has a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

set(velmora_debian_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(velmora_debian_files "${PROJECT_BINARY_DIR}/debian")
get_target_property(velmora_soversion VelmoraTessaport SOVERSION)
set(velmora_library_package "libvelmora-tessaport${velmora_soversion}")
string(TIMESTAMP velmora_debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
find_program(VELMORA_GZIP gzip REQUIRED)
file(READ "${PROJECT_SOURCE_DIR}/THIRD-PARTY-NOTICES.md" velmora_notices)

# velmora_debian_package(<component> <package> SECTION <section> SUMMARY <line> DESCRIPTION <text>
#     MULTIARCH <value> [ALL_ARCHITECTURES] [DEPENDS <list>] [RECOMMENDS <list>] [SUGGESTS <list>])
function(velmora_debian_package component package)
    cmake_parse_arguments(PARSE_ARGV 2 ARG
        "ALL_ARCHITECTURES" "SECTION;SUMMARY;DESCRIPTION;MULTIARCH;DEPENDS;RECOMMENDS;SUGGESTS" "")
    string(TOUPPER "${component}" upper)
    macro(set_for_package name value)
        set(CPACK_DEBIAN_${upper}_${name} "${value}" PARENT_SCOPE)
    endmacro()
    set_for_package(PACKAGE_NAME "${package}")
    # cpack 3.25 has no variable for Multi-Arch, and writes this one into the control file as it is.
    set_for_package(PACKAGE_SECTION "${ARG_SECTION}\nMulti-Arch: ${ARG_MULTIARCH}")
    set_for_package(DESCRIPTION "${ARG_SUMMARY}\n${ARG_DESCRIPTION}")
    set_for_package(PACKAGE_DEPENDS "${ARG_DEPENDS}")
    set_for_package(PACKAGE_RECOMMENDS "${ARG_RECOMMENDS}")
    set_for_package(PACKAGE_SUGGESTS "${ARG_SUGGESTS}")
    if(ARG_ALL_ARCHITECTURES)
        set_for_package(PACKAGE_ARCHITECTURE all)
    endif()

    set(folder "${velmora_debian_files}/${package}")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/copyright.in" "${folder}/copyright" @ONLY)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in" "${folder}/changelog.Debian" @ONLY)
    execute_process(COMMAND "${VELMORA_GZIP}" -9nf "${folder}/changelog.Debian" COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${folder}/copyright" "${folder}/changelog.Debian.gz"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component})
    set(velmora_overrides)
    if(EXISTS "${PROJECT_SOURCE_DIR}/cmake/debian/${component}.lintian-overrides")
        file(READ "${PROJECT_SOURCE_DIR}/cmake/debian/${component}.lintian-overrides" velmora_overrides)
    endif()
    configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/common.lintian-overrides.in" "${folder}/overrides" @ONLY)
    install(FILES "${folder}/overrides" RENAME "${package}"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT ${component})
endfunction()

# The names that the library exports, each with the version in which it came, so that a program depends on a version that has
# all that it uses.
function(velmora_write_debian_symbols file)
    set(exports "${PROJECT_SOURCE_DIR}/tests/package/exports.txt")
    set_property(DIRECTORY "${PROJECT_SOURCE_DIR}" APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${exports}")
    file(STRINGS "${exports}" names REGEX "^[^#]")
    list(TRANSFORM names REPLACE "^([^ ]+)$" "\\1 0.1.0")
    list(TRANSFORM names REPLACE "^([^ ]+) (.+)$" " \\1@Base \\2")
    list(JOIN names "\n" lines)
    file(WRITE "${file}"
        "libVelmoraTessaport.so.${velmora_soversion} ${velmora_library_package} #MINVER#\n"
        "* Build-Depends-Package: libvelmora-tessaport-dev\n"
        "${lines}\n")
endfunction()

velmora_debian_package(Runtime "${velmora_library_package}"
    SECTION libs
    MULTIARCH same
    SUMMARY "native access to files kept by Tessaport (library)"
    DESCRIPTION
"Applications in C++ work with the drives of Tessaport, whose only programming
interface is a .NET assembly. This library starts the .NET runtime in the
process of the application and makes that interface native.

It needs the .NET runtime 8.0 or newer, from a package or in another folder."
    RECOMMENDS "dotnet-runtime-8.0 | dotnet-runtime-9.0 | dotnet-runtime-10.0")
velmora_debian_package(Development libvelmora-tessaport-dev
    SECTION libdevel
    MULTIARCH same
    SUMMARY "native access to files kept by Tessaport (development)"
    DESCRIPTION
"Headers, CMake package and pkg-config files to build applications with the
library, and the static libraries of the event logger and of serial files."
    DEPENDS "${velmora_library_package} (= ${velmora_debian_version})"
    SUGGESTS "libvelmora-tessaport-testkit-dev, velmora-tessaport-doc")
velmora_debian_package(Tool tessaport
    SECTION utils
    MULTIARCH foreign
    SUMMARY "work with the drives of Tessaport on the command line"
    DESCRIPTION
"Lists drives, folders and files, shows their properties, syncs them, and
checks an installation. Without the sync application the tool works on plain
folders, through the local sync service."
    DEPENDS "${velmora_library_package} (= ${velmora_debian_version})"
    RECOMMENDS "tessaport-local-service")
# Precompiled for one architecture, as that of the test kit; both are in folders without its name.
velmora_debian_package(LocalService tessaport-local-service
    SECTION utils
    MULTIARCH no
    SUMMARY "sync service on plain folders for Tessaport's interface"
    DESCRIPTION
"Keeps drives in plain folders and answers the requests that the sync
application answers, so that applications and the tool can be tried without
it."
    SUGGESTS "tessaport")
velmora_debian_package(TestKit libvelmora-tessaport-testkit-dev
    SECTION libdevel
    MULTIARCH no
    SUMMARY "sync service for the tests of applications of Tessaport"
    DESCRIPTION
"The tests of an application script this sync service in C++: its answers,
failures and delays, and the calls that were made."
    DEPENDS "libvelmora-tessaport-dev (= ${velmora_debian_version})")
velmora_debian_package(Documentation velmora-tessaport-doc
    SECTION doc
    MULTIARCH foreign
    ALL_ARCHITECTURES
    SUMMARY "native access to files kept by Tessaport (documentation)"
    DESCRIPTION
"How to build and deploy applications with the library, how to test them,
what to do when something goes wrong, and how the library works inside.")

velmora_write_debian_symbols("${velmora_debian_files}/symbols")
file(WRITE "${velmora_debian_files}/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    "${velmora_debian_files}/symbols;${velmora_debian_files}/triggers")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")

set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/doc-base.in" "${velmora_debian_files}/doc-base" @ONLY)
install(FILES "${velmora_debian_files}/doc-base" RENAME velmora-tessaport-doc
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc-base" COMPONENT Documentation)

# Under the name that Debian gives it.
execute_process(COMMAND "${VELMORA_GZIP}" -9nc "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    OUTPUT_FILE "${velmora_debian_files}/changelog.gz" COMMAND_ERROR_IS_FATAL ANY)
install(FILES "${velmora_debian_files}/changelog.gz" DESTINATION "${velmora_doc_dir}" COMPONENT Documentation)

include(CPack)
