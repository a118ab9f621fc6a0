// How a chain goes on from one version to the next.

#include "support/random_chain.h"

#include <algorithm>

namespace support {

using model::relationship;

namespace {

QString withOtherCase(const QString & name)
{
    return name == name.toUpper() ? name.toLower() : name.toUpper();
}

} // namespace

void random_chain::step()
{
    static constexpr change Usual[] = {
        &random_chain::addTable,    &random_chain::addColumn,    &random_chain::addColumn,
        &random_chain::addColumn,   &random_chain::dropColumn,   &random_chain::renameColumn,
        &random_chain::renameTable, &random_chain::retype,       &random_chain::force,
        &random_chain::toggleIndex, &random_chain::toggleUnique, &random_chain::toggleNull,
        &random_chain::addRelation, &random_chain::dropRelation, &random_chain::addRelation,
        &random_chain::dropTable,   &random_chain::makeRelation, &random_chain::makePlain};
    static constexpr change All[] = {
        &random_chain::addTable,        &random_chain::dropTable,      &random_chain::replaceTable,
        &random_chain::renameTable,     &random_chain::swapTables,     &random_chain::renameTableInCase,
        &random_chain::passTablesOn,    &random_chain::switchExport,   &random_chain::takeFreedTable,
        &random_chain::reorder,         &random_chain::addColumn,      &random_chain::changeSoftDelete,
        &random_chain::dropColumn,      &random_chain::replaceColumn,  &random_chain::renameColumn,
        &random_chain::swapColumns,     &random_chain::passColumnsOn,  &random_chain::renameColumnInCase,
        &random_chain::moveColumn,      &random_chain::retype,         &random_chain::force,
        &random_chain::toggleIndex,     &random_chain::toggleUnique,   &random_chain::toggleNull,
        &random_chain::toggleTransient, &random_chain::moveKey,        &random_chain::dropKey,
        &random_chain::replaceKey,      &random_chain::widenKey,       &random_chain::retypeKey,
        &random_chain::recount,         &random_chain::addRelation,    &random_chain::dropRelation,
        &random_chain::retarget,        &random_chain::makePlain,      &random_chain::changeRelationType,
        &random_chain::makeRelation,    &random_chain::changeLinkTable};
    const int changes = 1 + m_chance.below(m_isWild ? 8 : 4);
    for (int i = 0; i < changes; ++i) {
        const bool isUsual = !m_isWild && !m_chance.oneIn(4);
        const change next = isUsual ? m_chance.of(Usual) : m_chance.of(All);
        (this->*next)();
    }
}

void random_chain::setTable(draft_entity & entity, const QString & name)
{
    (entity.table.isEmpty() ? entity.name : entity.table) = name;
    touch(entity);
}

void random_chain::setColumns(draft_entity & entity, draft_property & property, const QString & names)
{
    (property.columns.isEmpty() ? property.name : property.columns) = names;
    touch(entity);
}

void random_chain::dropTable()
{
    if (m_entities.size() < 2) {
        return;
    }
    const long gone = anyEntity().id;
    std::erase_if(m_entities, [gone](const draft_entity & each) { return each.id == gone; });
    for (draft_entity & entity : m_entities) {
        const auto leadsThere = [gone](const draft_property & each) {
            return each.relationId != 0 && each.target == gone;
        };
        if (std::erase_if(entity.properties, leadsThere) > 0) {
            touch(entity);
        }
    }
}

// Another entity under the same name, with ids of its own.
void random_chain::replaceTable()
{
    draft_entity & entity = anyEntity();
    const long old = entity.id;
    entity.id = newId();
    for (draft_property & each : entity.properties) {
        each.id = each.inverse == 0 ? newId() : each.id;
    }
    for (draft_entity & other : m_entities) {
        for (draft_property & each : other.properties) {
            each.target = each.target == old ? entity.id : each.target;
        }
    }
}

void random_chain::renameTable()
{
    setTable(anyEntity(), tableName());
}

void random_chain::renameTableInCase()
{
    draft_entity & entity = anyEntity();
    setTable(entity, withOtherCase(tableOf(entity)));
}

void random_chain::swapTables()
{
    draft_entity & first = anyEntity();
    draft_entity * const second = anyOtherThan(first);
    if (second != nullptr) {
        const QString name = tableOf(first);
        setTable(first, tableOf(*second));
        setTable(*second, name);
    }
}

// Each takes the name of the one before, and the first a new one.
void random_chain::passTablesOn()
{
    QString next = tableName();
    if (m_chance.oneIn(2)) {
        std::reverse(m_entities.begin(), m_entities.end());
    }
    for (draft_entity & entity : m_entities) {
        const QString own = tableOf(entity);
        setTable(entity, next);
        next = own;
    }
}

void random_chain::takeFreedTable()
{
    draft_entity & entity = anyEntity();
    const QString freed = tableOf(entity);
    setTable(entity, tableName());
    addEntity();
    setTable(m_entities.back(), freed);
    if (m_chance.oneIn(2)) {
        std::rotate(m_entities.begin(), m_entities.end() - 1, m_entities.end());
    }
}

void random_chain::switchExport()
{
    draft_entity & entity = anyEntity();
    entity.hasTable = !entity.hasTable;
    touch(entity);
}

void random_chain::reorder()
{
    std::swap(m_entities.front(), m_entities.back());
}

void random_chain::changeSoftDelete()
{
    draft_entity & entity = anyEntity();
    entity.softDelete = entity.softDelete.isEmpty() || m_chance.oneIn(3) ? columnName(entity) : QString();
    touch(entity);
}

void random_chain::addColumn()
{
    draft_entity & entity = anyEntity();
    const auto place = m_chance.below(static_cast<int>(entity.properties.size()) + 1);
    draft_property made = newColumn(entity);
    entity.properties.insert(entity.properties.begin() + (m_chance.oneIn(3) ? place : 0), std::move(made));
    touch(entity);
}

void random_chain::dropColumn()
{
    draft_entity & entity = anyEntity();
    const draft_property * const gone = anyPlain(entity);
    if (gone != nullptr) {
        std::erase_if(entity.properties, [id = gone->id](const draft_property & p) { return p.id == id; });
        touch(entity);
        if (entity.properties.empty()) {
            entity.properties.push_back(newKey(entity));
        }
    }
}

void random_chain::replaceColumn()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->id = newId();
        property->types = {cppType(m_chance)};
        touch(entity);
    }
}

void random_chain::renameColumn()
{
    draft_entity & entity = anyEntity();
    draft_property & property =
        entity
            .properties[static_cast<std::size_t>(m_chance.below(static_cast<int>(entity.properties.size())))];
    const int columns = static_cast<int>(columnsOf(property).count(QLatin1Char('|'))) + 1;
    const QString name = columnName(entity);
    setColumns(entity, property, columns == 1 ? name : numbered(name, columns).join(QLatin1Char('|')));
}

void random_chain::renameColumnInCase()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        setColumns(entity, *property, withOtherCase(columnsOf(*property)));
    }
}

void random_chain::swapColumns()
{
    draft_entity & entity = anyEntity();
    draft_property * const first = anyPlain(entity);
    draft_property * const second = anyPlain(entity);
    if (first != nullptr && second != nullptr) {
        const QString name = columnsOf(*first);
        setColumns(entity, *first, columnsOf(*second));
        setColumns(entity, *second, name);
    }
}

void random_chain::passColumnsOn()
{
    draft_entity & entity = anyEntity();
    QString next = columnName(entity);
    if (m_chance.oneIn(2)) {
        std::reverse(entity.properties.begin(), entity.properties.end());
    }
    for (draft_property & each : entity.properties) {
        if (each.relationId == 0 && !each.isKey) {
            const QString own = columnsOf(each);
            setColumns(entity, each, next);
            next = own;
        }
    }
}

void random_chain::moveColumn()
{
    draft_entity & from = anyEntity();
    draft_entity * const to = anyOtherThan(from);
    const draft_property * const moved = anyPlain(from);
    if (to != nullptr && moved != nullptr) {
        to->properties.push_back(*moved);
        std::erase_if(from.properties, [id = moved->id](const draft_property & p) { return p.id == id; });
        touch(from);
        touch(*to);
        if (from.properties.empty()) {
            from.properties.push_back(newKey(from));
        }
    }
}

void random_chain::retype()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->types = {cppType(m_chance)};
        touch(entity);
    }
}

void random_chain::force()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->forced = m_chance.oneIn(3) ? QString() : sqlType();
        touch(entity);
    }
}

void random_chain::toggleIndex()
{
    draft_entity & entity = anyEntity();
    draft_property * const relation = anyRelation(entity);
    draft_property * const property = relation != nullptr && m_chance.oneIn(3) ? relation : anyPlain(entity);
    if (property != nullptr) {
        property->isIndex = !property->isIndex;
        touch(entity);
    }
}

void random_chain::toggleUnique()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->isUnique = !property->isUnique;
        touch(entity);
    }
}

void random_chain::toggleNull()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->isNullable = !property->isNullable;
        touch(entity);
    }
}

void random_chain::toggleTransient()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const property = anyPlain(entity)) {
        property->isTransient = !property->isTransient;
        touch(entity);
    }
}

} // namespace support
