// The reason of each statement of a script, as the command explain tells it.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

namespace {

const char * const Id = "'type': 'long', 'identifier': true";
const char * const One = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                         "{'id': 10, 'name': 'id', ID},"
                         "{'id': 11, 'name': 'duration', 'type': 'int'},"
                         "{'id': 12, 'name': 'note', 'type': 'QString'}]},"
                         "{'id': 3, 'name': 'old', 'properties': [{'id': 30, 'name': 'id', ID}]}";
const char * const Two = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                         "{'id': 10, 'name': 'id', ID},"
                         "{'id': 11, 'name': 'length', 'type': 'int', 'index': true}]},"
                         "{'id': 2, 'name': 'place', 'properties': [{'id': 20, 'name': 'id', ID},"
                         "{'id': 12, 'name': 'note', 'type': 'QString'}]}";
const char * const Three = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                           "{'id': 10, 'name': 'id', ID},"
                           "{'id': 11, 'name': 'length', 'type': 'int', 'index': true},"
                           "{'id': 13, 'name': 'fee', 'type': 'int', 'allowNull': false}]},"
                           "{'id': 2, 'name': 'place', 'properties': [{'id': 20, 'name': 'id', ID},"
                           "{'id': 12, 'name': 'note', 'type': 'QString'}]}";

} // namespace

class tst_explain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = path("shop.korv");
        for (const char * const entities : {One, Two}) {
            import(entities);
            QCOMPARE(runProgram({"tag", m_project}).status, 0);
        }
        import(Three);
        QCOMPARE(
            runProgram({"settings", m_project, "--path", "sql", "--db", "postgresql", "--schema", "both"})
                .status,
            0);
        QCOMPARE(runProgram({"export", m_project, "-y"}).status, 0);
    }

    void aStep()
    {
        const program_result result = explain("v1_to_v2");
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(
            QString::fromUtf8(result.output),
            QString("\n"
                    "-- because entity 3 'old' was there until v1\n"
                    "-- KV301 error: Table 'old' of 'old' is dropped with all its rows.\n"
                    "-- KV602 note: Programs that use 'old' fail from this statement on.\n"
                    "DROP TABLE old;\n"
                    "-- because the table of entity 1 'gig' was t_gig until v1\n"
                    "-- KV601 note: Programs that ask for 't_gig' fail from this statement on.\n"
                    "ALTER TABLE t_gig RENAME TO t_concert;\n"
                    "-- because property 12 'note' was in entity 'gig' until v1\n"
                    "-- KV305 error: The column 'note' of table 't_concert' is dropped with its values: "
                    "the property is now 'place.note'.\n"
                    "-- KV602 note: Programs that use 'note' of table 't_concert' fail from this "
                    "statement on.\n"
                    "ALTER TABLE t_concert DROP COLUMN note;\n"
                    "-- because property 11 'length' was 'duration' until v1\n"
                    "-- KV601 note: Programs that ask for 'duration' of table 't_concert' fail from this "
                    "statement on.\n"
                    "ALTER TABLE t_concert RENAME COLUMN duration TO length;\n"
                    "-- because 'index' of property 11 'length' was no until v1\n"
                    "-- KV502 note: PostgreSQL 15 keeps everybody from writing to table 't_concert' while "
                    "this statement reads the whole of it.\n"
                    "CREATE INDEX idx_t_concert_length ON t_concert (length);\n"
                    "-- because entity 2 'place' came after v1\n"
                    "CREATE TABLE place (id BIGSERIAL NOT NULL PRIMARY KEY, note TEXT) WITH (OIDS = FALSE);\n"
                    "\n"));
        QCOMPARE(result.status, 0);
    }
    void theStepToNow()
    {
        const program_result result = explain("v2_to_v3");
        QCOMPARE(result.errors, QByteArray());
        QVERIFY2(result.output.startsWith("\n-- because property 13 'fee' came after v2\n-- KV201 error: "),
                 result.output.constData());
        QVERIFY2(result.output.contains("\nALTER TABLE t_concert ADD COLUMN fee INTEGER NOT NULL;\n\n"),
                 result.output.constData());
        // What is printed is the script with comments.
        QCOMPARE(withoutComments(result.output), script("v2_to_v3"));
    }
    void wholeSchemas()
    {
        const program_result full = explain("full");
        QVERIFY2(full.output.startsWith("\n-- because entity 1 'gig' has been there since v1\nCREATE TABLE "
                                        "t_concert"),
                 full.output.constData());
        QVERIFY2(full.output.contains("\n-- because entity 2 'place' has been there since v2\nCREATE TABLE"),
                 full.output.constData());
        QVERIFY2(full.output.contains("\n-- because property 11 'length' has been there since v1\n"),
                 full.output.constData());
        QCOMPARE(withoutComments(full.output), script("full"));
        const program_result first = explain("v1");
        QVERIFY2(
            first.output.contains("\n-- because entity 3 'old' has been there since v1\nCREATE TABLE old"),
            first.output.constData());
        QCOMPARE(withoutComments(first.output), script("v1"));
    }
    void oneLine()
    {
        const program_result result = explain("v1_to_v2", ":3");
        QCOMPARE(result.errors, QByteArray());
        QVERIFY2(result.output.startsWith("-- because "), result.output.constData());
        QCOMPARE(withoutComments(result.output), script("v1_to_v2").split('\n')[2] + '\n');
        const program_result beyond = explain("v1_to_v2", ":99");
        QCOMPARE(beyond.status, 1);
        QVERIFY2(beyond.errors.contains("shop_postgresql_db_schema_v1_to_v2.sql has no line 99; it has "),
                 beyond.errors.constData());
    }
    void aScriptThatDiffers()
    {
        QVERIFY(support::writeBytes(scriptName("v2_to_v3"), "\nALTER TABLE t_concert ADD COLUMN fee;\n\n"));
        const program_result result = explain("v2_to_v3");
        QCOMPARE(result.status, 0);
        QCOMPARE(QString::fromUtf8(result.errors),
                 scriptName("v2_to_v3") +
                     " is not what an export writes now: line 2 is \"ALTER TABLE t_concert "
                     "ADD COLUMN fee;\", an export writes \"ALTER TABLE t_concert ADD "
                     "COLUMN fee INTEGER NOT NULL;\"; told is what it writes\n");
        QVERIFY(result.output.contains("ADD COLUMN fee INTEGER NOT NULL;"));
    }
    void asJson()
    {
        for (const char * const name : {"v1", "v1_to_v2", "v2_to_v3", "full"}) {
            const program_result result =
                runProgram({"explain", m_project, scriptName(name), "--json", "--relationships", "no"});
            QVERIFY(support::writeBytes(path("explain.json"), result.output));
            QCOMPARE(support::schemaErrors("explain.schema.json", {path("explain.json")}), QByteArray());
        }
        const QJsonObject whole =
            QJsonDocument::fromJson(
                runProgram({"explain", m_project, scriptName("v2_to_v3") + ":2", "--json"}).output)
                .object();
        QCOMPARE(whole["database"].toString(), "postgresql");
        QCOMPARE(whole["from"].toString(), "v2");
        QCOMPARE(whole["to"].toString(), "now");
        QCOMPARE(whole["statements"].toArray().size(), 1);
        const QJsonObject statement = whole["statements"][0].toObject();
        QCOMPARE(statement["line"].toInt(), 2);
        QCOMPARE(statement["reasons"], QJsonArray{"because property 13 'fee' came after v2"});
        QCOMPARE(statement["findings"][0]["code"].toString(), "KV201");
        QCOMPARE(statement["findings"][0]["severity"].toString(), "error");
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no script") << "notes.sql"
                                   << "notes.sql: is not named as a script of an export, such as "
                                      "shop_postgresql_db_schema_v1_to_v2.sql\n";
        QTest::newRow("no such database")
            << "shop_db2_db_schema_full.sql"
            << "shop_db2_db_schema_full.sql: is not named as a script of an export, such as "
               "shop_postgresql_db_schema_v1_to_v2.sql\n";
        QTest::newRow("no such version") << "shop_sqlite_db_schema_v7_to_v8.sql"
                                         << "PROJECT: v8: the project has 2 versions\n";
        QTest::newRow("no such step")
            << "shop_sqlite_db_schema_v3_to_v2.sql"
            << "shop_sqlite_db_schema_v3_to_v2.sql: v3 to v2 is not a step forwards\n";
    }
    void badInput()
    {
        QFETCH(const QString, script);
        QFETCH(const QString, reason);
        QVERIFY(support::writeBytes(path(script), "\n"));
        const program_result result = runProgram({"explain", m_project, path(script)});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors).replace(m_project, "PROJECT"), reason);
    }
    void noFile()
    {
        const program_result result =
            runProgram({"explain", m_project, path("none_sqlite_db_schema_full.sql")});
        QCOMPARE(result.status, 1);
        QVERIFY2(
            result.errors.startsWith(path("none_sqlite_db_schema_full.sql").toUtf8() + ": cannot be read ("),
            result.errors.constData());
        const program_result text = runProgram({"explain", path("shop.json"), scriptName("full")});
        QCOMPARE(text.status, 1);
        QCOMPARE(text.errors,
                 path("shop.json").toUtf8() +
                     ": is a text form, which has no versions and so no scripts; give the project file\n");
    }

private:
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    [[nodiscard]] QString scriptName(const char * part) const
    {
        return path(QStringLiteral("sql/shop_postgresql_db_schema_%1.sql").arg(part));
    }
    [[nodiscard]] QByteArray script(const char * part) const { return support::bytesOf(scriptName(part)); }
    program_result explain(const char * part, const QString & line = {})
    {
        return runProgram({"explain", m_project, scriptName(part) + line});
    }
    static QByteArray withoutComments(const QByteArray & text)
    {
        QByteArrayList lines = text.split('\n');
        lines.removeIf([](const QByteArray & line) { return line.startsWith("-- "); });
        return lines.join('\n');
    }
    void import(const char * entities)
    {
        QVERIFY(support::writeBytes(path("shop.json"), textOf(json(entities).replace("ID", json(Id)))));
        const program_result done = runProgram({"import", path("shop.json"), m_project});
        QVERIFY2(done.status == 0, done.errors.constData());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_explain)

#include "tst_explain.moc"
