// What lies beside a project file is looked at before SQLite may open it.

#include "support/hot_journal.h"

#include "storage/history.h"
#include "zk/zk_sql_database.h"

#include <QElapsedTimer>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using support::bytesOf;
using support::writeBytes;

class tst_hostile_journals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sFile = path("shop.korv");
        QByteArray entities;
        for (int i = 0; i < 300; ++i) {
            entities += (i > 0 ? ", " : "") + QByteArray("{\"name\": \"e") + QByteArray::number(i) + "\"}";
        }
        QVERIFY(
            !storage::project_file::write(m_sFile, *support::projectOf(support::textOf(entities))).isValid());
        QVERIFY(writeBytes(path("victim"), "of the user"));
        QVERIFY(writeBytes(path("shop.json"), support::textOf("")));
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void aWriterThatWasKilledIsRolledBack()
    {
        const QByteArray text = support::storedText(m_sFile);
        const support::interrupted_database killed = support::interruptedWriter(m_sFile);
        QVERIFY(killed.journal.startsWith(QByteArray::fromHex("d9d505f920a163d7")));
        QVERIFY(killed.bytes.size() > bytesOf(m_sFile).size());
        QVERIFY(writeBytes(m_sFile, killed.bytes));
        QVERIFY(writeBytes(m_sFile + "-journal", killed.journal));
        QCOMPARE(support::storedText(m_sFile), text);
        QVERIFY(!QFile::exists(m_sFile + "-journal"));
    }

    void noJournalNamesAnotherFile_data()
    {
        QTest::addColumn<bool>("isNamed");
        QTest::addColumn<bool>("isChecked");
        QTest::newRow("as SQLite writes it") << true << true;
        QTest::newRow("with a wrong sum") << true << false;
        QTest::newRow("with a name of no length") << false << true;
    }
    void noJournalNamesAnotherFile()
    {
        QFETCH(bool, isNamed);
        QFETCH(bool, isChecked);
        const QByteArray name = isNamed ? path("victim").toUtf8() : QByteArray();
        const support::interrupted_database killed = support::interruptedWriter(m_sFile);
        const QByteArray journal = killed.journal + support::superJournalEnd(name, isChecked);
        QVERIFY(writeBytes(m_sFile, killed.bytes));
        QVERIFY(writeBytes(m_sFile + "-journal", journal));
        refusedEverywhere("-journal: is a journal that names another file, which opening the project would "
                          "delete; korvane makes no such journal. Remove it if you do not know where it "
                          "comes from, and try again");
        QCOMPARE(bytesOf(path("victim")), QByteArray("of the user"));
        QCOMPARE(bytesOf(m_sFile), killed.bytes);
        QCOMPARE(bytesOf(m_sFile + "-journal"), journal);
    }
    void throughALinkTheJournalOfTheFileCounts()
    {
        const support::interrupted_database killed = support::interruptedWriter(m_sFile);
        QVERIFY(writeBytes(m_sFile, killed.bytes));
        QVERIFY(writeBytes(m_sFile + "-journal",
                           killed.journal + support::superJournalEnd(path("victim").toUtf8())));
        QVERIFY(QDir(m_folder->path()).mkdir("other"));
        const QString link = path("other/link.korv");
        QVERIFY(QFile::link(m_sFile, link));
        model::project project(1);
        QVERIFY(storage::project_file::read(link, project).text().startsWith(m_sFile + "-journal: is a "));
        QCOMPARE(bytesOf(path("victim")), QByteArray("of the user"));
    }
    void journalThatCannotBeRead()
    {
        const QString journal = m_sFile + "-journal";
        QVERIFY(writeBytes(journal, QByteArray(1024, '\0')));
        QVERIFY(QFile::setPermissions(journal, {}));
        // Root reads everything, and somebody else needs all but the journal.
        const QFile::Permissions all(0x7777);
        QVERIFY(QFile::setPermissions(m_sFile, all));
        QVERIFY(QFile::setPermissions(QFileInfo(m_sFile).path(), all));
        const uid_t user = ::geteuid();
        QVERIFY(user != 0 || ::seteuid(65534) == 0);
        model::project project(1);
        const QString told = storage::project_file::read(m_sFile, project).text();
        QCOMPARE(::seteuid(user), 0);
        QCOMPARE(told, journal + ": cannot be read (Permission denied); check its permissions");
    }

    void harmlessJournals_data()
    {
        QTest::addColumn<QByteArray>("journal");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("zeros") << QByteArray(1024, '\0');
        QTest::newRow("cut after the magic") << QByteArray::fromHex("d9d505f920a163d7");
        QTest::newRow("cut in the header") << QByteArray::fromHex("d9d505f920a163d700000001");
    }
    void harmlessJournals()
    {
        QFETCH(QByteArray, journal);
        const QByteArray text = support::storedText(m_sFile);
        QVERIFY(writeBytes(m_sFile + "-journal", journal));
        QCOMPARE(support::storedText(m_sFile), text);
        int number = 0;
        QCOMPARE(storage::history::tag(m_sFile, "x", number).text(), QString());
        QCOMPARE(support::storedText(m_sFile), text);
    }

    void whatIsNoFileIsNotOpened_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("kind");
        for (const char * const suffix : {"-journal", "-wal", "-shm"}) {
            for (const char * const kind : {"a symbolic link", "a named pipe", "a folder"}) {
                QTest::addRow("%s: %s", suffix, kind) << QString(suffix) << QString(kind);
            }
        }
    }
    void whatIsNoFileIsNotOpened()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, kind);
        const QString name = m_sFile + suffix;
        if (kind == "a folder") {
            QVERIFY(QDir().mkdir(name));
        } else if (kind == "a named pipe") {
            QCOMPARE(mkfifo(QFile::encodeName(name).constData(), 0600), 0);
        } else {
            QVERIFY(QFile::link(path("victim"), name));
        }
        refusedEverywhere(suffix + ": is " + kind +
                          ", where only a journal of the project may be; move it away and try again");
        QCOMPARE(bytesOf(path("victim")), QByteArray("of the user"));
        QVERIFY(QFileInfo(name).isSymLink() || QFileInfo::exists(name));
    }
    void aLogIsNotTakenForTheNewestContents()
    {
        const QByteArray before = bytesOf(m_sFile);
        {
            // A true one, of a copy that was changed.
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "log");
            database.setDatabaseName(path("copy.korv"));
            QVERIFY(QFile::copy(m_sFile, path("copy.korv")));
            QVERIFY(database.open());
            for (const char * const statement :
                 {"PRAGMA journal_mode = WAL", "UPDATE t_project SET name = 'other'"}) {
                QVERIFY(!QSqlQuery(QString(statement), database).lastError().isValid());
            }
            QVERIFY(QFile::copy(path("copy.korv-wal"), m_sFile + "-wal"));
            database.close();
        }
        QSqlDatabase::removeDatabase("log");
        const QByteArray log = bytesOf(m_sFile + "-wal");
        QVERIFY(!log.isEmpty());
        refusedEverywhere("-wal: is a write-ahead log, which this project does not use but would take for "
                          "its newest contents; move it away and try again");
        QCOMPARE(bytesOf(m_sFile), before);
        QCOMPARE(bytesOf(m_sFile + "-wal"), log);
    }
    void aProjectWithALogOfItsOwn()
    {
        // Another program has changed how the project is kept; its log is a part of it.
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "log");
            database.setDatabaseName(m_sFile);
            QVERIFY(database.open());
            for (const char * const statement :
                 {"PRAGMA journal_mode = WAL", "UPDATE t_project SET name = 'other'"}) {
                QVERIFY(!QSqlQuery(QString(statement), database).lastError().isValid());
            }
            QVERIFY(QFile::exists(m_sFile + "-wal"));
            QVERIFY(support::storedText(m_sFile).contains("\"name\": \"other\""));
            database.close();
        }
        QSqlDatabase::removeDatabase("log");
    }
    void theJournalOfAnotherDatabaseBesideAnEmptyFile()
    {
        const support::interrupted_database killed = support::interruptedWriter(m_sFile);
        QVERIFY(writeBytes(m_sFile, ""));
        QVERIFY(writeBytes(m_sFile + "-journal", killed.journal));
        QCOMPARE(storage::project_file::write(m_sFile, *support::projectOf(support::textOf(""))).text(),
                 m_sFile + "-journal: is the journal of another database, which the project would destroy; "
                           "move it away and try again");
        QCOMPARE(bytesOf(m_sFile + "-journal"), killed.journal);
        QCOMPARE(bytesOf(m_sFile), QByteArray());
    }
    void anEmptyFileWhoseWriterWasKilled_data()
    {
        QTest::addColumn<int>("written");
        QTest::newRow("before its first page") << 0;
        QTest::newRow("after its first page") << 4096;
    }
    void anEmptyFileWhoseWriterWasKilled()
    {
        // What is there when a process that fills an empty file ends in the middle: the journal says that
        // there were no pages before.
        QFETCH(int, written);
        const QByteArray first = bytesOf(m_sFile).left(written);
        QByteArray journal = support::interruptedWriter(m_sFile).journal.left(512);
        journal.replace(8, 4, QByteArray(4, '\0'));  // holds no pages
        journal.replace(16, 4, QByteArray(4, '\0')); // of a database without any
        QVERIFY(writeBytes(m_sFile, first));
        QVERIFY(writeBytes(m_sFile + "-journal", journal));
        const auto project = support::projectOf(support::textOf(""));
        QCOMPARE(storage::project_file::write(m_sFile, *project).text(), QString());
        QCOMPARE(support::storedText(m_sFile), storage::text_form::write(*project));
        QVERIFY(!QFile::exists(m_sFile + "-journal"));
    }

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }

    /// Every way of opening the project fails with that line, soon.
    void refusedEverywhere(const QString & end)
    {
        const QString expected = m_sFile + end;
        QElapsedTimer timer;
        timer.start();
        model::project project(1);
        QCOMPARE(storage::project_file::read(m_sFile, project).text(), expected);
        QCOMPARE(storage::project_file::write(m_sFile, *support::projectOf(support::textOf(""))).text(),
                 expected);
        int number = 0;
        QCOMPARE(storage::history::tag(m_sFile, "x", number).text(), expected);
        QList<storage::history::version> versions;
        QCOMPARE(storage::history::list(m_sFile, versions).text(), expected);
        QCOMPARE(zk::ZkSqlDatabase::getDatabase(m_sFile).lastError().text(), expected);
        const QList<QStringList> commands = {{"dump", m_sFile},
                                             {"log", m_sFile},
                                             {"tag", m_sFile},
                                             {"import", path("shop.json"), m_sFile},
                                             {"export", m_sFile, "-y"}};
        for (const QStringList & command : commands) {
            const support::run_result result = support::runKorvane(command);
            QCOMPARE(result.status, 1);
            QCOMPARE(result.err, expected.toUtf8() + '\n');
            QCOMPARE(result.out, QByteArray());
        }
        QVERIFY(timer.elapsed() < 20000);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sFile;
};

QTEST_GUILESS_MAIN(tst_hostile_journals)
#include "tst_hostile_journals.moc"
