# Where things are in an installation, and how they find one another in one that was moved.
include(GNUInstallDirs)
set(TARVANE_INSTALL_DATA ${CMAKE_INSTALL_DATADIR}/tarvane)
set(TARVANE_INSTALL_PYTHON lib/python3/dist-packages CACHE STRING
    "Folder of the Python package, in the prefix")

# From one folder of the installation to another; those that are given as absolute paths too.
function(tarvane_way from to result)
    cmake_path(ABSOLUTE_PATH from BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE)
    cmake_path(ABSOLUTE_PATH to BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE)
    file(RELATIVE_PATH way ${from} ${to})
    string(REGEX REPLACE "/$" "" way "${way}")
    set(${result} ${way} PARENT_SCOPE)
endfunction()
tarvane_way(${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR} TARVANE_LIBRARY_FROM_PROGRAM)
tarvane_way(${CMAKE_INSTALL_LIBDIR} ${TARVANE_INSTALL_DATA} TARVANE_DATA_FROM_LIBRARY)
