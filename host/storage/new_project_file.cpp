#include "storage/new_project_file.h"

#include "storage/project_schema.h"
#include "storage/project_writer.h"
#include "zk/sqlite_connection.h"
#include "zk/zk_session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QScopeGuard>

#include <filesystem>

namespace storage::new_project_file {

namespace {

/// Makes an empty file of a new name beside `target`.
QSqlError createBeside(const QFileInfo & target, QString & name)
{
    constexpr int attempts = 16;
    QFile file;
    for (int i = 0; i < attempts; ++i) {
        file.setFileName(target.dir().absoluteFilePath(
            QStringLiteral(".korvane-%1.new").arg(QRandomGenerator::global()->generate64(), 16, 36)));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            name = file.fileName();
            return {};
        }
    }
    return zk::sqlite::failure(
        target.filePath(),
        QStringLiteral("cannot be created (%1); check its folder").arg(file.errorString()));
}

QSqlError fill(const QString & name, const model::project & project,
               const std::function<QSqlError(const QSqlDatabase &)> & more)
{
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(name); error.isValid()) {
        return error;
    }
    // Nobody sees the file before it is whole, so nothing has to be rolled back from disk.
    if (const QSqlError error =
            zk::sqlite::execute(connection.database(), QStringLiteral("PRAGMA journal_mode = MEMORY"));
        error.isValid()) {
        return error;
    }
    zk::ZkSession session(connection.database());
    if (session.isValid()) {
        session.addError(project_schema::create(session.database()));
    }
    if (session.isValid()) {
        session.addError(writeModel(session.database(), project));
    }
    if (session.isValid() && more) {
        session.addError(more(session.database()));
    }
    return session.end();
}

QSqlError moveTo(const QString & name, const QString & target)
{
    // A journal that an earlier database of this name left behind would be played back into the new one.
    for (const QLatin1StringView suffix :
         {QLatin1StringView("-journal"), QLatin1StringView("-wal"), QLatin1StringView("-shm")}) {
        QFile::remove(target + suffix);
    }
    std::error_code code;
    std::filesystem::rename(QFileInfo(name).filesystemFilePath(), QFileInfo(target).filesystemFilePath(),
                            code);
    if (code) {
        return zk::sqlite::failure(target, QStringLiteral("cannot be created (%1); check its folder")
                                               .arg(QString::fromLocal8Bit(code.message().c_str())));
    }
    return {};
}

} // namespace

QSqlError write(const QString & file, const model::project & project,
                const std::function<QSqlError(const QSqlDatabase &)> & more)
{
    const QFileInfo info(file);
    // Through a link the file that it leads to is meant.
    const QString target = info.isSymLink() ? info.symLinkTarget() : info.absoluteFilePath();
    QString name;
    if (const QSqlError error = createBeside(QFileInfo(target), name); error.isValid()) {
        return error;
    }
    const auto cleanUp = qScopeGuard([&name] { QFile::remove(name); });
    const QSqlError error = fill(name, project, more);
    return error.isValid() ? zk::sqlite::describe(file, error) : moveTo(name, target);
}

} // namespace storage::new_project_file
