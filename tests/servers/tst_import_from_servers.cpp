// Databases of servers become models: whole type lists and public models come back, and what has no place is
// listed.

#include "servers/import_bench.h"

#include "database/facts/facts.h"
#include "database/server/catalogue_readers.h"
#include "database/server/script_run.h"

#include <QDir>
#include <QTest>

using servers::server_of_somebody;
using support::program_result;
using support::runProgram;
using support::storedText;

class tst_import_from_servers : public servers::import_bench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { startServers(); }
    void init() { beginAnew(); }

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
        const QString city =
            "CREATE TABLE city (id BIGINT NOT NULL, part BIGINT NOT NULL, country_code CHAR(2), "
            "size NUMERIC(10,3), PRIMARY KEY (id, part), CONSTRAINT fk_city_country_code FOREIGN "
            "KEY (country_code) REFERENCES country (code))";
        const QString street =
            "CREATE TABLE street (id BIGINT NOT NULL, a BIGINT, b BIGINT, label VARCHAR(70), "
            "PRIMARY KEY (id), CONSTRAINT fk_street_a_b FOREIGN KEY %1)";
        const QString house =
            "CREATE TABLE house (id BIGINT NOT NULL, street_id BIGINT UNIQUE, PRIMARY KEY (id), "
            "CONSTRAINT fk_house_street_id FOREIGN KEY (street_id) REFERENCES street (id))";
        const QString country =
            "CREATE TABLE country (code CHAR(2) NOT NULL, name VARCHAR(40) NOT NULL UNIQUE, "
            "PRIMARY KEY (code))";
        execute(
            server, "keys_first",
            {country, city, street.arg(toCity), house, "CREATE INDEX idx_street_label ON street (label)"});
        (void)importFrom(server, "keys_first");
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
        (void)importFrom(server, model + "_first");
        runScripts(server, model + "_again", "new");
        const QByteArray again = importFrom(server, model + "_again", {"-n"});
        QVERIFY2(again.contains(": no changes\n"), again.constData());
    }

    void leftOutOfPostgresql()
    {
        server_of_somebody & server = chosen("postgresql");
        createDatabase(server, "left_out");
        makePeople(server);
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

    /// What is rare, and changes what a table takes or does all the same.
    void rareOmissionsOfPostgresql()
    {
        server_of_somebody & server = chosen("postgresql");
        createDatabase(server, "rare");
        execute(
            server, "rare",
            {"CREATE TYPE size AS ENUM ('s', 'l')", "CREATE DOMAIN grown AS INTEGER CHECK (VALUE > 17)",
             "CREATE TYPE mood AS ENUM ('sad')", "CREATE TABLE one (m mood[])",
             "CREATE TABLE seat (id BIGSERIAL PRIMARY KEY, a INTEGER, b TEXT DEFAULT 'nextval(x)', UNIQUE "
             "NULLS NOT DISTINCT (a))",
             "ALTER SEQUENCE seat_id_seq INCREMENT 3 CYCLE", "CREATE POLICY own ON seat USING (a = 1)",
             "CREATE STATISTICS pair ON a, b FROM seat"});
        compareLines(importFrom(server, "rare"),
                     QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                                "  the database\n"
                                "    type grown\n"
                                "    type size\n"
                                "  one\n"
                                "    scripts cannot make the table (korvane check tells why)\n"
                                "    type mood[] of column m, which scripts do not make\n"
                                "  seat\n"
                                "    default of column b: 'nextval(x)'::text\n"
                                "    index seat_a_key in full: CREATE UNIQUE INDEX seat_a_key ON public.seat "
                                "USING btree (a) NULLS NOT DISTINCT\n"
                                "    policy own\n"
                                "    statistics pair\n"
                                "    sequence seat_id_seq: START 1 INCREMENT 3 CYCLE\n"
                                "Project 'shop' imported into ") +
                         m_project.toUtf8() + " (entities: 2; without a place in the model: 9)\n");
    }

    void rareOmissionsOfMariadb()
    {
        server_of_somebody & server = chosen("mariadb");
        createDatabase(server, "rare");
        execute(server, "rare",
                {"CREATE TABLE seat (id BIGINT NOT NULL PRIMARY KEY, a INT INVISIBLE, b INT(5) ZEROFILL)"});
        compareLines(importFrom(server, "rare"),
                     QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                                "  seat\n"
                                "    column a: invisible\n"
                                "    column b: zerofill\n"
                                "Project 'shop' imported into ") +
                         m_project.toUtf8() + " (entities: 1; without a place in the model: 2)\n");
    }

private:
    static void makePeople(const server_of_somebody & server)
    {
        const QString person =
            "CREATE TABLE person (id BIGINT GENERATED ALWAYS AS IDENTITY, name TEXT DEFAULT 'x', feels mood, "
            "age "
            "INTEGER CONSTRAINT grown CHECK (age > 17), twice INTEGER GENERATED ALWAYS AS (age * 2) STORED, "
            "CONSTRAINT pk_person_id PRIMARY KEY (id))";
        execute(server, "left_out",
                {"CREATE TYPE mood AS ENUM ('sad', 'glad')", person,
                 "CREATE TABLE \"Odd.Name\" (\"a\"\"b\" INTEGER)",
                 "CREATE TABLE log (id BIGINT NOT NULL, day DATE NOT NULL) PARTITION BY RANGE (day)",
                 "CREATE TABLE log_1 PARTITION OF log FOR VALUES FROM ('2026-01-01') TO ('2027-01-01')",
                 "CREATE INDEX lower_name ON person (lower(name))",
                 "CREATE VIEW people AS SELECT * FROM person", "CREATE SEQUENCE alone",
                 "COMMENT ON COLUMN person.age IS 'in years'"});
    }

    static void compareLines(const QByteArray & found, const QByteArray & expected)
    {
        QCOMPARE(found.split('\n'), expected.split('\n'));
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
};

QTEST_GUILESS_MAIN(tst_import_from_servers)
#include "tst_import_from_servers.moc"
