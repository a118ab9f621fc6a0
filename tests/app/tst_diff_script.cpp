// The statements that diff tells for a step, and the script of the step alone.

#include "support/json_schema.h"
#include "support/program.h"
#include "support/project_support.h"
#include "support/random_models.h"

#include "zk/zk_sql_database.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using support::json;
using support::program_result;
using support::runProgram;
using support::textOf;

namespace {

const char * const Databases[] = {"generic", "sqlite", "mysql", "postgresql", "oracle", "mssqlserver"};

const char * const Former = "{'id': 1, 'name': 'customer', 'softDeleteColumn': 'gone', 'properties': ["
                            "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
                            "{'id': 11, 'name': 'mail', 'type': 'QString'},"
                            "{'id': 12, 'name': 'age', 'type': 'int'}]},"
                            "{'id': 3, 'name': 'old', 'properties': []}";
const char * const Later =
    "{'id': 1, 'name': 'client', 'properties': ["
    "{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 11, 'name': 'mail', 'type': 'int', 'index': true},"
    "{'id': 15, 'name': 'places', 'relationship': {'id': 2, 'type': 'many-to-many', 'target': "
    "4, 'inverse': 41, 'extraTable': 'client_place', 'foreignKey': 'c', 'foreignKeyOwner': "
    "'p'}}]},"
    "{'id': 4, 'name': 'place', 'properties': ["
    "{'id': 40, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 12, 'name': 'age', 'type': 'int', 'index': true},"
    "{'id': 41, 'name': 'clients', 'relationship': {'id': 3, 'type': 'many-to-many', "
    "'target': 1, 'inverse': 15, 'extraTable': 'client_place', 'foreignKey': 'p', 'foreignKeyOwner': 'c'}}]}";

/// An entity with nothing but a key, whose id is ten times that of the entity.
QByteArray entity(int id, const char * name, const char * fields = "")
{
    return json(
        QStringLiteral("{'id': %1, 'name': '%2', %3'properties': [{'id': %4, 'name': 'id', 'type': "
                       "'long', 'identifier': true}]}")
            .arg(QString::number(id), QLatin1String(name), QLatin1String(fields), QString::number(10 * id))
            .toLatin1()
            .constData());
}

} // namespace

class tst_diff_script : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_sProject = m_folder->filePath(QStringLiteral("shop.korv"));
        QVERIFY(support::writeBytes(path("a.json"), textOf(json(Former))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(json(Later))));
    }
    void cleanup() { zk::ZkSqlDatabase::clearAllDatabases(); }

    void statementsStandBelowTheirChanges()
    {
        const program_result result = diff({path("a.json"), path("b.json"), "--db", "postgresql"});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        QCOMPARE(
            withoutFolder(result.output),
            QString(R"(a.json to b.json: 9 changes, 7 statements for PostgreSQL, 2 errors, 2 warnings, 7 notes

entity client
  name: customer -> client
      ALTER TABLE customer RENAME TO client;
      ! KV601 note: Programs that ask for 'customer' fail from this statement on.
      ! KV415 note: Table 'client' keeps names of what belongs to it: 'customer_pkey' is 'client_pkey' in a new database.
  soft delete column: gone -> (none) (no statement)
      ! KV404 warning: The soft-delete column 'gone' of 'client' is not followed.
  property mail
    type: QString -> int (no statement)
        ! KV401 warning: The column 'mail' of 'client.mail' is still text, in a new database it is integer.
    index: no -> yes
        CREATE INDEX idx_client_mail ON client (mail);
        ! KV224 note: The index of 'client.mail' takes no text of more than 2,704 bytes: a row with a longer one keeps the index from being made, and later such a row cannot be written.
        ! KV502 note: PostgreSQL 15 keeps everybody from writing to table 'client' while this statement reads the whole of it.
  + property places: many-to-many to place
      CREATE TABLE client_place (p BIGSERIAL, c BIGSERIAL) WITH (OIDS = FALSE);

+ entity place: 3 properties
    CREATE TABLE place (id BIGSERIAL NOT NULL PRIMARY KEY, age INTEGER) WITH (OIDS = FALSE);
    ! KV416 note: The columns of table 'client_place' are in another order than in a new one.
  > property age, which was in entity customer
      ALTER TABLE client DROP COLUMN age;
      ! KV305 error: The column 'age' of table 'client' is dropped with its values: the property is now 'place.age'.
      ! KV602 note: Programs that use 'age' of table 'client' fail from this statement on.
    index: no -> yes
        CREATE INDEX idx_place_age ON place (age);

- entity old: 0 properties
    DROP TABLE old;
    ! KV301 error: Table 'old' of 'old' is dropped with all its rows.
    ! KV602 note: Programs that use 'old' fail from this statement on.
)"));
    }
    void asMarkdown()
    {
        QVERIFY(support::writeBytes(path("a.json"), textOf(entity(1, "a") + "," + entity(2, "b"))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(entity(1, "c", "'key': 'k', "))));
        const QString told = QString::fromUtf8(
            diff({path("a.json"), path("b.json"), "--db", "mysql", "--format", "markdown"}).output);
        QCOMPARE(told.section(QLatin1Char('\n'), 1), QString(R"(
### entity c

- key: (by name) -> k (no statement)
- name: a -> c

  ```sql
  RENAME TABLE `a` TO `c`;
  ```

  - KV601 note: Programs that ask for 'a' fail from this statement on.

### \- entity b: 1 property

```sql
DROP TABLE `b`;
```

- KV301 warning: Table 'b' of 'b' is dropped with all its rows.
- KV602 note: Programs that use 'b' fail from this statement on.
)"));
    }
    void theFrameOfAScriptIsNotTold()
    {
        QVERIFY(support::writeBytes(path("a.json"), textOf(entity(1, "a"))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(entity(1, "b"))));
        QCOMPARE(
            withoutFolder(diff({path("a.json"), path("b.json"), "--db", "sqlite"}).output),
            QString("a.json to b.json: 1 change, 1 statement for SQLite, 1 note\n\nentity b\n  name: a -> b\n"
                    "      ALTER TABLE a RENAME TO b;\n"
                    "      ! KV601 note: Programs that ask for 'a' fail from this statement on.\n"));
        // It is there in JSON: a server runs it as well.
        QCOMPARE(statementsOf({path("a.json"), path("b.json"), "--db", "sqlite"}).size(), 4);
    }
    /// A statement cannot end the block of code that it stands in, nor fool a terminal.
    void statementsOfAnOddKind()
    {
        QVERIFY(support::writeBytes(
            path("hook.js"), "function exportStep(project, entity, property, enumeration, p) {\n"
                             "  if (p.action === 'RENAME_TABLE') return 'SELECT 1\\n  ```\\u001b[31m;';\n"
                             "}\n"));
        QVERIFY(support::writeBytes(path("a.json"), textOf(entity(1, "a"))));
        QVERIFY(support::writeBytes(path("b.json"), textOf(entity(1, "b"))));
        const QStringList arguments{path("a.json"), path("b.json"), "--db", "postgresql",
                                    "--custom-script=" + path("hook.js")};
        const QByteArray text = diff(arguments).output;
        QVERIFY2(text.contains("  name: a -> b\n      SELECT 1\n        ``` [31m;\n      ! KV299 error: "),
                 text.constData());
        const QByteArray markdown = diff(arguments + QStringList{"--format", "markdown"}).output;
        QVERIFY2(markdown.contains(
                     "- name: a -> b\n\n  ````sql\n  SELECT 1\n    ``` [31m;\n  ````\n\n  - KV299 error: "),
                 markdown.constData());
    }
    void whatNoChangeExplains()
    {
        QVERIFY(support::writeBytes(path("hook.js"),
                                    "function exportStep(project, entity, property, enumeration, p) {\n"
                                    "  if (p.action === 'DDL_EXPORT_BEGIN') return 'SET x = 1;';\n"
                                    "}\n"));
        QVERIFY(support::writeBytes(path("a.json"), textOf(json("{'id': 1, 'name': 'a'}"))));
        const QString script = "--custom-script=" + path("hook.js");
        const program_result told = diff({path("a.json"), path("a.json"), "--db", "postgresql", script});
        QCOMPARE(withoutFolder(told.output),
                 QString("a.json to a.json: no changes, 1 statement for PostgreSQL\n\n"
                         "statements that follow from no change of the model\n    SET x = 1;\n"));
        const QJsonArray statements =
            statementsOf({path("a.json"), path("a.json"), "--db", "postgresql", script});
        QCOMPARE(statements.at(0)["customScript"], QJsonValue(true));
        QCOMPARE(statements.at(0)["causes"].toArray(), QJsonArray());
    }

    void theScriptIsWhatAnExportWrites_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("database");
        int number = 0;
        for (const char * const database : Databases) {
            QTest::newRow(database) << number++ << QString::fromLatin1(database);
        }
    }
    void theScriptIsWhatAnExportWrites()
    {
        QFETCH(int, number);
        QFETCH(QString, database);
        for (unsigned seed = 1; seed <= 4; ++seed) {
            makeHistory(100 * seed + static_cast<unsigned>(number));
            const program_result written = runProgram(
                {"export", m_sProject, "-y", "--KorvGenericDDLExport_path=sql",
                 QStringLiteral("--KorvGenericDDLExport_db_type=%1").arg(number),
                 "--KorvGenericDDLExport_schema_type=1", "--KorvGenericDDLExport_relation_as_fk=1"});
            QCOMPARE(written.status, 0);
            for (int version = 1; version <= 3; ++version) {
                const QString step = QStringLiteral("_v%1_to_v%2.sql").arg(version).arg(version + 1);
                const QStringList files = QDir(path("sql")).entryList({QLatin1Char('*') + step});
                QCOMPARE(files.size(), 1);
                const QByteArray expected =
                    support::bytesOf(path("sql") + QLatin1Char('/') + files.constFirst());
                QVERIFY(!expected.isEmpty());
                const QString to = version == 3 ? QString("now") : QStringLiteral("v%1").arg(version + 1);
                const QStringList versions{m_sProject, QStringLiteral("v%1").arg(version), to};
                const QStringList options{"--db", database, "--relationships", "yes"};
                QCOMPARE(diff(versions + options + QStringList("--sql")).output, expected);
                const QJsonArray statementList = statementsOf(versions + options);
                for (const QJsonValue & statement : statementList) {
                    QCOMPARE(statement["script"].toString(), files.constFirst());
                    // Each statement stands in the script where it says.
                    const QStringList lines = QString::fromUtf8(expected).split(QLatin1Char('\n'));
                    const QStringList found =
                        lines.mid(statement["line"].toInt() - 1, statement["lines"].toInt());
                    QVERIFY(found.join(QLatin1Char('\n')).contains(statement["text"].toString()));
                }
            }
            QVERIFY(QDir(path("sql")).removeRecursively());
            QVERIFY(QFile::remove(m_sProject));
        }
    }
    /// Nothing that a step says of an object comes from nowhere, and a cause is a change of the objects that
    /// the statement is about.
    void everyStatementHasItsCause()
    {
        int statements = 0;
        QStringList files;
        for (unsigned seed = 1; seed <= 60; ++seed) {
            support::random_model model(seed);
            QVERIFY(support::writeBytes(path("a.json"), storage::text_form::write(*model.project())));
            model.change();
            model.change();
            QVERIFY(support::writeBytes(path("b.json"), storage::text_form::write(*model.project())));
            const char * const database = Databases[seed % std::size(Databases)];
            const QByteArray output =
                diff({path("a.json"), path("b.json"), "--json", "--db", database, "--relationships", "yes"})
                    .output;
            files << m_folder->filePath(QStringLiteral("told%1.json").arg(seed));
            QVERIFY(support::writeBytes(files.constLast(), output));
            const QJsonObject told = QJsonDocument::fromJson(output).object();
            QCOMPARE(told["database"], QJsonValue(QLatin1String(database)));
            const QJsonArray changes = told["changes"].toArray();
            const QJsonArray statementList = told["statements"].toArray();
            for (const QJsonValue & statement : statementList) {
                if (statement["action"].toString().startsWith(QLatin1String("DDL_EXPORT"))) {
                    QCOMPARE(statement["causes"].toArray(), QJsonArray());
                    continue;
                }
                ++statements;
                const QByteArray shown = QJsonDocument(statement.toObject()).toJson();
                QVERIFY2(!statement["causes"].toArray().isEmpty(), shown.constData());
                const QJsonArray causeList = statement["causes"].toArray();
                for (const QJsonValue & cause : causeList) {
                    QVERIFY2(isAbout(statement, changes.at(cause.toInt())), shown.constData());
                }
            }
        }
        QVERIFY(statements > 300);
        if (!support::hasSchemaValidator()) {
            QSKIP("python3-jsonschema is not installed");
        }
        QCOMPARE(support::schemaErrors("diff.schema.json", files), QByteArray());
    }
    void aStatementInJson()
    {
        const QJsonArray statements = statementsOf({path("a.json"), path("b.json"), "--db", "mariadb"});
        QCOMPARE(QJsonDocument(statements.at(1).toObject()).toJson(QJsonDocument::Compact),
                 json("{'action':'RENAME_TABLE','causes':[0],'customScript':false,'line':3,'lines':1,'"
                      "objects':[{'id':1,"
                      "'kind':'entity','name':'client'}],'script':'shop_mysql_db_schema_v1_to_v2.sql','text':"
                      "'RENAME TABLE `customer` TO `client`;'}"));
    }

    void theStoredDatabaseCounts()
    {
        makeHistory(5);
        const auto database = [](const QStringList & arguments) {
            return QJsonDocument::fromJson(diff(arguments + QStringList{"--json", "--db", "oracle"}).output)
                .object()["database"]
                .toString();
        };
        QCOMPARE(database({m_sProject}), QString("oracle"));
        // With --sql alone the one that the project has stored.
        QCOMPARE(runProgram({"export", m_sProject, "-y", "--KorvGenericDDLExport_path=sql",
                             "--KorvGenericDDLExport_db_type=3", "--KorvGenericDDLExport_schema_type=1"})
                     .status,
                 0);
        const QByteArray asked = diff({m_sProject, "--sql", "--db", "postgresql"}).output;
        QVERIFY(asked != diff({m_sProject, "--sql"}).output);
        execute("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) VALUES "
                "('713A034E-3F7A-422A-BC81-22132DA57110', 'DDL_EXPORT_DATABASE_TYPE', 3)");
        QCOMPARE(diff({m_sProject, "--sql"}).output, asked);
    }
    void aTextHasTheDefaults()
    {
        QCOMPARE(diff({path("a.json"), path("b.json"), "--sql"}).output,
                 diff({path("a.json"), path("b.json"), "--sql", "--db", "sqlite"}).output);
    }
    void aVersionUnderAnOldName()
    {
        makeHistory(7);
        execute("UPDATE t_project SET name = 'store'");
        const QJsonArray statements = statementsOf({m_sProject, "v1", "v2", "--db", "sqlite"});
        QCOMPARE(statements.at(0)["script"], QJsonValue("store_sqlite_db_schema_v1_to_v2.sql"));
    }
    void theCustomScriptOfAProject()
    {
        makeHistory(9);
        QVERIFY(support::writeBytes(path("hook.js"), "function exportStep() { return 'SELECT 1;'; }\n"));
        execute("INSERT INTO t_plugin_params (plugin_guid, param_key, param_value) VALUES "
                "('713A034E-3F7A-422A-BC81-22132DA57110', 'DDL_EXPORT_CUSTOM_JAVASCRIPT', 'hook.js')");
        const program_result run = diff({m_sProject, "--sql"});
        QVERIFY(run.output.startsWith("SELECT 1;\n"));
        QCOMPARE(run.errors, "Custom script of the project: " + path("hook.js").toUtf8() +
                                 " ('--no-custom-script' leaves it out)\n");
        const program_result without = diff({m_sProject, "--sql", "--no-custom-script"});
        QCOMPARE(without.errors, QByteArray());
        QVERIFY(!without.output.contains("SELECT 1;"));
        QVERIFY(support::writeBytes(path("hook.js"), "function exportStep() { throw new Error('no'); }\n"));
        const program_result failed = diff({m_sProject, "--sql", "--exit-code"});
        QCOMPARE(failed.status, 1);
        QCOMPARE(failed.output, QByteArray());
        QVERIFY2(failed.errors.contains("hook.js") && failed.errors.count('\n') == 2,
                 failed.errors.constData());
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("database") << QStringList{"--db", "foo"} << 2
                                  << QByteArray("'foo' is not a database; they are generic, sqlite, mysql, "
                                                "mariadb, postgresql, oracle, mssqlserver\n");
        QTest::newRow("several databases")
            << QStringList{"--db", "all"} << 2
            << QByteArray(
                   "'all' is not a database; they are generic, sqlite, mysql, mariadb, postgresql, oracle, "
                   "mssqlserver\n");
        QTest::newRow("relationships")
            << QStringList{"--sql", "--relationships", "maybe"} << 2
            << QByteArray("'maybe' is not a value of --relationships; it takes no, yes\n");
        QTest::newRow("script in another form")
            << QStringList{"--sql", "--json"} << 2
            << QByteArray(
                   "--sql prints the script alone, which has no other format; leave one of both out\n");
        QTest::newRow("script as Markdown")
            << QStringList{"--sql", "--format", "markdown"} << 2
            << QByteArray(
                   "--sql prints the script alone, which has no other format; leave one of both out\n");
        for (const QString & option : {QString("--relationships=no"), QString("--custom-script=a.js"),
                                       QString("--no-custom-script"), QString("--plugin=Foo")}) {
            QTest::newRow(qPrintable(option + " without statements"))
                << QStringList{option} << 2
                << QByteArray(
                       "Without --db or --sql no statements are told, and the options of the export have no "
                       "say; add one of both\n");
        }
        QTest::newRow("plugin") << QStringList{"--sql", "--plugin", "Foo"} << 1 << QByteArray("Foo");
    }
    void failures()
    {
        QFETCH(QStringList, options);
        QFETCH(int, status);
        QFETCH(QByteArray, reason);
        const program_result result = diff(QStringList{path("a.json"), path("b.json")} + options);
        QCOMPARE(result.status, status);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY2(reason.endsWith('\n') ? result.errors == reason : result.errors.contains(reason),
                 result.errors.constData());
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
    static QJsonArray statementsOf(const QStringList & arguments)
    {
        const program_result result = diff(arguments + QStringList{QStringLiteral("--json")});
        return QJsonDocument::fromJson(result.output).object()["statements"].toArray();
    }
    /// Whether `change` is one of the objects of `statement`; of a link table also one of the other side.
    static bool isAbout(const QJsonValue & statement, const QJsonValue & change)
    {
        if (statement["action"] == QJsonValue("CREATE_EXTRA_TABLE")) {
            return true;
        }
        const QJsonArray objectList = statement["objects"].toArray();
        for (const QJsonValue & object : objectList) {
            if (object["kind"] == change["kind"] && object["id"] == change["id"]) {
                return true;
            }
        }
        return false;
    }
    /// A project with three versions and another state.
    void makeHistory(unsigned seed)
    {
        const QSqlError error = support::writeHistory(m_sProject, seed);
        QVERIFY2(!error.isValid(), qPrintable(error.text()));
    }
    void execute(const QString & statement) const
    {
        QSqlQuery query(zk::ZkSqlDatabase::getDatabase(m_sProject));
        QVERIFY(query.exec(statement));
        zk::ZkSqlDatabase::clearAllDatabases();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_sProject;
};

QTEST_GUILESS_MAIN(tst_diff_script)
#include "tst_diff_script.moc"
