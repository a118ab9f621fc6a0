# Headers of Qt, Boost and the standard library, compiled once for all targets with KORVANE_PRECOMPILED, and sources
# of a library compiled together, which saves more than half of the time of a build. No header of this tree is among
# the precompiled ones. The preset "dev" does without all that, and clazy reads each source by itself, so that each
# file has to include what it uses.
option(KORVANE_PRECOMPILED "Precompile the headers of the libraries, and compile sources together" OFF)

set(KORVANE_PRECOMPILED_HEADERS
    <algorithm> <array> <functional> <limits> <map> <memory> <optional> <string> <utility> <vector>
    <boost/multi_index/hashed_index.hpp> <boost/multi_index/member.hpp> <boost/multi_index/random_access_index.hpp>
    <boost/multi_index_container.hpp>
    <QAction> <QApplication> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash> <QLabel> <QLineEdit> <QList> <QMainWindow>
    <QMenu> <QMessageBox> <QObject> <QPainter> <QPointer> <QPushButton> <QRegularExpression> <QSet> <QSqlDatabase>
    <QSqlError> <QSqlQuery> <QString> <QStringBuilder> <QStringList> <QTimer> <QTreeView> <QVBoxLayout> <QVariant>)
set(KORVANE_PRECOMPILED_TEST_HEADERS <QElapsedTimer> <QProcess> <QSignalSpy> <QTemporaryDir> <QTest>)

# korvane_precompile(NAME HEADERS more… LIBRARIES what they belong to…): a target whose headers others use
function(korvane_precompile name)
    cmake_parse_arguments(arg "" "" "HEADERS;LIBRARIES" ${ARGN})
    set(source ${PROJECT_BINARY_DIR}/${name}.cpp)
    if(NOT EXISTS ${source})
        file(WRITE ${source} "")
    endif()
    add_library(${name} OBJECT ${source})
    target_link_libraries(${name} PRIVATE Qt6::Widgets Qt6::Sql Boost::headers ${arg_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${KORVANE_PRECOMPILED_HEADERS} ${arg_HEADERS})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
endfunction()

# Has `target` use the headers of `of`, if any are compiled.
function(korvane_use_precompiled target of)
    if(KORVANE_PRECOMPILED)
        target_precompile_headers(${target} REUSE_FROM ${of})
    endif()
endfunction()

# Has the sources of `target` that have no name in common compiled together, when headers are precompiled.
function(korvane_join_sources target)
    if(NOT KORVANE_PRECOMPILED)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/joined_sources.py 8 ${sources}
        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE groups COMMAND_ERROR_IS_FATAL ANY)
    string(STRIP "${groups}" groups)
    foreach(source group IN ZIP_LISTS sources groups)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    # One source may well call something as another one does.
    target_compile_options(${target} PRIVATE -Wno-shadow)
endfunction()

if(KORVANE_PRECOMPILED)
    # Who links Boost's serialization has this; headers that were compiled without it could not be used there.
    add_compile_definitions(BOOST_SERIALIZATION_DYN_LINK)
    korvane_precompile(precompiled)
endif()
