// Databases of servers become models: whole type lists come back, what has no place is listed, and what goes
// wrong is one clear line.

#include "servers/server_of_somebody.h"

#include "database/facts/facts.h"
#include "database/server/catalogue_readers.h"
#include "database/server/script_run.h"

#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using database::server::sql_connection;
using servers::server_of_somebody;
using support::program_result;
using support::runProgram;
using support::storedText;

class tst_import_from_servers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
    }

    void types_data() { addServers(); }
    /// A table for each type that the database takes: its scripts make a column that the server shows alike.
    void types()
    {
        server_of_somebody & server = chosen();
        createDatabase(server, "types_first");
        createDatabase(server, "types_again");
        const auto connection = server.connect("types_first");
        QStringList refused;
        int number = 0;
        for (const QString & type : typesOf(server.key())) {
            QString error;
            if (!connection->execute(QStringLiteral("CREATE TABLE t_%1 (v %2)").arg(++number).arg(type),
                                     error)) {
                refused << type;
            }
        }
        const QStringList first = typesIn(server, "types_first");
        QCOMPARE(refused, QStringList());
        QCOMPARE(static_cast<int>(first.size()), number);
        const QByteArray told = importFrom(server, "types_first");
        QVERIFY2(!told.contains("type of column") && !told.contains("failed"), told.constData());
        runScripts(server, "types_again");
        QCOMPARE(typesIn(server, "types_again"), first);
    }

    void keysAndRelationships_data() { addServers(); }
    void keysAndRelationships()
    {
        server_of_somebody & server = chosen();
        createDatabase(server, "keys_first");
        createDatabase(server, "keys_again");
        // One wants the order of the key.
        const char * const toCity = server.key() == "postgresql" ? "(b, a) REFERENCES city (part, id)"
                                                                 : "(a, b) REFERENCES city (id, part)";
        execute(
            server, "keys_first",
            {"CREATE TABLE country (code CHAR(2) NOT NULL, name VARCHAR(40) NOT NULL UNIQUE, PRIMARY KEY "
             "(code))",
             "CREATE TABLE city (id BIGINT NOT NULL, part BIGINT NOT NULL, country_code CHAR(2), size "
             "NUMERIC(10,3), PRIMARY KEY (id, part), CONSTRAINT fk_city_country_code FOREIGN KEY "
             "(country_code) REFERENCES country (code))",
             "CREATE TABLE street (id BIGINT NOT NULL, a BIGINT, b BIGINT, label VARCHAR(70), PRIMARY KEY "
             "(id), "
             "CONSTRAINT fk_street_a_b FOREIGN KEY " +
                 QString(toCity) + ")",
             "CREATE TABLE house (id BIGINT NOT NULL, street_id BIGINT UNIQUE, PRIMARY KEY (id), CONSTRAINT "
             "fk_house_street_id FOREIGN KEY (street_id) REFERENCES street (id))",
             "CREATE INDEX idx_street_label ON street (label)"});
        importFrom(server, "keys_first");
        const QByteArray first = storedText(m_project);
        QVERIFY2(first.contains(
                     "\"columnName\": \"a|b\", \"relationship\": {\"id\": 3, \"type\": \"many-to-one\""),
                 first.constData());
        QVERIFY2(first.contains("\"columnName\": \"street_id\", \"relationship\": {\"id\": 2, \"type\": "
                                "\"one-to-one\""),
                 first.constData());
        runScripts(server, "keys_again");
        const QByteArray told = importFrom(server, "keys_again", {"-n"});
        QVERIFY2(told.startsWith(m_project.toUtf8()) && told.contains(": no changes\n"), told.constData());
        QVERIFY2(told.endsWith("(entities: 4; without a place in the model: 0)\n"), told.constData());
    }

    void publicModels_data()
    {
        QTest::addColumn<QString>("model");
        for (const char * const server : {"postgresql", "mariadb"}) {
            for (const char * const model : {"chinook", "sakila"}) {
                QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(server, model))) << model;
            }
        }
    }
    /// A model whose scripts have run is what the database says; and so is one that is made of the database.
    void publicModels()
    {
        QFETCH(const QString, model);
        const QString folder = support::modelsFolder();
        if (folder.isEmpty()) {
            QSKIP("the public models are not here; KORVANE_MODELS names their folder");
        }
        server_of_somebody & server = chosen(QByteArray(QTest::currentDataTag()).split(' ').constFirst());
        createDatabase(server, model + "_first");
        createDatabase(server, model + "_again");
        QCOMPARE(runProgram({"import", folder + '/' + model + ".json", m_project}).status, 0);
        runScripts(server, model + "_first", model);
        const QByteArray same = importFrom(server, model + "_first", {"-n"});
        QVERIFY2(same.contains(": no changes\n"), same.constData());
        QVERIFY2(same.endsWith("; without a place in the model: 0)\n"), same.constData());

        m_project = path("new.korv");
        importFrom(server, model + "_first");
        runScripts(server, model + "_again", "new");
        const QByteArray again = importFrom(server, model + "_again", {"-n"});
        QVERIFY2(again.contains(": no changes\n"), again.constData());
    }

    void leftOutOfPostgresql()
    {
        server_of_somebody & server = chosen("postgresql");
        createDatabase(server, "left_out");
        execute(server, "left_out",
                {"CREATE TYPE mood AS ENUM ('sad', 'glad')",
                 "CREATE TABLE person (id BIGINT GENERATED ALWAYS AS IDENTITY, name TEXT DEFAULT 'x', feels "
                 "mood, "
                 "age INTEGER CONSTRAINT grown CHECK (age > 17), twice INTEGER GENERATED ALWAYS AS (age * 2) "
                 "STORED, "
                 "CONSTRAINT pk_person_id PRIMARY KEY (id))",
                 "CREATE TABLE \"Odd.Name\" (\"a\"\"b\" INTEGER)",
                 "CREATE TABLE log (id BIGINT NOT NULL, day DATE NOT NULL) PARTITION BY RANGE (day)",
                 "CREATE TABLE log_1 PARTITION OF log FOR VALUES FROM ('2026-01-01') TO ('2027-01-01')",
                 "CREATE INDEX lower_name ON person (lower(name))",
                 "CREATE VIEW people AS SELECT * FROM person", "CREATE SEQUENCE alone",
                 "COMMENT ON COLUMN person.age IS 'in years'"});
        compareLines(importFrom(server, "left_out"),
                     QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                                "  the database\n"
                                "    sequence alone\n"
                                "  Odd.Name\n"
                                "    scripts cannot make the table (korvane check tells why)\n"
                                "  log\n"
                                "    partition log_1\n"
                                "    it is partitioned by RANGE (day)\n"
                                "  people\n"
                                "    view people\n"
                                "  person\n"
                                "    scripts cannot make the table (korvane check tells why)\n"
                                "    default of column name: 'x'::text\n"
                                "    computed column twice: (age * 2)\n"
                                "    identity of column id, which scripts make a sequence of\n"
                                "    type mood of column feels, which scripts do not make\n"
                                "    check grown: CHECK ((age > 17))\n"
                                "    index lower_name: CREATE INDEX lower_name ON public.person USING btree "
                                "(lower(name))\n"
                                "    comment of column age\n"
                                "Project 'shop' imported into ") +
                         m_project.toUtf8() + " (entities: 3; without a place in the model: 13)\n");
        QVERIFY(!storedText(m_project).contains("twice"));
    }

    void leftOutOfMariadb()
    {
        server_of_somebody & server = chosen("mariadb");
        createDatabase(server, "left_out");
        execute(
            server, "left_out",
            {"CREATE TABLE person (id BIGINT NOT NULL AUTO_INCREMENT PRIMARY KEY, name VARCHAR(9) DEFAULT "
             "'x', age "
             "INT COMMENT 'in years' CHECK (age > 17), twice INT AS (age * 2), words TEXT, FULLTEXT INDEX "
             "all_words "
             "(words), changed TIMESTAMP NOT NULL DEFAULT current_timestamp() ON UPDATE current_timestamp())",
             "CREATE TABLE `Odd.``Name` (`a``b c` INT)",
             "CREATE TABLE log (id BIGINT) PARTITION BY HASH (id) PARTITIONS 3",
             "CREATE TABLE old (id BIGINT) ENGINE = MyISAM", "CREATE VIEW people AS SELECT * FROM person",
             "CREATE TRIGGER t_before BEFORE INSERT ON log FOR EACH ROW SET NEW.id = 1"});
        compareLines(importFrom(server, "left_out"),
                     QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                                "  Odd.`Name\n"
                                "    scripts cannot make the table (korvane check tells why)\n"
                                "  log\n"
                                "    3 partitions by HASH\n"
                                "    trigger t_before\n"
                                "  old\n"
                                "    storage engine MyISAM\n"
                                "  people\n"
                                "    view people\n"
                                "  person\n"
                                "    default of column name: 'x'\n"
                                "    default of column changed: current_timestamp()\n"
                                "    computed column twice: `age` * 2\n"
                                "    column changed: on update current_timestamp()\n"
                                "    comment of column age\n"
                                "    check age: `age` > 17\n"
                                "    index all_words of kind FULLTEXT\n"
                                "Project 'shop' imported into ") +
                         m_project.toUtf8() + " (entities: 4; without a place in the model: 12)\n");
    }

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
        importFrom(server, "schemas", {"--schema", "My shop"});
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
        QStringList ended; // asked again once there are some
        QTRY_VERIFY(
            !(ended += watcher->firstColumn("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE "
                                            "wait_event_type = 'Lock' AND datname = 'gone'"))
                 .isEmpty());
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

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }

    static void compareLines(const QByteArray & found, const QByteArray & expected)
    {
        QCOMPARE(found.split('\n'), expected.split('\n'));
    }

    static void addServers()
    {
        QTest::addColumn<int>("unused");
        QTest::newRow("postgresql") << 0;
        QTest::newRow("mariadb") << 1;
    }
    /// The server of the row, which runs until the tests have ended.
    server_of_somebody & chosen(const QByteArray & key = QTest::currentDataTag())
    {
        const int number = key == "postgresql" ? 0 : 1;
        std::unique_ptr<server_of_somebody> & server = m_servers[number];
        QString why;
        if (!server) {
            server =
                number == 0 ? servers::startPostgreSqlOfSomebody(why) : servers::startMariaDbOfSomebody(why);
        }
        return *server;
    }

    static void execute(const server_of_somebody & server, const QString & database,
                        const QStringList & statements)
    {
        const auto connection = server.connect(database);
        for (const QString & each : statements) {
            QString error;
            QVERIFY2(connection->execute(each, error), qPrintable(each + ": " + error));
        }
    }
    static void createDatabase(const server_of_somebody & server, const QString & name)
    {
        execute(server, server.firstDatabase(), {"CREATE DATABASE " + name});
    }

    static QStringList typesOf(const QString & key)
    {
        QStringList types;
        for (const database::type_word & each : database::factsOf(key)->types.words.value) {
            QStringList numbers;
            const int count = std::max(each.fewestNumbers, each.smallest > 0 ? 1 : 0);
            for (int i = 0; i < std::min(count, each.mostNumbers); ++i) {
                numbers << QString::number(i == 0 ? std::max(each.smallest, 1) : 0);
            }
            const QString word = QString::fromLatin1(each.word);
            types << word + (numbers.isEmpty() ? QString() : "(" + numbers.join(",") + ")");
            if (each.takesTexts) {
                types.last() = word + "('a','b''c')";
            }
            if (each.ifUnsigned) {
                types << types.last() + " UNSIGNED";
            }
        }
        return types;
    }

    [[nodiscard]] static database::catalogue heldBy(const server_of_somebody & server,
                                                    const QString & database)
    {
        const auto connection = server.connect(database);
        return server.key() == "postgresql"
                   ? database::server::readPostgreSql(*connection, "public")
                   : database::server::readMySql(*connection, *database::factsOf(server.key()));
    }
    [[nodiscard]] static QStringList typesIn(const server_of_somebody & server, const QString & database)
    {
        QStringList types;
        for (const auto & [key, table] : heldBy(server, database).tables) {
            for (const database::column & each : table.columns) {
                types << table.name + ' ' + each.name + ' ' + each.type;
            }
        }
        return types;
    }

    QByteArray importFrom(const server_of_somebody & server, const QString & database,
                          const QStringList & options = {})
    {
        const program_result result =
            runProgram(QStringList{"import", server.url(server.owner(), database), m_project} + options);
        return result.status == 0 && result.errors.isEmpty() ? result.output : "failed: " + result.errors;
    }

    /// Exports the project and runs the full script.
    void runScripts(const server_of_somebody & server, const QString & database,
                    const QString & name = "shop")
    {
        const QString scripts = database::factsOf(server.key())->scripts;
        const program_result made =
            runProgram({"export", m_project, "-y", "--no-check", "--db", scripts, "--relationships", "yes",
                        "--schema", "full", "--path", path("sql")});
        QCOMPARE(made.errors, QByteArray());
        const QByteArray script =
            support::bytesOf(path("sql/" + name + '_' + scripts + "_db_schema_full.sql"));
        QStringList statements;
        for (const auto & each :
             database::server::statementsOfScript(QString::fromUtf8(script), server.key())) {
            statements << each.text;
        }
        QVERIFY(!statements.isEmpty());
        execute(server, database, statements);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
    std::unique_ptr<server_of_somebody> m_servers[2];
};

QTEST_GUILESS_MAIN(tst_import_from_servers)
#include "tst_import_from_servers.moc"
