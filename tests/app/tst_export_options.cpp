// The options of an export by the names that a person remembers, and the settings that they are stored as.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/shop_text.h"

#include "zk/zk_collection.h"
#include "zk/zk_serialization.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProgram;

class tst_export_options : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = m_folder->filePath("shop.korv");
        QVERIFY(support::writeBytes(m_folder->filePath("shop.json"), support::ShopText));
        QCOMPARE(runProgram({"import", m_folder->filePath("shop.json"), m_project}).status, 0);
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
    }

    void sameAsTheLongOnes_data()
    {
        QTest::addColumn<QStringList>("friendly");
        QTest::addColumn<QStringList>("longNames");
        QTest::addColumn<QStringList>("scripts");
        QTest::newRow("database and relationships")
            << QStringList{"--db", "postgresql", "--relationships", "yes"}
            << QStringList{"--KorvGenericDDLExport_db_type=3", "--KorvGenericDDLExport_relation_as_fk=1"}
            << QStringList{"shop_postgresql_db_schema_full.sql"};
        QTest::newRow("evolution")
            << QStringList{"--db", "oracle", "--schema", "evolution", "--relationships", "no"}
            << QStringList{"--KorvGenericDDLExport_db_type=4", "--KorvGenericDDLExport_schema_type=1",
                           "--KorvGenericDDLExport_relation_as_fk=0"}
            << QStringList{"shop_oracle_db_schema_v1.sql", "shop_oracle_db_schema_v1_to_v2.sql"};
        QTest::newRow("both, MariaDB")
            << QStringList{"--db", "mariadb", "--schema", "both"}
            << QStringList{"--KorvGenericDDLExport_db_type=2", "--KorvGenericDDLExport_schema_type=2"}
            << QStringList{"shop_mysql_db_schema_full.sql", "shop_mysql_db_schema_v1.sql",
                           "shop_mysql_db_schema_v1_to_v2.sql"};
        QTest::newRow("generic") << QStringList{"--db=generic", "--schema=full"}
                                 << QStringList{"--KorvGenericDDLExport_db_type=0",
                                                "--KorvGenericDDLExport_schema_type=0"}
                                 << QStringList{"shop_default_db_schema_full.sql"};
        QTest::newRow("custom script") << QStringList{"--db", "sqlite", "--custom-script", "own.js"}
                                       << QStringList{"--KorvGenericDDLExport_db_type=1",
                                                      "--KorvGenericDDLExport_custom_javacript=own.js"}
                                       << QStringList{"shop_sqlite_db_schema_full.sql"};
    }
    void sameAsTheLongOnes()
    {
        QFETCH(const QStringList, friendly);
        QFETCH(const QStringList, longNames);
        QFETCH(const QStringList, scripts);
        QVERIFY(
            support::writeBytes(m_folder->filePath("own.js"),
                                "function exportStep(project, entity, property, enumeration, parameters) {"
                                " return '-- own\\n' + parameters.default_value; }\n"));
        const program_result one =
            runProgram(QStringList{"export", m_project, "-y", "--path", "one"} + friendly);
        QCOMPARE(one.status, 0);
        const program_result two =
            runProgram(QStringList{"export", m_project, "-y", "--KorvGenericDDLExport_path=two"} + longNames);
        QCOMPARE(two.status, 0);
        QCOMPARE(QDir(m_folder->filePath("one")).entryList(QDir::Files, QDir::Name), scripts);
        for (const QString & script : scripts) {
            const QByteArray bytes = support::bytesOf(m_folder->filePath("one/" + script));
            QVERIFY(!bytes.isEmpty());
            QCOMPARE(bytes, support::bytesOf(m_folder->filePath("two/" + script)));
        }
        // What counts for one export is not stored.
        QVERIFY(runProgram({"settings", m_project}).output.startsWith("path           (none)\n"));
    }

    void wrongValues_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("database") << QStringList{"--db", "postgres"}
                                  << QByteArray("'postgres' is not a database; they are generic, sqlite, "
                                                "mysql, mariadb, postgresql, oracle, mssqlserver (did you "
                                                "mean postgresql?)\n");
        QTest::newRow("schema") << QStringList{"--schema", "all"}
                                << QByteArray("'all' is not a value of --schema; it takes full, evolution, "
                                              "both\n");
        QTest::newRow("relationships")
            << QStringList{"--relationships", "1"}
            << QByteArray("'1' is not a value of --relationships; it takes no, yes\n");
        QTest::newRow("path") << QStringList{"--path", ""}
                              << QByteArray("--path is empty; give a value, or leave the option out\n");
    }
    void wrongValues()
    {
        QFETCH(const QStringList, options);
        QFETCH(const QByteArray, reason);
        for (const char * const command : {"export", "settings"}) {
            const program_result result = runProgram(QStringList{command, m_project} + options);
            QCOMPARE(result.status, 2);
            QCOMPARE(result.output, QByteArray());
            QCOMPARE(result.errors, reason);
        }
    }
    void theSameTwice()
    {
        const program_result result =
            runProgram({"export", m_project, "-y", "--db", "sqlite", "--KorvGenericDDLExport_db_type=3"});
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors,
                 QByteArray("--db and --KorvGenericDDLExport_db_type set the same; give one of both\n"));
    }

    void helpTellsValues()
    {
        const QByteArray general = runProgram({"export", "--help"}).output;
        QVERIFY2(general.endsWith(
                     "\nValues, and what counts for a project without stored settings:\n"
                     "  --path            any DIR; by default: (none)\n"
                     "  --db              generic, sqlite, mysql, postgresql, oracle, mssqlserver; by "
                     "default: sqlite\n"
                     "  --relationships   no, yes; by default: no\n"
                     "  --schema          full, evolution, both; by default: full\n"
                     "  --custom-script   any FILE; by default: (none)\n"),
                 general.constData());
        QCOMPARE(runProgram({"settings", m_project, "--db", "oracle", "--path", "sql"}).status, 0);
        const QByteArray stored = runProgram({"export", m_project, "--help"}).output;
        QVERIFY2(stored.contains("\nValues, and what " + m_project.toUtf8() +
                                 " has stored:\n  --path            any DIR; stored: sql\n"),
                 stored.constData());
        QVERIFY2(stored.contains("mssqlserver; stored: oracle\n"), stored.constData());
    }

    void settings()
    {
        const program_result none = runProgram({"settings", m_project});
        QCOMPARE(none.errors, QByteArray());
        QCOMPARE(none.output, QByteArray("path           (none)\n"
                                         "db             sqlite\n"
                                         "relationships  no\n"
                                         "schema         full\n"
                                         "custom-script  (none)\n"));
        const program_result stored =
            runProgram({"settings", m_project, "--db", "mariadb", "--path", "sql", "--relationships", "yes"});
        QCOMPARE(stored.errors, QByteArray());
        QCOMPARE(stored.output,
                 "Settings of " + m_project.toUtf8() + " stored: db mysql, path sql, relationships yes\n");
        QCOMPARE(runProgram({"settings", m_project, "--schema", "both"}).status, 0);
        QCOMPARE(runProgram({"settings", m_project}).output, QByteArray("path           sql\n"
                                                                        "db             mysql\n"
                                                                        "relationships  yes\n"
                                                                        "schema         both\n"
                                                                        "custom-script  (none)\n"));
        // An export takes them, and the versions are still there.
        QCOMPARE(runProgram({"export", m_project, "-y"}).status, 0);
        QVERIFY(QFile::exists(m_folder->filePath("sql/shop_mysql_db_schema_v1_to_v2.sql")));
    }
    /// Types that a person has changed are told beside what they would be.
    void settingsTellOtherTypes()
    {
        QCOMPARE(runProgram({"settings", m_project, "--db", "sqlite"}).status, 0);
        zk::ZkCollection<QString, QString> types;
        types.insert("int", "NUMBER");
        types.insert("double", "FLOAT");
        types.insert("money", "TEXT");
        QString xml = zk::serialization::toXml(types);
        const auto stored = support::run(
            "sqlite3", {m_project, "INSERT INTO t_plugin_params SELECT plugin_guid, "
                                   "'DDL_EXPORT_LIST_TYPE_MAPPING_BY_DB_1', '" +
                                       xml.replace("'", "''") + "' FROM t_plugin_params LIMIT 1"});
        QCOMPARE(stored.status, 0);
        const QStringList told = QString::fromUtf8(runProgram({"settings", m_project}).output)
                                     .split('\n', Qt::SkipEmptyParts)
                                     .mid(5);
        QVERIFY(told.contains("type of sqlite: int: NUMBER (by default INTEGER)"));
        QVERIFY(told.contains("type of sqlite: money: TEXT (added)"));
        QVERIFY(told.contains("type of sqlite: QString: (removed; by default TEXT)"));
        QVERIFY(told.filter("sqlite: double").isEmpty());
        // 34 are known, of which one stayed; one more was added.
        QCOMPARE(told.size(), 34);
    }
    void settingsOfNoProject()
    {
        const program_result result =
            runProgram({"settings", m_folder->filePath("none.korv"), "--db", "oracle"});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QVERIFY2(result.errors.startsWith(m_folder->filePath("none.korv").toUtf8() + ": "),
                 result.errors.constData());
        QVERIFY(!QFile::exists(m_folder->filePath("none.korv")));
    }

    void schemas()
    {
        for (const char * const name : {"project", "check", "diff", "explain", "status", "verify"}) {
            const program_result result = runProgram({"schema", name});
            QCOMPARE(result.status, 0);
            QCOMPARE(result.output,
                     support::bytesOf(
                         QStringLiteral(KORVANE_SOURCE_DIR "/resources/schema/%1.schema.json").arg(name)));
        }
        QCOMPARE(runProgram({"schema"}).output, runProgram({"schema", "project"}).output);
        const program_result wrong = runProgram({"schema", "nothing"});
        QCOMPARE(wrong.status, 2);
        QCOMPARE(
            wrong.errors,
            QByteArray(
                "There is no schema 'nothing'; they are check, diff, explain, project, status, verify\n"));
    }
    void editorsFindTheSchema()
    {
        const QString text = m_folder->filePath("own.json");
        QVERIFY(support::writeBytes(text, R"({"$schema": "project.schema.json", "format": "korvane-project",
                                              "formatVersion": 1, "name": "own", "entities": []})"));
        QCOMPARE(runProgram({"import", text, m_folder->filePath("own.korv")}).status, 0);
        QCOMPARE(support::schemaErrors("project.schema.json", {text}), QByteArray());
        QVERIFY(support::writeBytes(text, R"({"$schema": 1, "format": "korvane-project",
                                              "formatVersion": 1, "name": "own"})"));
        QCOMPARE(runProgram({"import", text, m_folder->filePath("own.korv")}).errors,
                 text.toUtf8() + ": field '$schema' must be a string\n");
        QVERIFY(!support::schemaErrors("project.schema.json", {text}).isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_export_options)

#include "tst_export_options.moc"
