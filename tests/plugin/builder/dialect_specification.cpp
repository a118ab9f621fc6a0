#include "dialect_specification.h"

using support::entity_builder;
using support::model_builder;

namespace {

enum ids : long
{
    Person = 1,
    Country,
    Currency,
    Pair,
    Tag,
    Holder,
    Bare,
    Keyless,
    Repeating
};

void addPerson(model_builder & model)
{
    model.entity(Country, "country").identifier(20, "id", "long");
    entity_builder person = model.entity(Person, "person");
    person.softDelete("deleted_at");
    person.identifier(10, "id", "long");
    person.property(11, "name", "QString").notNull();
    person.property(12, "birth_date", "QDate");
    person.property(13, "email", "QString").notNull().unique().indexed();
    person.relation(14, "country", 100, model::relationship::many_to_one, Country)
        .columns("country_id")
        .indexed();
    person.relation(15, "tags", 101, model::relationship::many_to_many, Tag)
        .linkTable("person_tag", "person_id", "tag_id", 51)
        .indexed();
    person.relation(16, "orders", 102, model::relationship::one_to_many, Holder).indexed();
    entity_builder tag = model.entity(Tag, "tag");
    tag.identifier(50, "id", "long");
    tag.relation(51, "persons", 103, model::relationship::many_to_many, Person)
        .linkTable("person_tag", "tag_id", "person_id", 15);
}

void addKeys(model_builder & model)
{
    entity_builder currency = model.entity(Currency, "currency");
    currency.identifier(30, "code", "QString");
    currency.property(31, "label", "QVariant");
    currency.relation(32, "pairs", 104, model::relationship::many_to_many, Pair)
        .linkTable("currency_pair", "currency_code", "pair_k1|pair_k2", 41);
    entity_builder pair = model.entity(Pair, "pair");
    pair.identifier(40, "k", "long").columns("k1|k2").types({"long", "QString"});
    pair.relation(41, "currencies", 105, model::relationship::many_to_many, Currency)
        .linkTable("currency_pair", "pair_k1|pair_k2", "currency_code", 32);
}

void addHolder(model_builder & model)
{
    entity_builder holder = model.entity(Holder, "holder");
    holder.identifier(60, "id", "long");
    holder.relation(61, "pair", 106, model::relationship::many_to_one, Pair).columns("pair_k1|pair_k2");
    holder.relation(62, "currency", 107, model::relationship::many_to_one, Currency).columns("currency_code");
    holder.relation(63, "spouse", 108, model::relationship::one_to_one, Person).columns("spouse_id");
    holder.property(64, "place", "double").columns("lat|lon|alt").indexed();
    holder.property(65, "level", "int").indexed();
    holder.property(66, "hidden", "int").transient().indexed();
    holder.property(67, "untyped", "int").withoutType();
}

void addOddities(model_builder & model)
{
    model.entity(Bare, "bare");
    model.entity(Keyless, "keyless").property(80, "note", "QString");
    entity_builder repeating = model.entity(Repeating, "repeating");
    repeating.softDelete("n");
    repeating.identifier(90, "id", "long").columns("a|a").types({"long", "long"});
    repeating.property(91, "first", "int").columns("n");
    repeating.property(92, "second", "QDate").columns("n").indexed();
    repeating.property(93, "third", "QDate").columns("A");
    repeating.relation(94, "country", 110, model::relationship::many_to_one, Country).columns("n");
    repeating.relation(95, "nowhere", 111, model::relationship::many_to_one, 999).columns("nowhere_id");
    repeating.relation(96, "other", 112, model::relationship::many_to_one, Country).columns("o");
}

} // namespace

model_builder dialect_specification::userModel()
{
    model_builder model;
    entity_builder user = model.entity(1, "user");
    user.table("t_user");
    user.identifier(10, "id", "qint64");
    user.property(11, "name", "QString");
    user.property(12, "email", "QString").notNull().unique().indexed();
    user.property(13, "full_name", "QString");
    return model;
}

void dialect_specification::init()
{
    m_model = model_builder();
    addPerson(m_model);
    addKeys(m_model);
    addHolder(m_model);
    addOddities(m_model);
    m_earlier = model_builder();
    entity_builder person = m_earlier.entity(Person, "human");
    person.property(11, "full_name", "QString");
    person.property(12, "birthday", "QDate");
    person.property(13, "email", "QString").indexed();
    person.property(17, "first", "QString").columns("first|second");
    entity_builder holder = m_earlier.entity(Holder, "holder");
    holder.property(64, "place", "double").columns("lat|lng|alt").indexed();
    holder.property(65, "level", "int").columns("level|sub");
    holder.property(68, "spot", "double").columns("x|lon|z");
}

void dialect_specification::hasANameAndAFrame()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->name(), builderName());
    QCOMPARE(builder->begin(), begin());
    QCOMPARE(builder->end(), end());
    QCOMPARE(builder->altersTableForForeignKeys(), altersTableForForeignKeys());
}

void dialect_specification::hasTypesWithoutAnyMapping()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->defaultType(true), numericType());
    QCOMPARE(builder->defaultType(false), otherType());
}

void dialect_specification::createsTables_data()
{
    QTest::addColumn<int>("entity");
    QTest::addColumn<bool>("relationships");
    QTest::addColumn<QString>("expected");
    QTest::newRow("person") << int(Person) << false << personTable();
    QTest::newRow("person, relationships") << int(Person) << true << personTableWithRelationships();
    QTest::newRow("string key") << int(Currency) << false << currencyTable();
    QTest::newRow("string key, relationships") << int(Currency) << true << currencyTableWithRelationships();
    QTest::newRow("composite key") << int(Pair) << false << pairTable();
    QTest::newRow("composite key, relationships") << int(Pair) << true << pairTableWithRelationships();
    QTest::newRow("references") << int(Holder) << false << holderTable();
    QTest::newRow("references, relationships") << int(Holder) << true << holderTableWithRelationships();
    QTest::newRow("repeated columns") << int(Repeating) << false << tableWithRepeatedColumns();
}

void dialect_specification::createsTables()
{
    QFETCH(int, entity);
    QFETCH(bool, relationships);
    QFETCH(QString, expected);
    const auto builder = newBuilder(relationships);
    QCOMPARE(builder->createTable(m_model.entity(entity)), expected);
    if (entity == Pair && !relationships) {
        m_model.property(Pair, 40)->setAutoIncrement(true);
        QCOMPARE(builder->createTable(m_model.entity(entity)), countedPairTable());
    }
}

void dialect_specification::registersIndexesAndLinkTables()
{
    const auto builder = newBuilder();
    builder->createTable(m_model.entity(Person));
    builder->createTable(m_model.entity(Holder));
    builder->createTable(m_model.entity(Repeating));
    QCOMPARE(builder->indexes().values(),
             (std::vector{m_model.property(Person, 13), m_model.property(Person, 14),
                          m_model.property(Holder, 64), m_model.property(Holder, 65)}));
    QCOMPARE(builder->indexes().getByKey(13), m_model.property(Person, 13));

    // Both sides name the same link table; the one that comes first is kept.
    builder->createTable(m_model.entity(Tag));
    QCOMPARE(builder->linkTables().count(), 1L);
    QCOMPARE(builder->linkTables().getKeyByIndex(0), QString("person_tag"));
    QCOMPARE(builder->linkTables().getByIndex(0), m_model.relation(Person, 15));

    m_model.relation(Currency, 32)->setExtraTable("");
    builder->createTable(m_model.entity(Currency));
    QCOMPARE(builder->linkTables().count(), 1L);
}

void dialect_specification::createsTablesWithoutKeyOrColumns()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->createTable(m_model.entity(Keyless)), tableWithoutKey());
    QCOMPARE(builder->createTable(m_model.entity(Bare)), tableWithoutColumns());

    entity_builder untyped = m_model.entity(70, "bare");
    untyped.identifier(700, "id", "long").withoutType();
    QCOMPARE(builder->createTable(untyped.get()), tableWithoutColumns());
}

void dialect_specification::dropsAndRenamesTables()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->dropTable(m_model.entity(Person)), droppedTable());
    QCOMPARE(builder->renameTable(m_earlier.entity(Person), m_model.entity(Person)), renamedTable());
}

void dialect_specification::addsColumns()
{
    const auto builder = newBuilder();
    entity_builder person(m_model.entity(Person));
    QCOMPARE(builder->addColumn(person.property(17, "opens", "QTime").get()), addedColumn());
    QCOMPARE(builder->addColumn(m_model.property(Person, 13)), addedColumnWithConstraints());
    QCOMPARE(builder->addColumn(m_model.property(Holder, 64)), addedColumns());
    QCOMPARE(builder->addColumn(m_model.property(Holder, 61)), addedForeignKeyColumns());
    // Neither has a column.
    QCOMPARE(builder->addColumn(m_model.property(Person, 15)), QString());
    QCOMPARE(builder->addColumn(m_model.property(Person, 16)), QString());
}

void dialect_specification::dropsColumns()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->dropColumn(m_model.property(Person, 12)), droppedColumn());
    QCOMPARE(builder->dropColumn(m_model.property(Holder, 64)), droppedColumns());
}

void dialect_specification::renamesColumns()
{
    const auto builder = newBuilder();
    const auto renamed = [&](long entity, long from, long to) {
        return builder->renameColumn(m_earlier.property(entity, from), m_model.property(entity, to));
    };
    QCOMPARE(renamed(Person, 12, 12), renamedColumn());
    QCOMPARE(renamed(Person, 11, 11), renamedColumnThatForbidsNull());
    QCOMPARE(renamed(Holder, 64, 64), renamedSecondColumn());
    QCOMPARE(renamed(Holder, 68, 64), renamedFirstAndThirdColumn());
    QCOMPARE(renamed(Holder, 65, 65), columnsOfAnotherNumber());
    QCOMPARE(renamed(Person, 13, 13), columnWithTheSameName());
}

void dialect_specification::addsForeignKeys()
{
    const auto builder = newBuilder(true);
    QCOMPARE(builder->addForeignKey(m_model.relation(Person, 14)), manyToOneForeignKey());
    QCOMPARE(builder->addForeignKey(m_model.relation(Holder, 61)), compositeForeignKey());
    QCOMPARE(builder->addForeignKey(m_model.relation(Holder, 63)), oneToOneForeignKey());
    QCOMPARE(builder->addForeignKey(m_model.relation(Person, 15)), manyToManyForeignKey());
    QCOMPARE(builder->addForeignKey(m_model.relation(Pair, 41)), compositeManyToManyForeignKey());
    QCOMPARE(builder->addForeignKey(m_model.relation(Person, 16)), QString());
    QCOMPARE(builder->addForeignKey(m_model.relation(Repeating, 95)), QString());
}

void dialect_specification::dropsForeignKeys()
{
    const auto builder = newBuilder(true);
    QCOMPARE(builder->dropForeignKey(m_model.relation(Person, 14)), droppedForeignKey());
    QCOMPARE(builder->dropForeignKey(m_model.relation(Person, 15)), droppedManyToManyForeignKey());
    QCOMPARE(builder->dropForeignKey(m_model.relation(Person, 16)), QString());
    QCOMPARE(builder->dropForeignKey(m_model.relation(Repeating, 95)), QString());
}

void dialect_specification::createsIndexes()
{
    for (const bool relationships : {false, true}) {
        const auto builder = newBuilder(relationships);
        QCOMPARE(builder->createIndex(m_model.property(Person, 13)), stringIndex());
        QCOMPARE(builder->createIndex(m_model.property(Holder, 65)), numberIndex());
        QCOMPARE(builder->createIndex(m_model.property(Holder, 64)), threeIndexes());
    }
    const auto builder = newBuilder();
    QCOMPARE(builder->createIndex(entity_builder(m_model.entity(Person)).property(18, "", "int").get()),
             QString());
}

void dialect_specification::dropsIndexes()
{
    const auto builder = newBuilder();
    QCOMPARE(builder->dropIndex(m_model.property(Person, 13)), droppedIndex());
    QCOMPARE(builder->dropIndex(m_model.property(Holder, 64)), threeDroppedIndexes());

    builder->setProjects(&m_model.project(), &m_earlier.project());
    QCOMPARE(builder->dropIndex(m_earlier.property(Person, 13)), droppedIndexOfARenamedTable());
    // The earlier version does not know this entity, so the name is the current one's.
    entity_builder fresh = m_model.entity(Country + 100, "person");
    QCOMPARE(builder->dropIndex(fresh.property(130, "email", "QString").indexed().get()), droppedIndex());

    model_builder elsewhere;
    entity_builder unknown = elsewhere.entity(4711, "unknown");
    QCOMPARE(builder->dropIndex(unknown.property(1, "x", "int").indexed().get()),
             droppedIndexOfAnUnknownEntity());
}

void dialect_specification::createsLinkTables()
{
    QCOMPARE(newBuilder(false)->createExtraTable(m_model.relation(Person, 15)), linkTable());
    QCOMPARE(newBuilder(true)->createExtraTable(m_model.relation(Person, 15)), linkTable());
    QCOMPARE(newBuilder(false)->createExtraTable(m_model.relation(Currency, 32)),
             linkTableOfStringAndCompositeKeys());
    QCOMPARE(newBuilder(true)->createExtraTable(m_model.relation(Currency, 32)),
             linkTableOfStringAndCompositeKeysWithRelationships());

    const auto builder = newBuilder();
    QCOMPARE(builder->createExtraTable(m_model.relation(Person, 14)), QString());
    const auto tags = m_model.relation(Person, 15);
    tags->setExtraTable("");
    QCOMPARE(builder->createExtraTable(tags), QString());
    tags->setExtraTable("person_tag");
    tags->setInverseId(0);
    QCOMPARE(builder->createExtraTable(tags), QString());
    tags->setInverseId(50); // is there, but carries no relationship
    QCOMPARE(builder->createExtraTable(tags), QString());
    tags->setInverseId(51);
    m_model.property(Tag, 50)->setIdentifier(false);
    QCOMPARE(builder->createExtraTable(tags), QString());
    m_model.property(Tag, 50)->setIdentifier(true);
    m_model.property(Person, 10)->setIdentifier(false);
    QCOMPARE(builder->createExtraTable(tags), QString());
    m_model.property(Person, 10)->setIdentifier(true);
    tags->setEntityTargetId(999);
    QCOMPARE(builder->createExtraTable(tags), QString());
}

void dialect_specification::answersMissingObjectsWithNothing()
{
    const auto builder = newBuilder(true);
    const auto person = m_model.entity(Person);
    const auto email = m_model.property(Person, 13);
    QCOMPARE(builder->createTable(nullptr), QString());
    QCOMPARE(builder->inlineForeignKeys(nullptr), QString());
    QCOMPARE(builder->dropTable(nullptr), QString());
    QCOMPARE(builder->renameTable(nullptr, person), QString());
    QCOMPARE(builder->renameTable(person, nullptr), QString());
    QCOMPARE(builder->addColumn(nullptr), QString());
    QCOMPARE(builder->dropColumn(nullptr), QString());
    QCOMPARE(builder->renameColumn(nullptr, email), QString());
    QCOMPARE(builder->renameColumn(email, nullptr), QString());
    QCOMPARE(builder->addForeignKey(nullptr), QString());
    QCOMPARE(builder->dropForeignKey(nullptr), QString());
    QCOMPARE(builder->createIndex(nullptr), QString());
    QCOMPARE(builder->dropIndex(nullptr), QString());
    QCOMPARE(builder->createExtraTable(nullptr), QString());
    const auto loose = std::make_shared<model::relationship>(900, model::relationship::many_to_one);
    QCOMPARE(builder->addForeignKey(loose), QString());
    QCOMPARE(builder->dropForeignKey(loose), QString());
    const auto looseLink = std::make_shared<model::relationship>(901, model::relationship::many_to_many);
    looseLink->setExtraTable("x");
    QCOMPARE(builder->createExtraTable(looseLink), QString());
}

void dialect_specification::answersObjectsOfAnotherProjectWithNothing()
{
    const auto builder = newBuilder();
    model_builder elsewhere;
    entity_builder unknown = elsewhere.entity(4711, "unknown");
    const auto p = unknown.property(1, "x", "int").indexed().get();
    QCOMPARE(builder->addColumn(p), QString());
    QCOMPARE(builder->dropColumn(p), QString());
    QCOMPARE(builder->renameColumn(p, p), QString());
    QCOMPARE(builder->createIndex(p), QString());

    builder->setProjects(nullptr);
    const auto email = m_model.property(Person, 13);
    QCOMPARE(builder->addColumn(email), QString());
    QCOMPARE(builder->dropColumn(email), QString());
    QCOMPARE(builder->renameColumn(m_earlier.property(Person, 11), email), QString());
    QCOMPARE(builder->createIndex(email), QString());
    QCOMPARE(builder->createExtraTable(m_model.relation(Person, 15)), QString());
}

void dialect_specification::countsRelationshipsAsOffWithoutPlugin()
{
    opened_builder builder(m_db, nullptr);
    builder.setProjects(&m_model.project());
    QCOMPARE(builder.createTable(m_model.entity(Currency)), currencyTable());
    QCOMPARE(builder.createTable(m_model.entity(Holder)), holderTable());
    QCOMPARE(builder.createExtraTable(m_model.relation(Currency, 32)), linkTableOfStringAndCompositeKeys());
}
