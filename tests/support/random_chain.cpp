#include "support/random_chain.h"

#include <algorithm>

namespace support {

using model::relationship;

random_chain::random_chain(unsigned seed) : m_chance(seed)
{
    m_isWild = m_chance.oneIn(3);
    m_hasRelationships = !m_chance.oneIn(6);
    if (m_chance.oneIn(5)) {
        makeMapping();
    }
    const int entities = 2 + m_chance.below(3);
    for (int i = 0; i < entities; ++i) {
        addEntity();
    }
    for (int i = 0; i < entities; ++i) {
        addRelation();
    }
    m_versions.push_back(projectOf(m_entities));
    const int steps = 1 + m_chance.below(3);
    for (int i = 0; i < steps; ++i) {
        step();
        m_versions.push_back(projectOf(m_entities));
    }
}

void random_chain::makeMapping()
{
    m_mapping = {{QStringLiteral("<default type>"), QStringLiteral("TEXT")},
                 {QStringLiteral("money_t"), QStringLiteral("DECIMAL(12,2)")}};
    for (const char * const type : {"int", "long", "QString", "bool", "double", "QDate", "QUuid"}) {
        m_mapping.append({QString::fromLatin1(type), sqlType()});
    }
}

QString random_chain::tableName()
{
    if (m_isWild && !m_chance.oneIn(3)) {
        return wildName(m_chance);
    }
    QString name = plainTable(m_chance);
    const auto isTaken = [&](const draft_entity & each) { return tableOf(each) == name; };
    while (std::any_of(m_entities.begin(), m_entities.end(), isTaken)) {
        name += QLatin1Char('s');
    }
    return name;
}

QString random_chain::columnName(const draft_entity & of)
{
    if (m_isWild && m_chance.oneIn(2)) {
        return wildName(m_chance);
    }
    QString name = plainColumn(m_chance);
    const auto isTaken = [&](const draft_property & each) { return columnsOf(each) == name; };
    while (std::any_of(of.properties.begin(), of.properties.end(), isTaken)) {
        name += QLatin1Char('2');
    }
    return name;
}

QString random_chain::sqlType()
{
    return m_isWild && m_chance.oneIn(2) ? wildSqlType(m_chance) : plainSqlType(m_chance);
}

QString random_chain::tableOf(const draft_entity & entity) const
{
    return entity.table.isEmpty() ? entity.name : entity.table;
}

QString random_chain::columnsOf(const draft_property & property) const
{
    return property.columns.isEmpty() ? property.name : property.columns;
}

void random_chain::touch(draft_entity & entity)
{
    // What changed without a new version the export does not see.
    entity.version += m_isWild && m_chance.oneIn(15) ? 0 : 1;
}

draft_entity & random_chain::anyEntity()
{
    return m_entities[static_cast<std::size_t>(m_chance.below(static_cast<int>(m_entities.size())))];
}

draft_entity * random_chain::anyOtherThan(const draft_entity & entity)
{
    for (int i = 0; i < 4; ++i) {
        draft_entity & other = anyEntity();
        if (&other != &entity) {
            return &other;
        }
    }
    return nullptr;
}

draft_property * random_chain::anyPlain(draft_entity & entity)
{
    for (int i = 0; i < 4 && !entity.properties.empty(); ++i) {
        draft_property & each = entity.properties[static_cast<std::size_t>(
            m_chance.below(static_cast<int>(entity.properties.size())))];
        if (each.relationId == 0 && !each.isKey) {
            return &each;
        }
    }
    return nullptr;
}

draft_property * random_chain::anyRelation(draft_entity & entity)
{
    const auto found = std::find_if(entity.properties.begin(), entity.properties.end(),
                                    [](const draft_property & each) { return each.relationId != 0; });
    return found == entity.properties.end() ? nullptr : &*found;
}

draft_property * random_chain::keyOf(draft_entity & entity)
{
    const auto found = std::find_if(entity.properties.begin(), entity.properties.end(),
                                    [](const draft_property & each) { return each.isKey; });
    return found == entity.properties.end() ? nullptr : &*found;
}

draft_property random_chain::newKey(const draft_entity & of)
{
    draft_property key;
    key.id = newId();
    key.name = m_isWild && m_chance.oneIn(3) ? columnName(of) : QStringLiteral("id");
    key.isKey = true;
    key.types = {QString::fromLatin1(m_chance.of(
        std::initializer_list<const char *>{"int", "long", "long", "long", "quint64", "QString", "QUuid"}))};
    if (m_chance.oneIn(6)) {
        const int columns = 2 + m_chance.below(m_isWild ? 4 : 2);
        key.columns = numbered(QStringLiteral("part"), columns).join(QLatin1Char('|'));
        for (int i = 1; i < columns && !m_chance.oneIn(3); ++i) {
            key.types.append(m_chance.oneIn(2) ? QStringLiteral("QString") : QStringLiteral("int"));
        }
    }
    if (m_chance.oneIn(5)) {
        key.isCounted = m_isWild && m_chance.oneIn(2);
    }
    key.forced = m_isWild && m_chance.oneIn(6) ? wildSqlType(m_chance) : QString();
    return key;
}

draft_property random_chain::newColumn(const draft_entity & of)
{
    draft_property column;
    column.id = newId();
    column.name = columnName(of);
    column.types = {cppType(m_chance)};
    column.columns = m_chance.oneIn(4) ? columnName(of) : QString();
    column.forced = m_chance.oneIn(4) ? sqlType() : QString();
    column.isNullable = !m_chance.oneIn(3);
    column.isUnique = m_chance.oneIn(6);
    column.isIndex = m_chance.oneIn(3);
    column.isTransient = m_chance.oneIn(12);
    return column;
}

void random_chain::addEntity()
{
    draft_entity entity;
    entity.id = newId();
    entity.name = tableName();
    entity.table = m_chance.oneIn(4) ? tableName() : QString();
    entity.softDelete =
        m_chance.oneIn(6) ? (m_isWild ? columnName(entity) : QStringLiteral("gone")) : QString();
    entity.hasTable = !m_chance.oneIn(m_isWild ? 10 : 30);
    if (!m_isWild || !m_chance.oneIn(10)) {
        entity.properties.push_back(newKey(entity));
    }
    const int columns = 1 + m_chance.below(5);
    for (int i = 0; i < columns; ++i) {
        entity.properties.push_back(newColumn(entity));
    }
    m_entities.push_back(std::move(entity));
}

void random_chain::addToOne(draft_entity & owner, draft_entity & target, relationship::type_relation type)
{
    const draft_property * const key = keyOf(target);
    draft_property here;
    here.id = newId();
    here.name = m_isWild && m_chance.oneIn(2) ? columnName(owner) : tableOf(target) + QStringLiteral("_id");
    here.relationId = newId();
    here.relation = type;
    here.target = target.id;
    here.isIndex = m_chance.oneIn(3);
    here.isNullable = !m_chance.oneIn(4);
    here.isUnique = m_chance.oneIn(10);
    const int columns = key == nullptr ? 1 : static_cast<int>(columnsOf(*key).count(QLatin1Char('|'))) + 1;
    if (columns > 1 && !(m_isWild && m_chance.oneIn(4))) {
        here.columns = numbered(here.name, columns).join(QLatin1Char('|'));
    }
    draft_property * const plain = anyPlain(owner);
    if (type == relationship::one_to_one && plain != nullptr && !(m_isWild && m_chance.oneIn(3))) {
        // Its column is one that the table has.
        here.columns = columnsOf(*plain);
    }
    owner.properties.push_back(here);
    touch(owner);
}

void random_chain::addManyToMany(draft_entity & owner, draft_entity & target)
{
    draft_property here;
    here.id = newId();
    here.name = columnName(owner);
    here.relationId = newId();
    here.relation = relationship::many_to_many;
    here.target = target.id;
    here.linkTable = m_isWild && m_chance.oneIn(2) ? wildName(m_chance)
                                                   : tableOf(owner) + QLatin1Char('_') + tableOf(target);
    const auto columns = [this](draft_entity & of, const QString & name) {
        const draft_property * const key = keyOf(of);
        const int count = key == nullptr ? 1 : static_cast<int>(columnsOf(*key).count(QLatin1Char('|'))) + 1;
        const QString first = m_isWild && m_chance.oneIn(4) ? wildName(m_chance) : name;
        return count == 1 ? first : numbered(first, count).join(QLatin1Char('|'));
    };
    here.linkColumns = columns(owner, tableOf(owner) + QStringLiteral("_id"));
    here.inverseColumns = columns(target, tableOf(target) + QStringLiteral("_id"));
    draft_property there = here;
    there.id = newId();
    there.name = columnName(target);
    there.relationId = newId();
    there.target = owner.id;
    there.inverse = here.id;
    here.inverse = there.id;
    std::swap(there.linkColumns, there.inverseColumns);
    owner.properties.push_back(here);
    touch(owner);
    target.properties.push_back(there);
    touch(target);
}

} // namespace support
