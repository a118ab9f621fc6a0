# korvane_add_plugin(NAME SOURCES…): a plug-in NAME.so of the given sources, linked with the library, with its symbols
# hidden but for those by which Qt loads it.
function(korvane_add_plugin name)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE Korvane::Core)
    set_target_properties(${name} PROPERTIES
        AUTOMOC ON
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()
