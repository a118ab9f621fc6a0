#include "dialect_specification.h"

class tst_dialect_default : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_default() : dialect_specification(plugin::ddl_export::db_default) {}

protected:
    QString builderName() const override { return "default"; }
    QString begin() const override { return {}; }
    QString end() const override { return {}; }
    QString numericType() const override { return "INTEGER"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return true; }
    QString personTable() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, "
               "birth_date DATE, email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER);";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL, "
               "birth_date DATE, email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER);";
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
               "INTEGER, pair_k1 INTEGER, pair_k2 TEXT, currency_code TEXT);";
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
    QString droppedColumn() const override { return "ALTER TABLE person DROP COLUMN birth_date;"; }
    QString droppedColumns() const override
    {
        return "ALTER TABLE holder DROP COLUMN lat;\n"
               "ALTER TABLE holder DROP COLUMN lon;\n"
               "ALTER TABLE holder DROP COLUMN alt;";
    }
    QString renamedColumn() const override
    {
        return "ALTER TABLE person RENAME COLUMN birthday TO birth_date;";
    }
    QString renamedColumnThatForbidsNull() const override
    {
        return "ALTER TABLE person RENAME COLUMN full_name TO name;";
    }
    QString renamedSecondColumn() const override
    {
        return "\n"
               "ALTER TABLE holder RENAME COLUMN lng TO lon;";
    }
    QString renamedFirstAndThirdColumn() const override
    {
        return "ALTER TABLE holder RENAME COLUMN x TO lat;\n"
               "ALTER TABLE holder RENAME COLUMN z TO alt;";
    }
    QString columnsOfAnotherNumber() const override
    {
        return "ALTER TABLE holder DROP COLUMN level;\n"
               "ALTER TABLE holder DROP COLUMN sub;\n"
               "ALTER TABLE holder ADD COLUMN level INTEGER;";
    }
    QString columnWithTheSameName() const override { return {}; }
    QString manyToOneForeignKey() const override
    {
        return "ALTER TABLE person ADD CONSTRAINT fk_person_country_id FOREIGN KEY (country_id) REFERENCES "
               "country (id);";
    }
    QString compositeForeignKey() const override
    {
        return "ALTER TABLE holder ADD CONSTRAINT fk_holder_pair_k1_pair_k2 FOREIGN KEY (pair_k1, pair_k2) "
               "REFERENCES pair (k1, k2);";
    }
    QString oneToOneForeignKey() const override
    {
        return "ALTER TABLE holder ADD CONSTRAINT fk_holder_spouse_id FOREIGN KEY (spouse_id) REFERENCES "
               "person (id);";
    }
    QString manyToManyForeignKey() const override
    {
        return "ALTER TABLE person_tag ADD CONSTRAINT fk_person_tags FOREIGN KEY (person_id) REFERENCES "
               "person (id);";
    }
    QString compositeManyToManyForeignKey() const override
    {
        return "ALTER TABLE currency_pair ADD CONSTRAINT fk_pair_currencies FOREIGN KEY (pair_k1, pair_k2) "
               "REFERENCES pair (k1, k2);";
    }
    QString droppedForeignKey() const override
    {
        return "ALTER TABLE person DROP CONSTRAINT fk_person_country_id;";
    }
    QString droppedManyToManyForeignKey() const override
    {
        return "ALTER TABLE person_tag DROP CONSTRAINT fk_person_tags;";
    }
    QString stringIndex() const override { return "CREATE INDEX idx_person_email ON person (email);"; }
    QString numberIndex() const override { return "CREATE INDEX idx_holder_level ON holder (level);"; }
    QString threeIndexes() const override
    {
        return "CREATE INDEX idx_holder_lat ON holder (lat);\n"
               "CREATE INDEX idx_holder_lon ON holder (lon);\n"
               "CREATE INDEX idx_holder_alt ON holder (alt);";
    }
    QString droppedIndex() const override { return "DROP INDEX idx_person_email ON person;"; }
    QString threeDroppedIndexes() const override
    {
        return "DROP INDEX idx_holder_lat ON holder;\n"
               "DROP INDEX idx_holder_lon ON holder;\n"
               "DROP INDEX idx_holder_alt ON holder;";
    }
    QString droppedIndexOfARenamedTable() const override { return "DROP INDEX idx_human_email ON person;"; }
    QString droppedIndexOfAnUnknownEntity() const override { return {}; }
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

private Q_SLOTS:
    void writesTheLinkTableAsItsColumnsAreGiven()
    {
        const auto tags = m_model.relation(1, 15);
        tags->setForeignKey("");
        tags->setForeignKeyOwner("a|b");
        QCOMPARE(newBuilder()->createExtraTable(tags),
                 QString("CREATE TABLE person_tag ( INTEGER, a INTEGER, b INTEGER);"));
    }
    void looksForAnIdentifierInTheCurrentProject()
    {
        // The relationship comes from a version in which its entity had no identifier yet.
        support::model_builder older;
        support::entity_builder person = older.entity(1, "human");
        older.entity(5, "tag").identifier(50, "id", "long");
        const auto tags = person.relation(15, "tags", 101, model::relationship::many_to_many, 5)
                              .linkTable("person_tag", "person_id", "tag_id", 0)
                              .relation();
        const auto badge = person.relation(16, "badge", 102, model::relationship::one_to_one, 5)
                               .columns("badge_id")
                               .relation();
        const auto builder = newBuilder(true);
        QCOMPARE(builder->addForeignKey(tags),
                 QString("ALTER TABLE person_tag ADD CONSTRAINT fk_human_tags FOREIGN KEY (person_id) "
                         "REFERENCES person (id);"));
        QCOMPARE(builder->addForeignKey(badge),
                 QString("ALTER TABLE person ADD CONSTRAINT fk_human_badge_id FOREIGN KEY (badge_id) "
                         "REFERENCES tag (id);"));
        person.identifier(17, "", "long");
        QVERIFY(builder->addForeignKey(tags).endsWith(" REFERENCES person (id);"));
        older.property(1, 17)->setName("n");
        QVERIFY(builder->addForeignKey(tags).endsWith(" REFERENCES human (n);"));
        older.property(1, 17)->setId(0);
        QVERIFY(builder->addForeignKey(tags).endsWith(" REFERENCES person (id);"));
        m_model.entity(1)->getPropertyId(true)->setId(0);
        QCOMPARE(builder->addForeignKey(tags), QString());
        builder->setProjects(&older.project());
        QCOMPARE(builder->addForeignKey(tags), QString());
        QCOMPARE(builder->addForeignKey(badge), QString());
        builder->setProjects(nullptr);
        QCOMPARE(builder->addForeignKey(tags), QString());
    }
    void renamesColumnsInTheTableOfTheNewerProperty()
    {
        const auto elsewhere = m_model.entity(200, "elsewhere");
        const auto from = support::entity_builder(elsewhere).property(2000, "from", "int").get();
        const auto to = support::entity_builder(m_model.entity(1)).property(2001, "to", "int").get();
        QCOMPARE(newBuilder()->renameColumn(from, to),
                 QString("ALTER TABLE person RENAME COLUMN from TO to;"));
    }
    void countsReferencedColumnsByTheReferencingProperty()
    {
        support::entity_builder e = m_model.entity(200, "e");
        const auto pair = e.relation(2000, "pair", 2100, model::relationship::many_to_one, 4).columns("p");
        QCOMPARE(newBuilder(true)->addForeignKey(pair.relation()),
                 QString("ALTER TABLE e ADD CONSTRAINT fk_e_p FOREIGN KEY (p) REFERENCES pair (k1);"));
    }
    void writesNoInlineForeignKeys()
    {
        QCOMPARE(newBuilder(true)->inlineForeignKeys(m_model.entity(1)), QString());
    }
    void leavesTheTypeOutWhenTheTargetHasNoKey()
    {
        support::entity_builder e = m_model.entity(200, "e");
        e.relation(2000, "keyless", 2100, model::relationship::many_to_one, 8).columns("k");
        e.property(2001, "last", "int");
        QCOMPARE(newBuilder()->createTable(e.get()), QString("CREATE TABLE e (last INTEGER, k );"));
    }
};

QTEST_GUILESS_MAIN(tst_dialect_default)
#include "tst_dialect_default.moc"
