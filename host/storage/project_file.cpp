#include "storage/project_file.h"

#include "model/project.h"
#include "storage/model_check.h"
#include "storage/new_project_file.h"
#include "storage/project_reader.h"
#include "storage/project_schema.h"
#include "storage/project_writer.h"
#include "storage/temporary_file.h"
#include "tools/file_status.h"
#include "zk/sqlite_connection.h"
#include "zk/zk_session.h"

#include <QFileInfo>

#include <memory>

namespace storage::project_file {

namespace {

/// Tells what is to be stored. `database` holds the stored project, within the transaction; null when there
/// is none.
using decision = std::function<QSqlError(const QSqlDatabase * database, const model::project *& next)>;

/// Fills the empty tables of `database` with the project that `decide` names.
QSqlError writeDecided(const QString & file, const QSqlDatabase & database, const model::project * next)
{
    if (const auto finding = model_check::firstError(*next)) {
        return {QString(), finding->text(file), QSqlError::StatementError};
    }
    return writeModel(database, *next);
}

QSqlError fillEmpty(const QString & file, zk::ZkSession & session, const decision & decide)
{
    const model::project * next = nullptr;
    QSqlError error = decide(nullptr, next);
    if (!error.isValid()) {
        error = project_schema::create(session.database());
    }
    return error.isValid() ? error : writeDecided(file, session.database(), next);
}

QSqlError replaceModel(const QString & file, zk::ZkSession & session, const decision & decide)
{
    QSqlError error = project_schema::check(file, session.database(), true);
    const model::project * next = nullptr;
    if (!error.isValid()) {
        error = decide(&session.database(), next);
    }
    for (const project_schema::table & t : project_schema::tables()) {
        if (t.holds == project_schema::of_model && !error.isValid()) {
            error = zk::sqlite::execute(session.database(), QStringLiteral("DELETE FROM ") + t.name);
        }
    }
    return error.isValid() ? error : writeDecided(file, session.database(), next);
}

/// Stores into a file that is there, be it empty.
QSqlError storeInto(const QString & file, const decision & decide)
{
    removeLeftovers(QFileInfo(file).canonicalPath());
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file, zk::sqlite::contents::database_or_none);
        error.isValid()) {
        return error;
    }
    // All pages are written at the end: readers do not wait before that, and should this process be killed
    // while it fills an empty file, the first page, by which a database is known, is the first on disk.
    if (const QSqlError error =
            zk::sqlite::execute(connection.database(), QStringLiteral("PRAGMA cache_spill = OFF"));
        error.isValid()) {
        return zk::sqlite::describe(file, error, connection.database());
    }
    zk::ZkSession session(connection.database());
    if (session.isValid()) {
        // Only now, as it may be what an interrupted writer has left, which has just been played back.
        const bool empty = tools::fileStatus(file).size == 0;
        session.addError(empty ? fillEmpty(file, session, decide) : replaceModel(file, session, decide));
    }
    return zk::sqlite::describe(file, session.end(), connection.database());
}

QSqlError store(const QString & file, const decision & decide)
{
    if (file.isEmpty()) {
        return zk::sqlite::checkFile(file);
    }
    QSqlError error;
    // Each time the file must have come or gone in between; that ends, but not for one who does it on
    // purpose.
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        if (tools::fileStatus(file).kind != tools::file_status::missing) {
            return storeInto(file, decide);
        }
        const new_project_file::outcome made =
            new_project_file::create(file, [&](const QSqlDatabase & database) {
                const model::project * next = nullptr;
                const QSqlError refused = decide(nullptr, next);
                return refused.isValid() ? refused : writeDecided(file, database, next);
            });
        if (!made.isTaken) {
            return made.error;
        }
        error = made.error;
    }
    return error;
}

} // namespace

QSqlError read(const QString & file, model::project & project)
{
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file); error.isValid()) {
        return error;
    }
    // What is checked and what is read must be one state of the file.
    QSqlError error = zk::sqlite::execute(connection.database(), QStringLiteral("BEGIN"));
    if (error.isValid()) {
        return zk::sqlite::describe(file, error, connection.database());
    }
    error = project_schema::check(file, connection.database(), false);
    return error.isValid() ? error : readModel(file, connection.database(), project);
}

QSqlError write(const QString & file, const model::project & project)
{
    return store(file, [&project](const QSqlDatabase *, const model::project *& next) {
        next = &project;
        return QSqlError();
    });
}

QSqlError replace(const QString & file, const change & decide)
{
    std::unique_ptr<model::project> existing;
    std::unique_ptr<model::project> made;
    return store(file, [&](const QSqlDatabase * database, const model::project *& next) {
        existing.reset();
        if (database) {
            existing = std::make_unique<model::project>(1);
            if (const QSqlError error = readModel(file, *database, *existing); error.isValid()) {
                return error;
            }
        }
        made = std::make_unique<model::project>(1);
        next = made.get();
        return decide(existing.get(), *made);
    });
}

} // namespace storage::project_file
