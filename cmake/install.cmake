# cmake --install: libraries, programs, headers, data files, documents; found by find_package(tarvane) and by
# pkg-config, in a prefix that may be moved.
include(CMakePackageConfigHelpers)

# The parts of an installation, which the packages of Debian are made of: engine and vessel (the shared libraries),
# program, data, python, documents, and development, where everything is that no other part is named for.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME development)

# First of all rules: what the target uninstall takes away.
set(TARVANE_INSTALL_FOLDERS ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR}/cmake/tarvane
    ${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_INCLUDEDIR}/tarvane ${TARVANE_INSTALL_DATA}
    ${TARVANE_INSTALL_PYTHON}/tarvane ${CMAKE_INSTALL_DOCDIR} ${CMAKE_INSTALL_MANDIR}/man1
    ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
configure_file(cmake/created_folders.cmake.in ${PROJECT_BINARY_DIR}/cmake/created_folders.cmake @ONLY)
install(SCRIPT ${PROJECT_BINARY_DIR}/cmake/created_folders.cmake)
if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -P ${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake VERBATIM)
endif()

set(TARVANE_LIBRARIES tarvane)
if(TARGET tarvane_vessel)
    list(APPEND TARVANE_LIBRARIES tarvane_vessel)
endif()
foreach(library ${TARVANE_LIBRARIES} ${TARVANE_ARCHIVES})
    set_target_properties(${library} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>;$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
endforeach()
foreach(library ${TARVANE_LIBRARIES})
    string(REGEX REPLACE "^tarvane$" "engine" part ${library})
    string(REPLACE "tarvane_" "" part ${part})
    install(TARGETS ${library} EXPORT tarvaneTargets
        RUNTIME COMPONENT ${part} LIBRARY COMPONENT ${part} NAMELINK_COMPONENT development)
endforeach()
install(TARGETS ${TARVANE_ARCHIVES} EXPORT tarvaneTargets)
if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Of the 32-bit DLL in place of the linker's own, which knows the plain names alone.
    install(FILES ${PROJECT_BINARY_DIR}/bin/libtarvane.a DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()
get_property(microsoft_libraries GLOBAL PROPERTY TARVANE_MICROSOFT_IMPORT_LIBRARIES)
install(FILES ${microsoft_libraries} DESTINATION ${CMAKE_INSTALL_LIBDIR})
# The 32-bit engine beside the 64-bit libraries: the same headers and data files.
if(TARVANE_WIN32_BUILD)
    foreach(name bin/tarvane.dll bin/libtarvane.a lib/tarvane.lib)
        install(FILES ${TARVANE_WIN32_BUILD}/${name} DESTINATION win32 OPTIONAL)
    endforeach()
endif()
if(TARVANE_APP)
    install(TARGETS tarvane_cli COMPONENT program)
endif()
if(TARVANE_VESSEL)
    install(TARGETS tarvane_data_builder COMPONENT program)
    install(FILES ${TARVANE_DATA} ${TARVANE_BUILT_FILES} ${TARVANE_DATA_FOLDER}/data_version.txt
            DESTINATION ${TARVANE_INSTALL_DATA} COMPONENT data)
endif()

install(DIRECTORY include/tarvane DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# A Fortran module is the compiler's own form: hosts compile it from its source, and that of C#.
install(DIRECTORY fortran/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarvane/fortran)
install(DIRECTORY csharp/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarvane/csharp)
if(NOT WIN32) # where no folder is all programs' own; there the package comes by pip
    install(DIRECTORY python/tarvane DESTINATION ${TARVANE_INSTALL_PYTHON} COMPONENT python
            FILES_MATCHING PATTERN "*.py" PATTERN "py.typed" PATTERN "__pycache__" EXCLUDE)
endif()
install(FILES README.md LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents)
install(FILES vessel/drawing/font/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents RENAME LICENSE.font)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents FILES_MATCHING PATTERN "*.md"
    PATTERN "*.toml" PATTERN site EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documents)

# ---- find_package --------------------------------------------------------------------------------------
set(TARVANE_INSTALL_CMAKE ${CMAKE_INSTALL_LIBDIR}/cmake/tarvane)
set(TARVANE_CONFIG ${PROJECT_BINARY_DIR}/cmake/tarvaneConfig.cmake)
set(TARVANE_CONFIG_VERSION ${PROJECT_BINARY_DIR}/cmake/tarvaneConfigVersion.cmake)
set(TARVANE_FORTRAN ${CMAKE_INSTALL_INCLUDEDIR}/tarvane/fortran)
configure_package_config_file(cmake/tarvaneConfig.cmake.in ${TARVANE_CONFIG}
    INSTALL_DESTINATION ${TARVANE_INSTALL_CMAKE}
    PATH_VARS TARVANE_INSTALL_DATA TARVANE_FORTRAN)
configure_file(cmake/tarvaneConfigVersion.cmake.in ${TARVANE_CONFIG_VERSION} @ONLY)
install(FILES ${TARVANE_CONFIG} ${TARVANE_CONFIG_VERSION} DESTINATION ${TARVANE_INSTALL_CMAKE})
install(EXPORT tarvaneTargets NAMESPACE tarvane:: DESTINATION ${TARVANE_INSTALL_CMAKE})

# ---- pkg-config ----------------------------------------------------------------------------------------
set(TARVANE_INSTALL_PKGCONFIG ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
tarvane_way(${TARVANE_INSTALL_PKGCONFIG} . TARVANE_PREFIX_FROM_PKGCONFIG)
tarvane_way(. ${CMAKE_INSTALL_LIBDIR} TARVANE_LIBDIR)
tarvane_way(. ${CMAKE_INSTALL_INCLUDEDIR} TARVANE_INCLUDEDIR)
tarvane_way(. ${TARVANE_INSTALL_DATA} TARVANE_DATADIR)
foreach(library ${TARVANE_LIBRARIES})
    string(REPLACE _ - name ${library})
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/cmake/${name}.pc @ONLY)
    file(STRINGS cmake/${name}.pc.in description REGEX "^Description: ")
    string(REPLACE "Description: " "" description "${description}")
    set(archive ${library}_static)
    configure_file(cmake/static.pc.in ${PROJECT_BINARY_DIR}/cmake/${name}-static.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/cmake/${name}.pc ${PROJECT_BINARY_DIR}/cmake/${name}-static.pc
            DESTINATION ${TARVANE_INSTALL_PKGCONFIG})
endforeach()
