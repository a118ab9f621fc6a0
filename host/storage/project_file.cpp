#include "storage/project_file.h"

#include "model/project.h"
#include "os/file_status.h"
#include "storage/model_check.h"
#include "storage/new_project_file.h"
#include "storage/project_reader.h"
#include "storage/project_schema.h"
#include "storage/project_writer.h"
#include "storage/temporary_file.h"
#include "zk/sqlite_connection.h"

#include <QFileInfo>

#include <memory>

namespace storage::project_file {

namespace {

/// Tells what is to be stored. `existing` is the file that holds the stored project, within the transaction;
/// null when there is none.
using decision =
    std::function<QSqlError(const zk::sqlite::connection * existing, const model::project *& next)>;

/// Fills the empty tables of `file` with the project that was decided on.
QSqlError writeDecided(const zk::sqlite::connection & file, const model::project * next)
{
    if (const auto finding = model_check::firstError(*next)) {
        return {QString(), finding->text(file.file()), QSqlError::StatementError};
    }
    return writeModel(file, *next);
}

QSqlError fillEmpty(const zk::sqlite::connection & file, const decision & decide)
{
    const model::project * next = nullptr;
    if (const QSqlError refused = decide(nullptr, next); refused.isValid()) {
        return refused;
    }
    const QSqlError error = project_schema::create(file);
    return error.isValid() ? error : writeDecided(file, next);
}

QSqlError replaceModel(const zk::sqlite::connection & file, const decision & decide)
{
    if (const QSqlError damaged = project_schema::check(file, project_schema::examined::everything);
        damaged.isValid()) {
        return damaged;
    }
    const model::project * next = nullptr;
    QSqlError error = decide(&file, next);
    for (const project_schema::table & t : project_schema::tables()) {
        if (t.holds == project_schema::of_model && !error.isValid()) {
            error = file.execute(QStringLiteral("DELETE FROM ") + t.name);
        }
    }
    return error.isValid() ? error : writeDecided(file, next);
}

/// Stores into a file that is there, be it empty.
QSqlError storeInto(const QString & name, const decision & decide)
{
    removeLeftovers(QFileInfo(name).canonicalPath());
    zk::sqlite::connection file;
    QSqlError error = file.open(name, zk::sqlite::contents::database_or_none);
    if (!error.isValid()) {
        // All pages are written at the end: readers do not wait before that, and should this process be
        // killed while it fills an empty file, the first page, by which a database is known, is the first on
        // disk.
        error = file.execute(QStringLiteral("PRAGMA cache_spill = OFF"));
    }
    return error.isValid() ? error : file.inTransaction([&] {
        // Only now, as it may be what an interrupted writer has left, which has just been played back.
        const bool empty = os::fileStatus(name).size == 0;
        return empty ? fillEmpty(file, decide) : replaceModel(file, decide);
    });
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
        if (os::fileStatus(file).kind != os::file_status::missing) {
            return storeInto(file, decide);
        }
        const new_project_file::outcome made =
            new_project_file::create(file, [&](const zk::sqlite::connection & empty) {
                const model::project * next = nullptr;
                const QSqlError refused = decide(nullptr, next);
                return refused.isValid() ? refused : writeDecided(empty, next);
            });
        if (!made.isTaken) {
            return made.error;
        }
        error = made.error;
    }
    return error;
}

/// Whoever loads this library can load projects.
[[maybe_unused]] const bool isHandedIn = [] {
    model::project::setFileReader(&read);
    return true;
}();

} // namespace

QSqlError read(const QString & name, model::project & project)
{
    zk::sqlite::connection file;
    const QSqlError error = file.open(name);
    // What is checked and what is read must be one state of the file.
    return error.isValid() ? error : file.inSnapshot([&] {
        const QSqlError damage = project_schema::check(file, project_schema::examined::state);
        return damage.isValid() ? damage : readModel(file, project);
    });
}

QSqlError write(const QString & file, const model::project & project)
{
    return store(file, [&project](const zk::sqlite::connection *, const model::project *& next) {
        next = &project;
        return QSqlError();
    });
}

QSqlError replace(const QString & file, const change & decide)
{
    std::unique_ptr<model::project> existing;
    std::unique_ptr<model::project> made;
    return store(file, [&](const zk::sqlite::connection * stored, const model::project *& next) {
        existing.reset();
        if (stored) {
            existing = std::make_unique<model::project>(1);
            if (const QSqlError error = readModel(*stored, *existing); error.isValid()) {
                return error;
            }
        }
        made = std::make_unique<model::project>(1);
        next = made.get();
        return decide(existing.get(), *made);
    });
}

} // namespace storage::project_file
