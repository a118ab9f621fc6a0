// What the command verify proves, and how it tells it.

#include "app/verify_bench.h"

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QXmlStreamReader>

#include <csignal>

using support::program_result;
using support::runProgram;

namespace {

const char * const One = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                         "{'id': 10, 'name': 'id', ID},"
                         "{'id': 11, 'name': 'duration', 'type': 'int', 'index': true},"
                         "{'id': 12, 'name': 'note', 'type': 'QString'}]}";
const char * const Renamed = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                             "{'id': 10, 'name': 'id', ID},"
                             "{'id': 11, 'name': 'duration', 'type': 'int', 'index': true},"
                             "{'id': 12, 'name': 'note', 'type': 'QString'}]}";
const char * const Plain = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                           "{'id': 10, 'name': 'id', ID},"
                           "{'id': 11, 'name': 'duration', 'type': 'int'},"
                           "{'id': 12, 'name': 'note', 'type': 'QString'}]}";
const char * const PlainRenamed = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                                  "{'id': 10, 'name': 'id', ID},"
                                  "{'id': 11, 'name': 'length', 'type': 'int'},"
                                  "{'id': 12, 'name': 'note', 'type': 'QString'}]}";
const char * const Refused = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                             "{'id': 10, 'name': 'id', ID},"
                             "{'id': 11, 'name': 'duration', 'type': 'int', 'index': true},"
                             "{'id': 12, 'name': 'note', 'type': 'QString'},"
                             "{'id': 13, 'name': 'fee', 'type': 'int', 'unique': true}]}";

} // namespace

class tst_verify : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<verify_bench>();
        m_project = m_bench->project();
    }

    void aRename()
    {
        history({One, Renamed});
        const program_result result = runProgram({"verify", m_project});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(
            result.output,
            QByteArray("database  server         full runs  history runs  history = full  full = foretold  "
                       "rows kept  refusals foretold\n"
                       "sqlite    SQLite 3.40.1  5 of 5     9 of 9        1 foretold      yes              "
                       "5 of 5     0 of 0\n"
                       "\n"
                       "sqlite\n"
                       "  now: names of t_concert (duration): a new database has "
                       "idx_t_concert_duration, found idx_t_gig_duration (foretold by KV415)\n"
                       "\n"
                       "ok: all that was refused, differs or was lost has been foretold\n"));
        QCOMPARE(result.status, 0);
    }
    void aRefusal()
    {
        history({One, Renamed, Refused});
        const QJsonObject run = runOf({});
        QCOMPARE(run["chain"]["refused"].toArray().size(), 1);
        const QJsonObject refused = run["chain"]["refused"][0].toObject();
        QCOMPARE(refused["statement"]["text"].toString(),
                 "ALTER TABLE t_concert ADD COLUMN fee INTEGER UNIQUE;");
        QCOMPARE(refused["statement"]["line"].toInt(), 3);
        QCOMPARE(refused["code"].toString(), "SQLITE_ERROR");
        QCOMPARE(refused["error"].toString(), "Cannot add a UNIQUE column");
        QCOMPARE(refused["foretoldBy"].toString(), "KV202");
        QCOMPARE(refused["when"].toString(), "always");
        // Counted with values, with nulls and without rows.
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 3}, {"foretold", 3}, {"false", 0}}));
        QCOMPARE(run["ok"].toBool(), true);
        QCOMPARE(run["chainEqualsFull"]["equal"].toBool(), false);
        QStringList objects;
        for (const QJsonValue & each : run["chainEqualsFull"]["differences"].toArray()) {
            QVERIFY(each["explainedBy"].isString());
            objects << each["object"].toString();
        }
        QCOMPARE(objects, QStringList({"names of t_concert (duration)", "column t_concert.fee",
                                       "unique of t_concert (fee)"}));
        // Three values, and nulls in the two columns that allow one.
        QCOMPARE(run["rows"]["values"].toInt(), 5);
        QCOMPARE(run["rows"]["kept"].toInt(), 5);
    }
    void whatNobodyForetold()
    {
        history({One, Renamed});
        // A statement that the check does not know, from a custom script.
        QVERIFY(support::writeBytes(
            path("own.js"),
            "function exportStep(project, entity, property, enumeration, p) {"
            " return p.action === 'RENAME_TABLE' ? p.default_value + ' WITH CARE;' : undefined; }\n"));
        const program_result result = runProgram({"verify", m_project, "--custom-script", path("own.js")});
        QCOMPARE(result.status, 3);
        QVERIFY2(result.output.contains("(NOT FORETOLD)\n"), result.output.constData());
        QVERIFY2(result.output.endsWith("not ok: see what was NOT FORETOLD above\n"),
                 result.output.constData());
        const program_result junit =
            runProgram({"verify", m_project, "--custom-script", path("own.js"), "--format", "junit"});
        QCOMPARE(junit.status, 3);
        QVERIFY2(junit.output.contains("<failure message=\""), junit.output.constData());
    }
    void whatDiffersAndNobodyForetold()
    {
        history({Plain, PlainRenamed});
        // What the check knows nothing of: values that go, and a column that comes.
        QVERIFY(support::writeBytes(path("own.js"),
                                    "function exportStep(project, entity, property, enumeration, p) {"
                                    " return p.action !== 'RENAME_COLUMN' ? undefined : 'ALTER TABLE t_gig "
                                    "RENAME COLUMN duration TO length;"
                                    "\\nUPDATE t_gig SET note = NULL;\\nALTER TABLE t_gig ADD COLUMN more "
                                    "TEXT CHECK (1 = 1);'; }\n"));
        const QStringList command = {"verify", m_project, "--custom-script", path("own.js"), "--format"};
        const program_result text = runProgram(command + QStringList{"text"});
        QCOMPARE(text.status, 3);
        QCOMPARE(
            text.output,
            QByteArray(
                "database  server         full runs  history runs  history = full      full = foretold     "
                "rows kept  refusals foretold\n"
                "sqlite    SQLite 3.40.1  4 of 4     10 of 10      no, 1 not foretold  no, 1 not foretold  "
                "4 of 5     0 of 0\n"
                "\n"
                "sqlite\n"
                "  now: column t_gig.more: a new database has nothing, found TEXT (NOT FORETOLD)\n"
                "  now: after the history, column t_gig.more: foretold was nothing, found TEXT (NOT "
                "FORETOLD)\n"
                "  property gig.note: the value \"v1003\" put in after v1 is not there (NOT FORETOLD)\n"
                "\n"
                "not ok: see what was NOT FORETOLD above\n"));
        const program_result markdown = runProgram(command + QStringList{"markdown"});
        QCOMPARE(markdown.status, 3);
        QVERIFY2(
            markdown.output.contains("\n\nsqlite:\n\n- `now: column t_gig.more: a new database has nothing, "
                                     "found TEXT (NOT FORETOLD)`\n- `now: after the history, "),
            markdown.output.constData());
        const program_result junit = runProgram(command + QStringList{"junit"});
        QCOMPARE(junit.status, 3);
        QCOMPARE(verify_bench::failuresIn(junit.output),
                 QStringList(
                     {"full = foretold: now: after the history, column t_gig.more: expected '', found 'TEXT'",
                      "history = full: now: column t_gig.more: expected '', found 'TEXT'",
                      "rows: property gig.note: the value 'v1003' is not there"}));
    }
    void aDatabaseThatIsLeftOutInJunit()
    {
        history({One});
        const program_result result =
            runProgram({"verify", m_project, "--db", "oracle", "--skip-missing", "--format", "junit"});
        QCOMPARE(result.status, 0);
        QVERIFY2(
            result.output.contains("<testsuite name=\"oracle\" tests=\"1\" failures=\"0\" skipped=\"1\">"),
            result.output.constData());
        QVERIFY2(
            result.output.contains("<testcase classname=\"korvane.oracle\" name=\"server\">\n            "
                                   "<skipped message=\"it cannot be run here; sqlite, mariadb and postgresql "
                                   "can\"/>"),
            result.output.constData());
    }
    void aReportThatCannotBeWritten()
    {
        history({One});
        const QString file = path("none/verify.xml");
        const program_result result = runProgram({"verify", m_project, "--format", "junit", "-o", file});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors),
                 file + ": cannot be written (No such file or directory)\n");
    }
    /// A person sees how far the work is, and in the end only the table.
    void atATerminal()
    {
        history({One, Renamed});
        const QByteArray shown = support::runInTerminal({"verify", m_project}, {}, {}).output;
        const QByteArray counts = "\r\033[Ksqlite: 1 of 6 scripts\r\033[Ksqlite: 2 of 6 scripts";
        QVERIFY2(shown.contains(counts), shown.constData());
        QVERIFY2(shown.contains("\r\033[Ksqlite: 6 of 6 scripts\r\033[Kdatabase  server  "),
                 shown.constData());
        // A refusal takes another run of the history.
        history({Refused});
        const QByteArray more = support::runInTerminal({"verify", m_project}, {}, {}).output;
        QVERIFY2(more.contains("\r\033[Ksqlite: 8 of 8 scripts\r\033[Kdatabase  server  "), more.constData());
    }
    void fromAVersionOn()
    {
        history({One, Renamed, Refused});
        const QJsonObject run = runOf({"--from", "now"});
        QCOMPARE(run["chain"]["statements"].toInt(), 4);
        QCOMPARE(run["chain"]["refused"].toArray().size(), 1);
        for (const QJsonValue & each : run["chainEqualsFull"]["differences"].toArray()) {
            QCOMPARE(each["version"].toString(), "now");
        }
        const program_result none = runProgram({"verify", m_project, "--from", "v9"});
        QCOMPARE(none.status, 1);
        QCOMPARE(QString::fromUtf8(none.errors), m_project + ": v9: the project has 2 versions\n");
    }
    void aTextForm()
    {
        QVERIFY(support::writeBytes(path("shop.json"), verify_bench::text(One)));
        const program_result result = runProgram({"verify", path("shop.json")});
        QCOMPARE(result.status, 0);
        QVERIFY2(
            result.output.contains("\nsqlite    SQLite 3.40.1  5 of 5     -             -               yes "
                                   "             -          0 of 0\n"),
            result.output.constData());
    }
    void asJunit()
    {
        history({One, Renamed});
        const program_result result =
            runProgram({"verify", m_project, "--format", "junit", "-o", path("verify.xml")});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, QByteArray());
        QXmlStreamReader xml(support::bytesOf(path("verify.xml")));
        QStringList names;
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement) {
                names << (xml.name().toString() + ' ' + xml.attributes().value("name").toString()).trimmed();
            }
        }
        QVERIFY(!xml.hasError());
        QCOMPARE(names, QStringList({"testsuites korvane verify shop", "testsuite sqlite",
                                     "testcase full = foretold", "testcase history = full", "testcase rows",
                                     "testcase shop_sqlite_db_schema_full.sql",
                                     "testcase shop_sqlite_db_schema_v1.sql",
                                     "testcase shop_sqlite_db_schema_v1_to_v2.sql"}));
    }
    /// What is no more than a note does not bury the rest; programs are told each.
    void columnsInAnotherOrder()
    {
        QStringList before;
        QStringList now;
        for (int i = 1; i <= 12; ++i) {
            const QString entity =
                QStringLiteral("{'id': %1, 'name': 't%1', 'properties': [{'id': %2, 'name': 'id', ID}, "
                               "%3{'id': %4, 'name': 'last', 'type': 'int'}]}");
            const QString more = QStringLiteral("{'id': %1, 'name': 'more', 'type': 'int'}, ").arg(300 + i);
            before += entity.arg(i).arg(100 + i).arg(QString()).arg(200 + i);
            now += entity.arg(i).arg(100 + i).arg(more).arg(200 + i);
        }
        const QByteArray first = before.join(QLatin1Char(',')).toUtf8();
        const QByteArray second = now.join(QLatin1Char(',')).toUtf8();
        history({first.constData(), second.constData()});
        const program_result result = runProgram({"verify", m_project});
        QVERIFY2(
            result.output.contains(
                "\n\nsqlite\n"
                "  columns stand in another order than in a new database in 12 tables (foretold by KV416): "
                "t1, t10, t11, t12, t2, t3, t4, t5, t6, t7 and 2 more; --json tells each\n"
                "\n"
                "ok: "),
            result.output.constData());
        const QJsonObject run = runOf({});
        QCOMPARE(run["chainEqualsFull"]["differences"].toArray().size(), 12);
        const program_result some = runProgram({"verify", m_project, "--format", "markdown"});
        QCOMPARE(some.output.count("- `columns stand in another order"), 1);
    }
    void asMarkdown()
    {
        history({One});
        const program_result result = runProgram({"verify", m_project, "--format", "markdown"});
        QCOMPARE(
            result.output,
            QByteArray("| database | server | full runs | history runs | history = full | full = foretold | "
                       "rows kept | refusals foretold |\n"
                       "| --- | --- | --- | --- | --- | --- | --- | --- |\n"
                       "| sqlite | SQLite 3.40.1 | 5 of 5 | - | - | yes | - | 0 of 0 |\n"
                       "\n"
                       "ok: all that was refused, differs or was lost has been foretold\n"));
    }
    /// What a database says is shown as it says it.
    void graveAccentsInMarkdown()
    {
        history({One});
        const program_result result =
            runProgram(QStringList{"verify", m_project, "--format", "markdown"} +
                       m_bench->ownScript("CREATE_TABLE", "'CREATE TABLE t_gig (`a``b;'"));
        QVERIFY2(
            result.output.contains(
                "\n- ``` shop_sqlite_db_schema_full.sql line 3: refused, SQLITE_ERROR unrecognized token: "
                "\"`a``b;\" (foretold by KV108) ```\n"),
            result.output.constData());
    }
    void whatCannotBeRun()
    {
        history({One});
        const program_result result = runProgram({"verify", m_project, "--db", "sqlite,oracle"});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors,
                 QByteArray("oracle: it cannot be run here; sqlite, mariadb and postgresql can "
                            "(--skip-missing leaves it out)\n"));
        QVERIFY(result.output.contains("\nsqlite    SQLite"));
        const program_result skipped = runProgram({"verify", m_project, "--db", "oracle", "--skip-missing"});
        QCOMPARE(skipped.status, 0);
        QVERIFY(skipped.output.contains("\noracle    not run\n"));
        QVERIFY(support::writeBytes(
            path("verify.json"),
            runProgram({"verify", m_project, "--db", "oracle", "--skip-missing", "--json"}).output));
        QCOMPARE(support::schemaErrors("verify.schema.json", {path("verify.json")}), QByteArray());
    }
    void aServerThatIsNotInstalled()
    {
        history({One});
        const program_result result =
            runProgram({"verify", m_project, "--db", "mariadb"}, {{"PATH", path("nothing")}});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, QByteArray("mariadb: MariaDB is not installed; the package mariadb-server "
                                           "brings it (--skip-missing leaves it out)\n"));
    }
    /// Of the many lines that its programs write the one is told that says what is wrong.
    void aServerThatDoesNotStart_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("reason");
        QTest::newRow("an error among others")
            << "creating files\n2026-11-22 [1] FATAL:  No space left on device\nFATAL: removing files\n"
            << "2026-11-22 [1] FATAL: No space left on device";
        QTest::newRow("no word of an error") << "creating files\nremoving them\n\n"
                                             << "removing them";
        QTest::newRow("a long line") << "error: " + QString(500, 'x') << "error: " + QString(192, 'x') + u'…';
        QTest::newRow("nothing") << ""
                                 << "it says nothing";
    }
    void aServerThatDoesNotStart()
    {
        QFETCH(const QString, words);
        QFETCH(const QString, reason);
        history({One});
        const QString program = path("initdb");
        QVERIFY(support::writeBytes(path("words"), words.toUtf8()));
        QVERIFY(support::writeBytes(program, "#!/bin/sh\ncat " + path("words").toUtf8() + "\nexit 1\n"));
        QVERIFY(QFile::setPermissions(program, QFile::Permissions(0x7755)));
        QVERIFY(QFile::setPermissions(m_bench->folder().path(), QFile::Permissions(0x7755)));
        const QString folders = m_bench->folder().path() + u':' + qEnvironmentVariable("PATH");
        // One that is installed is not missing.
        for (const char * const option : {"--no-custom-script", "--skip-missing"}) {
            const program_result result =
                runProgram({"verify", m_project, "--db", "postgresql", option}, {{"PATH", folders}});
            if (result.errors.contains("PostgreSQL is not installed")) {
                QSKIP("PostgreSQL is not installed");
            }
            QCOMPARE(result.status, 1);
            QCOMPARE(result.output, QByteArray());
            QCOMPARE(QString::fromUtf8(result.errors), "postgresql: " + program + " fails: " + reason + '\n');
        }
    }
    void nothingIsLeftBehind()
    {
        history({One, Renamed});
        QVERIFY(QDir().mkpath(path("tmp")));
        QFile::setPermissions(path("tmp"), QFile::Permissions(0x7777));
        QFile::setPermissions(m_bench->folder().path(), QFile::Permissions(0x7755));
        const program_result result = runProgram(
            {"verify", m_project, "--db", "all", "--skip-missing", "--json"}, {{"TMPDIR", path("tmp")}});
        QVERIFY2(result.status == 0, result.errors.constData());
        QCOMPARE(serverFolders(), QStringList());
    }
    void endedByASignal_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("isOrderly");
        for (const char * const command : {"verify", "import"}) {
            const auto row = [command](const char * what) -> QTestData & {
                return QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(command, what)))
                       << QString(command);
            };
            row("Ctrl-C") << SIGINT << true;
            row("terminated") << SIGTERM << true;
            row("killed") << SIGKILL << false;
        }
    }
    void endedByASignal()
    {
        QFETCH(const QString, command);
        QFETCH(const int, signal);
        QFETCH(const bool, isOrderly);
        if (QStandardPaths::findExecutable("mariadbd", {"/usr/sbin"}).isEmpty()) {
            QSKIP("MariaDB is not installed");
        }
        // Many tables, so that the server is there for a while.
        QByteArray entities;
        for (int i = 1; i <= 500; ++i) {
            entities +=
                (i == 1 ? "" : ", ") + QByteArray("{'id': %1, 'name': 'e%1', 'properties': [{'id': %1, "
                                                  "'name': 'id', ID}]}")
                                           .replace("%1", QByteArray::number(i));
        }
        history({entities.constData()});
        QVERIFY(QDir().mkpath(path("tmp")));
        QFile::setPermissions(path("tmp"), QFile::Permissions(0x7777));
        QFile::setPermissions(m_bench->folder().path(), QFile::Permissions(0x7755));
        QStringList arguments = {"verify", m_project, "--db", "mariadb"};
        if (command == "import") {
            // One table made and dropped again, often.
            QVERIFY(support::writeBytes(
                path("new.sql"), QByteArray("CREATE TABLE t (id INTEGER);\nDROP TABLE t;\n").repeated(500) +
                                     "CREATE TABLE t (id INTEGER);\n"));
            arguments = QStringList{"import", "ddl:" + path("new.sql"), "--db", "mariadb", path("new.korv")};
        }
        const QStringList before = QDir(m_bench->folder().path()).entryList(QDir::Files);
        QProcess process;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert("TMPDIR", path("tmp"));
        process.setProcessEnvironment(variables);
        process.start(KORVANE_PROGRAM, arguments);
        QTRY_COMPARE_WITH_TIMEOUT(serverFolders().size(), 1, 20000);
        const QString folder = path("tmp/") + serverFolders().constFirst();
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder + "/pid"), 30000);
        QFile pidFile(folder + "/pid");
        QVERIFY(pidFile.open(QIODevice::ReadOnly));
        const pid_t server = pidFile.readAll().trimmed().toInt();
        ::kill(static_cast<pid_t>(process.processId()), signal);
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QTRY_VERIFY_WITH_TIMEOUT(::kill(server, 0) != 0, 30000);
        QCOMPARE(QDir(m_bench->folder().path()).entryList(QDir::Files), before);
        if (isOrderly) {
            QCOMPARE(serverFolders(), QStringList());
            return;
        }
        // What a killed program left goes with the next one.
        QCOMPARE(serverFolders().size(), 1);
        QCOMPARE(runProgram(arguments, {{"TMPDIR", path("tmp")}}).status, 0);
        QCOMPARE(serverFolders(), QStringList());
    }
    void badInput_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("format")
            << QStringList{"--format", "xml"}
            << QByteArray("'xml' is not a value of --format; it takes text, json, junit, markdown\n");
        QTest::newRow("version") << QStringList{"--from", "2"}
                                 << QByteArray(
                                        "'2' is not a version; versions are v1, v2 … as 'korvane log' lists "
                                        "them, and now for the state of the project\n");
        QTest::newRow("database")
            << QStringList{"--db", "mariab"}
            << QByteArray("'mariab' is not a database; they are generic, sqlite, mysql, mariadb, postgresql, "
                          "oracle, mssqlserver, all (did you mean mariadb?)\n");
    }
    void badInput()
    {
        QFETCH(const QStringList, options);
        QFETCH(const QByteArray, reason);
        const program_result result = runProgram(QStringList{"verify", m_project} + options);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors, reason);
    }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_bench->path(name); }
    void history(const QList<const char *> & versions) const { m_bench->history(versions); }
    [[nodiscard]] QJsonObject runOf(const QStringList & options) const { return m_bench->runOf(options); }
    [[nodiscard]] QStringList serverFolders() const
    {
        return QDir(path("tmp")).entryList({"kv_*"}, QDir::Dirs);
    }
    std::unique_ptr<verify_bench> m_bench;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_verify)

#include "tst_verify.moc"
