#include "export_bench.h"

#include <QtTest>

using plugin::ddl_export;
using support::entity_builder;
using support::model_builder;

/// Two versions of a project side by side, and the script that leads from one to the other.
class tst_compare : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_bench.reset(); }
    void needsBothProjects();
    void writesNothingForEqualVersions();
    void dropsTables();
    void dropsTablesThatAreLeftOutNow();
    void createsTables();
    void keepsTablesThatWereLeftOut();
    void renamesTables();
    void comparesTableNamesExactly();
    void followsOnlyTheVersionNumber();
    void dropsColumns();
    void addsColumns();
    void renamesColumns();
    void treatsTransientPropertiesAsAbsent();
    void ignoresInvalidProperties();
    void takesRelationshipsWithoutId();
    void createsAndDropsIndexes();
    void dropsIndexesByTheirOldName();
    void createsAndDropsIndexesWithColumns();
    void writesEmptyLinesForRelationshipsWithoutColumn();
    void dropsForeignKeys();
    void addsForeignKeys();
    void addsForeignKeysOfNewTables();
    void leavesForeignKeysOutWithoutRelationships();
    void warnsOfDroppedForeignKeysOnSqlite();
    void writesLinkTablesOfNewTablesOnly();
    void keepsTheOrderOfSteps();
    void emptiesItsLists();
    void namesTheScriptAfterTheCurrentProject();

private:
    /// The statements between begin and end, and the messages between theirs.
    struct outcome
    {
        QString statements;
        QStringList messages;
    };
    outcome compare();
    QStringList expected(const QStringList & texts) const;

    std::unique_ptr<export_bench> m_bench;
    model_builder m_previous;
    model_builder m_current;
};

namespace {

/// Entity `id` named `name` with a key, in a given version.
entity_builder addEntity(model_builder & model, long id, const QString & name, long version)
{
    entity_builder e = model.entity(id, name);
    e.version(version);
    e.identifier(id * 10, "id", "long");
    return e;
}

} // namespace

void tst_compare::init()
{
    m_bench = std::make_unique<export_bench>(ddl_export::db_default, ddl_export::evolution);
    m_bench->plugin.setExportRelationships(true);
    m_previous = model_builder("old name");
    m_current = model_builder();
}

tst_compare::outcome tst_compare::compare()
{
    m_bench->forgetMessages();
    outcome result{"(failed)", {}};
    if (m_bench->builder().compare(m_previous.get(), m_current.get(), 5)) {
        const QString script = m_bench->content("shop_default_db_schema_v4_to_v5.sql");
        QStringList messages = m_bench->messages();
        messages.removeFirst();
        messages.removeLast();
        messages.removeLast();
        // The generic dialect frames a script with an empty line at either end.
        result = {script.mid(1).chopped(1), messages};
    }
    return result;
}

QStringList tst_compare::expected(const QStringList & texts) const
{
    QStringList result;
    for (const QString & text : texts) {
        result += progress({"Database schema evolution : " + text + " (" +
                            m_bench->path("shop_default_db_schema_v4_to_v5.sql") + ")"});
    }
    return result;
}

void tst_compare::needsBothProjects()
{
    const auto check = [this](const zk::ZkBool & result, const char * text) {
        QVERIFY(!result);
        QCOMPARE(result.getCode(), 0L);
        QCOMPARE(result.getDesc(), QString(text));
        QCOMPARE(m_bench->files(), QStringList());
        QCOMPARE(m_bench->messages(), QStringList());
    };
    opened_builder & builder = m_bench->builder();
    check(builder.compare(nullptr, m_current.get(), 2), "Invalid previous project");
    check(builder.compare(nullptr, nullptr, 2), "Invalid previous project");
    check(builder.compare(m_previous.get(), nullptr, 2), "Invalid current project");
    m_current.project().setListOfAllEntities(nullptr);
    check(builder.compare(m_previous.get(), m_current.get(), 2),
          "Current project doesn't have a valid list of entities");
    m_previous.project().setListOfAllEntities(nullptr);
    check(builder.compare(m_previous.get(), m_current.get(), 2),
          "Previous project doesn't have a valid list of entities");
}

void tst_compare::writesNothingForEqualVersions()
{
    for (model_builder * model : {&m_previous, &m_current}) {
        addEntity(*model, 1, "a", 3).relation(12, "b", 100, model::relationship::many_to_one, 2);
        addEntity(*model, 2, "b", 0).property(21, "p", "int").indexed();
    }
    QVERIFY(m_bench->builder().compare(m_previous.get(), m_current.get(), 2));
    QCOMPARE(m_bench->files(), QStringList{"shop_default_db_schema_v1_to_v2.sql"});
    QCOMPARE(m_bench->content("shop_default_db_schema_v1_to_v2.sql"), QString("\n\n"));
    const QString file = m_bench->path("shop_default_db_schema_v1_to_v2.sql");
    QCOMPARE(
        m_bench->messages(),
        progress({"Database schema evolution : DDL export begin (" + file + ")",
                  "Database schema evolution : DDL export end (" + file + ")",
                  "Database schema evolution DDL SQL script created for project 'shop' : '" + file + "'"}));
}

void tst_compare::dropsTables()
{
    addEntity(m_previous, 1, "gone", 1).get()->setKey("GONE");
    addEntity(m_previous, 2, "left_out", 1).createTable("0");
    addEntity(m_previous, 3, "stays", 1);
    m_previous.entity(0, "zero");
    m_previous.project().getListOfAllEntities()->insert(9, nullptr);
    addEntity(m_current, 3, "stays", 1);
    const outcome result = compare();
    QCOMPARE(result.statements, QString("DROP TABLE gone;\n"));
    QCOMPARE(result.messages, expected({"drop table DDL SQL script for entity 'GONE'"}));
}

void tst_compare::dropsTablesThatAreLeftOutNow()
{
    addEntity(m_previous, 1, "old", 1);
    addEntity(m_current, 1, "new", 1).createTable("False");
    QCOMPARE(compare().statements, QString("DROP TABLE old;\n"));
}

void tst_compare::createsTables()
{
    addEntity(m_previous, 7, "other", 1);
    addEntity(m_current, 7, "other", 1);
    entity_builder fresh = addEntity(m_current, 1, "fresh", 1);
    fresh.get()->setKey("FRESH");
    fresh.property(11, "code", "QString").indexed();
    addEntity(m_current, 2, "left_out", 1).createTable(false);
    m_current.entity(0, "zero");
    m_current.project().getListOfAllEntities()->insert(9, nullptr);
    const outcome result = compare();
    QCOMPARE(result.statements,
             QString("CREATE TABLE fresh (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, code TEXT);\n"
                     "CREATE INDEX idx_fresh_code ON fresh (code);\n"));
    QCOMPARE(result.messages, expected({"create table DDL SQL script for entity 'FRESH'",
                                        "create index DDL SQL script for property 'FRESH.code'"}));
}

void tst_compare::keepsTablesThatWereLeftOut()
{
    addEntity(m_previous, 1, "e", 1).createTable("false");
    entity_builder now = addEntity(m_current, 1, "e", 1);
    QCOMPARE(compare().statements, QString());
    now.version(2);
    now.property(11, "p", "int");
    QCOMPARE(compare().statements, QString("ALTER TABLE e ADD COLUMN p INTEGER;\n"));
}

void tst_compare::renamesTables()
{
    addEntity(m_previous, 1, "person", 1).get()->setKey("OLD");
    addEntity(m_current, 1, "person", 2).table("people").get()->setKey("NEW");
    const outcome result = compare();
    QCOMPARE(result.statements, QString("ALTER TABLE person RENAME TO people;\n"));
    QCOMPARE(result.messages, expected({"rename table DDL SQL script for entity 'NEW'"}));
}

void tst_compare::comparesTableNamesExactly()
{
    addEntity(m_previous, 1, "person", 1);
    addEntity(m_previous, 2, "other", 1).table("t");
    addEntity(m_current, 1, "Person", 2);
    addEntity(m_current, 2, "renamed class", 2).table("t");
    QCOMPARE(compare().statements, QString("ALTER TABLE person RENAME TO Person;\n"));
}

void tst_compare::followsOnlyTheVersionNumber()
{
    addEntity(m_previous, 1, "a", 4).property(11, "p", "int");
    entity_builder now = addEntity(m_current, 1, "b", 4);
    now.property(12, "q", "int").indexed();
    now.relation(13, "r", 100, model::relationship::many_to_one, 2);
    addEntity(m_previous, 2, "target", 1);
    addEntity(m_current, 2, "target", 1);
    QCOMPARE(compare().statements, QString());
    now.version(3); // an older number is another number
    QCOMPARE(compare().statements.count(QChar(10)), 5);
}

void tst_compare::dropsColumns()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "a", "int").indexed();
    before.property(12, "b", "int").columns("b1|b2").get()->setKey("KEY");
    addEntity(m_current, 1, "f", 2);
    const outcome result = compare();
    QCOMPARE(result.statements, QString("ALTER TABLE e RENAME TO f;\n"
                                        "ALTER TABLE f DROP COLUMN a;\n"
                                        "ALTER TABLE f DROP COLUMN b1;\nALTER TABLE f DROP COLUMN b2;\n"));
    QCOMPARE(result.messages, expected({"rename table DDL SQL script for entity 'f'",
                                        "drop column DDL SQL script for property 'e.a'",
                                        "drop column DDL SQL script for property 'KEY'"}));
}

void tst_compare::addsColumns()
{
    addEntity(m_previous, 1, "e", 1);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    // An indexed column that is added gets no index.
    now.property(11, "a", "int").indexed().notNull();
    now.relation(12, "r", 100, model::relationship::many_to_one, 1).columns("r_id");
    const outcome result = compare();
    QCOMPARE(result.statements, QString("ALTER TABLE e ADD COLUMN a INTEGER NOT NULL;\n"
                                        "ALTER TABLE e ADD COLUMN r_id INTEGER;\n"));
    QCOMPARE(result.messages, expected({"add column DDL SQL script for property 'e.a'",
                                        "add column DDL SQL script for property 'e.r'"}));
}

void tst_compare::renamesColumns()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "a", "int").indexed();
    before.property(12, "m", "int").columns("x|y");
    before.property(13, "same", "int");
    before.property(14, "n", "int").columns("n1|n2");
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(11, "b", "int").indexed();
    now.property(12, "m", "int").columns("x|z");
    now.property(13, "other", "int").columns("same");
    now.property(14, "n", "int");
    const outcome result = compare();
    QCOMPARE(result.statements, QString("ALTER TABLE e RENAME COLUMN a TO b;\n"
                                        "\nALTER TABLE e RENAME COLUMN y TO z;\n"
                                        "ALTER TABLE e DROP COLUMN n1;\nALTER TABLE e DROP COLUMN n2;\n"
                                        "ALTER TABLE e ADD COLUMN n INTEGER;\n"));
    QCOMPARE(result.messages, expected({"rename column DDL SQL script for property 'e.b'",
                                        "rename column DDL SQL script for property 'e.m'",
                                        "rename column DDL SQL script for property 'e.n'"}));
}

void tst_compare::treatsTransientPropertiesAsAbsent()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "turns", "int");
    before.property(12, "stops", "int").transient();
    before.property(13, "never", "int").transient();
    before.property(14, "index_of_nothing", "int").transient().indexed();
    before.property(15, "now_with_index", "int").transient();
    before.property(16, "index_stays", "int").transient().indexed();
    before.property(17, "gone", "int").transient();
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(11, "turns", "int").transient();
    now.property(12, "stops", "int");
    now.property(13, "never2", "int").transient();
    now.property(14, "index_of_nothing", "int");
    now.property(15, "now_with_index", "int").indexed();
    now.property(16, "index_stays", "int").indexed();
    QCOMPARE(compare().statements, QString("ALTER TABLE e DROP COLUMN turns;\n"
                                           "ALTER TABLE e ADD COLUMN stops INTEGER;\n"
                                           "ALTER TABLE e ADD COLUMN index_of_nothing INTEGER;\n"
                                           "ALTER TABLE e ADD COLUMN now_with_index INTEGER;\n"
                                           "CREATE INDEX idx_e_now_with_index ON e (now_with_index);\n"
                                           "ALTER TABLE e ADD COLUMN index_stays INTEGER;\n"
                                           "CREATE INDEX idx_e_index_stays ON e (index_stays);\n"));
}

void tst_compare::ignoresInvalidProperties()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(0, "zero", "int");
    before.get()->getListOfProperty(true, true, false)->insert(99, nullptr);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(0, "zero2", "int");
    now.get()->getListOfProperty(true, true, false)->insert(98, nullptr);
    QCOMPARE(compare().statements, QString());
}

void tst_compare::takesRelationshipsWithoutId()
{
    addEntity(m_previous, 1, "e", 1);
    addEntity(m_previous, 2, "t", 1);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.relation(11, "t", 0, model::relationship::many_to_one, 2).columns("t_id");
    addEntity(m_current, 2, "t", 1);
    QCOMPARE(compare().statements,
             QString("ALTER TABLE e ADD COLUMN t_id INTEGER;\n"
                     "ALTER TABLE e ADD CONSTRAINT fk_e_t_id FOREIGN KEY (t_id) REFERENCES t (id);\n"));
    // What was added is dropped on the way back.
    m_previous.entity(1)->setVersion(3);
    std::swap(m_previous, m_current);
    m_current.project().setName("shop");
    QCOMPARE(compare().statements, QString("ALTER TABLE e DROP COLUMN t_id;\n"
                                           "ALTER TABLE e DROP CONSTRAINT fk_e_t_id;\n"));
}

void tst_compare::createsAndDropsIndexes()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "a", "int");
    before.property(12, "b", "int").indexed().get()->setKey("OLD KEY");
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(11, "a", "int").indexed();
    now.property(12, "b", "int").get()->setKey("NEW KEY");
    const outcome result = compare();
    QCOMPARE(result.statements, QString("CREATE INDEX idx_e_a ON e (a);\n"
                                        "DROP INDEX idx_e_b ON e;\n"));
    QCOMPARE(result.messages, expected({"create index DDL SQL script for property 'e.a'",
                                        "drop index DDL SQL script for property 'OLD KEY'"}));
}

void tst_compare::dropsIndexesByTheirOldName()
{
    addEntity(m_previous, 1, "old", 1).property(11, "a", "int").indexed();
    addEntity(m_current, 1, "new", 2).property(11, "b", "int");
    QCOMPARE(compare().statements, QString("ALTER TABLE old RENAME TO new;\n"
                                           "ALTER TABLE new RENAME COLUMN a TO b;\n"
                                           "DROP INDEX idx_old_a ON new;\n"));
}

void tst_compare::createsAndDropsIndexesWithColumns()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "a", "int").columns("x|y").indexed();
    before.property(12, "b", "int");
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(11, "a", "int").columns("x");
    now.property(12, "c", "int").columns("p|q").indexed();
    QCOMPARE(compare().statements,
             QString("ALTER TABLE e DROP COLUMN x;\nALTER TABLE e DROP COLUMN y;\n"
                     "ALTER TABLE e ADD COLUMN x INTEGER;\n"
                     "DROP INDEX idx_e_x ON e;\nDROP INDEX idx_e_y ON e;\n"
                     "ALTER TABLE e DROP COLUMN b;\n"
                     "ALTER TABLE e ADD COLUMN p INTEGER;\nALTER TABLE e ADD COLUMN q INTEGER;\n"
                     "CREATE INDEX idx_e_p ON e (p);\nCREATE INDEX idx_e_q ON e (q);\n"));
}

void tst_compare::writesEmptyLinesForRelationshipsWithoutColumn()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.relation(11, "gone", 100, model::relationship::one_to_many, 2);
    addEntity(m_previous, 2, "t", 1);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.relation(12, "fresh", 101, model::relationship::one_to_many, 2);
    addEntity(m_current, 2, "t", 1);
    const outcome result = compare();
    QCOMPARE(result.statements, QString("\n\n"));
    QCOMPARE(result.messages, expected({"drop column DDL SQL script for property 'e.gone'",
                                        "add column DDL SQL script for property 'e.fresh'"}));
}

void tst_compare::dropsForeignKeys()
{
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.relation(11, "country", 100, model::relationship::many_to_one, 2).columns("country_id");
    before.relation(12, "self", 101, model::relationship::many_to_one, 1).columns("self_id");
    before.relation(13, "many", 102, model::relationship::one_to_many, 2);
    before.relation(14, "stays", 103, model::relationship::many_to_one, 2).columns("stays_id");
    before.relation(15, "links", 104, model::relationship::many_to_many, 2).linkTable("l", "a", "b", 0);
    before.relation(16, "new_id", 105, model::relationship::many_to_one, 2).columns("n_id");
    before.relation(17, "missing", 106, model::relationship::many_to_one, 99).columns("m_id");
    addEntity(m_previous, 2, "country", 1);
    entity_builder now = addEntity(m_current, 1, "f", 2);
    now.property(11, "country", "long").columns("country_id");
    now.relation(14, "stays", 103, model::relationship::many_to_one, 2).columns("stays2_id");
    now.relation(16, "new_id", 205, model::relationship::many_to_one, 2).columns("n_id");
    addEntity(m_current, 2, "country", 1);
    const outcome result = compare();
    // The constraint still belongs to the table's old name.
    QCOMPARE(result.statements.section("stays2_id;\n", 1),
             QString("ALTER TABLE e DROP CONSTRAINT fk_e_country_id;\n"
                     "ALTER TABLE l DROP CONSTRAINT fk_e_links;\n"
                     "ALTER TABLE e DROP CONSTRAINT fk_e_n_id;\n"
                     "\n"
                     "ALTER TABLE f ADD CONSTRAINT fk_f_n_id FOREIGN KEY (n_id) REFERENCES country (id);\n"));
    QCOMPARE(result.messages.mid(result.messages.size() - 5),
             expected({"drop foreign key DDL SQL script for relationship 'e.country'",
                       "drop foreign key DDL SQL script for relationship 'e.links'",
                       "drop foreign key DDL SQL script for relationship 'e.new_id'",
                       "drop foreign key DDL SQL script for relationship 'e.missing'",
                       "add foreign key DDL SQL script for entity 'f' : property 'new_id', target entity "
                       "'country'"}));
}

void tst_compare::addsForeignKeys()
{
    for (model_builder * model : {&m_previous, &m_current}) {
        addEntity(*model, 2, "country", 1).get()->setKey("COUNTRY");
        addEntity(*model, 3, "hidden", model == &m_previous ? 1 : 2).createTable("0");
    }
    addEntity(m_previous, 1, "e", 1);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.get()->setKey("E");
    now.relation(11, "country", 100, model::relationship::many_to_one, 2).columns("c_id");
    now.relation(12, "self", 101, model::relationship::many_to_one, 1).columns("s_id");
    now.relation(13, "many", 102, model::relationship::one_to_many, 2);
    now.relation(14, "missing", 103, model::relationship::many_to_one, 99).columns("m_id");
    entity_builder(m_current.entity(3)).relation(31, "e", 104, model::relationship::many_to_one, 1);
    const outcome result = compare();
    QCOMPARE(result.statements,
             QString("ALTER TABLE e ADD COLUMN c_id INTEGER;\n"
                     "ALTER TABLE e ADD COLUMN s_id INTEGER;\n"
                     "\n"
                     "ALTER TABLE e ADD COLUMN m_id TEXT;\n"
                     "ALTER TABLE e ADD CONSTRAINT fk_e_c_id FOREIGN KEY (c_id) REFERENCES country (id);\n"));
    QCOMPARE(result.messages.constLast(),
             expected({"add foreign key DDL SQL script for entity 'E' : property 'country', target entity "
                       "'COUNTRY'"})
                 .constFirst());
}

void tst_compare::addsForeignKeysOfNewTables()
{
    entity_builder now = addEntity(m_current, 1, "e", 1);
    now.relation(11, "t", 100, model::relationship::many_to_one, 2).columns("t_id");
    addEntity(m_current, 2, "t", 1);
    QCOMPARE(compare().statements.section(QChar(10), 2),
             QString("ALTER TABLE e ADD CONSTRAINT fk_e_t_id FOREIGN KEY (t_id) REFERENCES t (id);\n"));
}

void tst_compare::leavesForeignKeysOutWithoutRelationships()
{
    m_bench->plugin.setExportRelationships(false);
    addEntity(m_previous, 2, "t", 1);
    addEntity(m_current, 2, "t", 1);
    addEntity(m_previous, 1, "e", 1).relation(11, "a", 100, model::relationship::many_to_one, 2);
    addEntity(m_current, 1, "e", 2).relation(12, "b", 101, model::relationship::many_to_one, 2);
    QCOMPARE(compare().statements,
             QString("ALTER TABLE e DROP COLUMN a;\nALTER TABLE e ADD COLUMN b INTEGER;\n"));
}

void tst_compare::warnsOfDroppedForeignKeysOnSqlite()
{
    export_bench bench(ddl_export::db_sqlite, ddl_export::evolution);
    bench.plugin.setExportRelationships(true);
    addEntity(m_previous, 2, "t", 1);
    addEntity(m_current, 2, "t", 1);
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.relation(11, "a", 100, model::relationship::many_to_one, 2);
    entity_builder now = addEntity(m_current, 1, "e", 2);
    now.property(11, "a", "long");
    now.relation(12, "b", 101, model::relationship::many_to_one, 2);
    QVERIFY(bench.builder().compare(m_previous.get(), m_current.get(), 2));
    QCOMPARE(bench.content("shop_sqlite_db_schema_v1_to_v2.sql"),
             QString("BEGIN TRANSACTION;\n"
                     "PRAGMA foreign_keys = OFF;\n"
                     "ALTER TABLE e ADD COLUMN b INTEGER;\n"
                     "--\n"
                     "-- WARNING : SQLite database doesn't support ALTER TABLE my_table DROP CONSTRAINT DDL "
                     "script ! --\n"
                     "--           Cannot DROP FOREIGN KEY 'fk_e_a' for table 'e'\n"
                     "--\n"
                     "END TRANSACTION;\n"));
}

void tst_compare::writesLinkTablesOfNewTablesOnly()
{
    m_bench->plugin.setExportRelationships(false);
    addEntity(m_previous, 1, "a", 1);
    entity_builder a = addEntity(m_current, 1, "a", 2);
    a.relation(11, "bs", 100, model::relationship::many_to_many, 2).linkTable("a_b", "a_id", "b_id", 21);
    a.relation(12, "cs", 101, model::relationship::many_to_many, 3).linkTable("a_c", "a_id", "c_id", 0);
    addEntity(m_current, 2, "b", 1)
        .relation(21, "as", 102, model::relationship::many_to_many, 1)
        .linkTable("a_b", "b_id", "a_id", 11);
    addEntity(m_previous, 3, "c", 1);
    addEntity(m_current, 3, "c", 1);
    const outcome result = compare();
    QCOMPARE(result.statements, QString("\n\n" // the two properties of a have no column
                                        "CREATE TABLE b (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT);\n"
                                        "CREATE TABLE a_b (b_id INTEGER, a_id INTEGER);\n"));
    QCOMPARE(result.messages.constLast(),
             expected({"create extra-table DDL SQL script for relationship n-n 'a_b'"}).constFirst());
}

void tst_compare::keepsTheOrderOfSteps()
{
    entity_builder before = addEntity(m_previous, 1, "old", 1);
    before.property(11, "dropped", "int");
    before.property(12, "renamed", "int");
    before.relation(13, "r", 100, model::relationship::many_to_one, 2).columns("r_id");
    addEntity(m_previous, 2, "t", 1);
    addEntity(m_previous, 3, "gone", 1);
    addEntity(m_current, 4, "fresh", 1).property(41, "x", "int").indexed();
    entity_builder now = addEntity(m_current, 1, "new", 2);
    now.property(14, "added", "int");
    now.property(12, "renamed2", "int").indexed();
    now.relation(15, "s", 101, model::relationship::many_to_one, 2).columns("s_id");
    addEntity(m_current, 2, "t", 1);
    QCOMPARE(compare().statements,
             QString("DROP TABLE gone;\n"
                     "CREATE TABLE fresh (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, x INTEGER);\n"
                     "ALTER TABLE old RENAME TO new;\n"
                     "ALTER TABLE new DROP COLUMN dropped;\n"
                     "ALTER TABLE new DROP COLUMN r_id;\n"
                     "ALTER TABLE new ADD COLUMN added INTEGER;\n"
                     "ALTER TABLE new RENAME COLUMN renamed TO renamed2;\n"
                     "CREATE INDEX idx_new_renamed2 ON new (renamed2);\n"
                     "ALTER TABLE new ADD COLUMN s_id INTEGER;\n"
                     "CREATE INDEX idx_fresh_x ON fresh (x);\n"
                     "ALTER TABLE old DROP CONSTRAINT fk_old_r_id;\n"
                     "ALTER TABLE new ADD CONSTRAINT fk_new_s_id FOREIGN KEY (s_id) REFERENCES t (id);\n"));
}

void tst_compare::emptiesItsLists()
{
    entity_builder e = addEntity(m_current, 1, "e", 1);
    e.property(11, "p", "int").indexed();
    QVERIFY(compare().statements.contains("CREATE INDEX"));
    entity_builder before = addEntity(m_previous, 1, "e", 1);
    before.property(11, "p", "int").indexed();
    QCOMPARE(compare().statements, QString());
    QCOMPARE(m_bench->builder().currentProject(), &m_current.project());
    QCOMPARE(m_bench->builder().previousProject(), &m_previous.project());
}

void tst_compare::namesTheScriptAfterTheCurrentProject()
{
    m_current.project().setName("fresh name");
    QVERIFY(m_bench->builder().compare(m_previous.get(), m_current.get(), 12));
    QCOMPARE(m_bench->files(), QStringList{"fresh name_default_db_schema_v11_to_v12.sql"});
    QVERIFY(m_bench->messages().constLast().contains("script created for project 'fresh name' : '"));
}

QTEST_GUILESS_MAIN(tst_compare)
#include "tst_compare.moc"
