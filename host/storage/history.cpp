#include "storage/history.h"

#include "model/project.h"
#include "model/project_historic.h"
#include "storage/new_project_file.h"
#include "storage/project_reader.h"
#include "storage/project_schema.h"
#include "storage/same_model.h"
#include "storage/temporary_file.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"
#include "zk/sqlite_copy.h"
#include "zk/zk_dao.h"
#include "zk/zk_session.h"

#include <QFileInfo>
#include <QHash>
#include <QSqlQuery>

namespace storage::history {

namespace {

using list_of_versions = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;

QSqlError fetchVersions(const QSqlDatabase & database, list_of_versions & versions)
{
    return zk::dao::fetchByQuery(
        versions, zk::ZkSqlQuery().orderAsc(QStringLiteral("t_project_historic.dt_creation")), database);
}

QSqlError copyState(const QSqlDatabase & from, const QSqlDatabase & to)
{
    for (const project_schema::table & t : project_schema::tables()) {
        if (t.holds == project_schema::of_history) {
            continue;
        }
        if (const QSqlError error = zk::sqlite::copyRows(t.name, from, to); error.isValid()) {
            return error;
        }
    }
    return {};
}

/// The bytes of a project file that holds what `database` holds, without its history. What could not be
/// loaded again from them is refused.
QSqlError snapshot(const QString & file, const QSqlDatabase & database, qsizetype limit, QByteArray & bytes)
{
    const auto fill = [&](const QSqlDatabase & copy) {
        const QSqlError error = copyState(database, copy);
        model::project loaded(1);
        return error.isValid() ? error : readModel(file, copy, loaded);
    };
    const QSqlError error = new_project_file::bytesOf(fill, bytes);
    if (!error.isValid() && bytes.size() > limit) {
        return zk::sqlite::failure(file, texts::tr("cannot be tagged: its state of %1 bytes is larger than "
                                                   "the %2 bytes that a version may have")
                                             .arg(bytes.size())
                                             .arg(limit));
    }
    return error;
}

QSqlError addMessage(const QSqlDatabase & database, int version, const QString & message)
{
    QSqlQuery query(database);
    // A message that an emptied history left behind belongs to nothing.
    query.prepare(QStringLiteral("INSERT OR REPLACE INTO t_project_tag (version, message) VALUES (?, ?)"));
    query.addBindValue(version);
    query.addBindValue(message.isNull() ? QStringLiteral("") : message);
    query.exec();
    return query.lastError();
}

QSqlError readMessages(const QSqlDatabase & database, QHash<int, QString> & messages)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT version, message FROM t_project_tag"));
    while (query.next()) {
        messages.insert(query.value(0).toInt(), query.value(1).toString());
    }
    return query.lastError();
}

/// Whether the model is still that of `newest`; `bytes` is what would be stored of it now.
bool isUnchanged(const QSqlDatabase & database, const model::project_historic & newest,
                 const QByteArray & bytes)
{
    QByteArray compressed;
    // What cannot be read any more does not keep anybody from storing a version.
    if (newest.readProjectFile(database, compressed).isValid()) {
        return false;
    }
    const QByteArray former = tools::boundedUncompress(compressed);
    // Equal states give equal bytes; other ones may still differ in the settings only.
    return former == bytes || holdsModelOf(database, former);
}

/// The moment of a version that follows `versions`.
QDateTime creationTimeAfter(const list_of_versions & versions)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (versions.isEmpty()) {
        return now;
    }
    // The clock may stand still or go back; the order of the versions must not.
    const QDateTime newest = versions.getByIndex(versions.count() - 1)->getCreationTime();
    return newest.isValid() && newest > now ? newest : now;
}

/// A failure when the version that was just added is not the last one: versions are numbered by their times,
/// and a damaged one can sort behind every time there is.
QSqlError checkIsLast(const QString & file, const QSqlDatabase & database)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT rowid = last_insert_rowid() FROM t_project_historic "
                              "ORDER BY dt_creation DESC, rowid DESC LIMIT 1"));
    if (query.next() && !query.value(0).toBool()) {
        return zk::sqlite::failure(file, texts::tr("is damaged (the time of a version is not a time, and a "
                                                   "new version would come before it); restore it from a "
                                                   "copy"));
    }
    return query.lastError();
}

/// Adds the version to the open and checked project file.
QSqlError addVersion(const QString & file, zk::ZkSession & session, const QString & message, tag_when when,
                     qsizetype limit, tag_result & result)
{
    list_of_versions versions;
    if (const QSqlError error = fetchVersions(session.database(), versions); error.isValid()) {
        return error;
    }
    QByteArray bytes;
    if (const QSqlError error = snapshot(file, session.database(), limit, bytes); error.isValid()) {
        return error;
    }
    const int newest = static_cast<int>(versions.count());
    if (newest > 0 && isUnchanged(session.database(), *versions.getByIndex(newest - 1), bytes)) {
        result.unchanged = newest;
        if (when == tag_when::if_changed) {
            return {};
        }
    }
    const auto record = std::make_shared<model::project_historic>();
    record->setCreationTime(creationTimeAfter(versions));
    record->setProjectFile(qCompress(bytes));
    if (record->getProjectFile().isEmpty()) {
        return zk::sqlite::failure(file, texts::tr("cannot be tagged: there is not enough memory"));
    }
    list_of_versions added;
    added.insert(0, record);
    if (const QSqlError error = zk::dao::insert(added, session.database()); error.isValid()) {
        return error;
    }
    if (const QSqlError error = checkIsLast(file, session.database()); error.isValid()) {
        return error;
    }
    result.number = newest + 1;
    return addMessage(session.database(), result.number, message);
}

} // namespace

QSqlError tag(const QString & file, const QString & message, int & number)
{
    tag_result result;
    const QSqlError error = tag(file, message, tag_when::always, result);
    if (!error.isValid()) {
        number = result.number;
    }
    return error;
}

QSqlError tag(const QString & file, const QString & message, tag_when when, tag_result & result,
              qsizetype limit)
{
    removeLeftovers(QFileInfo(file).canonicalPath());
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file); error.isValid()) {
        return error;
    }
    zk::ZkSession session(connection.database());
    if (!session.isValid()) {
        return zk::sqlite::describe(file, session.end(), connection.database());
    }
    session.addError(project_schema::check(file, connection.database(), true));
    tag_result done;
    if (session.isValid()) {
        session.addError(addVersion(file, session, message, when, limit, done));
    }
    const QSqlError error = zk::sqlite::describe(file, session.end(), connection.database());
    if (!error.isValid()) {
        result = done;
    }
    return error;
}

QSqlError list(const QString & file, QList<version> & versions)
{
    zk::sqlite::scoped_connection connection;
    if (const QSqlError error = connection.open(file); error.isValid()) {
        return error;
    }
    if (const QSqlError error = project_schema::check(file, connection.database(), false); error.isValid()) {
        return error;
    }
    list_of_versions records;
    QHash<int, QString> messages;
    QSqlError error = fetchVersions(connection.database(), records);
    if (!error.isValid()) {
        error = readMessages(connection.database(), messages);
    }
    if (error.isValid()) {
        return zk::sqlite::describe(file, error, connection.database());
    }
    versions.clear();
    for (const std::shared_ptr<model::project_historic> & record : records.values()) {
        const int number = static_cast<int>(versions.size()) + 1;
        versions.append({number, record->getCreationTime(), messages.value(number)});
    }
    return {};
}

} // namespace storage::history
