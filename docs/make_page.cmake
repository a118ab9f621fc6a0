# Makes one web page of the manual: cmake -DCMARK=… -DPAGE=name -DSOURCE=folder -DTARGET=folder -P make_page.cmake
execute_process(COMMAND ${CMARK} --unsafe --extension table ${SOURCE}/${PAGE}.md
    OUTPUT_VARIABLE BODY OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PAGE}.md cannot be turned into a page")
endif()
string(REGEX MATCH "<h1>([^<]*)</h1>" _ "${BODY}")
set(TITLE "${CMAKE_MATCH_1}")
# Links between the pages.
string(REGEX REPLACE "href=\"([a-z_]+)\\.md" "href=\"\\1.html" BODY "${BODY}")
# The pages of the rules are part of the program, which prints them.
string(REGEX REPLACE "<a href=\"rules/KV[0-9]+\\.md\">([^<]*)</a>" "\\1" BODY "${BODY}")
# Every picture was taken in a light and in a dark window.
# cmake-lint: disable=C0301
string(REGEX REPLACE "<img src=\"images/([a-z_]+)_light\\.png\"([^>]*)>"
    "<picture><source srcset=\"images/\\1_dark.png\" media=\"(prefers-color-scheme: dark)\" /><img src=\"images/\\1_light.png\"\\2></picture>"
    BODY "${BODY}")
configure_file(${SOURCE}/page.html.in ${TARGET}/${PAGE}.html @ONLY)
