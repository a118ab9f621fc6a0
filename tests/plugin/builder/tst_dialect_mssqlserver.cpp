#include "dialect_specification.h"

class tst_dialect_mssqlserver : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_mssqlserver() : dialect_specification(plugin::ddl_export::db_mssqlserver) {}

protected:
    QString builderName() const override { return "mssqlserver"; }
    QString begin() const override { return {}; }
    QString end() const override { return {}; }
    QString numericType() const override { return "INT"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return true; }
    QString personTable() const override
    {
        return "CREATE TABLE person (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), name TEXT NOT NULL, "
               "birth_date DATE, email VARCHAR(900) NOT NULL UNIQUE, deleted_at TEXT, country_id INT);";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE person (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), name TEXT NOT NULL, "
               "birth_date DATE, email VARCHAR(900) NOT NULL UNIQUE, deleted_at TEXT, country_id INT);";
    }
    QString currencyTable() const override
    {
        return "CREATE TABLE currency (code VARCHAR(255) NOT NULL PRIMARY KEY, label TEXT);";
    }
    QString currencyTableWithRelationships() const override
    {
        return "CREATE TABLE currency (code VARCHAR(255) NOT NULL PRIMARY KEY, label TEXT);";
    }
    QString pairTable() const override
    {
        return "CREATE TABLE pair (k1 INT NOT NULL, k2 VARCHAR(255) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));";
    }
    QString pairTableWithRelationships() const override
    {
        return "CREATE TABLE pair (k1 INT NOT NULL, k2 VARCHAR(255) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));";
    }
    QString countedPairTable() const override
    {
        return "CREATE TABLE pair (k1 INT NOT NULL, k2 VARCHAR(255) NOT NULL, CONSTRAINT pk_pair_k1_k2 "
               "PRIMARY KEY (k1, k2));";
    }
    QString holderTable() const override
    {
        return "CREATE TABLE holder (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), lat|lon|alt FLOAT, level "
               "INT, pair_k1 INT, pair_k2 TEXT, currency_code TEXT);";
    }
    QString holderTableWithRelationships() const override
    {
        return "CREATE TABLE holder (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), lat|lon|alt FLOAT, level "
               "INT, pair_k1 INT, pair_k2 TEXT, currency_code TEXT);";
    }
    QString tableWithoutKey() const override { return "CREATE TABLE keyless (note TEXT);"; }
    QString tableWithoutColumns() const override { return "CREATE TABLE bare ();"; }
    QString tableWithRepeatedColumns() const override
    {
        return "CREATE TABLE repeating (a INT NOT NULL, n INT, A DATE, n TEXT, o INT, CONSTRAINT "
               "pk_repeating_a_a PRIMARY KEY (a, a));";
    }
    QString droppedTable() const override { return "DROP TABLE person;"; }
    QString renamedTable() const override { return "EXEC sp_rename 'human', 'person';"; }
    QString addedColumn() const override { return "ALTER TABLE person ADD opens TIME;"; }
    QString addedColumnWithConstraints() const override
    {
        return "ALTER TABLE person ADD email TEXT NOT NULL UNIQUE;";
    }
    QString addedColumns() const override
    {
        return "ALTER TABLE holder ADD lat FLOAT;\n"
               "ALTER TABLE holder ADD lon FLOAT;\n"
               "ALTER TABLE holder ADD alt FLOAT;";
    }
    QString addedForeignKeyColumns() const override
    {
        return "ALTER TABLE holder ADD pair_k1 INT;\n"
               "ALTER TABLE holder ADD pair_k2 TEXT;";
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
        return "EXEC sp_rename 'person.birthday', 'birth_date', 'COLUMN';";
    }
    QString renamedColumnThatForbidsNull() const override
    {
        return "EXEC sp_rename 'person.full_name', 'name', 'COLUMN';";
    }
    QString renamedSecondColumn() const override
    {
        return "\n"
               "EXEC sp_rename 'holder.lng', 'lon', 'COLUMN';";
    }
    QString renamedFirstAndThirdColumn() const override
    {
        return "EXEC sp_rename 'holder.x', 'lat', 'COLUMN';\n"
               "EXEC sp_rename 'holder.z', 'alt', 'COLUMN';";
    }
    QString columnsOfAnotherNumber() const override
    {
        return "ALTER TABLE holder DROP COLUMN level;\n"
               "ALTER TABLE holder DROP COLUMN sub;\n"
               "ALTER TABLE holder ADD level INT;";
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
    QString droppedIndex() const override { return "DROP INDEX person.idx_person_email;"; }
    QString threeDroppedIndexes() const override
    {
        return "DROP INDEX holder.idx_holder_lat;\n"
               "DROP INDEX holder.idx_holder_lon;\n"
               "DROP INDEX holder.idx_holder_alt;";
    }
    QString droppedIndexOfARenamedTable() const override { return "DROP INDEX person.idx_human_email;"; }
    QString droppedIndexOfAnUnknownEntity() const override { return {}; }
    QString linkTable() const override { return "CREATE TABLE person_tag (person_id INT, tag_id INT);"; }
    QString linkTableOfStringAndCompositeKeys() const override
    {
        return "CREATE TABLE currency_pair (currency_code VARCHAR(255), pair_k1 INT, pair_k2 VARCHAR(255));";
    }
    QString linkTableOfStringAndCompositeKeysWithRelationships() const override
    {
        return "CREATE TABLE currency_pair (currency_code VARCHAR(255), pair_k1 INT, pair_k2 VARCHAR(255));";
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
                 QString("CREATE TABLE t_user (id BIGINT NOT NULL PRIMARY KEY IDENTITY(1,1), name TEXT, "
                         "email VARCHAR(900) NOT NULL UNIQUE);"));
        QCOMPARE(builder->dropIndex(model.property(1, 12)), QString("DROP INDEX t_user.idx_t_user_email;"));
        support::model_builder later = userModel();
        support::entity_builder member = support::entity_builder(later.entity(1)).table("t_member");
        QCOMPARE(builder->renameTable(user.get(), member.get()),
                 QString("EXEC sp_rename 't_user', 't_member';"));
        builder->setProjects(&later.project(), &model.project());
        QCOMPARE(builder->renameColumn(model.property(1, 11), later.property(1, 13)),
                 QString("EXEC sp_rename 't_member.name', 'full_name', 'COLUMN';"));
        QCOMPARE(builder->addColumn(member.property(14, "age", "int").get()),
                 QString("ALTER TABLE t_member ADD age INT;"));
    }
    void boundsIndexedStringsThatAreNotUnique()
    {
        support::model_builder model;
        support::entity_builder e = model.entity(1, "t");
        e.property(11, "a", "QString").indexed();
        e.property(12, "b", "QString");
        e.property(13, "c", "int").indexed();
        e.property(14, "d", "QString").types({"QString", "int"}).columns("d|n").indexed();
        e.property(15, "e", "QString").types({"QString", "QString"}).columns("e|f").indexed();
        QCOMPARE(newBuilder()->createTable(e.get()),
                 QString("CREATE TABLE t (a VARCHAR(900), b TEXT, c INT, d|n TEXT, e|f VARCHAR(900));"));
    }
    void givesEnumerationsItsOwnNumber()
    {
        const auto state = std::make_shared<model::enumeration>(1);
        state->setName("state");
        support::entity_builder e = m_model.entity(300, "t");
        e.property(3000, "state", "int").enumeration(state);
        QCOMPARE(newBuilder()->createTable(e.get()), QString("CREATE TABLE t (state INT);"));
    }
    void dropsTheWordColumnWhereverItStands()
    {
        support::entity_builder person(m_model.entity(1));
        person.property(17, "x", "int").forced("INT ADD COLUMN y INT");
        QCOMPARE(newBuilder()->addColumn(m_model.property(1, 17)),
                 QString("ALTER TABLE person ADD x INT ADD y INT;"));
    }
};

QTEST_GUILESS_MAIN(tst_dialect_mssqlserver)
#include "tst_dialect_mssqlserver.moc"
