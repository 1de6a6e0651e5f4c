# Man pages of the tool, made from its help texts, and its completions for shells, where packages have them.
find_program(VELMORA_HELP2MAN help2man REQUIRED DOC "help2man, which makes the man pages of the tool")

set(velmora_manual "${PROJECT_BINARY_DIR}/manual")
add_custom_command(
    OUTPUT "${velmora_manual}/complete"
    COMMAND "${PROJECT_SOURCE_DIR}/cmake/manual.sh" "$<TARGET_FILE:tessaport>" "$<TARGET_FILE_DIR:VelmoraTessaport>"
        "${VELMORA_HELP2MAN}" "${velmora_manual}"
    DEPENDS tessaport "${PROJECT_SOURCE_DIR}/cmake/manual.sh" "${PROJECT_SOURCE_DIR}/cmake/manual.inc"
    COMMENT "Making the man pages"
    VERBATIM)
add_custom_target(velmora_manual ALL DEPENDS "${velmora_manual}/complete")

install(DIRECTORY "${velmora_manual}/man/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Tool)
install(FILES "${velmora_manual}/bash" RENAME tessaport
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT Tool)
install(FILES "${velmora_manual}/zsh" RENAME _tessaport
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" COMPONENT Tool)
install(FILES "${velmora_manual}/fish" RENAME tessaport.fish
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT Tool)
