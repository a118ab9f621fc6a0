#include "dialect_specification.h"

class tst_dialect_oracle : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_oracle() : dialect_specification(plugin::ddl_export::db_oracle) {}

protected:
    QString builderName() const override { return "oracle"; }
    QString begin() const override { return {}; }
    QString end() const override { return {}; }
    QString numericType() const override { return "INTEGER"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return true; }
    QString personTable() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY, name CLOB NOT NULL, birth_date DATE, "
               "email VARCHAR2(4000) NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER);\n"
               "CREATE SEQUENCE seq_inc_person START WITH 1 INCREMENT BY 1;\n"
               "CREATE OR REPLACE TRIGGER trigger_inc_person\n"
               "\tBEFORE INSERT OR UPDATE OF id ON person\n"
               "\tFOR EACH ROW\n"
               "\tBEGIN\n"
               "\t\tIF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN\n"
               "\t\t\tSELECT seq_inc_person.NEXTVAL INTO :NEW.id FROM DUAL;\n"
               "\t\tEND IF;\n"
               "\tEND;\n"
               "\t/\n";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE person (id INTEGER NOT NULL PRIMARY KEY, name CLOB NOT NULL, birth_date DATE, "
               "email VARCHAR2(4000) NOT NULL UNIQUE, deleted_at TEXT, country_id INTEGER);\n"
               "CREATE SEQUENCE seq_inc_person START WITH 1 INCREMENT BY 1;\n"
               "CREATE OR REPLACE TRIGGER trigger_inc_person\n"
               "\tBEFORE INSERT OR UPDATE OF id ON person\n"
               "\tFOR EACH ROW\n"
               "\tBEGIN\n"
               "\t\tIF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN\n"
               "\t\t\tSELECT seq_inc_person.NEXTVAL INTO :NEW.id FROM DUAL;\n"
               "\t\tEND IF;\n"
               "\tEND;\n"
               "\t/\n";
    }
    QString currencyTable() const override
    {
        return "CREATE TABLE currency (code VARCHAR2(4000) NOT NULL PRIMARY KEY, label CLOB);";
    }
    QString currencyTableWithRelationships() const override
    {
        return "CREATE TABLE currency (code VARCHAR2(4000) NOT NULL PRIMARY KEY, label CLOB);";
    }
    QString pairTable() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 VARCHAR2(4000) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));";
    }
    QString pairTableWithRelationships() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 VARCHAR2(4000) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));";
    }
    QString countedPairTable() const override
    {
        return "CREATE TABLE pair (k1 INTEGER NOT NULL, k2 VARCHAR2(4000) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));\n"
               "CREATE SEQUENCE seq_inc_pair START WITH 1 INCREMENT BY 1;\n"
               "CREATE OR REPLACE TRIGGER trigger_inc_pair\n"
               "\tBEFORE INSERT OR UPDATE OF k1|k2 ON pair\n"
               "\tFOR EACH ROW\n"
               "\tBEGIN\n"
               "\t\tIF ( :NEW.k1|k2 = 0 OR :NEW.k1|k2 IS NULL ) THEN\n"
               "\t\t\tSELECT seq_inc_pair.NEXTVAL INTO :NEW.k1|k2 FROM DUAL;\n"
               "\t\tEND IF;\n"
               "\tEND;\n"
               "\t/\n";
    }
    QString holderTable() const override
    {
        return "CREATE TABLE holder (id INTEGER NOT NULL PRIMARY KEY, lat|lon|alt FLOAT, level INTEGER, "
               "pair_k1 INTEGER, pair_k2 CLOB, currency_code CLOB);\n"
               "CREATE SEQUENCE seq_inc_holder START WITH 1 INCREMENT BY 1;\n"
               "CREATE OR REPLACE TRIGGER trigger_inc_holder\n"
               "\tBEFORE INSERT OR UPDATE OF id ON holder\n"
               "\tFOR EACH ROW\n"
               "\tBEGIN\n"
               "\t\tIF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN\n"
               "\t\t\tSELECT seq_inc_holder.NEXTVAL INTO :NEW.id FROM DUAL;\n"
               "\t\tEND IF;\n"
               "\tEND;\n"
               "\t/\n";
    }
    QString holderTableWithRelationships() const override
    {
        return "CREATE TABLE holder (id INTEGER NOT NULL PRIMARY KEY, lat|lon|alt FLOAT, level INTEGER, "
               "pair_k1 INTEGER, pair_k2 CLOB, currency_code CLOB);\n"
               "CREATE SEQUENCE seq_inc_holder START WITH 1 INCREMENT BY 1;\n"
               "CREATE OR REPLACE TRIGGER trigger_inc_holder\n"
               "\tBEFORE INSERT OR UPDATE OF id ON holder\n"
               "\tFOR EACH ROW\n"
               "\tBEGIN\n"
               "\t\tIF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN\n"
               "\t\t\tSELECT seq_inc_holder.NEXTVAL INTO :NEW.id FROM DUAL;\n"
               "\t\tEND IF;\n"
               "\tEND;\n"
               "\t/\n";
    }
    QString tableWithoutKey() const override { return "CREATE TABLE keyless (note CLOB);"; }
    QString tableWithoutColumns() const override { return "CREATE TABLE bare ();"; }
    QString tableWithRepeatedColumns() const override
    {
        return "CREATE TABLE repeating (a INTEGER NOT NULL, n INTEGER, A DATE, n TEXT, o INTEGER, CONSTRAINT "
               "pk_repeating_a_a PRIMARY KEY (a, a));";
    }
    QString droppedTable() const override { return "DROP TABLE person;"; }
    QString renamedTable() const override { return "ALTER TABLE human RENAME TO person;"; }
    QString addedColumn() const override { return "ALTER TABLE person ADD opens DATE;"; }
    QString addedColumnWithConstraints() const override
    {
        return "ALTER TABLE person ADD email CLOB NOT NULL UNIQUE;";
    }
    QString addedColumns() const override
    {
        return "ALTER TABLE holder ADD lat FLOAT;\n"
               "ALTER TABLE holder ADD lon FLOAT;\n"
               "ALTER TABLE holder ADD alt FLOAT;";
    }
    QString addedForeignKeyColumns() const override
    {
        return "ALTER TABLE holder ADD pair_k1 INTEGER;\n"
               "ALTER TABLE holder ADD pair_k2 CLOB;";
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
               "ALTER TABLE holder ADD level INTEGER;";
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
        return "CREATE TABLE person_tag (person_id INTEGER, tag_id INTEGER);";
    }
    QString linkTableOfStringAndCompositeKeys() const override
    {
        return "CREATE TABLE currency_pair (currency_code VARCHAR2(4000), pair_k1 INTEGER, pair_k2 "
               "VARCHAR2(4000));";
    }
    QString linkTableOfStringAndCompositeKeysWithRelationships() const override
    {
        return "CREATE TABLE currency_pair (currency_code VARCHAR2(4000), pair_k1 INTEGER, pair_k2 "
               "VARCHAR2(4000));";
    }

private Q_SLOTS:
    void writesTheExampleOfAUser()
    {
        support::model_builder model;
        support::entity_builder user = model.entity(1, "t_user");
        user.identifier(10, "id", "long");
        user.property(11, "name", "QString");
        user.property(12, "code", "QString").notNull().indexed();
        const auto builder = newBuilder();
        builder->setProjects(&model.project());
        QCOMPARE(builder->createTable(user.get()),
                 QString("CREATE TABLE t_user (id INTEGER NOT NULL PRIMARY KEY, name CLOB, "
                         "code VARCHAR2(4000) NOT NULL);\n"
                         "CREATE SEQUENCE seq_inc_t_user START WITH 1 INCREMENT BY 1;\n"
                         "CREATE OR REPLACE TRIGGER trigger_inc_t_user\n"
                         "\tBEFORE INSERT OR UPDATE OF id ON t_user\n"
                         "\tFOR EACH ROW\n"
                         "\tBEGIN\n"
                         "\t\tIF ( :NEW.id = 0 OR :NEW.id IS NULL ) THEN\n"
                         "\t\t\tSELECT seq_inc_t_user.NEXTVAL INTO :NEW.id FROM DUAL;\n"
                         "\t\tEND IF;\n"
                         "\tEND;\n"
                         "\t/\n"));
        support::entity_builder pair = model.entity(2, "t_pair");
        pair.identifier(20, "k", "QString").columns("a|b");
        QCOMPARE(builder->createTable(pair.get()),
                 QString("CREATE TABLE t_pair (a VARCHAR2(4000) NOT NULL, b VARCHAR2(4000) NOT NULL, "
                         "CONSTRAINT pk_t_pair_a_b PRIMARY KEY (a, b));"));
        support::entity_builder age(user);
        QCOMPARE(builder->addColumn(age.property(13, "age", "int").get()),
                 QString("ALTER TABLE t_user ADD age INTEGER;"));
    }
    void cutsGeneratedNamesOnly()
    {
        support::model_builder model;
        const QString table = "t_table_with_forty_characters_in_its_nam";
        QCOMPARE(table.size(), 40);
        support::entity_builder e = model.entity(1, table);
        e.identifier(10, "k", "long").columns("first_column_of_the_composite_key|b").counted(true);
        e.property(11, "code", "int").indexed();
        e.relation(12, "self", 100, model::relationship::many_to_one, 1).columns("x|y");
        const auto builder = newBuilder();
        builder->setProjects(&model.project());
        QCOMPARE(builder->createTable(e.get()).section(QChar(10), 0, 1),
                 QString("CREATE TABLE t_table_with_forty_characters_in_its_nam "
                         "(first_column_of_the_composite_key INTEGER NOT NULL, b INTEGER NOT NULL, "
                         "code INTEGER, x INTEGER, y INTEGER, "
                         "CONSTRAINT pk_t_table_with_forty_characte "
                         "PRIMARY KEY (first_column_of_the_composite_key, b));\n"
                         "CREATE SEQUENCE seq_inc_t_table_with_forty_characters_in_its_nam "
                         "START WITH 1 INCREMENT BY 1;"));
        QCOMPARE(builder->createIndex(model.property(1, 11)),
                 QString("CREATE INDEX idx_t_table_with_forty_charact ON "
                         "t_table_with_forty_characters_in_its_nam (code);"));
        QCOMPARE(builder->dropForeignKey(model.relation(1, 12)),
                 QString("ALTER TABLE t_table_with_forty_characters_in_its_nam "
                         "DROP CONSTRAINT fk_t_table_with_forty_characte;"));
    }
    void boundsOnlyIndexedStrings()
    {
        support::model_builder model;
        support::entity_builder e = model.entity(1, "t");
        e.property(11, "a", "QUuid").indexed();
        e.property(12, "b", "QUuid");
        e.property(13, "c", "int").indexed();
        e.property(14, "d", "QString").forced("CHAR(3)").indexed();
        e.property(15, "e", "QString").types({"QString", "int"}).columns("e|n").indexed();
        e.property(16, "f", "QString").types({"QString", "QString"}).columns("f|g").indexed();
        QCOMPARE(newBuilder()->createTable(e.get()),
                 QString("CREATE TABLE t (a VARCHAR2(4000), b VARCHAR2(255), c INTEGER, d VARCHAR2(4000), "
                         "e|n CLOB, f|g VARCHAR2(4000));"));
    }
    void dropsTheWordColumnWhereverItStands()
    {
        support::entity_builder person(m_model.entity(1));
        person.property(17, "x", "int").forced("INT ADD COLUMN y INT");
        QCOMPARE(newBuilder()->addColumn(m_model.property(1, 17)),
                 QString("ALTER TABLE person ADD x INT ADD y INT;"));
    }
};

QTEST_GUILESS_MAIN(tst_dialect_oracle)
#include "tst_dialect_oracle.moc"
