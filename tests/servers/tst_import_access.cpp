// Who may read what of a server, how passwords come and where they stay, and what is told when a server goes.

#include "servers/import_bench.h"

#include <QDir>
#include <QProcess>

using servers::server_of_somebody;
using support::program_result;
using support::runProgram;
using support::storedText;

class tst_import_access : public servers::import_bench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { startServers(); }
    void init() { beginAnew(); }

    void anotherSchema()
    {
        server_of_somebody & server = chosen("postgresql");
        createDatabase(server, "schemas");
        const QString url = server.url("ann", "schemas");
        const auto refusal = [&](const QStringList & options) {
            const program_result result = runProgram(QStringList{"import", url, m_project} + options);
            return result.status == 1 ? QString::fromUtf8(result.errors) : QString();
        };
        const QString shown = "postgresql://ann@" + server.socketShown() + "/schemas: ";
        QCOMPARE(refusal({}), shown + "it has no tables\n");
        execute(server, "schemas",
                {"CREATE SCHEMA \"My shop\"", "CREATE TYPE \"My shop\".size AS ENUM ('s', 'l')",
                 "CREATE TABLE \"My shop\".shirt (id BIGSERIAL PRIMARY KEY, s \"My shop\".size)"});
        QCOMPARE(refusal({}),
                 shown + "there is no table in schema 'public'; --schema takes one with tables: My shop\n");
        QCOMPARE(refusal({"--schema", "shop"}),
                 shown + "there is no schema 'shop'; --schema takes one with tables: My shop\n");
        (void)importFrom(server, "schemas", {"--schema", "My shop"});
        QVERIFY(storedText(m_project).contains("\"forceSqlType\": \"size\""));
    }

    void passwords_data() { addServers(); }
    void passwords()
    {
        server_of_somebody & server = chosen();
        createDatabase(server, "guarded");
        const bool isPostgresql = server.key() == "postgresql";
        execute(server, "guarded",
                {"CREATE TABLE mine (id BIGINT NOT NULL PRIMARY KEY)",
                 isPostgresql ? "CREATE ROLE bob LOGIN PASSWORD 'se:same'"
                              : "CREATE USER bob@localhost IDENTIFIED BY 'se:same'"});
        if (!isPostgresql) {
            execute(server, "guarded", {"GRANT SELECT ON guarded.* TO bob@localhost"});
        }
        const program_result wrong = runProgram({"import", server.url("bob:wr%40ng", "guarded"), m_project});
        QCOMPARE(wrong.status, 1);
        QCOMPARE(wrong.errors.count('\n'), 1);
        QVERIFY2(!wrong.errors.contains("wr@ng") && !wrong.errors.contains("wr%40ng"),
                 wrong.errors.constData());
        QVERIFY2(wrong.errors.contains(isPostgresql ? "password authentication failed for user \"bob\""
                                                    : "Access denied for user 'bob'@'localhost'"),
                 wrong.errors.constData());
        QVERIFY(!QFile::exists(m_project));

        const program_result right =
            runProgram({"import", server.url("bob:se%3Asame", "guarded"), m_project});
        QCOMPARE(right.errors, QByteArray());
        QVERIFY2(!right.output.contains("same") && right.output.contains("(entities: 1;"),
                 right.output.constData());
        QVERIFY(!support::bytesOf(m_project).contains("same"));
        // The server's own way.
        QVERIFY(QFile::remove(m_project));
        const program_result own = runProgram({"import", server.url("bob", "guarded"), m_project},
                                              {{isPostgresql ? "PGPASSWORD" : "MYSQL_PWD", "se:same"}});
        QCOMPARE(own.errors, QByteArray());
        QCOMPARE(own.output, right.output);
    }

    void aPasswordThatIsAskedFor_data() { addServers(); }
    void aPasswordThatIsAskedFor()
    {
        server_of_somebody & server = chosen();
        createDatabase(server, "asked");
        execute(server, "asked", {"CREATE TABLE mine (id BIGINT NOT NULL PRIMARY KEY)"});
        if (server.key() == "postgresql") {
            execute(server, "asked", {"CREATE ROLE kim LOGIN PASSWORD 'sesame'"});
        } else {
            execute(server, "asked",
                    {"CREATE USER kim@localhost IDENTIFIED BY 'sesame'",
                     "GRANT SELECT ON asked.* TO kim@localhost"});
        }
        const QString url = server.url("kim", "asked");
        const program_result right = support::runInTerminal({"import", url, m_project}, {}, "sesame\n");
        QVERIFY2(right.output.contains("Password for " + server.key().toUtf8() + "://kim@"),
                 right.output.constData());
        QVERIFY2(right.output.contains("(entities: 1;"), right.output.constData());
        QCOMPARE(right.status, 0);
        // Without a terminal nothing waits for a person.
        const program_result alone = runProgram({"import", url, m_project});
        QCOMPARE(alone.status, 1);
        QCOMPARE(alone.errors.count('\n'), 1);
        QVERIFY2(alone.errors.contains("password"), alone.errors.constData());
    }

    void aPasswordThatVerifyAsksFor_data() { addServers(); }
    void aPasswordThatVerifyAsksFor()
    {
        server_of_somebody & server = chosen();
        const bool isPostgresql = server.key() == "postgresql";
        execute(server, server.firstDatabase(),
                {isPostgresql ? "CREATE ROLE lee LOGIN CREATEDB PASSWORD 'sesame'"
                              : "CREATE USER lee@localhost IDENTIFIED BY 'sesame'"});
        if (!isPostgresql) {
            execute(server, server.firstDatabase(), {"GRANT ALL ON *.* TO lee@localhost"});
        }
        const QString model = path("shop.json");
        QVERIFY(support::writeBytes(model, support::textOf(R"({"id": 1, "name": "gig", "properties": [
            {"id": 10, "name": "id", "type": "long", "identifier": true}]})")));
        const QString url = server.url("lee", server.firstDatabase());
        const program_result right = support::runInTerminal({"verify", model, "--url", url}, {}, "sesame\n");
        QVERIFY2(right.output.contains("Password for " + server.key().toUtf8() + "://lee@"),
                 right.output.constData());
        // What is typed before somebody asks is shown by the terminal itself.
        QVERIFY2(!right.output.mid(right.output.indexOf("Password for ")).contains("sesame"),
                 right.output.constData());
        QVERIFY2(right.output.contains("\nok: all that was refused"), right.output.constData());
        QCOMPARE(right.status, 0);
        const program_result wrong = support::runInTerminal({"verify", model, "--url", url}, {}, "simsim\n");
        QCOMPARE(wrong.status, 1);
        QVERIFY2(!wrong.output.mid(wrong.output.indexOf("Password for ")).contains("simsim"),
                 wrong.output.constData());
        // Without a terminal nothing waits for a person.
        const program_result alone = runProgram({"verify", model, "--url", url});
        QCOMPARE(alone.status, 1);
        QCOMPARE(alone.errors.count('\n'), 1);
        QVERIFY2(alone.errors.contains("password"), alone.errors.constData());
    }

    /// A server that goes in the middle is one line, and nothing is left behind.
    void aServerThatGoes()
    {
        server_of_somebody & server = chosen("postgresql");
        createDatabase(server, "gone");
        execute(server, "gone", {"CREATE TABLE mine (id BIGINT NOT NULL PRIMARY KEY)"});
        const auto keeper = server.connect("gone");
        QString error;
        QVERIFY(keeper->execute("BEGIN", error) &&
                keeper->execute("LOCK TABLE pg_attrdef IN ACCESS EXCLUSIVE MODE", error));
        QProcess import;
        import.start(KORVANE_PROGRAM, {"import", server.url("ann", "gone"), m_project});
        QVERIFY(import.waitForStarted());
        const auto watcher = server.connect("postgres");
        QStringList ended;
        const auto endImport = [&] {
            ended += watcher->firstColumn("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE "
                                          "wait_event_type = 'Lock' AND datname = 'gone'");
            return !ended.isEmpty();
        };
        QTRY_VERIFY(endImport());
        QVERIFY(import.waitForFinished());
        QCOMPARE(import.exitCode(), 1);
        const QByteArray errors = import.readAllStandardError();
        QCOMPARE(errors.count('\n'), 1);
        QVERIFY2(errors.startsWith("postgresql://ann@") && errors.contains("terminating connection"),
                 errors.constData());
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList());
    }

    void whatIsNotThere_data() { addServers(); }
    void whatIsNotThere()
    {
        server_of_somebody & server = chosen();
        const program_result result =
            runProgram({"import", server.url(server.owner(), "nowhere"), m_project});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY2(result.errors.contains(server.key() == "postgresql" ? "database \"nowhere\" does not exist"
                                                                     : "Unknown database 'nowhere'"),
                 result.errors.constData());
        QVERIFY(!QFile::exists(m_project));
    }

    /// Nobody reads more of a database than who they are may see.
    void noRights()
    {
        server_of_somebody & server = chosen("mariadb");
        createDatabase(server, "secret");
        execute(server, "secret", {"CREATE TABLE hidden (id BIGINT)", "CREATE USER eve@localhost"});
        const program_result result = runProgram({"import", server.url("eve", "secret"), m_project});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.contains("Access denied for user 'eve'@'localhost' to database 'secret'"),
                 result.errors.constData());
    }
};

QTEST_GUILESS_MAIN(tst_import_access)
#include "tst_import_access.moc"
