# A host's output equals the recorded one, byte by byte.
#   cmake -DHOST="program;arguments" -DRECORDED=file -DFOLDER=scratch -P same_output.cmake
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${HOST} OUTPUT_FILE ${FOLDER}/output.txt COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${RECORDED} ${FOLDER}/output.txt
                RESULT_VARIABLE different)
if(different)
    execute_process(COMMAND diff ${RECORDED} ${FOLDER}/output.txt)
    message(FATAL_ERROR "the output is not the recorded one")
endif()
