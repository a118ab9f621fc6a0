#include "dialect_specification.h"

class tst_dialect_postgresql : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_postgresql() : dialect_specification(plugin::ddl_export::db_postgresql) {}

protected:
    QString builderName() const override { return "postgresql"; }
    QString begin() const override { return {}; }
    QString end() const override { return {}; }
    QString numericType() const override { return "INTEGER"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return true; }
    QString personTable() const override
    {
        return "CREATE TABLE person (id BIGSERIAL NOT NULL PRIMARY KEY, name TEXT NOT NULL, birth_date DATE, "
               "email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER) WITH (OIDS = FALSE);";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE person (id BIGSERIAL NOT NULL PRIMARY KEY, name TEXT NOT NULL, birth_date DATE, "
               "email TEXT NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER) WITH (OIDS = FALSE);";
    }
    QString currencyTable() const override
    {
        return "CREATE TABLE currency (code TEXT NOT NULL PRIMARY KEY, label TEXT) WITH (OIDS = FALSE);";
    }
    QString currencyTableWithRelationships() const override
    {
        return "CREATE TABLE currency (code TEXT NOT NULL PRIMARY KEY, label TEXT) WITH (OIDS = FALSE);";
    }
    QString pairTable() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 TEXT NOT NULL, PRIMARY KEY (k1, k2)) WITH (OIDS = "
               "FALSE);";
    }
    QString pairTableWithRelationships() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 TEXT NOT NULL, PRIMARY KEY (k1, k2)) WITH (OIDS = "
               "FALSE);";
    }
    QString countedPairTable() const override
    {
        return "CREATE TABLE pair (k1 BIGSERIAL NOT NULL, k2 BIGSERIAL NOT NULL, PRIMARY KEY (k1, k2)) WITH "
               "(OIDS = FALSE);";
    }
    QString holderTable() const override
    {
        return "CREATE TABLE holder (id BIGSERIAL NOT NULL PRIMARY KEY, lat|lon|alt FLOAT, level INTEGER, "
               "pair_k1 INTEGER, pair_k2 TEXT, currency_code TEXT) WITH (OIDS = FALSE);";
    }
    QString holderTableWithRelationships() const override
    {
        return "CREATE TABLE holder (id BIGSERIAL NOT NULL PRIMARY KEY, lat|lon|alt FLOAT, level INTEGER, "
               "pair_k1 INTEGER, pair_k2 TEXT, currency_code TEXT) WITH (OIDS = FALSE);";
    }
    QString tableWithoutKey() const override
    {
        return "CREATE TABLE keyless (note TEXT) WITH (OIDS = FALSE);";
    }
    QString tableWithoutColumns() const override { return "CREATE TABLE bare () WITH (OIDS = FALSE);"; }
    QString tableWithRepeatedColumns() const override
    {
        return "CREATE TABLE repeating (a INTEGER NOT NULL, n INTEGER, A DATE, n TEXT, o INTEGER, PRIMARY "
               "KEY (a, a)) WITH (OIDS = FALSE);";
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
        return "CREATE TABLE person_tag (person_id BIGSERIAL, tag_id BIGSERIAL) WITH (OIDS = FALSE);";
    }
    QString linkTableOfStringAndCompositeKeys() const override
    {
        return "CREATE TABLE currency_pair (currency_code TEXT, pair_k1 INTEGER, pair_k2 TEXT) WITH (OIDS = "
               "FALSE);";
    }
    QString linkTableOfStringAndCompositeKeysWithRelationships() const override
    {
        return "CREATE TABLE currency_pair (currency_code TEXT, pair_k1 INTEGER, pair_k2 TEXT) WITH (OIDS = "
               "FALSE);";
    }

private Q_SLOTS:
    void writesTheExampleOfAUser()
    {
        support::model_builder model = userModel();
        const auto builder = newBuilder();
        builder->setProjects(&model.project());
        support::entity_builder user(model.entity(1));
        model.property(1, 13)->setTransient(true);
        QCOMPARE(builder->createTable(user.get()),
                 QString("CREATE TABLE t_user (id BIGSERIAL NOT NULL PRIMARY KEY, name TEXT, "
                         "email TEXT NOT NULL UNIQUE) WITH (OIDS = FALSE);"));
        QCOMPARE(builder->dropIndex(model.property(1, 12)), QString("DROP INDEX idx_t_user_email;"));
        support::entity_builder group = model.entity(2, "t_group");
        group.identifier(20, "id", "long");
        group.relation(21, "users", 201, model::relationship::many_to_many, 1)
            .linkTable("t_user_group", "group_id", "user_id", 14);
        user.relation(14, "groups", 101, model::relationship::many_to_many, 2)
            .linkTable("t_user_group", "user_id", "group_id", 21);
        QCOMPARE(builder->createExtraTable(model.relation(1, 14)),
                 QString("CREATE TABLE t_user_group (user_id BIGSERIAL, group_id BIGSERIAL) "
                         "WITH (OIDS = FALSE);"));
        support::entity_builder pair = model.entity(3, "t_pair");
        pair.identifier(30, "k", "long").columns("a|b").counted(true);
        QCOMPARE(builder->createTable(pair.get()),
                 QString("CREATE TABLE t_pair (a BIGSERIAL NOT NULL, b BIGSERIAL NOT NULL, "
                         "PRIMARY KEY (a, b)) WITH (OIDS = FALSE);"));
    }
};

QTEST_GUILESS_MAIN(tst_dialect_postgresql)
#include "tst_dialect_postgresql.moc"
