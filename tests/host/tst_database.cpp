#include "support/project_support.h"

#include "model/plugin_params.h"
#include "model/project_historic.h"
#include "zk/sqlite_locks.h"
#include "zk/zk_dao.h"
#include "zk/zk_session.h"
#include "zk/zk_sql_database.h"

#include <QScopeGuard>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

using model::plugin_params;
using model::project_historic;
using list_of_params = zk::ZkCollection<long, std::shared_ptr<plugin_params>>;
using list_of_versions = zk::ZkCollection<long, std::shared_ptr<project_historic>>;

namespace {

/// A driver of databases that keeps the handle of its engine to itself.
class closed_driver : public QSqlDriver
{
public:
    bool hasFeature(DriverFeature) const override { return false; }
    bool open(const QString &, const QString &, const QString &, const QString &, int,
              const QString &) override
    {
        setOpen(true);
        return true;
    }
    void close() override { setOpen(false); }
    QSqlResult * createResult() const override { return nullptr; }
};

} // namespace

class tst_database : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sFile = m_folder->filePath("it's 100%?#.korv");
        const auto project = support::projectOf(support::textOf(""));
        QVERIFY(!storage::project_file::write(m_sFile, *project).isValid());
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void recordsWithoutADatabase_data()
    {
        QTest::addColumn<bool>("isOpen");
        QTest::addColumn<QString>("historic");
        QTest::addColumn<QString>("params");
        QTest::newRow("not open") << false << "The database is not open"
                                  << "The database is not open";
        QTest::newRow("without tables") << true << "no such table: t_project_historic"
                                        << "no such table: t_plugin_params";
    }
    void recordsWithoutADatabase()
    {
        QFETCH(bool, isOpen);
        QFETCH(QString, historic);
        QFETCH(QString, params);
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "bare");
            database.setDatabaseName(m_folder->filePath("bare"));
            QCOMPARE(!isOpen || database.open(), true);
            failsWith<project_historic>(historic, database);
            failsWith<plugin_params>(params, database);
        }
        QSqlDatabase::removeDatabase("bare");
    }

    void queryTexts()
    {
        QCOMPARE(zk::ZkSqlQuery().getSql(), QString());
        zk::ZkSqlQuery query;
        query.whereEqual("t.a", 1).whereEqual("t.b", "x'y").orderAsc("t.c");
        QCOMPARE(query.getBoundValues(), (QVariantList{1, "x'y"}));
        QVERIFY(query.getSql().startsWith(' '));
        QVERIFY(!query.getSql().contains("x'y"));
        QCOMPARE(query.getSql().count('?'), 2);
    }
    void columnNamesCannotSmuggleStatements()
    {
        list_of_params list;
        const auto query = zk::ZkSqlQuery().whereEqual("t_plugin_params.plugin_guid\" = 1 OR \"a", 1);
        QVERIFY(insertParam("g", "k", 1));
        QVERIFY(zk::dao::deleteByQuery<plugin_params>(query, database()).isValid());
        QVERIFY(zk::dao::fetchByQuery(list, query, database()).isValid());
        QCOMPARE(fetch("g").size(), std::size_t(1));
    }

    void aDriverWithAnEngineOfItsOwnIsRefused()
    {
        QVERIFY(database().isOpen()); // by the usual driver, which shares its engine
        zk::ZkSqlDatabase::clearAllDatabases();
        QSqlDatabase::registerSqlDriver("QSQLITE", new QSqlDriverCreator<closed_driver>);
        const auto restored = qScopeGuard([] { QSqlDatabase::registerSqlDriver("QSQLITE", nullptr); });
        const QString reason =
            m_sFile +
            ": cannot be opened: Qt's SQLite driver brings an SQLite of its own along; use a Qt whose "
            "driver is built with the system's one";
        QCOMPARE(database().lastError().text(), reason);
        model::project project(1);
        QCOMPARE(storage::project_file::read(m_sFile, project).text(), reason);
    }

    void connectionsAreCached()
    {
        const QSqlDatabase first = database();
        QVERIFY(first.isOpen());
        QCOMPARE(database().connectionName(), first.connectionName());
        QString other;
        std::thread([&] {
            other = database().connectionName();
            zk::ZkSqlDatabase::clearAllDatabases();
        }).join();
        QVERIFY(!other.isEmpty());
        QVERIFY(other != first.connectionName());
        QVERIFY(first.isOpen());
    }
    void clearingClosesThem()
    {
        const QString name = database().connectionName();
        QVERIFY(QSqlDatabase::contains(name));
        zk::ZkSqlDatabase::clearAllDatabases();
        QVERIFY(!QSqlDatabase::contains(name));
        QVERIFY(database().isOpen());
    }
    void aReplacedFileIsSeen()
    {
        QVERIFY(insertParam("g", "k", 1));
        QVERIFY(QFile::remove(m_sFile));
        QVERIFY(!database().isOpen());
        QTest::qWait(20); // file systems tell births apart by milliseconds
        QVERIFY(!storage::project_file::write(m_sFile, *support::projectOf(support::textOf(""))).isValid());
        QCOMPARE(fetch("g").size(), std::size_t(0));
        // The same without a look in between.
        QVERIFY(insertParam("g", "k", 1));
        QTest::qWait(20);
        const QString other = m_folder->filePath("other.korv");
        QVERIFY(!storage::project_file::write(other, *support::projectOf(support::textOf(""))).isValid());
        QVERIFY(QFile::remove(m_sFile));
        QVERIFY(QFile::rename(other, m_sFile));
        QCOMPARE(fetch("g").size(), std::size_t(0));
    }
    void protectedAgainstHostileFiles_data()
    {
        QTest::addColumn<QString>("pragma");
        QTest::addColumn<int>("expected");
        QTest::newRow("schema") << "trusted_schema" << 0;
        QTest::newRow("cells") << "cell_size_check" << 1;
        QTest::newRow("mapping") << "mmap_size" << 0;
    }
    void protectedAgainstHostileFiles()
    {
        QFETCH(QString, pragma);
        QSqlQuery query("PRAGMA " + pragma, database());
        QVERIFY(query.next());
        QTEST(query.value(0).toInt(), "expected");
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::newRow("no name") << ""
                                 << "no project file is named";
        QTest::newRow("missing") << "missing.korv"
                                 << "missing.korv: does not exist; check the name";
        QTest::newRow("folder") << "."
                                << "is a folder, not a project file";
        QTest::newRow("empty") << "empty.korv"
                               << "empty.korv: is empty, not a Korvane project";
        QTest::newRow("text") << "text.korv"
                              << "text.korv: is not a Korvane project file (.korv)";
    }
    void refusals()
    {
        QFETCH(QString, file);
        QFETCH(QString, text);
        support::writeBytes(m_folder->filePath("empty.korv"), "");
        support::writeBytes(m_folder->filePath("text.korv"), "SQLite format 4 is no format of ours");
        const QString path = file.isEmpty() ? QString() : m_folder->filePath(file);
        const bool existed = QFile::exists(path);
        const QSqlDatabase refused = zk::ZkSqlDatabase::getDatabase(path);
        QVERIFY(!refused.isOpen());
        QVERIFY2(refused.lastError().text().endsWith(text), qPrintable(refused.lastError().text()));
        QCOMPARE(QFile::exists(path), existed);
        // Whatever is tried with it fails with that reason.
        list_of_params list;
        QCOMPARE(zk::dao::fetchByQuery(list, zk::ZkSqlQuery(), refused).text(), refused.lastError().text());
        QCOMPARE(zk::dao::deleteByQuery<plugin_params>(zk::ZkSqlQuery(), refused).text(),
                 refused.lastError().text());
        QCOMPARE(zk::dao::insert(list, refused).text(), refused.lastError().text());
        QSqlQuery query(refused);
        QCOMPARE(query.lastError().text(), refused.lastError().text());
        QVERIFY(!query.exec(QStringLiteral("SELECT 1")));
        QVERIFY(!query.next());
        zk::ZkSession session(refused);
        QVERIFY(!session.isValid());
        QCOMPARE(session.end().text(), refused.lastError().text());
    }
    void aFileWithATriggerIsRefused()
    {
        QVERIFY(!QSqlQuery("CREATE TRIGGER evil AFTER DELETE ON t_plugin_params BEGIN DELETE FROM "
                           "t_project; END",
                           database())
                     .lastError()
                     .isValid());
        zk::ZkSqlDatabase::clearAllDatabases();
        QVERIFY(!database().isOpen());
        QVERIFY(database().lastError().text().contains("contains a trigger 'evil'"));
    }
    void theDefaultConnectionFails()
    {
        list_of_params list;
        QVERIFY(zk::dao::fetchByQuery(list, zk::ZkSqlQuery(), QSqlDatabase()).isValid());
        zk::ZkSession session{QSqlDatabase()};
        QVERIFY(!session.isValid());
        QVERIFY(session.end().isValid());
    }

    void valuesKeepTheirTypes()
    {
        const QString quotes = "it's \"quoted\"; DROP TABLE t_plugin_params; -- \u20ac \U0001F600";
        QVERIFY(insertParam("g", "text", quotes));
        QVERIFY(insertParam("g", "number", 5));
        QVERIFY(insertParam("g", "large", qlonglong(1) << 40));
        QVERIFY(insertParam("g", "yes", true));
        QVERIFY(insertParam("g", "no", false));
        QVERIFY(insertParam("g", "empty", QString()));
        QVERIFY(insertParam("g", "digits", "007"));
        QSqlQuery query("SELECT typeof(param_value), param_value FROM t_plugin_params", database());
        QStringList kept;
        while (query.next()) {
            kept.append(query.value(0).toString() + ' ' + query.value(1).toString());
        }
        QCOMPARE(kept, (QStringList{"text " + quotes, "integer 5", "integer 1099511627776", "integer 1",
                                    "integer 0", "text ", "text 007"}));
        const auto params = fetch("g");
        QCOMPARE(params.size(), std::size_t(7));
        QCOMPARE(params[0]->getGuid(), QString("g"));
        QCOMPARE(params[0]->getParamKey(), QString("text"));
        QCOMPARE(params[0]->getParamValue().toString(), quotes);
        QCOMPARE(params[1]->getParamValue().toInt(), 5);
        QVERIFY(params[3]->getParamValue().toBool());
        QVERIFY(!params[4]->getParamValue().toBool());
    }
    void conditionsSelect()
    {
        QVERIFY(insertParam("it's", "k1", 1));
        QVERIFY(insertParam("other", "k2", 2));
        QVERIFY(insertParam("it's", "k3", 3));
        QCOMPARE(fetch("it's").size(), std::size_t(2));
        QVERIFY(!zk::dao::deleteByQuery<plugin_params>(
                     of("it's").whereEqual("t_plugin_params.param_key", "k1"), database())
                     .isValid());
        QCOMPARE(fetch("it's").size(), std::size_t(1));
        QCOMPARE(fetch("it's")[0]->getParamKey(), QString("k3"));
        QCOMPARE(fetch("other").size(), std::size_t(1));
    }
    void aFailedFetchLeavesTheList()
    {
        list_of_params list;
        list.insert(0, std::make_shared<plugin_params>());
        QVERIFY(
            zk::dao::fetchByQuery(list, zk::ZkSqlQuery().whereEqual("t_plugin_params.nothing", 1), database())
                .isValid());
        QCOMPARE(list.count(), 1L);
    }

    void errorsNameTheFile()
    {
        const QSqlDatabase db = database();
        QVERIFY(!QSqlQuery("DROP TABLE t_plugin_params", db).lastError().isValid());
        const QString expected = m_sFile + ": no such table: t_plugin_params";
        list_of_params list;
        QCOMPARE(zk::dao::fetchByQuery(list, zk::ZkSqlQuery(), db).text(), expected);
        QCOMPARE(zk::dao::deleteByQuery<plugin_params>(zk::ZkSqlQuery(), db).text(), expected);
        QCOMPARE(zk::dao::insert(list, db).text(), expected);
    }
    void aSessionCommits()
    {
        {
            zk::ZkSession session(database());
            QVERIFY(session.isValid());
            session.addError(QSqlError());
            QVERIFY(insertParam("g", "k", 1));
        }
        QCOMPARE(fetch("g").size(), std::size_t(1));
    }
    void aSessionWithAnErrorRollsBack()
    {
        const QSqlError first("", "first", QSqlError::StatementError);
        {
            zk::ZkSession session(database());
            QVERIFY(insertParam("g", "k", 1));
            session.addError(first);
            session.addError(QSqlError("", "second", QSqlError::StatementError));
            QVERIFY(!session.isValid());
            QCOMPARE(session.firstError().text(), QString("first"));
            QCOMPARE(session.end().text(), QString("first"));
            QVERIFY(insertParam("g", "after the end", 1));
        }
        QCOMPARE(fetch("g").size(), std::size_t(1));
        QCOMPARE(fetch("g")[0]->getParamKey(), QString("after the end"));
    }
    void aCommitThatFailsIsReported()
    {
        const QString file = m_folder->filePath("keys.db");
        makeDatabase(file, "CREATE TABLE a (id INTEGER PRIMARY KEY)",
                     "CREATE TABLE b (a INTEGER REFERENCES a (id) DEFERRABLE INITIALLY DEFERRED)");
        const QSqlDatabase db = zk::ZkSqlDatabase::getDatabase(file);
        QSqlQuery("PRAGMA foreign_keys = ON", db);
        zk::ZkSession session(db);
        QVERIFY(!QSqlQuery("INSERT INTO b (a) VALUES (5)", db).lastError().isValid());
        QVERIFY(session.isValid());
        const QSqlError error = session.end();
        QVERIFY(error.isValid());
        QVERIFY(error.text().contains("FOREIGN KEY", Qt::CaseInsensitive));
        QSqlQuery count("SELECT count(*) FROM b", db);
        QVERIFY(count.next());
        QCOMPARE(count.value(0).toInt(), 0);
        // The connection is free for another transaction.
        zk::ZkSession next(db);
        QVERIFY(next.isValid());
    }

    void aSessionMeetsAnotherWriterAtItsBegin()
    {
        const auto patience = zk::sqlite::lockPatience();
        zk::sqlite::setLockPatience(std::chrono::milliseconds(200));
        const auto restored = qScopeGuard([patience] { zk::sqlite::setLockPatience(patience); });
        {
            QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
            other.setDatabaseName(m_sFile);
            QVERIFY(other.open());
            QVERIFY(!QSqlQuery("BEGIN IMMEDIATE", other).lastError().isValid());
            zk::ZkSession session(database());
            QVERIFY(!session.isValid());
            QVERIFY(session.end().text().contains("locked"));
            other.close();
        }
        QSqlDatabase::removeDatabase("other");
        QVERIFY(zk::ZkSession(database()).isValid());
    }

    void anotherConnectionDoesNotTakeTheLockAway()
    {
        // The system takes all locks of a process on a file away when the process closes the file once.
        zk::ZkSession session(database());
        QVERIFY(session.isValid());
        model::project project(1);
        QVERIFY(!storage::project_file::read(m_sFile, project).isValid());
        QVERIFY(support::run("sqlite3", {m_sFile, "BEGIN IMMEDIATE"}).err.contains("locked"));
        QVERIFY(!session.end().isValid());
        QCOMPARE(support::run("sqlite3", {m_sFile, "BEGIN IMMEDIATE"}).err, QByteArray());
    }

    void versionsKeepTheirOrder()
    {
        const QDateTime time = QDateTime::fromString("2026-01-02T03:04:05.678Z", Qt::ISODateWithMs);
        insertVersion(time, "b");
        insertVersion(time.addMSecs(-1), "a");
        for (int i = 0; i < 50; ++i) {
            insertVersion(time, QByteArray::number(i));
        }
        list_of_versions list;
        QVERIFY(!zk::dao::fetchByQuery(list, byCreation(), database()).isValid());
        QCOMPARE(list.count(), 52L);
        QCOMPARE(list.getByIndex(0)->getProjectFile(), QByteArray("a"));
        QCOMPARE(list.getByIndex(1)->getProjectFile(), QByteArray("b"));
        for (int i = 0; i < 50; ++i) {
            QCOMPARE(list.getByIndex(i + 2)->getProjectFile(), QByteArray::number(i));
            QCOMPARE(list.getByIndex(i + 2)->getCreationTime(), time);
        }
    }
    void projectFilesAreReadWhenAskedFor()
    {
        insertVersion(QDateTime::currentDateTimeUtc(), "contents");
        list_of_versions list;
        QVERIFY(!zk::dao::fetchByQuery(list, byCreation(), database()).isValid());
        const auto record = list.getByIndex(0);
        zk::ZkSqlDatabase::clearAllDatabases();
        QCOMPARE(record->getProjectFile(), QByteArray("contents"));
        // The record holds no copy: what changes in the database shows.
        QSqlQuery("UPDATE t_project_historic SET project_file = x'414243'", database());
        QCOMPARE(record->getProjectFile(), QByteArray("ABC"));
        QVERIFY(QFile::remove(m_sFile));
        QCOMPARE(record->getProjectFile(), QByteArray());
        record->setProjectFile("own");
        QCOMPARE(record->getProjectFile(), QByteArray("own"));
    }

private:
    /// No record of the kind can be read, removed or stored, for the reason that has `words`.
    template <class R>
    static void failsWith(const QString & words, const QSqlDatabase & database)
    {
        zk::ZkCollection<long, std::shared_ptr<R>> list;
        list.insert(0, std::make_shared<R>());
        for (const QSqlError & error :
             {zk::dao::fetchByQuery(list, zk::ZkSqlQuery(), database),
              zk::dao::deleteByQuery<R>(zk::ZkSqlQuery(), database), zk::dao::insert(list, database)}) {
            QVERIFY2(error.isValid() && error.text().contains(words), qPrintable(error.text()));
        }
        QCOMPARE(list.count(), 1);
    }

    QSqlDatabase database() const { return zk::ZkSqlDatabase::getDatabase(m_sFile); }
    static zk::ZkSqlQuery of(const QString & guid)
    {
        return zk::ZkSqlQuery().whereEqual("t_plugin_params.plugin_guid", guid);
    }
    static zk::ZkSqlQuery byCreation() { return zk::ZkSqlQuery().orderAsc("t_project_historic.dt_creation"); }
    std::vector<std::shared_ptr<plugin_params>> fetch(const QString & guid) const
    {
        list_of_params list;
        const QSqlError error = zk::dao::fetchByQuery(list, of(guid), database());
        if (error.isValid()) {
            qWarning("%s", qUtf8Printable(error.text()));
        }
        return list.values();
    }
    bool insertParam(const QString & guid, const QString & key, const QVariant & value)
    {
        const auto param = std::make_shared<plugin_params>();
        param->setGuid(guid);
        param->setParamKey(key);
        param->setParamValue(value);
        list_of_params list;
        list.insert(0, param);
        return !zk::dao::insert(list, database()).isValid();
    }
    void insertVersion(const QDateTime & time, const QByteArray & contents)
    {
        const auto record = std::make_shared<project_historic>();
        record->setCreationTime(time);
        record->setProjectFile(contents);
        list_of_versions list;
        list.insert(0, record);
        QVERIFY(!zk::dao::insert(list, database()).isValid());
    }
    template <class... Statements>
    static void makeDatabase(const QString & file, const Statements &... statements)
    {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "make");
            db.setDatabaseName(file);
            db.open();
            (QSqlQuery(statements, db), ...);
            db.close();
        }
        QSqlDatabase::removeDatabase("make");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sFile;
};

QTEST_GUILESS_MAIN(tst_database)
#include "tst_database.moc"
