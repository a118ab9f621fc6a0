// What a model can be imported from: SQLite files that are none, are damaged or mean harm, and scripts.

#include "database/server/script_run.h"

#include "app/sqlite_bench.h"
#include "support/full_disk.h"
#include "support/hot_journal.h"
#include "support/project_support.h"

using support::program_result;
using support::runProgram;
using support::storedText;

class tst_import_sources : public support::sqlite_bench
{
    Q_OBJECT

private Q_SLOTS:
    void init() { beginAnew(); }

    void filesThatAreNoDatabase_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // a null one for no file at all
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QByteArray() << "does not exist";
        QTest::newRow("empty") << QByteArray("") << "is empty";
        QTest::newRow("text") << QByteArray("hello, hello, hello, hello") << "is not a SQLite database";
        QTest::newRow("damaged") << QByteArray("damaged") << "is damaged";
    }
    void filesThatAreNoDatabase()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(const QString, reason);
        if (bytes == "damaged") {
            make({"CREATE TABLE a (id INTEGER PRIMARY KEY, t TEXT)", "CREATE TABLE b (id INTEGER)"});
            bytes = support::bytesOf(path("shop.db"));
            bytes.replace(3800, 296, QByteArray(296, '\xff'));
        }
        if (!bytes.isNull()) {
            QVERIFY(support::writeBytes(path("shop.db"), bytes));
        }
        const program_result result = run({});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY2(result.errors.contains(reason.toUtf8()), result.errors.constData());
        QVERIFY(!QFile::exists(m_project));
        QCOMPARE(support::bytesOf(path("shop.db")), bytes);
    }

    void aFolderInThePlaceOfADatabase()
    {
        const program_result result = runProgram({"import", "sqlite:" + path(""), m_project});
        QCOMPARE(result.status, 1);
        QCOMPARE(QString::fromUtf8(result.errors), "sqlite:" + path("") + ": is not a SQLite database\n");
    }

    /// A journal that names a file of the user would have that file deleted.
    void aHostileJournal()
    {
        make({"CREATE TABLE a (id INTEGER PRIMARY KEY)"});
        QVERIFY(support::writeBytes(path("precious"), "mine"));
        QVERIFY(support::writeBytes(path("shop.db-journal"),
                                    QByteArray::fromHex("d9d505f920a163d7") + QByteArray(1000, '\0') +
                                        support::superJournalEnd(path("precious").toUtf8())));
        const program_result result = run({});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QCOMPARE(support::bytesOf(path("precious")), QByteArray("mine"));
    }

    /// What the file brings along is told of, and never run.
    void codeInTheFileIsNotRun()
    {
        make({"CREATE TABLE a (id INTEGER PRIMARY KEY, n INTEGER AS (abs(id)), CHECK (length(id) > 0))",
              "CREATE VIEW endless AS WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
              "SELECT i FROM n",
              "CREATE VIRTUAL TABLE words USING fts5 (t)"});
        const QByteArray told = imported();
        QVERIFY2(told.contains("  words\n    virtual table\n"), told.constData());
        QVERIFY2(told.contains("  endless\n    view endless\n"), told.constData());
        QVERIFY2(told.contains("(entities: 1;"), told.constData());
    }

    void aFullDisk_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::newRow("a new project") << false;
        QTest::newRow("over one") << true;
    }
    /// What was there is still there, and whole; what was not is not.
    void aFullDisk()
    {
        QFETCH(const bool, isThere);
        make({"CREATE TABLE one (id INTEGER PRIMARY KEY)"});
        if (isThere) {
            QCOMPARE(run().status, 0);
        }
        for (int i = 0; i < 300; ++i) {
            make({QStringLiteral("CREATE TABLE more_%1 (id INTEGER PRIMARY KEY, note TEXT)").arg(i)});
        }
        const QByteArray before = support::bytesOf(m_project);
        const QStringList files =
            QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
        program_result full;
        {
            const support::full_disk disk(32 * 1024);
            full = run();
        }
        QCOMPARE(full.status, 1);
        QCOMPARE(full.output, QByteArray());
        QCOMPARE(QString::fromUtf8(full.errors),
                 m_project + ": cannot be read or written (File too large); check the disk\n");
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), files);
        QCOMPARE(support::bytesOf(m_project), before);
        QCOMPARE(QFile::exists(m_project), isThere);
    }

    void aScript()
    {
        QVERIFY(support::writeBytes(path("shop.sql"),
                                    "-- the shop;\nCREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY);\n"
                                    "CREATE TRIGGER t AFTER INSERT ON a BEGIN\n  UPDATE a SET id = 1;\nEND;\n"
                                    "CREATE TABLE b (id INTEGER NOT NULL PRIMARY KEY)"));
        const program_result done =
            runProgram({"import", "ddl:" + path("shop.sql"), "--db", "sqlite", m_project});
        QCOMPARE(done.errors, QByteArray());
        QCOMPARE(done.output, "Without a place in the model, or made otherwise by scripts:\n"
                              "  a\n"
                              "    trigger t\n"
                              "Project 'shop' imported into " +
                                  m_project.toUtf8() + " (entities: 2; without a place in the model: 1)\n");
        const QByteArray before = storedText(m_project);
        QVERIFY(support::writeBytes(path("shop.sql"),
                                    "CREATE TABLE c (id INTEGER);\n\nCREATE TABLES d (id INTEGER);"));
        const program_result wrong =
            runProgram({"import", "ddl:" + path("shop.sql"), "--db", "sqlite", m_project});
        QCOMPARE(wrong.status, 1);
        QCOMPARE(QString::fromUtf8(wrong.errors),
                 path("shop.sql") +
                     ": line 3: SQLite 3.40 refuses the statement: near \"TABLES\": syntax error\n");
        QCOMPARE(storedText(m_project), before);
        const program_result skipped = runProgram(
            {"import", "ddl:" + path("shop.sql"), "--db", "sqlite", "--skip-refused", "-n", m_project});
        QCOMPARE(skipped.status, 0);
        QVERIFY2(
            skipped.output.contains("\n  the database\n    line 3: SQLite 3.40 refuses the statement: near "
                                    "\"TABLES\": syntax error\n"),
            skipped.output.constData());
        const program_result missing =
            runProgram({"import", "ddl:" + path("no.sql"), "--db", "sqlite", m_project});
        QCOMPARE(missing.errors, (path("no.sql") + ": does not exist; check the name\n").toUtf8());
        const program_result unknown =
            runProgram({"import", "ddl:" + path("shop.sql"), "--db", "oracle", m_project});
        QCOMPARE(unknown.errors,
                 QByteArray("oracle: it cannot be run here; sqlite, mariadb and postgresql can\n"));
    }

    void statementsOfScripts_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("statements"); // with their lines
        QTest::newRow("plain") << "sqlite"
                               << "a 1;\nb 2 ;; c" << QStringList{"1 a 1", "2 b 2", "2 c"};
        QTest::newRow("comments") << "postgresql"
                                  << "-- x;\n/* y; */ a; -- z;\nb" << QStringList{"2 a", "3 b"};
        QTest::newRow("quotations") << "postgresql"
                                    << "a 'x;''y' \"z;\"; b E'\\';'; c '\\'; d"
                                    << QStringList{"1 a 'x;''y' \"z;\"", "1 b E'\\';'", "1 c '\\'", "1 d"};
        QTest::newRow("dollars") << "postgresql"
                                 << "a $$ x; $$; b $t$ $$; $t$; c $1"
                                 << QStringList{"1 a $$ x; $$", "1 b $t$ $$; $t$", "1 c $1"};
        QTest::newRow("commands of psql") << "postgresql"
                                          << "\\connect x;\na;\n  \\q\nb" << QStringList{"2 a", "4 b"};
        QTest::newRow("backslashes") << "mariadb"
                                     << "a 'x\\';'; b `\\`; c"
                                     << QStringList{"1 a 'x\\';'", "1 b `\\`", "1 c"};
        QTest::newRow("delimiters") << "mysql"
                                    << "a;\nDELIMITER //\nb ; c//\nd//\ndelimiter ;\ne;"
                                    << QStringList{"1 a", "3 b ; c", "4 d", "6 e"};
        QTest::newRow("conditional comments") << "mariadb"
                                              << "/*!40101 SET a; */;\n# x;\nb--c;\n-- d\n/* e; */"
                                              << QStringList{"1 /*!40101 SET a; */", "3 b--c"};
        QTest::newRow("trigger")
            << "sqlite"
            << "CREATE TRIGGER t AFTER INSERT ON a BEGIN b; SELECT CASE WHEN 1 THEN 2 END; END; c"
            << QStringList{"1 CREATE TRIGGER t AFTER INSERT ON a BEGIN b; SELECT CASE WHEN 1 THEN 2 END; END",
                           "1 c"};
        QTest::newRow("transaction") << "sqlite"
                                     << "BEGIN; a; END;" << QStringList{"1 BEGIN", "1 a", "1 END"};
        QTest::newRow("unended") << "sqlite"
                                 << "a 'x; b" << QStringList{"1 a 'x; b"};
    }
    void statementsOfScripts()
    {
        QFETCH(const QString, database);
        QFETCH(const QString, script);
        QFETCH(const QStringList, statements);
        QStringList found;
        for (const auto & each : database::server::statementsOfScript(script, database)) {
            found << QString::number(each.line) + ' ' + each.text;
        }
        QCOMPARE(found, statements);
    }

    void wrongCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("script without database")
            << QStringList{"ddl:a.sql", "p.korv"}
            << QByteArray(
                   "--db has to say on which database the script runs: sqlite, mariadb or postgresql\n");
        QTest::newRow("URL with database")
            << QStringList{"sqlite:a.db", "p.korv", "--db", "sqlite"}
            << QByteArray("--db and --skip-refused are for scripts; a URL names its kind of database\n");
        QTest::newRow("text with tables")
            << QStringList{"a.json", "p.korv", "--tables", "x"}
            << QByteArray("--tables, --schema, --link-tables, --db and --skip-refused are for databases and "
                          "scripts; 'a.json' is read as a model in text form\n");
        QTest::newRow("link tables") << QStringList{"sqlite:a.db", "p.korv", "--link-tables", "maybe"}
                                     << QByteArray(
                                            "--link-tables is 'relationship' or 'entity', not 'maybe'\n");
        QTest::newRow("unknown kind")
            << QStringList{"oracle://h/d", "p.korv"}
            << QByteArray("it begins with 'oracle'; URLs begin with postgresql, mysql, mariadb or sqlite\n");
    }
    void wrongCommandLines()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QByteArray, error);
        const program_result result = runProgram(QStringList{"import"} + arguments);
        QCOMPARE(result.errors, error);
        QCOMPARE(result.status, 2);
    }
};

QTEST_GUILESS_MAIN(tst_import_sources)
#include "tst_import_sources.moc"
