#include "app/commands.h"
#include "app/project_work.h"

#include "model/project.h"
#include "storage/history.h"
#include "storage/text_form.h"

#include <QDir>

namespace app {

namespace {

int failed(const QString & text)
{
    printError(text);
    return 1;
}

} // namespace

int importModel(const QString & modelFile, const QString & projectFile)
{
    const import_result done = importText(modelFile, projectFile);
    if (!done.result) {
        return failed(done.result.getDesc());
    }
    for (const QString & warning : done.warnings) {
        printError(warning);
    }
    printDone(
        QStringLiteral("Project '%1' imported into %2 (entities: %3)")
            .arg(done.projectName, QDir::toNativeSeparators(projectFile), QString::number(done.entities)));
    return 0;
}

int dumpProject(const QString & projectFile)
{
    std::shared_ptr<model::project> project;
    if (const zk::ZkBool opened = openProject(projectFile, project); !opened) {
        return failed(opened.getDesc());
    }
    // The text ends with the line end that printing a line adds.
    printLine(QString::fromUtf8(storage::text_form::write(*project)).chopped(1));
    return 0;
}

int tagProject(const QString & projectFile, const QString & message, bool ifChanged)
{
    using namespace storage::history;
    tag_result tagged;
    if (const zk::ZkBool done =
            tagState(projectFile, message, ifChanged ? tag_when::if_changed : tag_when::always, tagged);
        !done) {
        return failed(done.getDesc());
    }
    const QString file = QDir::toNativeSeparators(projectFile);
    const QString newest = QStringLiteral("the model has not changed since v%1").arg(tagged.unchanged);
    if (tagged.number == 0) {
        printLine(oneLine(QStringLiteral("No version of %1 tagged: %2").arg(file, newest)));
        return 0;
    }
    const QString done = QStringLiteral("Version %1 of %2 tagged").arg(QString::number(tagged.number), file);
    printDone(tagged.unchanged == 0 ? done : done + QStringLiteral("; ") + newest);
    return 0;
}

int logVersions(const QString & projectFile)
{
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(projectFile, versions); error.isValid()) {
        return failed(error.text());
    }
    for (const storage::history::version & version : versions) {
        printLine(QStringLiteral("v%1  %2  %3")
                      .arg(QString::number(version.number),
                           version.created.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                           oneLine(version.message))
                      .trimmed());
    }
    return 0;
}

} // namespace app
