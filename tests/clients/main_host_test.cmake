# The main host is known by the name of its program file, in the given letters, and not by its folder.
#   cmake -DPROGRAM=main_host -DFOLDER=scratch -P main_host_test.cmake
function(expect answer file)
    get_filename_component(folder ${FOLDER}/${file} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    file(COPY_FILE ${PROGRAM} ${FOLDER}/${file})
    execute_process(COMMAND ${FOLDER}/${file} ${answer} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${file}: not ${answer}")
    endif()
endfunction()

file(REMOVE_RECURSE ${FOLDER})
expect(1 tvn.exe)
expect(1 old-tvn.exe.copy)
expect(0 TVN.EXE)
expect(0 tvn)
expect(0 vn.exe)
expect(0 folder.tvn.exe/host)
