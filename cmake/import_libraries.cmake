# Import libraries of the DLLs for linkers that take those of Microsoft (.lib); MinGW's own are made with each DLL.
find_program(TARVANE_LLVM_DLLTOOL llvm-dlltool)
if(NOT TARVANE_LLVM_DLLTOOL)
    message(STATUS "no import libraries for the linker of Microsoft: no llvm-dlltool (of the package llvm)")
endif()

# lib/${name}.lib of the build, from a module definition file.
function(tarvane_microsoft_import_library name definitions)
    if(NOT TARVANE_LLVM_DLLTOOL)
        return()
    endif()
    set(machine i386:x86-64)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        set(machine i386)
    endif()
    set(library ${PROJECT_BINARY_DIR}/lib/${name}.lib)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
    add_custom_command(OUTPUT ${library}
        COMMAND ${TARVANE_LLVM_DLLTOOL} --kill-at -m ${machine} -d ${definitions} -l ${library}
        DEPENDS ${definitions}
        COMMENT "Making the import library ${name}.lib")
    add_custom_target(${name}_microsoft_import ALL DEPENDS ${library})
    set_property(GLOBAL APPEND PROPERTY TARVANE_MICROSOFT_IMPORT_LIBRARIES ${library})
endfunction()
