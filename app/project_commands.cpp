#include "app/commands.h"

#include "model/project.h"
#include "storage/history.h"
#include "storage/model_check.h"
#include "storage/project_file.h"
#include "storage/text_form.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace app {

namespace {

constexpr qint64 TextLimit = qint64(512) * 1024 * 1024; // bytes; far above any model, far below memory

int failed(const QString & text)
{
    printError(text);
    return 1;
}

QString fileReason(const QString & file, const QString & reason)
{
    return QDir::toNativeSeparators(file) + QStringLiteral(": ") + reason;
}

/// Reads the whole text file; false after the error was printed.
bool readText(const QString & name, QByteArray & text)
{
    const QFileInfo info(name);
    if (!info.exists()) {
        failed(fileReason(name, QStringLiteral("does not exist; check the name")));
        return false;
    }
    if (!info.isFile()) {
        failed(fileReason(name, QStringLiteral("is no file; give the text form of a project")));
        return false;
    }
    if (info.size() > TextLimit) {
        failed(fileReason(name, QStringLiteral("is too large for the text form of a project")));
        return false;
    }
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        failed(fileReason(name, QStringLiteral("cannot be read (%1)").arg(file.errorString())));
        return false;
    }
    text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        failed(fileReason(name, QStringLiteral("cannot be read (%1)").arg(file.errorString())));
        return false;
    }
    return true;
}

/// Loads `file` into `project`; an error is printed.
bool load(const QString & file, model::project & project)
{
    project.setFileName(file);
    const QSqlError error = project.load();
    if (error.isValid()) {
        failed(error.text());
    }
    return !error.isValid();
}

} // namespace

int importModel(const QString & modelFile, const QString & projectFile)
{
    QByteArray text;
    if (!readText(modelFile, text)) {
        return 1;
    }
    const QFileInfo target(projectFile);
    model::project existing(1);
    const bool replaces = target.exists() && (!target.isFile() || target.size() > 0);
    if (replaces && !load(projectFile, existing)) {
        return 1;
    }
    const auto project = std::make_shared<model::project>(1);
    const QString source = QDir::toNativeSeparators(modelFile);
    if (const zk::ZkBool result =
            storage::text_form::read(text, source, replaces ? &existing : nullptr, *project);
        !result) {
        return failed(result.getDesc());
    }
    if (const QSqlError error = storage::project_file::write(projectFile, *project); error.isValid()) {
        return failed(error.text());
    }
    QStringList warnings = storage::model_check::warnings(*project);
    if (replaces) {
        warnings << storage::text_form::versionWarnings(*project, existing);
    }
    for (const QString & warning : std::as_const(warnings)) {
        printError(source + QStringLiteral(": warning: ") + warning);
    }
    printLine(oneLine(QStringLiteral("Project '%1' with %2 entities imported into %3")
                          .arg(project->getName(), QString::number(project->getListOfAllEntities()->count()),
                               QDir::toNativeSeparators(projectFile))));
    return 0;
}

int dumpProject(const QString & projectFile)
{
    model::project project(1);
    if (!load(projectFile, project)) {
        return 1;
    }
    // The text ends with the line end that printing a line adds.
    printLine(QString::fromUtf8(storage::text_form::write(project)).chopped(1));
    return 0;
}

int tagProject(const QString & projectFile, const QString & message)
{
    int number = 0;
    if (const QSqlError error = storage::history::tag(projectFile, message, number); error.isValid()) {
        return failed(error.text());
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
