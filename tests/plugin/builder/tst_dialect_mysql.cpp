#include "dialect_specification.h"

class tst_dialect_mysql : public dialect_specification
{
    Q_OBJECT

public:
    tst_dialect_mysql() : dialect_specification(plugin::ddl_export::db_mysql) {}

protected:
    QString builderName() const override { return "mysql"; }
    QString begin() const override { return {}; }
    QString end() const override { return {}; }
    QString numericType() const override { return "INTEGER"; }
    QString otherType() const override { return "TEXT"; }
    bool altersTableForForeignKeys() const override { return true; }
    QString personTable() const override
    {
        return "CREATE TABLE `person` (`id` INTEGER NOT NULL AUTO_INCREMENT, `name` TEXT NOT NULL, "
               "`birth_date` DATE, `email` TEXT NOT NULL UNIQUE, deleted_at TEXT, `country_id` INTEGER, "
               "PRIMARY KEY (`id`));";
    }
    QString personTableWithRelationships() const override
    {
        return "CREATE TABLE `person` (`id` INTEGER NOT NULL AUTO_INCREMENT, `name` TEXT NOT NULL, "
               "`birth_date` DATE, `email` TEXT NOT NULL UNIQUE, deleted_at TEXT, `country_id` INTEGER, "
               "PRIMARY KEY (`id`));";
    }
    QString currencyTable() const override
    {
        return "CREATE TABLE `currency` (`code` TEXT NOT NULL, `label` TEXT, PRIMARY KEY (`code`(255)));";
    }
    QString currencyTableWithRelationships() const override
    {
        return "CREATE TABLE `currency` (`code` VARCHAR(255) NOT NULL, `label` TEXT, PRIMARY KEY (`code`));";
    }
    QString pairTable() const override
    {
        return "CREATE TABLE `pair` (`k1` INTEGER NOT NULL, `k2` TEXT NOT NULL, PRIMARY KEY (`k1`, "
               "`k2`(255)));";
    }
    QString pairTableWithRelationships() const override
    {
        return "CREATE TABLE `pair` (`k1` INTEGER NOT NULL, `k2` VARCHAR(255) NOT NULL, PRIMARY KEY (`k1`, "
               "`k2`));";
    }
    QString countedPairTable() const override
    {
        return "CREATE TABLE `pair` (`k1` INTEGER NOT NULL AUTO_INCREMENT, `k2` TEXT NOT NULL "
               "AUTO_INCREMENT, PRIMARY KEY (`k1`, `k2`(255)));";
    }
    QString holderTable() const override
    {
        return "CREATE TABLE `holder` (`id` INTEGER NOT NULL AUTO_INCREMENT, `lat|lon|alt` DOUBLE, `level` "
               "INTEGER, `pair_k1` INTEGER, `pair_k2` TEXT, `currency_code` TEXT, PRIMARY KEY (`id`));";
    }
    QString holderTableWithRelationships() const override
    {
        return "CREATE TABLE `holder` (`id` INTEGER NOT NULL AUTO_INCREMENT, `lat|lon|alt` DOUBLE, `level` "
               "INTEGER, `pair_k1` INTEGER, `pair_k2` TEXT, `currency_code` TEXT, PRIMARY KEY (`id`));";
    }
    QString tableWithoutKey() const override { return "CREATE TABLE `keyless` (`note` TEXT);"; }
    QString tableWithoutColumns() const override { return "CREATE TABLE `bare` ();"; }
    QString tableWithRepeatedColumns() const override
    {
        return "CREATE TABLE `repeating` (`a` INTEGER NOT NULL, `n` INTEGER, `A` DATE, n TEXT, `o` INTEGER, "
               "PRIMARY KEY (`a`, `a`));";
    }
    QString droppedTable() const override { return "DROP TABLE `person`;"; }
    QString renamedTable() const override { return "RENAME TABLE `human` TO `person`;"; }
    QString addedColumn() const override { return "ALTER TABLE `person` ADD COLUMN `opens` TIME;"; }
    QString addedColumnWithConstraints() const override
    {
        return "ALTER TABLE `person` ADD COLUMN `email` TEXT NOT NULL UNIQUE;";
    }
    QString addedColumns() const override
    {
        return "ALTER TABLE `holder` ADD COLUMN `lat` DOUBLE;\n"
               "ALTER TABLE `holder` ADD COLUMN `lon` DOUBLE;\n"
               "ALTER TABLE `holder` ADD COLUMN `alt` DOUBLE;";
    }
    QString addedForeignKeyColumns() const override
    {
        return "ALTER TABLE `holder` ADD COLUMN `pair_k1` INTEGER;\n"
               "ALTER TABLE `holder` ADD COLUMN `pair_k2` TEXT;";
    }
    QString droppedColumn() const override { return "ALTER TABLE `person` DROP COLUMN `birth_date`;"; }
    QString droppedColumns() const override
    {
        return "ALTER TABLE `holder` DROP COLUMN `lat`;\n"
               "ALTER TABLE `holder` DROP COLUMN `lon`;\n"
               "ALTER TABLE `holder` DROP COLUMN `alt`;";
    }
    QString renamedColumn() const override
    {
        return "ALTER TABLE `person` CHANGE `birthday` `birth_date` DATE;";
    }
    QString renamedColumnThatForbidsNull() const override
    {
        return "ALTER TABLE `person` CHANGE `full_name` `name` TEXT NOT NULL;";
    }
    QString renamedSecondColumn() const override
    {
        return "\n"
               "ALTER TABLE `holder` CHANGE `lng` `lon` DOUBLE;";
    }
    QString renamedFirstAndThirdColumn() const override
    {
        return "ALTER TABLE `holder` CHANGE `x` `lat` DOUBLE;\n"
               "ALTER TABLE `holder` CHANGE `z` `alt` DOUBLE;";
    }
    QString columnsOfAnotherNumber() const override
    {
        return "ALTER TABLE `holder` DROP COLUMN `level`;\n"
               "ALTER TABLE `holder` DROP COLUMN `sub`;\n"
               "ALTER TABLE `holder` ADD COLUMN `level` INTEGER;";
    }
    QString columnWithTheSameName() const override { return {}; }
    QString manyToOneForeignKey() const override
    {
        return "ALTER TABLE `person` ADD CONSTRAINT fk_person_country_id FOREIGN KEY (`country_id`) "
               "REFERENCES `country` (`id`);";
    }
    QString compositeForeignKey() const override
    {
        return "ALTER TABLE `holder` ADD CONSTRAINT fk_holder_pair_k1_pair_k2 FOREIGN KEY (`pair_k1`, "
               "`pair_k2`) REFERENCES `pair` (`k1`, `k2`);";
    }
    QString oneToOneForeignKey() const override
    {
        return "ALTER TABLE `holder` ADD CONSTRAINT fk_holder_spouse_id FOREIGN KEY (`spouse_id`) REFERENCES "
               "`person` (`id`);";
    }
    QString manyToManyForeignKey() const override
    {
        return "ALTER TABLE person_tag ADD CONSTRAINT fk_person_tags FOREIGN KEY (person_id) REFERENCES "
               "`person` (`id`);";
    }
    QString compositeManyToManyForeignKey() const override
    {
        return "ALTER TABLE currency_pair ADD CONSTRAINT fk_pair_currencies FOREIGN KEY (pair_k1, pair_k2) "
               "REFERENCES `pair` (`k1`, `k2`);";
    }
    QString droppedForeignKey() const override
    {
        return "ALTER TABLE `person` DROP CONSTRAINT fk_person_country_id;";
    }
    QString droppedManyToManyForeignKey() const override
    {
        return "ALTER TABLE person_tag DROP CONSTRAINT fk_person_tags;";
    }
    QString stringIndex() const override
    {
        return "CREATE INDEX idx_person_email ON `person` (`email`(255));";
    }
    QString numberIndex() const override { return "CREATE INDEX idx_holder_level ON `holder` (`level`);"; }
    QString threeIndexes() const override
    {
        return "CREATE INDEX idx_holder_lat ON `holder` (`lat`);\n"
               "CREATE INDEX idx_holder_lon ON `holder` (`lon`);\n"
               "CREATE INDEX idx_holder_alt ON `holder` (`alt`);";
    }
    QString droppedIndex() const override { return "DROP INDEX idx_person_email ON `person`;"; }
    QString threeDroppedIndexes() const override
    {
        return "DROP INDEX idx_holder_lat ON `holder`;\n"
               "DROP INDEX idx_holder_lon ON `holder`;\n"
               "DROP INDEX idx_holder_alt ON `holder`;";
    }
    QString droppedIndexOfARenamedTable() const override { return "DROP INDEX idx_human_email ON `person`;"; }
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
        return "CREATE TABLE currency_pair (currency_code VARCHAR(255), pair_k1 INTEGER, pair_k2 "
               "VARCHAR(255));";
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
                 QString("CREATE TABLE `t_user` (`id` BIGINT NOT NULL AUTO_INCREMENT, `name` TEXT, "
                         "`email` TEXT NOT NULL UNIQUE, PRIMARY KEY (`id`));"));
        QCOMPARE(builder->createIndex(model.property(1, 12)),
                 QString("CREATE INDEX idx_t_user_email ON `t_user` (`email`(255));"));
        support::model_builder later = userModel();
        support::entity_builder(later.entity(1)).table("t_member");
        QCOMPARE(builder->renameTable(user.get(), later.entity(1)),
                 QString("RENAME TABLE `t_user` TO `t_member`;"));
        builder->setProjects(&later.project(), &model.project());
        QCOMPARE(builder->renameColumn(model.property(1, 11), later.property(1, 13)),
                 QString("ALTER TABLE `t_member` CHANGE `name` `full_name` TEXT;"));
    }
    void writesNoKeyClauseForAKeyWithoutColumns()
    {
        support::entity_builder odd = m_model.entity(200, "odd");
        const auto key = odd.relation(2000, "children", 2001, model::relationship::one_to_many, 1).get();
        key->setIdentifier(true);
        odd.property(2002, "note", "int");
        support::entity_builder linked = m_model.entity(201, "linked");
        linked.relation(2010, "persons", 2011, model::relationship::many_to_many, 1)
            .get()
            ->setIdentifier(true);
        for (const bool relationships : {false, true}) {
            const auto builder = newBuilder(relationships);
            QCOMPARE(builder->createTable(odd.get()), QString("CREATE TABLE `odd` (`note` INTEGER);"));
            QCOMPARE(builder->createTable(linked.get()), QString("CREATE TABLE `linked` ();"));
        }
    }
};

QTEST_GUILESS_MAIN(tst_dialect_mysql)
#include "tst_dialect_mysql.moc"
