# The site: reference of the public headers and the documents, made by Doxygen.
find_program(VELMORA_DOXYGEN doxygen REQUIRED DOC "Doxygen, which makes the site")
find_path(VELMORA_SITE_THEME doxygen-awesome.css PATH_SUFFIXES share/doxygen-awesome-css
    REQUIRED NO_CMAKE_FIND_ROOT_PATH DOC "Folder of the style sheets doxygen-awesome-css")

set(velmora_site "${PROJECT_BINARY_DIR}/site")
set(velmora_public_headers)
foreach(target VelmoraTessaport VelmoraLogging VelmoraIO VelmoraTestKit)
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(files ${target} HEADER_SET)
    foreach(file IN LISTS files)
        cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY "${folder}")
        list(APPEND velmora_public_headers "${file}")
    endforeach()
endforeach()
list(TRANSFORM velmora_public_headers REPLACE "(.+)" "\"\\1\"" OUTPUT_VARIABLE velmora_site_headers)
list(JOIN velmora_site_headers " " velmora_site_headers)
configure_file("${PROJECT_SOURCE_DIR}/cmake/site/Doxyfile.in" "${velmora_site}/Doxyfile" @ONLY)

file(GLOB velmora_site_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/*.md" "${PROJECT_SOURCE_DIR}/docs/*.md"
    "${PROJECT_SOURCE_DIR}/docs/images/*" "${PROJECT_SOURCE_DIR}/cmake/site/*" "${PROJECT_SOURCE_DIR}/examples/*/main.cpp")
add_custom_command(
    OUTPUT "${velmora_site}/complete"
    COMMAND "${PROJECT_SOURCE_DIR}/cmake/site/make.sh" "${PROJECT_SOURCE_DIR}" "${velmora_site}" "${VELMORA_DOXYGEN}"
        ${velmora_public_headers}
    COMMAND "${CMAKE_COMMAND}" -E touch "${velmora_site}/complete"
    DEPENDS ${velmora_public_headers} ${velmora_site_sources} "${velmora_site}/Doxyfile"
    COMMENT "Making the site"
    VERBATIM)
add_custom_target(velmora_site ALL DEPENDS "${velmora_site}/complete")
