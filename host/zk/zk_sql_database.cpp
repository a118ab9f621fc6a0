#include "zk/zk_sql_database.h"

#include "zk/sqlite_connection.h"
#include "zk/texts.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QSqlDriver>
#include <QSqlResult>

#include <atomic>
#include <memory>

namespace zk {

namespace {

/// What a query on a refused connection has for a result: the reason.
class refused_result : public QSqlResult
{
public:
    explicit refused_result(const QSqlDriver * driver) : QSqlResult(driver)
    {
        QSqlResult::setLastError(driver->lastError());
    }

protected:
    QVariant data(int) override { return {}; }
    bool isNull(int) override { return true; }
    bool reset(const QString &) override { return false; }
    bool fetch(int) override { return false; }
    bool fetchFirst() override { return false; }
    bool fetchLast() override { return false; }
    int size() override { return -1; }
    int numRowsAffected() override { return -1; }
};

/// Stands for a connection that could not be had, so that a QSqlDatabase can carry the reason.
class refused_driver : public QSqlDriver
{
public:
    explicit refused_driver(const QSqlError & reason)
    {
        setOpenError(true);
        setLastError(reason);
    }
    [[nodiscard]] bool hasFeature(DriverFeature) const override { return false; }
    bool open(const QString &, const QString &, const QString &, const QString &, int,
              const QString &) override
    {
        return false;
    }
    void close() override {}
    [[nodiscard]] QSqlResult * createResult() const override { return new refused_result(this); }
};

struct cached_connection
{
    std::shared_ptr<sqlite::connection> connection; ///< null when it was refused
    QString refusal;                                ///< name of the stand-in, then
    QDateTime fileBirth; ///< tells a file from another one that has taken its name since
};

/// The connections of one thread, by absolute file name.
QHash<QString, cached_connection> & connections()
{
    static thread_local QHash<QString, cached_connection> cache;
    return cache;
}

/// A connection that is not open and tells why: `reason`.
QSqlDatabase refusal(const QSqlError & reason, QString & name)
{
    static std::atomic<quint64> counter = 0;
    name = QStringLiteral("zk/refused/%1").arg(++counter);
    return QSqlDatabase::addDatabase(new refused_driver(reason), name);
}

void forget(const QString & key)
{
    const cached_connection forgotten = connections().take(key);
    if (!forgotten.refusal.isEmpty()) {
        QSqlDatabase::removeDatabase(forgotten.refusal);
    }
}

} // namespace

QSqlDatabase ZkSqlDatabase::getDatabase(const QString & file)
{
    const QFileInfo info(file);
    const QString key = file.isEmpty() ? QString() : info.absoluteFilePath();
    const QDateTime birth = info.birthTime();
    if (const auto cached = connections().constFind(key);
        cached != connections().constEnd() && cached->connection) {
        const QSqlDatabase known = cached->connection->database();
        if (known.isOpen() && info.exists() && cached->fileBirth == birth) {
            return known;
        }
    }
    forget(key);
    cached_connection made{std::make_shared<sqlite::connection>(), {}, birth};
    QSqlError error = made.connection->open(file);
    if (!error.isValid()) {
        error = made.connection->refuseCode();
    }
    QSqlDatabase database = made.connection->database();
    if (error.isValid()) {
        database = QSqlDatabase();
        made.connection.reset();
        database = refusal(error, made.refusal);
    }
    connections().insert(key, made);
    return database;
}

void ZkSqlDatabase::clearAllDatabases()
{
    const QList<QString> keys = connections().keys();
    for (const QString & key : keys) {
        forget(key);
    }
}

QSqlError ZkSqlDatabase::openError(const QSqlDatabase & database)
{
    if (database.isOpen()) {
        return {};
    }
    const QSqlError error = database.lastError();
    return error.isValid()
               ? error
               : QSqlError(QString(), texts::tr("The database is not open"), QSqlError::ConnectionError);
}

QSqlError ZkSqlDatabase::describe(const QSqlDatabase & database, const QSqlError & error)
{
    return sqlite::describe(database, error);
}

} // namespace zk
