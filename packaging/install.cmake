# The man page and the completion of the shell, both from what the program knows of itself.
include(${CMAKE_CURRENT_LIST_DIR}/version_date.cmake)
if(TARVANE_APP AND NOT WIN32)
    set(TARVANE_MAN_PAGE ${PROJECT_BINARY_DIR}/man/tarvane.1)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/man)
    add_custom_command(OUTPUT ${TARVANE_MAN_PAGE}
        COMMAND tarvane_cli man-page ${TARVANE_VERSION_DATE} > ${TARVANE_MAN_PAGE}
        DEPENDS tarvane_cli
        COMMENT "Writing the man page")
    add_custom_target(tarvane_man ALL DEPENDS ${TARVANE_MAN_PAGE})
    install(FILES ${TARVANE_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
    install(FILES packaging/tarvane.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
            RENAME tarvane COMPONENT program)
endif()
