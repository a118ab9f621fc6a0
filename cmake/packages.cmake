# The packages for Debian, and the archive of the sources. scripts/package.sh builds them.

# What each package holds: the parts that install() names.
set(korvane_packages
    library libkorvanecore${KORVANE_CORE_SOVERSION}
    plugin korvane-ddl-export
    program korvane
    documentation korvane-doc
    development libkorvanecore-dev)

set(CPACK_PACKAGE_NAME korvane)
set(CPACK_PACKAGE_VENDOR "The KorvGenericDDLExport developers")
set(CPACK_PACKAGE_CONTACT "The KorvGenericDDLExport developers <developers@korvane.example>"
    CACHE STRING "Who answers for the packages")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Times of files are those of the version, so that the same sources make the same packages.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/same_times.cmake)

set(same "= ${PROJECT_VERSION}")
# korvane_describe(COMPONENT SECTION SUMMARY DESCRIPTION): what lists of packages show of one.
function(korvane_describe component section summary description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
endfunction()
korvane_describe(library libs "model and services of Korvane's plug-ins"
    "The library that korvane and its plug-ins share: the model of persistent\n\
classes, project files with their versions, and custom scripts.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
# Which package others depend on that were linked with it, and that the loader is to know it.
configure_file(packaging/shlibs.in packaging/shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/packaging/triggers ${PROJECT_BINARY_DIR}/packaging/shlibs)
# Project files are read through Qt's driver.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "libqt6sql6-sqlite")
korvane_describe(plugin database "exporter of SQL scripts for Korvane"
    "Writes the schema of a database and one script for each step between\n\
tagged versions, for SQLite, MySQL, MariaDB, PostgreSQL, Oracle and SQL\n\
Server. A rename in the model is a rename in the script.")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS "libkorvanecore${KORVANE_CORE_SOVERSION} (${same})")
korvane_describe(program database "migration scripts from a class model"
    "Keeps a model of the persistent classes of an application and every version\n\
of it, writes the SQL scripts that lead from one version to the next, tells\n\
without a server what a database will refuse or lose, and proves the scripts\n\
by running them on a database of their own. With a window and a command line.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS
    "libkorvanecore${KORVANE_CORE_SOVERSION} (${same}), korvane-ddl-export (${same})")
# Diagrams are laid out by Graphviz; a proof starts the servers that are there.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS "graphviz, libqt6sql6-mysql, libqt6sql6-psql, korvane-doc (${same})")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "mariadb-server, postgresql")
korvane_describe(documentation doc "manual of Korvane" "The manual as web pages, which the window opens with F1.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
korvane_describe(development libdevel "headers for plug-ins of Korvane"
    "Headers, a CMake package and the sources of a sample plug-in, for those\n\
who write another exporter.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libkorvanecore${KORVANE_CORE_SOVERSION} (${same}), qt6-base-dev, libboost-dev")

# What every package tells of itself: licence and history.
set(packaging ${PROJECT_BINARY_DIR}/packaging)
find_program(GZIP gzip REQUIRED)
mark_as_advanced(GZIP)
configure_file(packaging/changelog.in ${packaging}/changelog @ONLY)
execute_process(COMMAND ${GZIP} --best --no-name --force --keep ${packaging}/changelog COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_COMPONENTS_ALL)
while(korvane_packages)
    list(POP_FRONT korvane_packages component package)
    string(TOUPPER ${component} upper)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
        set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package})
        install(FILES packaging/copyright DESTINATION ${folder} COMPONENT ${component})
        install(FILES ${packaging}/changelog.gz DESTINATION ${folder} COMPONENT ${component})
    endif()
endwhile()

# The sources as an archive that is built without git: no build folder, nothing that an editor left.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME korvane-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES "^${PROJECT_SOURCE_DIR}/build/" "/\\.git/" "/\\.git$" "/\\.cache/" "~$" "\\.swp$")
include(CPack)
