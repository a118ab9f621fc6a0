#include "storage/history.h"

#include "model/project.h"
#include "model/project_historic.h"
#include "os/file_status.h"
#include "storage/new_project_file.h"
#include "storage/project_reader.h"
#include "storage/project_schema.h"
#include "storage/restored_version.h"
#include "storage/same_model.h"
#include "storage/temporary_file.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"
#include "zk/sqlite_copy.h"
#include "zk/sqlite_statement.h"
#include "zk/zk_dao.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

namespace storage::history {

namespace {

using list_of_versions = zk::ZkCollection<long, std::shared_ptr<model::project_historic>>;

QSqlError fetchVersions(const zk::sqlite::connection & file, list_of_versions & versions)
{
    return zk::dao::fetchByQuery(versions,
                                 zk::ZkSqlQuery().orderAsc(QStringLiteral("t_project_historic.dt_creation")),
                                 file.database());
}

QSqlError copyState(const zk::sqlite::connection & from, const zk::sqlite::connection & to)
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

/// The bytes of a project file that holds what `file` holds, without its history. What could not be loaded
/// again from them is refused.
QSqlError snapshot(const zk::sqlite::connection & file, qsizetype limit, QByteArray & bytes)
{
    model::project loaded(1);
    if (const QSqlError error = readModel(file, loaded); error.isValid()) {
        return error;
    }
    const auto fill = [&file](const zk::sqlite::connection & copy) { return copyState(file, copy); };
    const QSqlError error = new_project_file::bytesOf(fill, bytes);
    if (!error.isValid() && bytes.size() > limit) {
        return file.failure(texts::tr("cannot be tagged: its state of %1 bytes is larger than "
                                      "the %2 bytes that a version may have")
                                .arg(bytes.size())
                                .arg(limit));
    }
    return error;
}

QSqlError addMessage(const zk::sqlite::connection & file, int version, const QString & message)
{
    // A message that an emptied history left behind belongs to nothing.
    zk::sqlite::statement insertion(
        file, QStringLiteral("INSERT OR REPLACE INTO t_project_tag (version, message) VALUES (?, ?)"));
    insertion.bind(0, qint64(version));
    insertion.bind(1, message);
    insertion.run();
    return insertion.error();
}

QSqlError readMessages(const zk::sqlite::connection & file, QHash<int, QString> & messages)
{
    zk::sqlite::statement rows(file, QStringLiteral("SELECT version, message FROM t_project_tag"));
    while (rows.next()) {
        messages.insert(static_cast<int>(rows.at(0).number()), rows.at(1).text());
    }
    return rows.error();
}

/// Whether the model is still that of `newest`; `bytes` is what would be stored of it now.
bool isUnchanged(const zk::sqlite::connection & file, const model::project_historic & newest,
                 const QByteArray & bytes)
{
    QByteArray compressed;
    // What cannot be read any more does not keep anybody from storing a version.
    if (newest.readProjectFile(file.database(), compressed).isValid()) {
        return false;
    }
    const QByteArray former = tools::boundedUncompress(compressed);
    // Equal states give equal bytes; other ones may still differ in the settings only.
    return former == bytes || holdsModelOf(file, former);
}

/// The time that counts as now: that of the clock, unless what is built is to be the same each time.
QDateTime currentTime()
{
    bool isTime = false;
    const qlonglong seconds = qEnvironmentVariable("SOURCE_DATE_EPOCH").toLongLong(&isTime);
    return isTime ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC) : QDateTime::currentDateTimeUtc();
}

/// The moment of a version that follows `versions`.
QDateTime creationTimeAfter(const list_of_versions & versions)
{
    const QDateTime now = currentTime();
    if (versions.isEmpty()) {
        return now;
    }
    // The clock may stand still or go back; the order of the versions must not.
    const QDateTime newest = versions.getByIndex(versions.count() - 1)->getCreationTime();
    return newest.isValid() && newest > now ? newest : now;
}

/// A failure when the version that was just added is not the last one: versions are numbered by their times,
/// and a damaged one can sort behind every time there is.
QSqlError checkIsLast(const zk::sqlite::connection & file)
{
    zk::sqlite::statement query(file,
                                QStringLiteral("SELECT rowid = last_insert_rowid() FROM t_project_historic "
                                               "ORDER BY dt_creation DESC, rowid DESC LIMIT 1"));
    if (query.next() && query.at(0).number() == 0) {
        return file.failure(texts::tr("is damaged (the time of a version is not a time, and a "
                                      "new version would come before it); restore it from a copy"));
    }
    return query.error();
}

/// Adds the version to the open and checked project file.
QSqlError addVersion(const zk::sqlite::connection & file, const QString & message, tag_when when,
                     qsizetype limit, tag_result & result)
{
    list_of_versions versions;
    if (const QSqlError error = fetchVersions(file, versions); error.isValid()) {
        return error;
    }
    QByteArray bytes;
    if (const QSqlError error = snapshot(file, limit, bytes); error.isValid()) {
        return error;
    }
    const int newest = static_cast<int>(versions.count());
    if (newest > 0 && isUnchanged(file, *versions.getByIndex(newest - 1), bytes)) {
        result.unchanged = newest;
        if (when == tag_when::if_changed) {
            return {};
        }
    }
    const auto record = std::make_shared<model::project_historic>();
    record->setCreationTime(creationTimeAfter(versions));
    record->setProjectFile(qCompress(bytes));
    if (record->getProjectFile().isEmpty()) {
        return file.failure(texts::tr("cannot be tagged: there is not enough memory"));
    }
    list_of_versions added;
    added.insert(0, record);
    if (const QSqlError error = zk::dao::insert(added, file.database()); error.isValid()) {
        return error;
    }
    if (const QSqlError error = checkIsLast(file); error.isValid()) {
        return error;
    }
    result.number = newest + 1;
    return addMessage(file, result.number, message);
}

/// The versions of the open project file, oldest first.
QSqlError readVersions(const zk::sqlite::connection & file, QList<version> & versions)
{
    list_of_versions records;
    QHash<int, QString> messages;
    QSqlError error = project_schema::check(file, project_schema::examined::versions);
    if (!error.isValid()) {
        error = fetchVersions(file, records);
    }
    if (!error.isValid()) {
        error = readMessages(file, messages);
    }
    if (error.isValid()) {
        return error;
    }
    versions.clear();
    for (const std::shared_ptr<model::project_historic> & record : records.values()) {
        const int number = static_cast<int>(versions.size()) + 1;
        versions.append({number, record->getCreationTime(), messages.value(number)});
    }
    return {};
}

/// The version `number` as it was stored.
QSqlError readCompressed(const zk::sqlite::connection & file, int number, QByteArray & compressed)
{
    list_of_versions versions;
    QSqlError error = project_schema::check(file, project_schema::examined::versions);
    if (!error.isValid()) {
        error = fetchVersions(file, versions);
    }
    if (error.isValid()) {
        return error;
    }
    if (number < 1 || number > versions.count()) {
        return file.failure(versions.isEmpty()
                                ? texts::tr("has no versions; 'korvane tag' makes one")
                                : texts::tr("has no version %1; the newest one is version %2")
                                      .arg(QString::number(number), QString::number(versions.count())));
    }
    return versions.getByIndex(number - 1)->readProjectFile(file.database(), compressed);
}

/// Says whether `newest` is still the state.
QSqlError compareWithState(const zk::sqlite::connection & file, newest_version & newest)
{
    QByteArray compressed;
    const QSqlError error = readCompressed(file, newest.what.number, compressed);
    newest.isState = !error.isValid() && holdsModelOf(file, tools::boundedUncompress(compressed));
    return error;
}

/// Takes the newest version out of the open project file, with its message.
QSqlError removeLast(const zk::sqlite::connection & file, int number)
{
    const QSqlError error =
        file.execute(QStringLiteral("DELETE FROM t_project_historic WHERE rowid = (SELECT rowid FROM "
                                    "t_project_historic ORDER BY dt_creation DESC, rowid DESC LIMIT 1)"));
    return error.isValid()
               ? error
               : file.execute(QStringLiteral("DELETE FROM t_project_tag WHERE version >= %1").arg(number));
}

QSqlError damagedVersion(const QString & file, int number, const QString & reason)
{
    return zk::sqlite::failure(file, texts::tr("is damaged (version %1: %2); restore it from a copy")
                                         .arg(QString::number(number), reason));
}

using project_look = std::function<void(const std::shared_ptr<model::project> &)>;

/// Loads `project` from the restored version `number` of `file`.
QSqlError loadRestored(const QString & file, int number, const QString & restored,
                       const std::shared_ptr<model::project> & project, const project_look & look)
{
    project->setFileName(restored);
    const QSqlError error = project->load();
    if (look && !error.isValid()) {
        look(project);
    }
    project->setLocation(QString());
    // The name of the temporary file tells a person nothing.
    const QString restoredName = zk::sqlite::failure(restored, QString()).text();
    return error.isValid() ? damagedVersion(file, number, error.text().remove(restoredName)) : error;
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

QSqlError tag(const QString & name, const QString & message, tag_when when, tag_result & result,
              qsizetype limit)
{
    removeLeftovers(QFileInfo(name).canonicalPath());
    zk::sqlite::connection file;
    if (const QSqlError error = file.open(name); error.isValid()) {
        return error;
    }
    tag_result done;
    const QSqlError error = file.inTransaction([&] {
        const QSqlError damage = project_schema::check(file, project_schema::examined::everything);
        return damage.isValid() ? damage : addVersion(file, message, when, limit, done);
    });
    if (!error.isValid()) {
        result = done;
    }
    return error;
}

QSqlError list(const QString & name, QList<version> & versions)
{
    zk::sqlite::connection file;
    const QSqlError error = file.open(name);
    return error.isValid() ? error : readVersions(file, versions);
}

QSqlError readNewest(const QString & name, newest_version & newest)
{
    zk::sqlite::connection file;
    if (const QSqlError error = file.open(name); error.isValid()) {
        return error;
    }
    newest_version found;
    const QSqlError error = file.inSnapshot([&] {
        QList<version> versions;
        const QSqlError listed = readVersions(file, versions);
        if (listed.isValid() || versions.isEmpty()) {
            return listed;
        }
        found.what = versions.constLast();
        return compareWithState(file, found);
    });
    if (!error.isValid()) {
        newest = found;
    }
    return error;
}

QSqlError removeNewest(const QString & name, const version & newest)
{
    zk::sqlite::connection file;
    if (const QSqlError error = file.open(name); error.isValid()) {
        return error;
    }
    return file.inTransaction([&] {
        QList<version> versions;
        if (const QSqlError error = readVersions(file, versions); error.isValid()) {
            return error;
        }
        if (versions.isEmpty() || versions.constLast().number != newest.number ||
            versions.constLast().created != newest.created) {
            return file.failure(texts::tr("version %1 is not the newest one any more; nothing was taken away")
                                    .arg(newest.number));
        }
        return removeLast(file, newest.number);
    });
}

QSqlError load(const QString & name, int number, std::shared_ptr<model::project> & project,
               const project_look & look)
{
    QByteArray compressed;
    {
        zk::sqlite::connection file;
        QSqlError error = file.open(name);
        if (!error.isValid()) {
            error = file.inSnapshot([&] { return readCompressed(file, number, compressed); });
        }
        if (error.isValid()) {
            return error;
        }
    }
    const QString folder = os::temporaryFolder();
    removeLeftVersions(folder);
    restored_version restored;
    switch (restored.restore(folder, QStringLiteral("korvane_v%1_").arg(number), compressed)) {
    case restored_version::outcome::damaged:
        return damagedVersion(name, number, texts::tr("it cannot be uncompressed"));
    case restored_version::outcome::unwritten:
        return zk::sqlite::failure(restored.fileName(),
                                   texts::tr("cannot be written, so version %1 of %2 cannot be restored; "
                                             "check the folder for temporary files")
                                       .arg(QString::number(number), QDir::toNativeSeparators(name)));
    case restored_version::outcome::restored:
        break;
    }
    const auto loaded = std::make_shared<model::project>(1);
    const QSqlError error = loadRestored(name, number, restored.fileName(), loaded, look);
    if (!error.isValid()) {
        project = loaded;
    }
    return error;
}

} // namespace storage::history
