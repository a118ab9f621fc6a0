// The command check: what it judges, how it answers, and what it says to what is wrong.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include <QDir>
#include <QFile>
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

const char First[] =
    "{'id': 1, 'name': 'draft', 'properties': [{'id': 1, 'name': 'text', 'type': 'QString', "
    "'identifier': true}]}, {'id': 2, 'name': 'final', 'properties': [{'id': 2, 'name': 'text', "
    "'type': 'QString', 'identifier': true}]}";
/// The same with the names of both exchanged.
const char Swapped[] =
    "{'id': 1, 'name': 'final', 'properties': [{'id': 1, 'name': 'text', 'type': 'QString', "
    "'identifier': true}]}, {'id': 2, 'name': 'draft', 'properties': [{'id': 2, 'name': 'text', "
    "'type': 'QString', 'identifier': true}]}";

QStringList codesOf(const QByteArray & report)
{
    QStringList codes;
    const QJsonArray findings = QJsonDocument::fromJson(report)["findings"].toArray();
    for (const QJsonValue & each : findings) {
        codes += each["code"].toString();
    }
    return codes;
}

QStringList scriptsOf(const QByteArray & report)
{
    QStringList scripts;
    const QJsonArray runs = QJsonDocument::fromJson(report)["runs"].toArray();
    for (const QJsonValue & each : runs) {
        scripts += each["script"].toString();
    }
    return scripts;
}

} // namespace

class tst_check_command : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_project = m_folder->filePath("shop.korv");
    }

    void aTypeThatFollowsFromAnIndex_data()
    {
        QTest::addColumn<QString>("database");
        QTest::newRow("mssqlserver") << "mssqlserver";
        QTest::newRow("oracle") << "oracle";
    }
    void aTypeThatFollowsFromAnIndex()
    {
        QFETCH(const QString, database);
        const QByteArray indexed =
            json("{'id': 1, 'name': 'shelf', 'properties': [{'id': 10, 'name': 'id', 'type': 'long', "
                 "'identifier': true}, {'id': 11, 'name': 'label', 'type': 'QString', 'index': true}]}");
        store(textOf(indexed));
        tag();
        store(textOf(QByteArray(indexed).replace(", \"index\": true", "")));
        const QByteArray told = check({"--from", "v1", "--db", database, "--json"}).output;
        QVERIFY2(told.contains("\"KV401\""), told.constData());
        QVERIFY2(!told.contains("\"KV419\""), told.constData());
    }
    void findsARefusedStep()
    {
        storeSwap();
        const program_result result = check({"--db", "postgresql"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 3);
        QCOMPARE(
            QString::fromUtf8(result.output),
            QString("shop_postgresql_db_schema_full.sql  run on PostgreSQL 15, 2 statements: nothing found\n"
                    "shop_postgresql_db_schema_v1_to_v2.sql  run on PostgreSQL 15, v1 to now, 2 statements\n"
                    "\n"
                    "error KV203 line 2\n"
                    "    PostgreSQL 15 refuses to rename the table of 'final' from 'draft' to 'final': that "
                    "name is taken\n"
                    "    when the statement runs.\n"
                    "    Why: Tables are renamed one after another in the order of the model, so a name that "
                    "another\n"
                    "    table gives up later in the script is not free yet.\n"
                    "    What to do: Take two versions: rename 'final' to a name that nothing has, tag, then "
                    "to 'final'.\n"
                    "    In the model:\n"
                    "        /entities/0/tableName: \"final_after\"\n"
                    "    After the script:\n"
                    "        ALTER TABLE final RENAME TO final_before;\n"
                    "        ALTER TABLE draft RENAME TO final;\n"
                    "        ALTER TABLE final_before RENAME TO draft;\n"
                    "    Refused as well because of it: line 3\n"
                    "    | ALTER TABLE draft RENAME TO final;\n"
                    "\n"
                    "2 errors, 0 warnings, 0 notes\n"));
    }
    /// Settings of former scripts are told when they are stored otherwise now, and have a say.
    void settingsSinceAVersion()
    {
        storeSwap();
        const auto told = [this](const QStringList & options) {
            QStringList lines;
            const QByteArray report = check(QStringList{"--db", "postgresql", "--json"} + options).output;
            for (const QJsonValue & each : QJsonDocument::fromJson(report)["findings"].toArray()) {
                if (each["code"].toString() == "KV802") {
                    lines += each["severity"].toString() + ": " + each["message"].toString();
                }
            }
            return lines;
        };
        // What says nothing about statements.
        QCOMPARE(runProgram({"settings", m_project, "--path", "other", "--schema", "both", "--db", "oracle"})
                     .status,
                 0);
        QCOMPARE(told({}), QStringList());
        QCOMPARE(runProgram({"settings", m_project, "--relationships", "yes"}).status, 0);
        const QString warning =
            "warning: The scripts up to v1 are written otherwise now than when it was tagged: "
            "relationships was 'no' and is 'yes'.";
        QCOMPARE(told({}), QStringList(warning));
        QCOMPARE(told({"--relationships", "yes"}), QStringList());
        QCOMPARE(told({"--all"}), QStringList(warning));
        // A version that is tagged with them has them.
        QCOMPARE(runProgram({"tag", m_project}).status, 0);
        QCOMPARE(told({}), QStringList());
        QCOMPARE(told({"--all"}), QStringList(warning));
        QVERIFY(support::writeBytes(m_folder->filePath("custom.js"), "function exportStep() {}"));
        QCOMPARE(runProgram({"settings", m_project, "--custom-script", "custom.js"}).status, 0);
        QCOMPARE(told({}),
                 QStringList("warning: The scripts up to v2 are written otherwise now than when it was "
                             "tagged: custom-script was nothing and is 'custom.js'."));
    }
    void tellsJson()
    {
        storeSwap();
        const program_result result = check({"--db", "postgresql", "--json"});
        QCOMPARE(result.status, 3);
        const QJsonDocument report = QJsonDocument::fromJson(result.output);
        QCOMPARE(report["format"].toString(), QString("korvane.check"));
        QCOMPARE(report["formatVersion"].toInt(), 1);
        QCOMPARE(report["project"].toString(), QString("shop"));
        const QJsonValue run = report["runs"][1];
        QCOMPARE(run["database"].toString(), QString("postgresql"));
        QCOMPARE(run["basis"].toString(), QString("run on PostgreSQL 15"));
        QCOMPARE(run["from"].toString(), QString("v1"));
        QCOMPARE(run["to"].toString(), QString("now"));
        QCOMPARE(run["statements"], run["judged"]);
        QVERIFY(report["runs"][0]["from"].isNull());
        const QJsonValue found = report["findings"][0];
        QCOMPARE(found["code"].toString(), QString("KV203"));
        QCOMPARE(found["name"].toString(), QString("rename-onto-taken-table"));
        QCOMPARE(found["severity"].toString(), QString("error"));
        QCOMPARE(found["outcome"].toString(), QString("refused"));
        QCOMPARE(found["when"].toString(), QString("always"));
        QCOMPARE(found["error"].toString(), QString("42P07"));
        QCOMPARE(found["statement"]["script"].toString(), QString("shop_postgresql_db_schema_v1_to_v2.sql"));
        QCOMPARE(found["statement"]["line"].toInt(), 2);
        QCOMPARE(found["statement"]["lines"].toInt(), 1);
        QCOMPARE(found["statement"]["action"].toString(), QString("RENAME_TABLE"));
        QCOMPARE(found["statement"]["text"].toString(), QString("ALTER TABLE draft RENAME TO final;"));
        QCOMPARE(found["statement"]["customScript"].toBool(true), false);
        QCOMPARE(found["objects"][0]["kind"].toString(), QString("entity"));
        QCOMPARE(found["objects"][0]["id"].toInt(), 1);
        QCOMPARE(found["objects"][0]["name"].toString(), QString("final"));
        QVERIFY(found["consequenceOf"].isNull());
        QVERIFY(found["accepted"].isNull());
        QCOMPARE(found["fingerprint"].toString().size(), 16);
        QCOMPARE(report["findings"][1]["code"].toString(), QString("KV200"));
        QCOMPARE(report["findings"][1]["consequenceOf"].toInt(-1), 0);
        QCOMPARE(report["summary"]["error"].toInt(), 2);
        QCOMPARE(report["summary"]["accepted"].toInt(-1), 0);
    }
    void judgesWhatIsAskedFor()
    {
        store(textOf(json(First)));
        tag();
        store(textOf(json(First) + json(", {'name': 'third', 'properties': [{'name': 'x', 'type': 'int', "
                                        "'identifier': true}]}")));
        tag();
        const QString name = "shop_sqlite_db_schema_%1.sql";
        QCOMPARE(scriptsOf(check({"--json"}).output), QStringList({name.arg("full"), name.arg("v2_to_v3")}));
        QCOMPARE(scriptsOf(check({"--json", "--all"}).output),
                 QStringList({name.arg("full"), name.arg("v1"), name.arg("v1_to_v2"), name.arg("v2_to_v3")}));
        QCOMPARE(scriptsOf(check({"--json", "--from", "v1"}).output), QStringList(name.arg("v1_to_v3")));
        QCOMPARE(scriptsOf(check({"--json", "--from", "v1", "--to", "v2"}).output),
                 QStringList(name.arg("v1_to_v2")));
        QCOMPARE(scriptsOf(check({"--json", "--to", "v2"}).output), QStringList(name.arg("v1_to_v2")));
        QCOMPARE(scriptsOf(check({"--json", "--to", "v1"}).output), QStringList(name.arg("v1")));
    }
    void aRefusedTableHidesNothingElse()
    {
        store(textOf(
            json("{'id': 1, 'name': 'order', 'properties': [{'id': 1, 'name': 'id', 'type': 'long', "
                 "'identifier': true}]}, {'id': 2, 'name': 'part', 'properties': [{'id': 2, 'name': 'id', "
                 "'type': 'long', 'identifier': true}, {'id': 3, 'name': 'whole', 'index': true, "
                 "'relationship': {'id': 1, 'type': 'many-to-one', 'target': 2}}]}")));
        const program_result result = check({"--db", "postgresql", "--relationships", "yes", "--json"});
        QCOMPARE(codesOf(result.output), QStringList({"KV101", "KV112"}));
    }
    void aTableThatIsRenamedUnseen()
    {
        // Both names of the table differ from a new database for the one reason.
        store(textOf(
            json("{'id': 1, 'name': 'scan', 'tableName': 't_scan', 'version': 1, 'properties': [{'id': 1, "
                 "'name': 'id', 'type': 'long', 'identifier': true}]}")));
        tag();
        store(textOf(
            json("{'id': 1, 'name': 'scan', 'tableName': 't_entry', 'version': 1, 'properties': [{'id': 1, "
                 "'name': 'id', 'type': 'long', 'identifier': true}]}")));
        QCOMPARE(codesOf(check({"--db", "postgresql", "--json"}).output), QStringList{"KV410"});
    }
    /// A name that is cut hides nothing of what the rename leaves.
    void aColumnThatGetsTooLongAName()
    {
        const QByteArray gig = json("{'id': 1, 'name': 'gig', 'properties': [{'id': 1, 'name': 'id', 'type': "
                                    "'long', 'identifier': true}, {'id': 2, 'name': '%1', 'type': 'int', "
                                    "'index': true}]}");
        store(textOf(QByteArray(gig).replace("%1", "height")));
        tag();
        store(textOf(QByteArray(gig).replace("%1", QByteArray("a").repeated(70))));
        const program_result result = check({"--db", "postgresql", "--fail-on", "never", "--json"});
        QCOMPARE(codesOf(result.output).count("KV415"), 1);
    }
    void indexesThatExchangedTheirNames()
    {
        const auto storeTables = [this](const char * first, const char * second) {
            const QByteArray entities =
                QByteArray("{'id': 1, 'name': '%1', 'properties': [{'id': 1, 'name': 'id', 'type': 'long', "
                           "'identifier': true}, {'id': 3, 'name': 'x', 'type': 'int', 'index': true}]}, "
                           "{'id': 2, 'name': '%2', 'properties': [{'id': 2, 'name': 'id', 'type': 'long', "
                           "'identifier': true}, {'id': 4, 'name': 'x', 'type': 'int', 'index': true}]}")
                    .replace("%1", first)
                    .replace("%2", second);
            store(textOf(json(entities.constData())));
        };
        storeTables("a", "b");
        tag();
        storeTables("t", "a");
        tag();
        storeTables("b", "a");
        const program_result result = check({"--db", "sqlite", "--all", "--json"});
        QCOMPARE(result.status, 0);
        QStringList sql;
        const QJsonArray findings = QJsonDocument::fromJson(result.output)["findings"].toArray();
        for (const QJsonValue & each : findings) {
            if (each["objects"].toArray().at(0)["name"].toString() == "b") {
                sql += each["remedy"]["sql"].toVariant().toStringList();
            }
        }
        QCOMPARE(sql, (QStringList{"DROP INDEX idx_a_x;", "DROP INDEX idx_b_x;",
                                   "CREATE INDEX idx_b_x ON b (x);", "CREATE INDEX idx_a_x ON a (x);"}));
    }
    void aCommentOfTheScriptIsNoChange()
    {
        const char * const entity =
            "{'id': 1, 'name': 'a', %1'properties': [{'id': 1, 'name': 'x', 'type': 'int', "
            "'identifier': true}]}";
        const auto with = [&](const char * more) { return textOf(json(entity).replace("%1", json(more))); };
        store(with(""));
        tag();
        store(with("'softDeleteColumn': 'gone', "));
        const QString script = writeFile(
            "custom.js", "function exportStep(project, entity, property, enumeration, parameters) {\n"
                         "  return property ? parameters.default_value : '-- seen\\n' + "
                         "(entity ? parameters.default_value : '');\n}\n");
        const program_result result = check({"--custom-script", script, "--json"});
        QCOMPARE(codesOf(result.output), QStringList("KV404"));
    }
    void customScriptThatFailsForComparison()
    {
        storeSwap();
        const QString script = writeFile(
            "custom.js", "function exportStep(project, entity, property, enumeration, parameters) {\n"
                         "  if (parameters.current_file.includes('_full')) { throw new Error('not new'); }\n"
                         "  return parameters.default_value;\n}\n");
        const program_result result = check({"--from", "v1", "--custom-script", script});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.contains("not new"), result.errors.constData());
    }
    void judgesATextWithoutHistory()
    {
        const program_result result =
            runProgram({"check", "-", "--json"}, {},
                       textOf(json("{'name': 'order', 'properties': [{'name': 'id', "
                                   "'type': 'long', 'identifier': true}]}")));
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 3);
        QCOMPARE(scriptsOf(result.output), QStringList("shop_sqlite_db_schema_full.sql"));
        QCOMPARE(codesOf(result.output), QStringList("KV101"));
    }
    void judgesSeveralDatabases()
    {
        store(textOf(
            json("{'name': 'order', 'properties': [{'name': 'id', 'type': 'long', 'identifier': true}]}")));
        const program_result result = check({"--db", "sqlite,postgresql,generic", "--json"});
        QCOMPARE(scriptsOf(result.output),
                 QStringList({"shop_sqlite_db_schema_full.sql", "shop_postgresql_db_schema_full.sql",
                              "shop_default_db_schema_full.sql"}));
        QCOMPARE(codesOf(result.output), QStringList({"KV101", "KV101"}));
    }
    void saysWhenThereIsNothing()
    {
        store(textOf(json(First)));
        const program_result result = check({});
        QCOMPARE(result.status, 0);
        QCOMPARE(QString::fromUtf8(result.output),
                 QString("shop_sqlite_db_schema_full.sql  run on SQLite 3.40, 5 statements: nothing found\n"
                         "0 errors, 0 warnings, 0 notes\n"));
    }
    void endsByTheWorstFinding_data()
    {
        QTest::addColumn<QString>("failOn");
        QTest::addColumn<int>("status");
        QTest::newRow("error") << "error" << 0;
        QTest::newRow("warning") << "warning" << 3;
        QTest::newRow("note") << "note" << 3;
        QTest::newRow("never") << "never" << 0;
    }
    void endsByTheWorstFinding()
    {
        QFETCH(QString, failOn);
        QFETCH(int, status);
        store(textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'x', 'type': 'int', "
                          "'identifier': true}, {'id': 2, 'name': 'y', 'type': 'int'}]}")));
        tag();
        store(textOf(json("{'id': 1, 'name': 'a', 'properties': [{'id': 1, 'name': 'x', 'type': 'int', "
                          "'identifier': true}, {'id': 2, 'name': 'y', 'type': 'QString'}]}")));
        const program_result result = check({"--db", "postgresql", "--fail-on", failOn, "--json"});
        QCOMPARE(codesOf(result.output), QStringList("KV401"));
        QCOMPARE(result.status, status);
    }
    void writesToAFile()
    {
        storeSwap();
        const QString file = m_folder->filePath("findings.json");
        const program_result result = check({"--db", "postgresql", "--json", "-o", file});
        QCOMPARE(result.status, 3);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(codesOf(support::bytesOf(file)).first(), QString("KV203"));
    }
    void acceptsByTheFileBesideTheProject()
    {
        storeSwap();
        writeFile("korvane-check.json",
                  json("{'accept': [{'code': 'KV203', 'step': 'v1-v2', 'why': 'by hand'}]}"));
        const program_result result = check({"--db", "postgresql", "--json"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        const QJsonDocument report = QJsonDocument::fromJson(result.output);
        QCOMPARE(report["findings"][0]["accepted"]["why"].toString(), QString("by hand"));
        QVERIFY(report["findings"][0]["accepted"]["until"].isNull());
        QCOMPARE(report["summary"]["error"].toInt(-1), 0);
        QCOMPARE(report["summary"]["accepted"].toInt(), 2);
    }
    void acceptsByTheFileThatIsGiven()
    {
        storeSwap();
        writeFile("korvane-check.json", "broken");
        const QString file =
            writeFile("other.json", json("{'severity': {'KV203': 'note', 'KV200': 'note'}}"));
        const program_result result = check({"--db", "postgresql", "--accept", file, "--json"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        QCOMPARE(QJsonDocument::fromJson(result.output)["summary"]["note"].toInt(), 2);
    }
    void acceptanceFileIsWrong()
    {
        storeSwap();
        const QString file = writeFile("korvane-check.json", "broken");
        program_result result = check({});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(QString::fromUtf8(result.errors), file + ": line 1: is not JSON\n");
        result = check({"--accept", m_folder->filePath("none.json")});
        QCOMPARE(result.status, 1);
        QCOMPARE(QString::fromUtf8(result.errors),
                 m_folder->filePath("none.json") + ": cannot be read (No such file or directory)\n");
    }
    void tellsPlacesInAText()
    {
        storeSwap();
        const QString file = writeFile("shop.json", textOf("\n\n" + json(Swapped)));
        const program_result result = check({"--db", "postgresql", "--text", file, "--json"});
        const QJsonValue place = QJsonDocument::fromJson(result.output)["findings"][0]["location"];
        QCOMPARE(place["file"].toString(), file);
        QCOMPARE(place["line"].toInt(), 3);
        QCOMPARE(place["column"].toInt(), 1);
        const program_result wrong = check({"--text", m_project});
        QCOMPARE(wrong.status, 1);
        QCOMPARE(QString::fromUtf8(wrong.errors), m_project + ": is not a text form\n");
    }
    void explainsARule()
    {
        const program_result result = runProgram({"check", "--explain", "KV203"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, support::bytesOf(KORVANE_SOURCE_DIR "/docs/rules/KV203.md"));
        const program_result wrong = runProgram({"check", "--explain", "KV998"});
        QCOMPARE(wrong.status, 2);
        QCOMPARE(firstLine(wrong.errors),
                 QString("There is no rule KV998; 'korvane check --list' lists them"));
    }
    void listsRules()
    {
        const program_result result = runProgram({"check", "--list"});
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.startsWith("KV101  error    A table or column is named by a reserved word\n"));
    }
    void wrongInput_data()
    {
        QTest::addColumn<QStringList>("arguments"); // after the project
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("error");
        QTest::newRow("unknown database") << QStringList{"--db", "postgress"} << 2
                                          << "'postgress' is not a database; they are generic, sqlite, "
                                             "mysql, mariadb, postgresql, oracle, mssqlserver, all "
                                             "(did you mean postgresql?)";
        QTest::newRow("backwards") << QStringList{"--from", "v2", "--to", "v1"} << 2
                                   << "v2 to v1 is not a step forwards";
        QTest::newRow("no step") << QStringList{"--from", "v1", "--to", "v1"} << 2
                                 << "v1 to v1 is not a step forwards";
        QTest::newRow("from now") << QStringList{"--from", "now"} << 2 << "now to now is not a step forwards";
        QTest::newRow("beyond the history")
            << QStringList{"--from", "v1", "--to", "v7"} << 1 << "PROJECT: v7: the project has 1 version";
        QTest::newRow("no version")
            << QStringList{"--from", "one"} << 2
            << "'one' is not a version; versions are v1, v2 … as 'korvane log' lists them, and "
               "now for the state of the project";
        QTest::newRow("all and a step")
            << QStringList{"--all", "--from", "v1"} << 2
            << "--all judges the whole history, --from and --to one step: give one of both";
        QTest::newRow("format")
            << QStringList{"--format", "xml"} << 2
            << "'xml' is not a value of --format; it takes text, json, sarif, github, gitlab, markdown";
        QTest::newRow("fail-on")
            << QStringList{"--fail-on", "always"} << 2
            << "'always' is not a value of --fail-on; it takes error, warning, note, never";
    }
    void whatIsNotKnownIsNotTold()
    {
        storeSwap();
        const program_result wrong = check({"--relationships", "maybe"});
        QCOMPARE(wrong.output, QByteArray());
        QCOMPARE(QString::fromUtf8(wrong.errors),
                 QString("'maybe' is not a value of --relationships; it takes no, yes\n"));
        QCOMPARE(wrong.status, 2);
        const QString script = m_folder->filePath("none.js");
        const program_result missing = check({"--custom-script", script});
        QCOMPARE(missing.output, QByteArray());
        QCOMPARE(missing.status, 1);
        QVERIFY2(missing.errors.contains("none.js"), missing.errors.constData());
        QCOMPARE(missing.errors.count('\n'), 1);
    }
    void wrongInput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, error);
        storeSwap();
        const program_result result = check(arguments);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(firstLine(result.errors), error.replace("PROJECT", m_project));
        QCOMPARE(result.status, status);
    }
    void aTextHasNoSteps()
    {
        const QString file = m_folder->filePath("shop.json");
        QFile text(file);
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write(textOf(json(First))) > 0);
        text.close();
        const program_result result = runProgram({"check", file, "--from", "v1"});
        QCOMPARE(result.status, 1);
        QCOMPARE(QString::fromUtf8(result.errors), file + ": v1: a text form has no versions\n");
    }
    void nothingIsGiven()
    {
        const program_result result = runProgram({"check"});
        QCOMPARE(result.status, 2);
        QCOMPARE(firstLine(result.errors),
                 QString("SOURCE is missing: give a project file or a model in text form"));
    }
    void remediesOfStepsNameWhatIsStored_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("now");
        QTest::addColumn<QStringList>("sql");
        const QByteArray before = json("{'id': 2, 'name': 'x', 'columnName': 'colX', 'type': 'QString'},"
                                       "{'id': 3, 'name': 'y', 'columnName': 'colY', 'type': 'int'}");
        QTest::newRow("exchanged") << "postgresql" << before
                                   << json("{'id': 2, 'name': 'x', 'columnName': 'colY', 'type': 'QString'},"
                                           "{'id': 3, 'name': 'y', 'columnName': 'colX', 'type': 'int'}")
                                   << QStringList{"ALTER TABLE t_gig RENAME COLUMN coly TO coly_before;",
                                                  "ALTER TABLE t_gig RENAME COLUMN colx TO coly;",
                                                  "ALTER TABLE t_gig RENAME COLUMN coly_before TO colx;"};
        QTest::newRow("added")
            << "postgresql" << before
            << json("{'id': 2, 'name': 'x', 'columnName': 'colX', 'type': 'QString'},"
                    "{'id': 3, 'name': 'y', 'columnName': 'colY', 'type': 'int'},"
                    "{'id': 4, 'name': 'z', 'columnName': 'newCol', 'type': 'int', 'allowNull': false}")
            << QStringList{"ALTER TABLE t_gig ADD COLUMN newcol INTEGER;",
                           "UPDATE t_gig SET newcol = 0 WHERE newcol IS NULL;",
                           "ALTER TABLE t_gig ALTER COLUMN newcol SET NOT NULL;"};
        const QByteArray plain = json("{'id': 2, 'name': 'y', 'columnName': 'colY', 'type': 'int'}");
        const QByteArray unique =
            json("{'id': 2, 'name': 'y', 'columnName': 'colY', 'type': 'int', 'unique': true}");
        QTest::newRow("unique from now on (Oracle)")
            << "oracle" << plain << unique << QStringList{"ALTER TABLE T_GIG ADD UNIQUE (COLY);"};
        QTest::newRow("unique no more (Oracle)")
            << "oracle" << unique << plain << QStringList{"ALTER TABLE T_GIG DROP UNIQUE (COLY);"};
        QTest::newRow("unique from now on (SQL Server)")
            << "mssqlserver" << plain << unique << QStringList{"ALTER TABLE T_Gig ADD UNIQUE (colY);"};
        QTest::newRow("unique no more (PostgreSQL)")
            << "postgresql" << unique << plain
            << QStringList{"ALTER TABLE t_gig DROP CONSTRAINT t_gig_coly_key;"};
    }
    void remediesOfStepsNameWhatIsStored()
    {
        QFETCH(const QString, database);
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, now);
        QFETCH(const QStringList, sql);
        const auto gig = [](const QByteArray & properties) {
            return textOf(json("{'id': 1, 'name': 'gig', 'tableName': 'T_Gig', 'properties': [{'id': 1, "
                               "'name': 'id', 'columnName': 'gigId', 'type': 'long', 'identifier': true},") +
                          properties + "]}");
        };
        store(gig(before));
        tag();
        store(gig(now));
        const program_result result =
            check({"--db", database, "--from", "v1", "--json", "--fail-on", "never"});
        QStringList found;
        for (const auto & each : QJsonDocument::fromJson(result.output)["findings"].toArray()) {
            const QJsonObject one = each.toObject();
            for (const auto & statement : one["remedy"]["sql"].toArray()) {
                found += statement.toString();
            }
        }
        QCOMPARE(found, sql);
    }
    /// The index of the foreign key comes first, since without it the unique one could not go.
    void uniqueRelationshipThatIsAdded()
    {
        const auto gig = [](const QByteArray & properties) {
            return textOf(
                json("{'id': 1, 'name': 'gig', 'properties': [{'id': 1, 'name': 'id', 'type': 'long', "
                     "'identifier': true}") +
                properties +
                json("]}, {'id': 2, 'name': 'hall', 'properties': [{'id': 2, 'name': 'id', 'type': "
                     "'long', 'identifier': true}]}"));
        };
        store(gig({}));
        tag();
        store(gig(json(", {'id': 3, 'name': 'hall', 'columnName': 'hall_id', 'unique': true, 'relationship': "
                       "{'id': 1, 'type': 'many-to-one', 'target': 2}}")));
        for (const char * const database : {"mariadb", "mysql"}) {
            const QByteArray text =
                check({"--db", database, "--relationships", "yes", "--from", "v1", "--fail-on", "never"})
                    .output;
            const qsizetype made = text.indexOf("        CREATE INDEX fk_gig_hall_id ON gig (hall_id);\n");
            const qsizetype gone = text.indexOf("        DROP INDEX hall_id ON gig;\n");
            QVERIFY2(made > 0 && made < gone, text.constData());
            QVERIFY2(text.contains("is added without an index for its foreign key.\n") &&
                         text.contains("/entities/0/properties/1/unique is left out\n"),
                     text.constData());
        }
    }
    void remediesNameWhatIsStored_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QString>("sql");
        QTest::newRow("postgresql")
            << "postgresql"
            << "ALTER TABLE t_gig ADD CONSTRAINT fk_t_gig_maingig FOREIGN KEY (maingig) REFERENCES t_gig "
               "(gigid);";
        QTest::newRow("oracle")
            << "oracle"
            << "ALTER TABLE T_GIG ADD CONSTRAINT FK_T_GIG_MAINGIG FOREIGN KEY (MAINGIG) REFERENCES T_GIG "
               "(GIGID);";
        QTest::newRow("mariadb")
            << "mariadb"
            << "ALTER TABLE T_Gig ADD CONSTRAINT fk_T_Gig_mainGig FOREIGN KEY (mainGig) REFERENCES T_Gig "
               "(gigId);";
    }
    /// Scripts write names without quotes where that changes their case.
    void remediesNameWhatIsStored()
    {
        QFETCH(const QString, database);
        QFETCH(const QString, sql);
        store(
            textOf(json("{'id': 1, 'name': 'gig', 'tableName': 'T_Gig', 'properties': ["
                        "{'id': 1, 'name': 'id', 'columnName': 'gigId', 'type': 'long', 'identifier': true},"
                        "{'id': 2, 'name': 'main', 'columnName': 'mainGig', 'relationship': {'id': 3, "
                        "'type': 'many-to-one', 'target': 1}}]}")));
        const program_result result =
            check({"--db", database, "--relationships", "yes", "--json", "--fail-on", "never"});
        QCOMPARE(result.status, 0);
        QStringList found;
        for (const auto & each : QJsonDocument::fromJson(result.output)["findings"].toArray()) {
            const QJsonObject one = each.toObject();
            found += one["code"].toString() == "KV112" ? one["remedy"]["sql"][0].toString() : QString();
        }
        found.removeAll(QString());
        QCOMPARE(found, QStringList{sql});
    }
    void fileThatCannotBeWritten()
    {
        storeSwap();
        const QString file = m_folder->filePath("none/findings.json");
        const program_result result = check({"-o", file});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.startsWith(file.toUtf8() + ": cannot be written ("),
                 result.errors.constData());
        QCOMPARE(result.errors.count('\n'), 1);
    }
    void customScriptThatFailsInTheMiddle()
    {
        storeSwap();
        const QString script = m_folder->filePath("custom.js");
        QFile file(script);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("function exportStep(project, entity, property, enumeration, parameters) {\n"
                   "  if (entity && entity.getName() === 'final') { throw new Error('not this one'); }\n"
                   "  return parameters.default_value;\n}\n");
        file.close();
        const program_result result = check({"--json", "--db", "postgresql", "--custom-script", script});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.contains("not this one"), result.errors.constData());
        QCOMPARE(QJsonDocument::fromJson(result.output)["runs"][0]["script"].toString(),
                 QString("shop_postgresql_db_schema_full.sql"));
    }

    void jsonIsAsItsSchemaSays()
    {
        if (!support::hasSchemaValidator()) {
            QSKIP("python3-jsonschema is not installed");
        }
        QStringList files;
        // Among all the changes made by chance are findings of most kinds.
        for (unsigned seed = 1; seed <= 5; ++seed) {
            QFile::remove(m_project);
            support::random_model model(seed);
            store(storage::text_form::write(*model.project()));
            tag();
            model.change();
            store(storage::text_form::write(*model.project()));
            const program_result result = check({"--db", "all", "--all", "--json", "--fail-on", "never"});
            QCOMPARE(result.status, 0);
            files << writeFile(QStringLiteral("told%1.json").arg(seed), result.output);
        }
        storeSwap();
        const QString text = writeFile("shop.json", textOf(json(Swapped)));
        const QString accepted =
            writeFile("a.json", json("{'accept': [{'code': 'KV203', 'why': 'x', 'until': "
                                     "'2999-01-31'}, {'code': 'KV101', 'why': 'y'}]}"));
        files << writeFile("told.json", check({"--json", "--text", text, "--accept", accepted}).output);
        QCOMPARE(support::schemaErrors("check.schema.json", files), QByteArray());
        for (const auto & [part, other] : {std::pair{"\"KV203\"", "\"KV2030\""},
                                           {"\"refused\"", "\"refuse\""},
                                           {"\"fingerprint\"", "\"print\""}}) {
            QByteArray damaged = support::bytesOf(files.constLast());
            QVERIFY2(damaged.contains(part), part);
            const QString file = writeFile("damaged.json", damaged.replace(part, other));
            QVERIFY(!support::schemaErrors("check.schema.json", {file}).isEmpty());
        }
    }

private:
    program_result check(const QStringList & arguments)
    {
        return runProgram(QStringList{"check", m_project} + arguments);
    }
    void storeSwap()
    {
        store(textOf(json(First)));
        tag();
        store(textOf(json(Swapped)));
    }
    void store(const QByteArray & text)
    {
        const program_result result = runProgram({"import", "-", m_project}, {}, text);
        QVERIFY2(result.status == 0, result.errors.constData());
    }
    void tag()
    {
        const program_result result = runProgram({"tag", m_project});
        QVERIFY2(result.status == 0, result.errors.constData());
    }
    QString writeFile(const QString & name, const QByteArray & text)
    {
        QFile file(m_folder->filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qWarning("%s", qUtf8Printable(file.errorString()));
        }
        return file.fileName();
    }
    static QString firstLine(const QByteArray & text) { return QString::fromUtf8(text).section(u'\n', 0, 0); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_project;
};

QTEST_GUILESS_MAIN(tst_check_command)
#include "tst_check_command.moc"
