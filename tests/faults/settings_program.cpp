// Stores the export's settings in a project file, as the settings dialog does: settings_program PROJECT.korv
// FOLDER

#include "plugin/ddl_export.h"

#include "context/ctx_project.h"
#include "model/project.h"

#include <QApplication>

#include <cstdio>

namespace {

int failed(const QString & text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    return 1;
}

} // namespace

int main(int argc, char ** argv)
{
    const QApplication application(argc, argv);
    if (argc != 3) {
        return 2;
    }
    const auto project = std::make_shared<model::project>(1);
    project->setFileName(QString::fromLocal8Bit(argv[1]));
    if (const QSqlError error = project->load(); error.isValid()) {
        return failed(error.text());
    }
    context::ctx_project::getSingleton().setProject(project);
    plugin::ddl_export plugin;
    if (const QSqlError error = plugin.loadSettings(); error.isValid()) {
        return failed(error.text());
    }
    plugin.setDDLExportPath(QString::fromLocal8Bit(argv[2]));
    plugin.setDatabaseType(plugin::ddl_export::db_postgresql);
    if (const QSqlError error = plugin.saveSettings(); error.isValid()) {
        return failed(error.text());
    }
    std::puts("stored");
    return 0;
}
