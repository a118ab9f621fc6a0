// A model that comes of a SQLite file: what becomes of a catalogue, what stays of a project that is there,
// and what is told.

#include "app/sqlite_bench.h"

#include "support/project_support.h"

#include <QDir>

using support::json;
using support::program_result;
using support::runProgram;
using support::storedText;
using support::textOf;

class tst_import_database : public support::sqlite_bench
{
    Q_OBJECT

private Q_SLOTS:
    void init() { beginAnew(); }

    void tablesBecomeEntities()
    {
        make({"CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, email VARCHAR(100) NOT "
              "NULL UNIQUE, born DATE, state INTEGER)",
              "CREATE INDEX idx_customer_state ON customer (state)",
              "CREATE TABLE pair (a INTEGER NOT NULL, b TEXT NOT NULL, PRIMARY KEY (a, b))"});
        QCOMPARE(imported(), QByteArray("Project 'shop' imported into " + m_project.toUtf8() +
                                        " (entities: 2; without a place in the model: 0)\n"));
        QCOMPARE(entities(),
                 json("{'id': 1, 'name': 'customer', 'version': 1, 'properties': ["
                      "{'id': 1, 'name': 'id', 'type': 'int', 'identifier': true},"
                      "{'id': 2, 'name': 'email', 'type': 'QString', 'forceSqlType': 'VARCHAR(100)', "
                      "'allowNull': false, 'unique': true},"
                      "{'id': 3, 'name': 'born', 'type': 'QDate'},"
                      "{'id': 4, 'name': 'state', 'type': 'int', 'index': true}]},"
                      "{'id': 2, 'name': 'pair', 'version': 1, 'properties': ["
                      "{'id': 5, 'name': 'a_b', 'columnName': 'a|b', 'type': ['int', 'QString'], "
                      "'identifier': true}]}"));
    }

    void foreignKeysBecomeRelationships()
    {
        make(
            {"CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY)",
             "CREATE TABLE passport (id INTEGER NOT NULL PRIMARY KEY, holder INTEGER UNIQUE REFERENCES "
             "customer)",
             "CREATE TABLE t_order (id INTEGER NOT NULL PRIMARY KEY, customer_id INTEGER, parent_id INTEGER, "
             "FOREIGN KEY (customer_id) REFERENCES customer (id), FOREIGN KEY (parent_id) REFERENCES t_order "
             "(id))"});
        QVERIFY(imported().endsWith("(entities: 3; without a place in the model: 0)\n"));
        QCOMPARE(
            entities(),
            json("{'id': 1, 'name': 'customer', 'version': 1, 'properties': ["
                 "{'id': 1, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false},"
                 "{'id': 8, 'name': 't_order', 'relationship': {'id': 4, 'type': 'one-to-many', 'target': 3, "
                 "'inverse': 6}}]},"
                 "{'id': 2, 'name': 'passport', 'version': 1, 'properties': ["
                 "{'id': 2, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false},"
                 "{'id': 3, 'name': 'holder', 'type': 'int', 'unique': true},"
                 "{'id': 4, 'name': 'holder2', 'columnName': 'holder', 'relationship': {'id': 1, 'type': "
                 "'one-to-one', 'target': 1}}]},"
                 "{'id': 3, 'name': 't_order', 'version': 1, 'properties': ["
                 "{'id': 5, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false},"
                 "{'id': 6, 'name': 'customer', 'columnName': 'customer_id', 'relationship': {'id': 2, "
                 "'type': 'many-to-one', 'target': 1, 'inverse': 8}},"
                 "{'id': 7, 'name': 'parent', 'columnName': 'parent_id', 'relationship': {'id': 3, "
                 "'type': 'many-to-one', 'target': 3, 'inverse': 9}},"
                 "{'id': 9, 'name': 't_order', 'relationship': {'id': 5, 'type': 'one-to-many', 'target': 3, "
                 "'inverse': 7}}]}"));
    }

    void linkTables_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("links");
        QTest::newRow("relationship") << QStringList() << QByteArray("many-to-many, many-to-many");
        QTest::newRow("entity") << QStringList{"--link-tables", "entity"}
                                << QByteArray("one-to-many, one-to-many, many-to-one, many-to-one");
    }
    void linkTables()
    {
        QFETCH(const QStringList, options);
        QFETCH(const QByteArray, links);
        make(
            {"CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY)",
             "CREATE TABLE b (id INTEGER NOT NULL PRIMARY KEY)",
             "CREATE TABLE z_link (a_id INTEGER, b_id INTEGER, FOREIGN KEY (a_id) REFERENCES a (id), FOREIGN "
             "KEY (b_id) REFERENCES b (id))"});
        imported(options);
        QByteArrayList types;
        for (const QByteArray & line : storedText(m_project).split('\n')) {
            const qsizetype begin = line.indexOf("-to-");
            if (begin >= 0) {
                const qsizetype quote = line.lastIndexOf('"', begin);
                types << line.mid(quote + 1, line.indexOf('"', begin) - quote - 1);
            }
        }
        QCOMPARE(types.join(", "), links);
    }

    /// A row of which one of the two others has at most one is more than a link.
    void aNarrowKeyMakesNoLink()
    {
        make({"CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY)",
              "CREATE TABLE b (id INTEGER NOT NULL PRIMARY KEY)",
              "CREATE TABLE z_more (a_id INTEGER NOT NULL PRIMARY KEY, b_id INTEGER, FOREIGN KEY (a_id) "
              "REFERENCES a (id), FOREIGN KEY (b_id) REFERENCES b (id))"});
        QVERIFY(imported().endsWith("(entities: 3; without a place in the model: 0)\n"));
        QVERIFY(!storedText(m_project).contains("many-to-many"));
    }

    void whatHasNoPlaceIsListed()
    {
        const QString customer =
            "CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY, name TEXT DEFAULT 'x' "
            "COLLATE NOCASE, age INTEGER CHECK (age > 0), next INTEGER AS (age + 1), UNIQUE (name, age))";
        const QString order =
            "CREATE TABLE t_order (id INTEGER NOT NULL PRIMARY KEY, customer_id INTEGER NOT NULL, "
            "FOREIGN KEY (customer_id) REFERENCES customer (id) ON DELETE CASCADE)";
        make({customer, order, "CREATE INDEX half ON t_order (customer_id) WHERE id > 7",
              "CREATE INDEX computed ON t_order (customer_id + 1)",
              "CREATE VIEW v_all AS SELECT * FROM customer",
              "CREATE TRIGGER t_after AFTER INSERT ON t_order BEGIN DELETE FROM customer; END"});
        const QByteArray told = imported();
        QCOMPARE(told,
                 QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                            "  customer\n"
                            "    unique of customer (name, age), which scripts do not make\n"
                            "    default of column name: 'x'\n"
                            "    computed column next\n"
                            "    checks\n"
                            "    collations of columns\n"
                            "  t_order\n"
                            "    null of column t_order.customer_id: NOT NULL, which scripts make NULL\n"
                            "    trigger t_after\n"
                            "    actions of the foreign key to customer: ON UPDATE NO ACTION ON DELETE "
                            "CASCADE\n"
                            "    index half of a part of the rows\n"
                            "    index computed over expressions\n"
                            "  v_all\n"
                            "    view v_all\n"
                            "Project 'shop' imported into ") +
                     m_project.toUtf8() + QByteArray(" (entities: 2; without a place in the model: 11)\n"));
        QVERIFY(!storedText(m_project).contains("\"next\""));
    }

    /// Names of somebody's database move no terminal's cursor, and end no line.
    void namesWithControlCharacters()
    {
        make({"CREATE TABLE \"a\x1b[2J\nb\" (id INTEGER PRIMARY KEY, \"c\x07\" INT DEFAULT 1)",
              "CREATE VIEW \"v\n\" AS SELECT 1"});
        QCOMPARE(imported(), QByteArray("Without a place in the model, or made otherwise by scripts:\n"
                                        "  a [2J b\n"
                                        "    scripts cannot make the table (korvane check tells why)\n"
                                        "    default of column c : 1\n"
                                        "  v\n"
                                        "    view v\n"
                                        "Project 'shop' imported into ") +
                                 m_project.toUtf8() +
                                 QByteArray(" (entities: 1; without a place in the model: 3)\n"));
    }

    /// What is exported of the model makes the database again, of which the model is imported again.
    void theScriptsMakeTheDatabaseAgain()
    {
        const QStringList statements{
            "CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name NVARCHAR(40) UNIQUE)",
            "CREATE TABLE t_order (id INTEGER NOT NULL PRIMARY KEY, total NUMERIC(10,2) NOT NULL, "
            "customer_id INTEGER, FOREIGN KEY (customer_id) REFERENCES customer (id))",
            "CREATE INDEX idx_t_order_total ON t_order (total)"};
        make(statements);
        imported();
        const program_result script =
            runProgram({"export", m_project, "-y", "--db", "sqlite", "--relationships", "yes", "--schema",
                        "full", "--path", path("sql")});
        QCOMPARE(script.status, 0);
        const QByteArray sql = support::bytesOf(path("sql/shop_sqlite_db_schema_full.sql"));
        const QByteArray first = storedText(m_project);
        m_project = path("again/shop.korv");
        QDir(m_folder->path()).mkdir("again");
        const program_result again = runProgram(
            {"import", "ddl:" + path("sql/shop_sqlite_db_schema_full.sql"), "--db", "sqlite", m_project});
        QCOMPARE(again.errors, QByteArray());
        QCOMPARE(again.output.mid(again.output.lastIndexOf('(')),
                 QByteArray("(entities: 2; without a place in the model: 0)\n"));
        QCOMPARE(storedText(m_project), first);
    }

    void importingTwiceChangesNothing()
    {
        make({"CREATE TABLE a (id INTEGER PRIMARY KEY, code VARCHAR(5) NOT NULL UNIQUE)",
              "CREATE TABLE b (id INTEGER PRIMARY KEY, a_id INTEGER NOT NULL REFERENCES a (id) ON DELETE "
              "CASCADE, n TEXT DEFAULT 'x')",
              "CREATE TABLE a_b (a_id INTEGER REFERENCES a (id), b_id INTEGER REFERENCES b (id), PRIMARY KEY "
              "(a_id, b_id))"});
        imported();
        const QByteArray first = storedText(m_project);
        imported();
        QCOMPARE(storedText(m_project), first);
        QVERIFY(imported({"-n"}).startsWith(
            QByteArray(m_project.toUtf8() + " to " + m_url.toUtf8() + ": no changes\n")));
    }

    void whatTheDatabaseKnowsNothingOfStays()
    {
        const QByteArray text =
            textOf(json("{'id': 7, 'name': 'Customer', 'key': 'c', 'tableName': 'customer', 'version': 4, "
                        "'softDeleteColumn': "
                        "'gone', 'metaData': {'owner': 'ann'}, 'properties': ["
                        "{'id': 72, 'name': 'Mail', 'columnName': 'email', 'type': 'std::string', "
                        "'allowNull': false},"
                        "{'id': 71, 'name': 'key', 'columnName': 'ID', 'type': 'qint32', 'identifier': true},"
                        "{'id': 73, 'name': 'state', 'enumeration': 3},"
                        "{'id': 74, 'name': 'cache', 'type': 'QVariant', 'transient': true},"
                        "{'id': 75, 'name': 'boss', 'columnName': 'boss_id', 'allowNull': false, "
                        "'relationship': {'id': 9, "
                        "'type': 'many-to-one', 'target': 7}}]},"
                        "{'id': 8, 'name': 'elsewhere', 'metaData': {'DDL_EXPORT_CREATE_TABLE': false}, "
                        "'properties': []}"),
                   json("{'id': 3, 'name': 'state', 'values': [{'name': 'on', 'value': 1}]}"));
        QVERIFY(support::writeBytes(path("shop.json"), text));
        QCOMPARE(runProgram({"import", path("shop.json"), m_project}).status, 0);
        const QByteArray before = storedText(m_project);
        make({"CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, email TEXT NOT NULL, "
              "state INTEGER, gone TEXT, boss_id INTEGER, FOREIGN KEY (boss_id) REFERENCES customer (ID))"});
        QVERIFY(imported().endsWith("(entities: 2; without a place in the model: 0)\n"));
        QCOMPARE(storedText(m_project), before);
    }

    void whatChangedIsTakenOver()
    {
        make({"CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY, email TEXT, age INTEGER, boss_id "
              "INTEGER)"});
        imported();
        make({"DROP TABLE customer", "CREATE TABLE country (id INTEGER NOT NULL PRIMARY KEY)",
              "CREATE TABLE customer (id INTEGER NOT NULL PRIMARY KEY, email VARCHAR(9) NOT NULL UNIQUE, "
              "boss_id INTEGER, country_id INTEGER, FOREIGN KEY (boss_id) REFERENCES country (id))"});
        const QByteArray plan = imported({"-n"});
        QCOMPARE(
            plan,
            QByteArray(m_project.toUtf8() + " to " + m_url.toUtf8()) +
                ": 8 changes\n"
                "\n"
                "entity customer\n"
                "  property email\n"
                "    SQL type: (by type) -> VARCHAR(9)\n"
                "    null allowed: yes -> no\n"
                "    unique: no -> yes\n"
                "  property boss_id\n"
                "    type: int -> (none)\n"
                "    + relationship: many-to-one to country\n"
                "  + property country_id: int\n"
                "  - property age: int\n"
                "\n"
                "+ entity country: 2 properties\n"
                "Possible rename: customer.age (property 3) is gone, customer.country_id is "
                "new; "
                "if it was renamed, first give property 3 the columnName \"country_id\" in the text (korvane "
                "dump) and import that\n"
                "Nothing is stored (entities: 2; without a place in the model: 0)\n");
    }

    void leftOverTablesMayBeRenames()
    {
        make({"CREATE TABLE t_gig (id INTEGER NOT NULL PRIMARY KEY, length INTEGER)"});
        imported();
        make({"ALTER TABLE t_gig RENAME TO t_concert"});
        const QByteArray before = storedText(m_project);
        QVERIFY(imported({"-n"}).contains(
            "\nPossible rename: t_gig (entity 1) is gone, t_concert is new; if it was "
            "renamed, first give entity 1 the tableName \"t_concert\" in the text "
            "(korvane dump) and import that\n"));
        QCOMPARE(storedText(m_project), before);
        QVERIFY(imported().contains(
            "Possible rename: t_gig (entity 1) is gone, t_concert is new; if it was renamed, "
            "write in the text (korvane dump) 1 for entity 2, and of its properties 1 for 3, "
            "2 for 4, and import that\n"));
        // Nothing is renamed unasked.
        QVERIFY(storedText(m_project).contains("\"id\": 2,\n      \"name\": \"t_concert\""));
    }

    void aConfirmedRenameIsOne()
    {
        make({"CREATE TABLE t_gig (id INTEGER NOT NULL PRIMARY KEY, length INTEGER)"});
        imported();
        make({"ALTER TABLE t_gig RENAME TO t_concert"});
        confirm("\"name\": \"t_gig\",", "\"name\": \"t_gig\", \"tableName\": \"t_concert\",");
        const QByteArray before = storedText(m_project);
        QVERIFY(imported().endsWith("(entities: 1; without a place in the model: 0)\n"));
        QCOMPARE(storedText(m_project), before);
        QVERIFY(
            before.contains("\"id\": 1,\n      \"name\": \"t_gig\",\n      \"tableName\": \"t_concert\""));
    }

    void aForeignKeyThatLeadsElsewhere()
    {
        const QString order =
            "CREATE TABLE t_order (id INTEGER NOT NULL PRIMARY KEY, who INTEGER, FOREIGN KEY (who) "
            "REFERENCES %1 (id))";
        make({"CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY)",
              "CREATE TABLE b (id INTEGER NOT NULL PRIMARY KEY)", order.arg("a")});
        imported();
        make({"DROP TABLE t_order", order.arg("b")});
        imported();
        // The property stays, the relationship is another one, and so is its other side.
        QCOMPARE(
            entities(),
            json("{'id': 1, 'name': 'a', 'version': 2, 'properties': ["
                 "{'id': 1, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false}]},"
                 "{'id': 2, 'name': 'b', 'version': 2, 'properties': ["
                 "{'id': 2, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false},"
                 "{'id': 6, 'name': 't_order', 'relationship': {'id': 4, 'type': 'one-to-many', 'target': 3, "
                 "'inverse': 4}}]},"
                 "{'id': 3, 'name': 't_order', 'version': 2, 'properties': ["
                 "{'id': 3, 'name': 'id', 'type': 'int', 'identifier': true, 'autoIncrement': false},"
                 "{'id': 4, 'name': 'who', 'relationship': {'id': 3, 'type': 'many-to-one', 'target': 2, "
                 "'inverse': 6}}]}"));
    }

    void onlySomeTables()
    {
        make({"CREATE TABLE t_a (id INTEGER NOT NULL PRIMARY KEY)",
              "CREATE TABLE t_b (id INTEGER NOT NULL PRIMARY KEY, a_id INTEGER REFERENCES t_a (id))",
              "CREATE TABLE other (id INTEGER NOT NULL PRIMARY KEY, x TEXT DEFAULT 'y')"});
        QCOMPARE(imported({"--tables", "t_*"}),
                 QByteArray("Project 'shop' imported into " + m_project.toUtf8() +
                            " (entities: 2; without a place in the model: 0)\n"));
        const QByteArray first = storedText(m_project);
        make({"DROP TABLE t_b", "ALTER TABLE other RENAME TO t_other"});
        // What is not asked for stays, whatever became of it.
        imported({"--tables", "t_a"});
        QCOMPARE(storedText(m_project), first);
        const program_result none = run({"--tables", "x*"});
        QCOMPARE(none.status, 1);
        QCOMPARE(none.errors,
                 (m_url + ": no table is called as --tables says; there are t_a, t_other\n").toUtf8());
    }

    void noTableOfThatName()
    {
        make({"CREATE TABLE one (id INTEGER PRIMARY KEY)", "CREATE TABLE two (id INTEGER PRIMARY KEY)"});
        const program_result few = run({"--tables", "none*"});
        QCOMPARE(few.status, 1);
        QCOMPARE(QString::fromUtf8(few.errors),
                 m_url + ": no table is called as --tables says; there are one, two\n");
        for (int i = 10; i < 20; ++i) {
            make({QStringLiteral("CREATE TABLE more_%1 (id INTEGER PRIMARY KEY)").arg(i)});
        }
        QCOMPARE(QString::fromUtf8(run({"--tables", "none*"}).errors),
                 m_url + ": no table is called as --tables says; there are more_10, more_11, more_12, "
                         "more_13, more_14, "
                         "more_15, more_16, more_17, more_18, more_19 and 2 more\n");
        QVERIFY(!QFile::exists(m_project));
    }
    void thePlanOfAText()
    {
        QVERIFY(support::writeBytes(
            path("shop.json"), textOf(json("{'name': 'a', 'properties': [{'name': 'n', 'type': 'int'}]}"))));
        const program_result fresh = runProgram({"import", path("shop.json"), m_project, "-n"});
        QCOMPARE(fresh.errors, QByteArray());
        QCOMPARE(fresh.output, QByteArray("nothing to " + path("shop.json").toUtf8() +
                                          ": 1 change\n\n+ entity a: 1 property\n"));
        QVERIFY(!QFile::exists(m_project));
        QCOMPARE(runProgram({"import", path("shop.json"), m_project}).status, 0);
        QVERIFY(support::writeBytes(
            path("shop.json"), textOf(json("{'name': 'a', 'properties': [{'name': 'n', 'type': 'long'}]}"))));
        const QByteArray before = support::bytesOf(m_project);
        const program_result changed = runProgram({"import", path("shop.json"), m_project, "-n"});
        QCOMPARE(changed.output, QByteArray(m_project.toUtf8() + " to " + path("shop.json").toUtf8() +
                                            ": 1 change\n\nentity a\n  property n\n    type: int -> long\n"));
        QCOMPARE(support::bytesOf(m_project), before);
    }

private:
    /// Imports the project's own text, with `after` for `before`.
    void confirm(const QByteArray & before, const QByteArray & after) const
    {
        QByteArrayList lines;
        for (const QByteArray & each : storedText(m_project).split('\n')) {
            if (!each.contains("\"version\"")) {
                lines << QByteArray(each).replace(before, after);
            }
        }
        QVERIFY(support::writeBytes(path("shop.json"), lines.join('\n')));
        const program_result result = runProgram({"import", path("shop.json"), m_project});
        QCOMPARE(result.errors, QByteArray());
    }

    /// The entities of the stored project, each of them on one line.
    [[nodiscard]] QByteArray entities() const
    {
        QByteArray text = storedText(m_project);
        const qsizetype begin = text.indexOf("\"entities\": [") + 13;
        text = text.mid(begin, text.lastIndexOf("\n  ]") - begin).simplified();
        return text.replace("{ \"", "{\"")
            .replace("[ {", "[{")
            .replace("} ]", "}]")
            .replace("] }", "]}")
            .replace("}, {", "},{");
    }
};

QTEST_GUILESS_MAIN(tst_import_database)
#include "tst_import_database.moc"
