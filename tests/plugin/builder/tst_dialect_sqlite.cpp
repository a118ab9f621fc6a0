#include "dialect_specification.h"

class tst_dialect_sqlite : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_sqlite() : dialect_specification(plugin::ddl_export::db_sqlite) {}

protected:
    QString builderName() const override { return "sqlite"; }
    QString begin() const override
    {
        return "BEGIN TRANSACTION;\n"
               "PRAGMA foreign_keys = OFF;";
    }
    QString end() const override { return "END TRANSACTION;"; }
    QString numericType() const override { return "INTEGER"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return false; }
    QString personTable() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, "
               "birth_date DATE, email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER);";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, "
               "birth_date DATE, email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER, FOREIGN "
               "KEY (country_id) REFERENCES country (id));";
    }
    QString currencyTable() const override
    {
        return "CREATE TABLE currency (code TEXT NOT NULL PRIMARY KEY, label TEXT);";
    }
    QString currencyTableWithRelationships() const override
    {
        return "CREATE TABLE currency (code TEXT NOT NULL PRIMARY KEY, label TEXT);";
    }
    QString pairTable() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 TEXT NOT NULL, PRIMARY KEY (k1, k2));";
    }
    QString pairTableWithRelationships() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 TEXT NOT NULL, PRIMARY KEY (k1, k2));";
    }
    QString countedPairTable() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL AUTOINCREMENT, k2 TEXT NOT NULL AUTOINCREMENT, "
               "PRIMARY KEY (k1, k2));";
    }
    QString holderTable() const override
    {
        return "CREATE TABLE holder (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, lat|lon|alt FLOAT, level "
               "INTEGER, pair_k1 INTEGER, pair_k2 TEXT, currency_code TEXT);";
    }
    QString holderTableWithRelationships() const override
    {
        return "CREATE TABLE holder (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, lat|lon|alt FLOAT, level "
               "INTEGER, pair_k1 INTEGER, pair_k2 TEXT, currency_code TEXT, FOREIGN KEY (pair_k1, pair_k2) "
               "REFERENCES pair (k1, k2), FOREIGN KEY (currency_code) REFERENCES currency (code), FOREIGN "
               "KEY (spouse_id) REFERENCES person (id));";
    }
    QString tableWithoutKey() const override { return "CREATE TABLE keyless (note TEXT);"; }
    QString tableWithoutColumns() const override { return "CREATE TABLE bare ();"; }
    QString tableWithRepeatedColumns() const override
    {
        return "CREATE TABLE repeating (a INTEGER NOT NULL, n INTEGER, A DATE, n TEXT, o INTEGER, PRIMARY "
               "KEY (a, a));";
    }
    QString droppedTable() const override { return "DROP TABLE person;"; }
    QString renamedTable() const override { return "ALTER TABLE human RENAME TO person;"; }
    QString addedColumn() const override { return "ALTER TABLE person ADD COLUMN opens TIME;"; }
    QString addedColumnWithConstraints() const override
    {
        return "ALTER TABLE person ADD COLUMN email TEXT NOT NULL UNIQUE;";
    }
    QString addedColumns() const override
    {
        return "ALTER TABLE holder ADD COLUMN lat FLOAT;\n"
               "ALTER TABLE holder ADD COLUMN lon FLOAT;\n"
               "ALTER TABLE holder ADD COLUMN alt FLOAT;";
    }
    QString addedForeignKeyColumns() const override
    {
        return "ALTER TABLE holder ADD COLUMN pair_k1 INTEGER;\n"
               "ALTER TABLE holder ADD COLUMN pair_k2 TEXT;";
    }
    QString droppedColumn() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --\n"
               "--           Cannot DROP COLUMN 'birth_date' for table 'person'\n"
               "--";
    }
    QString droppedColumns() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --\n"
               "--           Cannot DROP COLUMN 'lat|lon|alt' for table 'holder'\n"
               "--";
    }
    QString renamedColumn() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'birthday to 'birth_date' for table 'person'\n"
               "--";
    }
    QString renamedColumnThatForbidsNull() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'full_name to 'name' for table 'person'\n"
               "--";
    }
    QString renamedSecondColumn() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'lat|lng|alt to 'lat|lon|alt' for table 'holder'\n"
               "--";
    }
    QString renamedFirstAndThirdColumn() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'x|lon|z to 'lat|lon|alt' for table 'holder'\n"
               "--";
    }
    QString columnsOfAnotherNumber() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'level|sub to 'level' for table 'holder'\n"
               "--";
    }
    QString columnWithTheSameName() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from 'email to 'email' for table 'person'\n"
               "--";
    }
    QString manyToOneForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table ADD CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot ADD FOREIGN KEY 'fk_person_country_id' for table 'person'\n"
               "--";
    }
    QString compositeForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table ADD CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot ADD FOREIGN KEY 'fk_holder_pair_k1_pair_k2' for table 'holder'\n"
               "--";
    }
    QString oneToOneForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table ADD CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot ADD FOREIGN KEY 'fk_holder_spouse_id' for table 'holder'\n"
               "--";
    }
    QString manyToManyForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table ADD CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot ADD FOREIGN KEY 'fk_person_tags' for table 'person'\n"
               "--";
    }
    QString compositeManyToManyForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table ADD CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot ADD FOREIGN KEY 'fk_pair_currencies' for table 'pair'\n"
               "--";
    }
    QString droppedForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table DROP CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot DROP FOREIGN KEY 'fk_person_country_id' for table 'person'\n"
               "--";
    }
    QString droppedManyToManyForeignKey() const override
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support ALTER TABLE my_table DROP CONSTRAINT DDL script "
               "! --\n"
               "--           Cannot DROP FOREIGN KEY 'fk_person_tags' for table 'person'\n"
               "--";
    }
    QString stringIndex() const override { return "CREATE INDEX idx_person_email ON person (email);"; }
    QString numberIndex() const override { return "CREATE INDEX idx_holder_level ON holder (level);"; }
    QString threeIndexes() const override
    {
        return "CREATE INDEX idx_holder_lat ON holder (lat);\n"
               "CREATE INDEX idx_holder_lon ON holder (lon);\n"
               "CREATE INDEX idx_holder_alt ON holder (alt);";
    }
    QString droppedIndex() const override { return "DROP INDEX idx_person_email;"; }
    QString threeDroppedIndexes() const override
    {
        return "DROP INDEX idx_holder_lat;\n"
               "DROP INDEX idx_holder_lon;\n"
               "DROP INDEX idx_holder_alt;";
    }
    QString droppedIndexOfARenamedTable() const override { return "DROP INDEX idx_human_email;"; }
    QString droppedIndexOfAnUnknownEntity() const override { return "DROP INDEX ;"; }
    QString linkTable() const override
    {
        return "CREATE TABLE person_tag (person_id INTEGER, tag_id INTEGER);";
    }
    QString linkTableOfStringAndCompositeKeys() const override
    {
        return "CREATE TABLE currency_pair (currency_code TEXT, pair_k1 INTEGER, pair_k2 TEXT);";
    }
    QString linkTableOfStringAndCompositeKeysWithRelationships() const override
    {
        return "CREATE TABLE currency_pair (currency_code TEXT, pair_k1 INTEGER, pair_k2 TEXT);";
    }

    static QString renaming(const QString & from, const QString & to)
    {
        return "--\n"
               "-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --\n"
               "--           Cannot RENAME COLUMN from '" +
               from + " to '" + to +
               "' for table 'e'\n"
               "--";
    }

private Q_SLOTS:
    void writesForeignKeysOfAnEntityToItself()
    {
        support::entity_builder node = m_model.entity(200, "node");
        node.identifier(2000, "id", "long");
        node.relation(2001, "parent", 2100, model::relationship::many_to_one, 200).columns("parent_id");
        QCOMPARE(newBuilder(true)->createTable(node.get()),
                 QString("CREATE TABLE node (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, "
                         "parent_id INTEGER, FOREIGN KEY (parent_id) REFERENCES node (id));"));
    }
    void writesTheForeignKeysAfterOneThatLeadsNowhere()
    {
        support::entity_builder e = m_model.entity(203, "e");
        e.identifier(2030, "id", "long");
        e.relation(2031, "lost", 2131, model::relationship::many_to_one, 999).columns("lost_id");
        e.relation(2032, "person", 2132, model::relationship::many_to_one, 203).columns("person_id");
        QCOMPARE(newBuilder(true)->createTable(e.get()),
                 QString("CREATE TABLE e (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, person_id INTEGER, "
                         "FOREIGN KEY (person_id) REFERENCES e (id));"));
    }
    void warnsOnceAlsoWithoutColumns()
    {
        support::entity_builder e = m_model.entity(202, "e");
        e.relation(2020, "before", 2120, model::relationship::many_to_many, 1)
            .linkTable("e_person", "e_id", "person_id", 0);
        e.relation(2021, "now", 2121, model::relationship::one_to_many, 1);
        e.relation(2022, "owner", 2122, model::relationship::many_to_one, 1).columns("owner_id");
        const auto before = e.get()->getPropertyById(2020);
        const auto now = e.get()->getPropertyById(2021);
        const auto builder = newBuilder(false);
        const auto owner = e.get()->getPropertyById(2022);
        QCOMPARE(builder->dropColumn(before),
                 QString("--\n"
                         "-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --\n"
                         "--           Cannot DROP COLUMN 'before' for table 'e'\n"
                         "--"));
        QCOMPARE(builder->renameColumn(before, now), renaming("before", "now"));
        QCOMPARE(builder->renameColumn(before, owner), renaming("before", "owner_id"));
        QCOMPARE(builder->renameColumn(owner, before), renaming("owner_id", "before"));
    }
    void leavesOneToOneOutWithoutIdentifier()
    {
        support::entity_builder e = m_model.entity(201, "e");
        e.relation(2010, "person", 2101, model::relationship::one_to_one, 1).columns("person_id");
        e.relation(2011, "owner", 2102, model::relationship::many_to_one, 1).columns("owner_id");
        QCOMPARE(
            newBuilder(true)->createTable(e.get()),
            QString("CREATE TABLE e (owner_id INTEGER, FOREIGN KEY (owner_id) REFERENCES person (id));"));
    }
};

QTEST_GUILESS_MAIN(tst_dialect_sqlite)
#include "tst_dialect_sqlite.moc"
