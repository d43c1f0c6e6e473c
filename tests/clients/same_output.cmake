# A host's output equals that of the reference host, byte by byte.
#   cmake -DHOST="program;arguments" -DREFERENCE=program -DFOLDER=scratch -P same_output.cmake
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${REFERENCE} OUTPUT_FILE ${FOLDER}/reference.txt COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${HOST} OUTPUT_FILE ${FOLDER}/host.txt COMMAND_ERROR_IS_FATAL ANY)
file(SIZE ${FOLDER}/reference.txt size)
if(size LESS 10000)
    message(FATAL_ERROR "the reference host wrote ${size} bytes only")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${FOLDER}/reference.txt ${FOLDER}/host.txt
                RESULT_VARIABLE different)
if(different)
    execute_process(COMMAND diff ${FOLDER}/reference.txt ${FOLDER}/host.txt)
    message(FATAL_ERROR "the outputs differ")
endif()
