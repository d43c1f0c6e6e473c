# Libraries that are headers alone: of the machine that the programs are for, or with
# TARVANE_LIBRARIES_FROM_SOURCE of the one that builds, staged apart from its other headers, which are for its own
# compiler.
function(tarvane_header_library target folder header)
    string(TOUPPER ${target} variable)
    if(TARVANE_LIBRARIES_FROM_SOURCE AND CMAKE_CROSSCOMPILING)
        find_path(${variable}_BUILDER ${header} REQUIRED NO_CMAKE_FIND_ROOT_PATH)
        set(staged ${PROJECT_BINARY_DIR}/headers)
        file(MAKE_DIRECTORY ${staged})
        file(CREATE_LINK ${${variable}_BUILDER}/${folder} ${staged}/${folder} SYMBOLIC)
        set(${variable}_HEADERS ${staged} CACHE PATH "Where ${header} is")
    endif()
    find_path(${variable}_HEADERS ${header} REQUIRED)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE ${${variable}_HEADERS})
endfunction()
