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
    printLine(oneLine(
        QStringLiteral("Project '%1' with %2 entities imported into %3")
            .arg(done.projectName, QString::number(done.entities), QDir::toNativeSeparators(projectFile))));
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

int tagProject(const QString & projectFile, const QString & message)
{
    int number = 0;
    if (const zk::ZkBool tagged = tagState(projectFile, message, number); !tagged) {
        return failed(tagged.getDesc());
    }
    printLine(oneLine(QStringLiteral("Version %1 of %2 tagged")
                          .arg(QString::number(number), QDir::toNativeSeparators(projectFile))));
    return 0;
}

int logVersions(const QString & projectFile)
{
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(projectFile, versions); error.isValid()) {
        return failed(error.text());
    }
    for (const storage::history::version & version : versions) {
        QString message = version.message;
        for (QChar & c : message) {
            c = c.isPrint() || c.isSurrogate() ? c : QChar(QLatin1Char(' '));
        }
        printLine(QStringLiteral("v%1  %2  %3")
                      .arg(QString::number(version.number),
                           version.created.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                           message)
                      .trimmed());
    }
    return 0;
}

} // namespace app
