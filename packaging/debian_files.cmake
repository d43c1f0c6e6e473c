# What a package of Debian has beside the installed files, and how it has them: run by CPack over the parts, each in
# a folder of its own, before the packages are made.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

function(compressed from to)
    execute_process(COMMAND gzip -9nc ${from} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(part ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${part} PART)
    set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${part}${CPACK_PACKAGING_INSTALL_PREFIX})
    set(documents ${root}/share/doc/${CPACK_DEBIAN_${PART}_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${documents})
    get_filename_component(top ${CPACK_RESOURCE_FILE_LICENSE} DIRECTORY)
    # Ours, and that of the font in the program and the libraries.
    configure_file(${CPACK_RESOURCE_FILE_LICENSE} ${documents}/copyright COPYONLY)
    file(READ ${top}/vessel/drawing/font/LICENSE font)
    file(APPEND ${documents}/copyright "\n${font}")
    compressed(${top}/CHANGELOG.md ${documents}/changelog.gz)
    foreach(page ${root}/share/man/man1/tarvane.1)
        if(EXISTS ${page})
            compressed(${page} ${page}.gz)
            file(REMOVE ${page})
        endif()
    endforeach()
    # The loader finds the libraries of the system by itself.
    file(GLOB programs ${root}/bin/*)
    foreach(program ${programs})
        file(RPATH_REMOVE FILE ${program})
    endforeach()
endforeach()
