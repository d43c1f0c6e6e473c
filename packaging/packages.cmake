# cpack -G DEB: packages of Debian from the parts of the installation, below /usr. A build that is configured with
# CMAKE_INSTALL_PREFIX=/usr has its libraries in the folder of the architecture.
# cpack -G ZIP of the 64-bit build for Windows: the whole installation in one archive, with the 32-bit engine.
set(CPACK_PACKAGE_VENDOR "Kessendale Lab")
set(CPACK_PACKAGE_CONTACT "Kessendale Lab <tarvane@kessendale.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(WIN32)
    set(CPACK_PACKAGE_FILE_NAME tarvane-${PROJECT_VERSION}-windows)
    include(CPack)
    return()
endif()
if(NOT TARVANE_APP)
    return()
endif()

set(CPACK_COMPONENTS_ALL program engine vessel data development documents python)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian_files.cmake)

# A package a part: its name, section and description, the parts that it needs in just this version, and what else.
# A library's name has the number of its binary surface, so that two of them can be there side by side.
set(TARVANE_FULL_VERSION ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(engine_NAME libtarvane${TARVANE_ENGINE_ABI})
set(vessel_NAME libtarvane-vessel${TARVANE_VESSEL_ABI})
set(program_NAME tarvane)
set(data_NAME tarvane-data)
set(development_NAME libtarvane-dev)
set(documents_NAME tarvane-doc)
set(python_NAME python3-tarvane)
function(tarvane_package part section summary)
    cmake_parse_arguments(PARSE_ARGV 3 WITH "ANYWHERE" "TEXT;SUGGESTS" "PARTS;DEPENDS")
    set(depends ${WITH_DEPENDS})
    foreach(needed ${WITH_PARTS})
        list(APPEND depends "${${needed}_NAME} (= ${TARVANE_FULL_VERSION})")
    endforeach()
    list(JOIN depends ", " depends)
    string(TOUPPER ${part} PART)
    set(CPACK_DEBIAN_${PART}_PACKAGE_NAME ${${part}_NAME} PARENT_SCOPE)
    set(CPACK_DEBIAN_${PART}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${PART}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${PART}_PACKAGE_SUGGESTS "${WITH_SUGGESTS}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${PART}_DESCRIPTION "${summary}\n${WITH_TEXT}" PARENT_SCOPE)
    if(WITH_ANYWHERE)
        set(CPACK_DEBIAN_${PART}_PACKAGE_ARCHITECTURE all PARENT_SCOPE)
    endif()
endfunction()
tarvane_package(program science "calculations of pressure vessels"
    TEXT "Flanges, shells and heads under internal and external pressure, and metal temperatures, from an input file to the report, the checks and the verdict."
    PARTS engine data SUGGESTS "tarvane-doc, weasyprint")
tarvane_package(engine libs "calculations of pressure vessels - engine"
    TEXT "The library that calculates one element of a vessel at a time and writes its report."
    PARTS data)
tarvane_package(vessel libs "calculations of pressure vessels - library"
    TEXT "The library that takes a vessel as JSON and returns its results."
    PARTS data)
tarvane_package(data science "calculations of pressure vessels - data files" ANYWHERE
    TEXT "Tables of bolts, standard flanges, materials and external pressure charts.")
tarvane_package(development libdevel "calculations of pressure vessels - development files"
    TEXT "Headers, static libraries, the interfaces of Fortran and C#, and what CMake and pkg-config ask for."
    PARTS engine vessel SUGGESTS tarvane-doc)
tarvane_package(documents doc "calculations of pressure vessels - documents and examples" ANYWHERE
    TEXT "The guides, and examples of input files and of host programs.")
tarvane_package(python python "calculations of pressure vessels - Python package" ANYWHERE
    TEXT "Input files or dictionaries in, results and reports out; sweeps of many cases."
    PARTS vessel DEPENDS "python3 (>= 3.9)" SUGGESTS "python3-numpy, python3-pandas")
include(CPack)
