#include "storage/project_file.h"

#include "model/project.h"
#include "storage/model_check.h"
#include "storage/new_project_file.h"
#include "storage/project_reader.h"
#include "storage/project_schema.h"
#include "storage/project_writer.h"
#include "zk/sqlite_connection.h"
#include "zk/zk_session.h"

#include <QFileInfo>

namespace storage::project_file {

namespace {

/// Replaces the model in an existing project file.
QSqlError replaceModel(const QString & file, const model::project & project)
{
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file); error.isValid()) {
        return error;
    }
    zk::ZkSession session(connection.database());
    if (!session.isValid()) {
        return zk::sqlite::describe(file, session.end());
    }
    if (const QSqlError error = project_schema::check(file, connection.database(), true); error.isValid()) {
        session.addError(error);
        return session.end();
    }
    for (const project_schema::table & t : project_schema::tables()) {
        if (t.isModel && session.isValid()) {
            session.addError(
                zk::sqlite::execute(connection.database(), QStringLiteral("DELETE FROM ") + t.name));
        }
    }
    if (session.isValid()) {
        session.addError(writeModel(connection.database(), project));
    }
    return zk::sqlite::describe(file, session.end());
}

} // namespace

QSqlError read(const QString & file, model::project & project)
{
    if (const QSqlError error = zk::sqlite::checkFile(file); error.isValid()) {
        return error;
    }
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file); error.isValid()) {
        return error;
    }
    // What is checked and what is read must be one state of the file.
    QSqlError error = zk::sqlite::execute(connection.database(), QStringLiteral("BEGIN"));
    if (error.isValid()) {
        return zk::sqlite::describe(file, error);
    }
    error = project_schema::check(file, connection.database(), false);
    return error.isValid() ? error : readModel(file, connection.database(), project);
}

QSqlError write(const QString & file, const model::project & project)
{
    if (file.isEmpty()) {
        return zk::sqlite::checkFile(file);
    }
    if (const auto finding = model_check::firstError(project)) {
        return {QString(), finding->text(file), QSqlError::StatementError};
    }
    const QFileInfo info(file);
    if (!info.exists() || (info.isFile() && info.size() == 0)) {
        return new_project_file::write(file, project);
    }
    const QSqlError error = zk::sqlite::checkFile(file);
    return error.isValid() ? error : replaceModel(file, project);
}

} // namespace storage::project_file
