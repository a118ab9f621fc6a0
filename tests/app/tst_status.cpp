// Where a project stands, as the command status tells it.

#include "app/script_difference.h"

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

namespace {

const char * const One = "{'id': 1, 'name': 'customer', 'properties': ["
                         "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                         "{'id': 11, 'name': 'home', 'relationship': {'id': 1, 'type': 'many-to-one', "
                         "'target': 2}}]},"
                         "{'id': 2, 'name': 'country', 'properties': [{'id': 20, 'name': 'id', 'type': "
                         "'long', 'identifier': true}]}";
const char * const Two = "{'id': 1, 'name': 'client', 'properties': ["
                         "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                         "{'id': 11, 'name': 'home', 'relationship': {'id': 1, 'type': 'many-to-one', "
                         "'target': 2}},"
                         "{'id': 12, 'name': 'born', 'type': 'QDate', 'allowNull': false}]},"
                         "{'id': 2, 'name': 'country', 'properties': [{'id': 20, 'name': 'id', 'type': "
                         "'long', 'identifier': true}]}";

} // namespace

class tst_status : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
        import(One);
    }

    void newProject()
    {
        const program_result result = status({});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(told(result), QString("PROJECT: project 'shop'\n"
                                       "newest version: none; 'korvane tag PROJECT' makes the first\n"
                                       "pending: 2 changes (2 added)\n"
                                       "scripts: no export folder is stored; 'korvane settings PROJECT "
                                       "--path DIR' stores one\n"
                                       "findings, run on SQLite 3.40: 0 errors, 0 warnings, 0 notes\n"));
        QCOMPARE(result.status, 0);
        QCOMPARE(status({"--exit-code"}).status, 3);
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        QCOMPARE(status({"--exit-code"}).status, 0);
    }
    void changeAndScripts()
    {
        QCOMPARE(runProgram({"tag", m_project, "-m", "first"}).status, 0);
        store({"--path", "sql", "--schema", "both", "--db", "postgresql"});
        QCOMPARE(status({"--exit-code"}).status, 3); // missing scripts
        write({});
        QCOMPARE(status({"--exit-code"}).status, 0);
        import(Two);
        const program_result result = status({"--exit-code"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(told(result),
                 QString("PROJECT: project 'shop'\n"
                         "newest version: v1, TIME, first\n"
                         "pending: 2 changes (1 added, 1 renamed); 'korvane diff PROJECT' shows them\n"
                         "scripts for PostgreSQL in FOLDER/sql:\n"
                         "  differs  shop_postgresql_db_schema_full.sql: it was written from the model of "
                         "v1\n"
                         "  same     shop_postgresql_db_schema_v1.sql\n"
                         "  differs  shop_postgresql_db_schema_v1_to_v2.sql: line 2 is \"\", an export "
                         "writes \"ALTER TABLE customer RENAME TO client;\"\n"
                         "findings, run on PostgreSQL 15: 1 error, 0 warnings, 4 notes; 'korvane check "
                         "PROJECT' lists them\n"));
        QCOMPARE(result.status, 3);
        QCOMPARE(status({}).status, 0);
        // Nothing was written.
        QCOMPARE(told(status({})), told(result));
        QVERIFY(QFile::remove(path("sql/shop_postgresql_db_schema_v1.sql")));
        QVERIFY(told(status({})).contains("\n  missing  shop_postgresql_db_schema_v1.sql\n"));
    }
    void anErrorIsAnObjection()
    {
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        import("{'id': 1, 'name': 'select', 'properties': [{'id': 10, 'name': 'id', 'type': 'long', "
               "'identifier': true}]}");
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        QVERIFY(told(status({})).contains("\npending: no changes\n"));
        QVERIFY2(told(status({})).contains(" SQLite 3.40: 1 error, "), qPrintable(told(status({}))));
        QCOMPARE(status({"--exit-code"}).status, 3);
        const QByteArray accepted =
            json("{'accept': [{'code': 'KV101', 'why': 'renamed by a script of our own'}]}");
        QVERIFY(support::writeBytes(path("korvane-check.json"), accepted));
        QCOMPARE(status({"--exit-code"}).status, 0);
    }

    void whatDiffers_data()
    {
        QTest::addColumn<QStringList>("writtenWith");
        QTest::addColumn<QString>("why");
        QTest::newRow("relationships")
            << QStringList{"--relationships", "yes"} << "it was written with relationships yes, stored is no";
        QTest::newRow("without the custom script")
            << QStringList{"--no-custom-script"} << "it was written without the custom script 'own.js'";
    }
    void whatDiffers()
    {
        QFETCH(const QStringList, writtenWith);
        QFETCH(const QString, why);
        QVERIFY(support::writeBytes(path("own.js"),
                                    "function exportStep(project, entity, property, enumeration, p) { return "
                                    "p.default_value + ' -- own'; }\n"));
        store({"--path", "sql", "--db", "postgresql", "--custom-script", "own.js"});
        write(writtenWith);
        const program_result result = status({});
        QVERIFY2(told(result).contains("\n  differs  shop_postgresql_db_schema_full.sql: " + why + "\n"),
                 result.output.constData());
        QCOMPARE(
            told({0, result.errors, {}}),
            QString("Custom script of the project: FOLDER/own.js ('--no-custom-script' leaves it out)\n"));
        // Without the script nothing is known of what it makes.
        const program_result without = status({"--no-custom-script", "--exit-code"});
        QCOMPARE(without.errors, QByteArray());
        QVERIFY(told(without).contains(
            "\n  unknown  shop_postgresql_db_schema_full.sql: the custom script was left out\n"));
    }
    void scriptThatFails()
    {
        QVERIFY(support::writeBytes(path("own.js"),
                                    "function exportStep(project, entity, property, enumeration, p) { if "
                                    "(entity) throw new Error('no way'); return p.default_value; }\n"));
        store({"--path", "sql", "--custom-script", "own.js"});
        const program_result result = status({});
        QCOMPARE(result.status, 1);
        QVERIFY(told(result).contains(
            "\n  unknown  shop_sqlite_db_schema_full.sql: an export does not come to its end\n"));
        QVERIFY2(result.errors.contains("no way"), result.errors.constData());
        // A document is whole, or is not there.
        QCOMPARE(status({"--json"}).output, QByteArray());
    }

    void asJson()
    {
        QCOMPARE(runProgram({"tag", m_project, "-m", "first \"one\""}).status, 0);
        store({"--path", "sql", "--schema", "both"});
        write({});
        import(Two);
        const program_result result = status({"--json"});
        QVERIFY(support::writeBytes(path("status.json"), result.output));
        QCOMPARE(support::schemaErrors("status.schema.json", {path("status.json")}), QByteArray());
        const QJsonObject whole = QJsonDocument::fromJson(result.output).object();
        QCOMPARE(whole["format"].toString(), "korvane.status");
        QCOMPARE(whole["project"].toString(), "shop");
        QCOMPARE(whole["pending"].toInt(), 2);
        QCOMPARE(whole["newest"]["version"].toInt(), 1);
        QCOMPARE(whole["newest"]["message"].toString(), "first \"one\"");
        QCOMPARE(whole["folder"].toString(), path("sql"));
        const QJsonArray scripts = whole["scripts"].toArray();
        QCOMPARE(scripts.size(), 3);
        QCOMPARE(scripts[1]["script"].toString(), "shop_sqlite_db_schema_v1.sql");
        QCOMPARE(scripts[1]["state"].toString(), "same");
        QVERIFY(scripts[1]["why"].isNull());
        QCOMPARE(scripts[2]["state"].toString(), "differs");
        QCOMPARE(whole["findings"]["error"].toInt(), 1);
        QCOMPARE(status({"--format", "json"}).output, result.output);
        // Without versions and without a folder.
        QVERIFY(support::writeBytes(path("text.json"), textOf(json(One))));
        QVERIFY(support::writeBytes(path("status.json"),
                                    runProgram({"status", path("text.json"), "--json"}).output));
        QCOMPARE(support::schemaErrors("status.schema.json", {path("status.json")}), QByteArray());
    }
    void aTextForm()
    {
        QVERIFY(support::writeBytes(path("text.json"), textOf(json(One))));
        const program_result result = runProgram({"status", path("text.json"), "--exit-code"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(QString::fromUtf8(result.output).replace(m_folder->path(), "FOLDER"),
                 QString("FOLDER/text.json: project 'shop'\n"
                         "newest version: a text form has none, and no settings for scripts\n"
                         "findings, run on SQLite 3.40: 0 errors, 0 warnings, 0 notes\n"));
        QCOMPARE(result.status, 0);
    }
    void badInput()
    {
        const program_result none = runProgram({"status", path("none.korv")});
        QCOMPARE(none.status, 1);
        QCOMPARE(none.output, QByteArray());
        QCOMPARE(none.errors.count('\n'), 1);
        const program_result format = status({"--format", "xml"});
        QCOMPARE(format.status, 2);
        QCOMPARE(format.errors, QByteArray("'xml' is not a value of --format; it takes text, json\n"));
    }

    void firstDifference_data()
    {
        QTest::addColumn<QByteArray>("there");
        QTest::addColumn<QByteArray>("wanted");
        QTest::addColumn<QString>("told");
        const auto row = [](const char * name, const char * there, const char * wanted, const char * why) {
            QTest::newRow(name) << QByteArray(there) << QByteArray(wanted) << QString(why);
        };
        row("a row of the mapping", "CREATE TABLE t (a VARCHAR(80), b INT NOT NULL);\n",
            "CREATE TABLE t (a TEXT, b INT NOT NULL);\n",
            "VARCHAR(80) is there, which the type mapping has no more: QString, QChar is TEXT now");
        row("two rows", "CREATE TABLE t (a X NOT NULL, b Y);\nALTER TABLE t ADD COLUMN c X;\n",
            "CREATE TABLE t (a TEXT NOT NULL, b DOUBLE PRECISION);\nALTER TABLE t ADD COLUMN c TEXT;\n",
            "Y is there, which the type mapping has no more: double is DOUBLE PRECISION now; X is there, "
            "which the type mapping has no more: QString, QChar is TEXT now");
        row("a type and more", "CREATE TABLE t (a X NOT NULL);\n", "CREATE TABLE t (a TEXT);\n",
            "line 1 is \"CREATE TABLE t (a X NOT NULL);\", an export writes \"CREATE TABLE t (a TEXT);\"");
        row("no type", "a\nb\n", "a\nc\n", "line 2 is \"b\", an export writes \"c\"");
        row("too short", "a\n", "a\nb\n", "line 2 is \"\", an export writes \"b\"");
        row("cut", "a", "a\nb\n", "it ends before line 2, \"b\"");
        row("too long", "a\nb\n", "a", "an export ends before line 2, \"b\"");
    }
    void firstDifference()
    {
        QFETCH(const QByteArray, there);
        QFETCH(const QByteArray, wanted);
        QFETCH(const QString, told);
        QCOMPARE(
            app::scriptDifference(
                there, wanted,
                {{"QString", "TEXT"}, {"int", "INT"}, {"double", "DOUBLE PRECISION"}, {"QChar", "TEXT"}}),
            told);
    }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    void import(const char * entities)
    {
        QVERIFY(support::writeBytes(path("shop.json"), textOf(json(entities))));
        const program_result done = runProgram({"import", path("shop.json"), m_project});
        QVERIFY2(done.status == 0, done.errors.constData());
    }
    void store(const QStringList & options)
    {
        QCOMPARE(runProgram(QStringList{"settings", m_project} + options).status, 0);
    }
    void write(const QStringList & options)
    {
        const program_result done = runProgram(QStringList{"export", m_project, "-y"} + options);
        QVERIFY2(done.status == 0, done.errors.constData());
    }
    program_result status(const QStringList & options)
    {
        return runProgram(QStringList{"status", m_project} + options);
    }
    /// What was told, without what differs from run to run.
    QString told(const program_result & result) const
    {
        return QString::fromUtf8(result.output)
            .replace(m_project, "PROJECT")
            .replace(m_folder->path(), "FOLDER")
            .replace(QRegularExpression(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)"), "TIME");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_status)

#include "tst_status.moc"
