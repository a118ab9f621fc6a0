# Makes the pages for man(1): cmake -DWRITER=… -DCMARK=… -DMANUAL=manual.md -DDATE=… -DVERSION=… -DTARGET=folder -P
# make_man_pages.cmake
file(REMOVE_RECURSE ${TARGET})
file(MAKE_DIRECTORY ${TARGET}/markdown)
execute_process(COMMAND ${WRITER} ${MANUAL} ${TARGET}/markdown COMMAND_ERROR_IS_FATAL ANY)
file(GLOB pages ${TARGET}/markdown/*.md)
foreach(page ${pages})
    get_filename_component(name ${page} NAME_WE)
    execute_process(COMMAND ${CMARK} --extension table --to man ${page}
        OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)
    # What a word means stands right below it.
    string(REPLACE "\n.RS\n.PP\n" "\n.RS\n" body "${body}")
    string(TOUPPER ${name} title)
    file(WRITE ${TARGET}/${name}.1 ".TH ${title} 1 \"${DATE}\" \"Korvane ${VERSION}\" \"User Commands\"\n${body}")
    # Without its time, so that the bytes are the same each time.
    execute_process(COMMAND gzip --best --no-name ${TARGET}/${name}.1 COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(REMOVE_RECURSE ${TARGET}/markdown)
file(TOUCH ${TARGET}/made)
