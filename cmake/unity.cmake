# Compiles sources of a target as one, unless TARVANE_UNITY is off: what they include costs more than they do. A name
# in an unnamed namespace is then one of all of them. `./dev lint` compiles each source by itself, so that one that
# lives on what its neighbours include fails there.

# As many at a time as the caller says, in the order of their names.
function(tarvane_unity_batches target size)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TARVANE_UNITY} UNITY_BUILD_BATCH_SIZE ${size})
endfunction()

# By folder. A source that has a UNITY_GROUP keeps it.
function(tarvane_unity_folders target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TARVANE_UNITY} UNITY_BUILD_MODE GROUP)
    get_target_property(sources ${target} SOURCES)
    foreach(source ${sources})
        get_source_file_property(group ${source} UNITY_GROUP)
        if(NOT group)
            cmake_path(GET source PARENT_PATH folder)
            cmake_path(GET folder FILENAME folder)
            set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder})
        endif()
    endforeach()
endfunction()
