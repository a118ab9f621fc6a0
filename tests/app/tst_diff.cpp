// What the command diff tells, in each form.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include "storage/history.h"
#include "zk/zk_sql_database.h"

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

const char * const Former =
    "{'id': 1, 'name': 'customer', 'tableName': 't_customer', 'properties': ["
    "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 11, 'name': 'mail', 'type': 'QString', 'index': true},"
    "{'id': 12, 'name': 'state', 'enumeration': 1},"
    "{'id': 13, 'name': 'home', 'relationship': {'id': 1, 'type': 'many-to-one', 'target': 2}},"
    "{'id': 14, 'name': 'age', 'type': 'int'}]},"
    "{'id': 2, 'name': 'country', 'properties': [{'id': 20, 'name': 'id', 'type': 'long', 'identifier': "
    "true}]},{'id': 3, 'name': 'old', 'properties': []}";
const char * const FormerStates = "{'id': 1, 'name': 'state', 'values': [{'name': 'open', 'value': 1}]},"
                                  "{'id': 2, 'name': 'mood', 'values': []}";
const char * const Later =
    "{'id': 1, 'name': 'client', 'metaData': {'DDL_EXPORT_CREATE_TABLE': false}, 'properties': ["
    "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true, 'autoIncrement': false},"
    "{'id': 11, 'name': 'mail', 'columnName': 'e_mail', 'type': 'QString', 'forceSqlType': 'CITEXT', "
    "'allowNull': false},"
    "{'id': 12, 'name': 'state', 'enumeration': 2},"
    "{'id': 13, 'name': 'home', 'relationship': {'id': 1, 'type': 'one-to-one', 'target': 4}},"
    "{'id': 15, 'name': 'tags', 'relationship': {'id': 2, 'type': 'many-to-many', 'target': 4}}]},"
    "{'id': 4, 'name': 'place', 'properties': [{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 14, 'name': 'age', 'type': ['int', 'long'], 'columnName': 'a|b'}]}";
const char * const LaterStates =
    "{'id': 1, 'name': 'state', 'values': [{'name': 'open', 'value': 1}, {'name': "
    "'paid', 'value': 2}]}, {'id': 2, 'name': 'mood', 'values': []}";

const char * const Told = R"(a.json to b.json: 20 changes

entity client
  name: customer -> client
  table: t_customer -> (by name)
  meta-data DDL_EXPORT_CREATE_TABLE: (none) -> no
  property id
    auto-increment: (by type) -> no
  property mail
    column: (by name) -> e_mail
    SQL type: (by type) -> CITEXT
    null allowed: yes -> no
    index: yes -> no
  property state
    enumeration: state -> mood
  property home
    relationship type: many-to-one -> one-to-one
    relationship target: country -> place
  + property tags: many-to-many to place

+ entity place: 2 properties
  > property id, which was in entity country
  > property age, which was in entity customer
    column: (by name) -> a|b
    type: int -> int, long

enumeration state
  values: open = 1 -> open = 1, paid = 2

- entity country: 1 property

- entity old: 0 properties
)";

} // namespace

class tst_diff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(support::writeBytes(path("a.json"), textOf(json(Former), json(FormerStates))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(json(Later), json(LaterStates))));
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void asText()
    {
        const program_result result = diff({path("a.json"), path("b.json")});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(withoutFolder(result.output), QString(Told));
        QCOMPARE(result.status, 0);
    }
    void asMarkdown()
    {
        QVERIFY(support::writeBytes(path("a.json"),
                                    textOf(R"({"id": 1, "name": "a_b"}, {"id": 2, "name": "gone"})")));
        QVERIFY(support::writeBytes(
            path("b.json"),
            textOf(R"({"id": 1, "name": "a*b", "properties": [{"id": 1, "name": "p", "type": "int"}]})")));
        const program_result result = diff({path("a.json"), path("b.json"), "--format", "markdown"});
        const QString told = QString::fromUtf8(result.output);
        const QString folder = m_folder->path().replace("_", "\\_");
        QCOMPARE(
            told,
            QString("## %1/a.json to %1/b.json: 3 changes\n\n### entity a\\*b\n\n- name: a\\_b -> a\\*b\n"
                    "- \\+ property p: int\n\n### \\- entity gone: 0 properties\n")
                .arg(folder));
    }
    void whatComesAndGoes()
    {
        QVERIFY(support::writeBytes(
            path("a.json"),
            textOf(json("{'id': 1, 'name': 'person', 'properties': [{'id': 10, 'name': 'home', 'type': "
                        "'QString'}]}, {'id': 2, 'name': 'country', 'properties': []}"),
                   json("{'id': 1, 'name': 'mood', 'values': [{'name': 'calm', 'value': 1}]}"))));
        QVERIFY(support::writeBytes(
            path("b.json"),
            textOf(
                json("{'id': 1, 'name': 'person', 'properties': [{'id': 10, 'name': 'home', 'relationship': "
                     "{'id': 1, 'type': 'many-to-one', 'target': 2}}, {'id': 11, 'name': 'mail', 'type': "
                     "'QString', 'allowNull': false, 'unique': true, 'transient': true}]}, "
                     "{'id': 2, 'name': 'country', 'properties': []}"),
                json("{'id': 2, 'name': 'rank', 'values': [{'name': 'low', 'value': 1}, {'name': 'high', "
                     "'value': 2}]}"))));
        const QString told = withoutFolder(diff({path("a.json"), path("b.json")}).output);
        const QString back = withoutFolder(diff({path("b.json"), path("a.json")}).output);
        QVERIFY2(told.contains("\n  + property mail: QString, not null, unique, transient\n"),
                 qPrintable(told));
        QVERIFY2(told.contains("\n    + relationship: many-to-one to country\n"), qPrintable(told));
        QVERIFY2(told.contains("\n+ enumeration rank: 2 values\n"), qPrintable(told));
        QVERIFY2(told.contains("\n- enumeration mood: 1 value\n"), qPrintable(told));
        QVERIFY2(back.contains("\n    - relationship: many-to-one to country\n"), qPrintable(back));
        QVERIFY2(back.contains("\n- enumeration rank: 2 values\n"), qPrintable(back));
    }
    void versionsOfAProject()
    {
        makeHistory();
        const QString project = path("shop.korv");
        QCOMPARE(diff({project}).output,
                 QByteArray("shop, v2 to now: 1 change\n\nentity three\n  name: two -> three\n"));
        QCOMPARE(diff({project, "v1"}).output,
                 QByteArray("shop, v1 to now: 1 change\n\nentity three\n  name: one -> three\n"));
        QCOMPARE(diff({project, "v1", "v2"}).output,
                 QByteArray("shop, v1 to v2: 1 change\n\nentity two\n  name: one -> two\n"));
        QCOMPARE(diff({project, "v2", "v1"}).output,
                 QByteArray("shop, v2 to v1: 1 change\n\nentity one\n  name: two -> one\n"));
        QCOMPARE(diff({project, "now"}).output, QByteArray("shop, now to now: no changes\n"));
        QCOMPARE(diff({project, "v2", "v2"}).output, QByteArray("shop, v2 to v2: no changes\n"));
    }
    void aTextWithoutIdsFollowsItsNames()
    {
        const QByteArray former = textOf(R"({"name": "a", "properties": [{"name": "p"}]}, {"name": "b"})");
        QVERIFY(support::writeBytes(
            path("b.json"),
            textOf(R"({"name": "b"}, {"name": "a", "properties": [{"name": "q"}, {"name": "p"}]})")));
        const program_result result = runProgram({"diff", "-", path("b.json")}, {}, former);
        QCOMPARE(result.output, "standard input to " + path("b.json").toUtf8() +
                                    ": 1 change\n\nentity a\n  + property q: without type\n");
    }
    void aProjectAndAText()
    {
        makeHistory();
        QVERIFY(support::writeBytes(path("a.json"), textOf(R"({"id": 1, "name": "four"})")));
        const QByteArray told = diff({path("shop.korv"), path("a.json")}).output;
        QVERIFY2(told.endsWith(": 1 change\n\nentity four\n  name: three -> four\n"), told.constData());
    }
    void exitCode()
    {
        QCOMPARE(diff({path("a.json"), path("b.json"), "--exit-code"}).status, 3);
        QCOMPARE(diff({path("a.json"), path("a.json"), "--exit-code"}).status, 0);
        QCOMPARE(diff({path("a.json"), path("none.json"), "--exit-code"}).status, 1);
    }
    void namesCannotFoolATerminal()
    {
        QVERIFY(support::writeBytes(path("a.json"), textOf(R"({"id": 1, "name": "a"})")));
        QVERIFY(
            support::writeBytes(path("b.json"), textOf("{\"id\": 1, \"name\": \"b\\n\\u001b[31m\\u202e\"}")));
        const QByteArray told = diff({path("a.json"), path("b.json")}).output;
        QCOMPARE(told.count('\n'), 4);
        QVERIFY(!told.contains('\x1b'));
        QVERIFY(told.contains("<U+202E>"));
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("reason");
        QTest::newRow("beyond the history")
            << QStringList{"PATH/shop.korv", "v7"} << 1 << "PATH/shop.korv: v7: the project has 2 versions\n";
        QTest::newRow("ends beyond the history") << QStringList{"PATH/shop.korv", "v1", "v3"} << 1
                                                 << "PATH/shop.korv: v3: the project has 2 versions\n";
        QTest::newRow("no version yet")
            << QStringList{"PATH/new.korv"} << 1
            << "PATH/new.korv: v1: the project has no versions; 'korvane tag' makes one\n";
        QTest::newRow("one text")
            << QStringList{"PATH/a.json"} << 1
            << "PATH/a.json: a text form has no versions; give a second source to compare it with\n";
        QTest::newRow("a version of a text")
            << QStringList{"PATH/a.json", "v1"} << 1
            << "PATH/a.json: a text form has no versions; give a second source to compare it with\n";
        QTest::newRow("neither version nor file")
            << QStringList{"PATH/shop.korv", "V1"} << 1
            << "V1: is neither a version (v1, v2 \u2026 or now) nor a file that is there\n";
        QTest::newRow("no source") << QStringList{"PATH/none"} << 1
                                   << "PATH/none: does not exist; check the name\n";
        QTest::newRow("a version after two sources") << QStringList{"PATH/a.json", "PATH/b.json", "v1"} << 2
                                                     << "'PATH/b.json' is no version, and after a second "
                                                        "source no version can follow; versions are v1, v2 "
                                                        "\u2026 and now\n";
        QTest::newRow("no version to end with") << QStringList{"PATH/shop.korv", "v1", "2"} << 2
                                                << "'2' is not a version; versions are v1, v2 \u2026 as "
                                                   "'korvane log' lists them, and now for the state "
                                                   "of the project\n";
        QTest::newRow("standard input twice")
            << QStringList{"-", "-"} << 2
            << "Both sources are '-', but standard input can be read only once\n";
        QTest::newRow("no format") << QStringList{"PATH/shop.korv", "--format", "xml"} << 2
                                   << "'xml' is not a value of --format; it takes text, json, markdown\n";
    }
    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, reason);
        makeHistory();
        QVERIFY(!storage::project_file::write(path("new.korv"), *support::projectOf(textOf(""))).isValid());
        arguments.replaceInStrings("PATH", m_folder->path());
        const program_result result = diff(arguments);
        QCOMPARE(QString::fromUtf8(result.errors), reason.replace("PATH", m_folder->path()));
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.status, status);
    }

    void asJson()
    {
        const program_result result = diff({path("a.json"), path("b.json"), "--json"});
        const QJsonObject root = QJsonDocument::fromJson(result.output).object();
        QCOMPARE(root["format"], QJsonValue("korvane.diff"));
        QCOMPARE(root["formatVersion"], QJsonValue(1));
        QVERIFY(runProgram({"--version"})
                    .output.startsWith("korvane " + root["program"].toString().toUtf8() + "\n"));
        QCOMPARE(root["project"], QJsonValue("shop"));
        QCOMPARE(root["from"], QJsonValue(path("a.json")));
        QCOMPARE(root["to"], QJsonValue(path("b.json")));
        const QJsonArray changes = root["changes"].toArray();
        QCOMPARE(changes.size(), 20);
        const auto compact = [&changes](int i) {
            return QJsonDocument(changes.at(i).toObject()).toJson(QJsonDocument::Compact);
        };
        QCOMPARE(compact(0),
                 json("{'after':'client','before':'customer','change':'renamed','field':'name','id':1,"
                      "'kind':'entity','name':'client','of':null}"));
        QCOMPARE(compact(10),
                 json("{'after':4,'before':2,'change':'changed','field':'target','id':1,'kind':"
                      "'relationship','name':'home','of':{'id':13,'kind':'property','name':'home','of':"
                      "{'id':1,'kind':'entity','name':'client','of':null}}}"));
        QCOMPARE(compact(11),
                 json("{'after':null,'before':null,'change':'added','field':null,'id':15,'kind':"
                      "'property','name':'tags','of':{'id':1,'kind':'entity','name':'client','of':null}}"));
        QCOMPARE(compact(16),
                 json("{'after':['int','long'],'before':'int','change':'changed','field':'type','id':14,"
                      "'kind':'property','name':'age','of':{'id':4,'kind':'entity','name':'place','of':"
                      "null}}"));
        QCOMPARE(diff({path("a.json"), path("b.json"), "--format", "json"}).output, result.output);
    }
    void jsonIsAsItsSchemaSays()
    {
        if (!support::hasSchemaValidator()) {
            QSKIP("python3-jsonschema is not installed");
        }
        QStringList files;
        const auto keep = [&](const QStringList & sources) {
            const program_result result = diff(sources + QStringList{"--json"});
            const QString name = m_folder->filePath(QStringLiteral("told%1.json").arg(files.size()));
            files << name;
            return result.status == 0 && support::writeBytes(name, result.output);
        };
        QVERIFY(keep({path("a.json"), path("b.json")}));
        const QString samples = QStringLiteral(KORVANE_SOURCE_DIR "/samples/");
        QVERIFY(keep({samples + "festival_v1.json", samples + "festival.json"}));
        for (unsigned seed = 1; seed <= 20; ++seed) {
            support::random_model model(seed);
            QVERIFY(support::writeBytes(path("a.json"), storage::text_form::write(*model.project())));
            model.change();
            QVERIFY(support::writeBytes(path("b.json"), storage::text_form::write(*model.project())));
            QVERIFY(keep({path("a.json"), path("b.json")}));
        }
        QCOMPARE(support::schemaErrors("diff.schema.json", files), QByteArray());
        // And the schema does not let everything pass.
        for (const auto & [part, other] : {std::pair{"\"renamed\"", "\"rename\""},
                                           {"\"of\": null", "\"off\": null"},
                                           {"\"formatVersion\": 1", "\"formatVersion\": 2"}}) {
            QByteArray damaged = support::bytesOf(files.constFirst());
            QVERIFY(damaged.contains(part));
            QVERIFY(support::writeBytes(path("damaged.json"), damaged.replace(part, other)));
            QVERIFY(!support::schemaErrors("diff.schema.json", {path("damaged.json")}).isEmpty());
        }
    }

private:
    [[nodiscard]] QString path(const char * name) const
    {
        return m_folder->filePath(QString::fromLatin1(name));
    }
    [[nodiscard]] QString withoutFolder(const QByteArray & output) const
    {
        return QString::fromUtf8(output).remove(m_folder->path() + QLatin1Char('/'));
    }
    static program_result diff(const QStringList & arguments)
    {
        return runProgram(QStringList{QStringLiteral("diff")} + arguments);
    }
    /// A project whose only entity is called "one", "two" and now "three".
    void makeHistory() const
    {
        for (const char * const name : {"one", "two", "three"}) {
            const auto project =
                support::projectOf(textOf(QByteArray("{\"id\": 1, \"name\": \"") + name + "\"}"));
            const QSqlError error = storage::project_file::write(path("shop.korv"), *project);
            QVERIFY2(!error.isValid(), qPrintable(error.text()));
            int number = 0;
            if (name != QByteArray("three")) {
                QVERIFY(!storage::history::tag(path("shop.korv"), QString(), number).isValid());
            }
        }
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_diff)
#include "tst_diff.moc"
