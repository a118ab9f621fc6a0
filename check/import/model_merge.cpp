#include "check/import/model_merge.h"

#include "check/import/entity_merge.h"
#include "check/import/rename_search.h"
#include "check/model/tables.h"

#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <algorithm>

namespace check {

namespace {

using model::relationship;
using property_pointer = std::shared_ptr<model::property>;

/// Merges one database into one model.
class merging
{
public:
    merging(schema_import import, model::project & former) : m_import(std::move(import)), m_former(former)
    {
        for (const auto & each : former.getListOfAllEntities()->values()) {
            // Of two entities of one table the one counts whose table scripts make.
            const QString key = keyOf(tableNameOf(*each));
            if (isTableMade(*each) || !m_formerTables.contains(key)) {
                m_formerTables.insert(key, each);
            }
            for (const auto & property : each->getListOfProperty(true, false, false)->values()) {
                if (isLink(*property)) {
                    m_formerLinks += keyOf(property->getRelation()->getExtraTable());
                }
            }
        }
    }

    std::vector<possible_rename> run(model::project & into)
    {
        m_draft = draftOf(m_import.found, m_import.known, rules());
        makeEntities();
        for (merged_entity & each : m_entities) {
            if (each.draft) {
                entity_merge(m_import, each, m_ids, m_related).run();
            } else {
                for (const auto & property : each.former->getListOfProperty(true, true, false)->values()) {
                    each.properties.push_back(property);
                }
            }
        }
        addInverses();
        addLinks();
        dropLoose();
        assemble(into);
        return renamesIn(m_import.known, m_entities, m_gone);
    }

private:
    [[nodiscard]] QString keyOf(const QString & table) const
    {
        return tableKey(m_import.found, m_import.known, table);
    }
    static bool isLink(const model::property & property)
    {
        return property.hasRelationship() && property.getRelation()->getType() == relationship::many_to_many;
    }
    [[nodiscard]] bool isSelected(const QString & key) const
    {
        const auto found = m_import.found.tables.find(key);
        return found != m_import.found.tables.end() && m_import.isSelected(found->second.name);
    }

    [[nodiscard]] draft_rules rules() const
    {
        return {[this](const QString & key) { return isSelected(key) && !m_formerLinks.contains(key); },
                [this](const QString & key) { return isSelected(key) || m_formerTables.contains(key); },
                [this](const QString & key) { return m_import.tellsLinks && !m_formerTables.contains(key); }};
    }

    void makeEntities();
    void addInverses();
    void addLinks();
    void dropLoose();
    [[nodiscard]] bool isGone(const QString & table) const;
    [[nodiscard]] bool isLoose(const model::property & property) const;
    void loosen(model::property & property) const;
    void assemble(model::project & into);
    [[nodiscard]] merged_entity & entityOf(long id) { return m_entities[m_places.value(id)]; }
    property_pointer addRelation(merged_entity & to, const QString & name, relationship::type_relation type,
                                 long target);
    void addLink(const link_draft & link);

    schema_import m_import;
    model::project & m_former;
    QHash<QString, std::shared_ptr<model::entity>> m_formerTables;
    QSet<QString> m_formerLinks;
    schema_draft m_draft;
    std::vector<merged_entity> m_entities;
    std::vector<std::shared_ptr<model::entity>> m_gone;
    entity_ids m_ids;
    QHash<long, std::size_t> m_places; ///< in m_entities, by id
    related_properties m_related;
};

std::shared_ptr<model::entity> successorOf(const model::entity & former)
{
    auto made = std::make_shared<model::entity>(former.getId(), former.getName());
    made->setKey(former.getExplicitKey());
    made->setTableName(former.getTableName());
    made->setVersion(former.getVersion());
    made->setSoftDeleteColumn(former.getSoftDeleteColumn());
    const QHash<QString, QVariant> & data = former.getAllMetaData();
    for (auto it = data.constBegin(); it != data.constEnd(); ++it) {
        made->setMetaData(it.key(), it.value());
    }
    return made;
}

/// The former ones in their order, then the new ones.
void merging::makeEntities()
{
    QHash<QString, const table_draft *> drafts;
    for (const table_draft & each : m_draft.tables) {
        drafts.insert(each.key, &each);
    }
    for (const auto & former : m_former.getListOfAllEntities()->values()) {
        const QString name = tableNameOf(*former);
        const QString key = keyOf(name);
        const table_draft * const draft = m_formerTables.value(key) == former ? drafts.take(key) : nullptr;
        if (draft || !isGone(name) || !isTableMade(*former)) {
            m_entities.push_back({former, successorOf(*former), draft, {}, {}, {}});
        } else {
            m_gone.push_back(former);
        }
    }
    for (const table_draft & each : m_draft.tables) {
        if (drafts.contains(each.key)) {
            m_entities.push_back({nullptr,
                                  std::make_shared<model::entity>(m_import.ids.entity++, each.table->name),
                                  &each,
                                  {},
                                  {},
                                  {}});
        }
    }
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        const model::entity & made = *m_entities[i].made;
        m_places.insert(made.getId(), i);
        m_ids.byTable.insert(keyOf(tableNameOf(made)), made.getId());
        m_ids.all += made.getId();
        // What is marked as deleted is so by a column of the table.
        const database::table * const table = m_entities[i].draft ? m_entities[i].draft->table : nullptr;
        const QString softDelete = made.getSoftDeleteColumn();
        if (table && !softDelete.isEmpty() && !columnOf(m_import.known, *table, softDelete)) {
            m_entities[i].made->setSoftDeleteColumn({});
        }
    }
}

property_pointer merging::addRelation(merged_entity & to, const QString & name,
                                      relationship::type_relation type, long target)
{
    auto property = std::make_shared<model::property>(m_import.ids.property++, freeName(to, name));
    const auto relation = std::make_shared<relationship>(m_import.ids.relationship++, type);
    relation->setEntityTargetId(target);
    property->setRelation(relation);
    to.properties.push_back(property);
    return property;
}

// A one-to-one would ask for a column on its other side as well, so it has none.
void merging::addInverses()
{
    for (merged_entity & owner : m_entities) {
        // A copy: an entity that refers to itself gets its inverse meanwhile.
        const std::vector<property_pointer> properties = owner.properties;
        for (const property_pointer & each : properties) {
            if (!m_related.contains(each) || each->getRelation()->getType() != relationship::many_to_one) {
                continue;
            }
            merged_entity & target = entityOf(each->getRelation()->getEntityTargetId());
            const property_pointer inverse =
                addRelation(target, owner.made->getName(), relationship::one_to_many, owner.made->getId());
            inverse->getRelation()->setInverseId(each->getId());
            each->getRelation()->setInverseId(inverse->getId());
        }
    }
}

void merging::addLinks()
{
    for (const link_draft & each : m_draft.links) {
        addLink(each);
    }
}

void merging::addLink(const link_draft & link)
{
    merged_entity & first = entityOf(m_ids.byTable.value(link.first));
    merged_entity & second = entityOf(m_ids.byTable.value(link.second));
    const auto addTo = [&](merged_entity & to, const merged_entity & other, const QStringList & own,
                           const QStringList & others) {
        property_pointer property =
            addRelation(to, other.made->getName(), relationship::many_to_many, other.made->getId());
        property->getRelation()->setExtraTable(link.table->name);
        property->getRelation()->setForeignKey(own.join(model::ColumnSeparator));
        property->getRelation()->setForeignKeyOwner(others.join(model::ColumnSeparator));
        return property;
    };
    const property_pointer one = addTo(first, second, link.firstColumns, link.secondColumns);
    const property_pointer other = addTo(second, first, link.secondColumns, link.firstColumns);
    one->getRelation()->setInverseId(other->getId());
    other->getRelation()->setInverseId(one->getId());
}

/// Whether the database lacks a table that scripts of the former model make.
bool merging::isGone(const QString & table) const
{
    const bool isMeant =
        !m_import.meant || m_import.meant->tables.contains(tableKey(*m_import.meant, m_import.known, table));
    return !table.isEmpty() && isMeant && m_import.isSelected(table) &&
           !m_import.found.tables.contains(keyOf(table));
}

/// Whether the relationship without columns has lost what it is about.
bool merging::isLoose(const model::property & property) const
{
    const relationship & relation = *property.getRelation();
    const auto place = m_places.constFind(relation.getEntityTargetId());
    if (place == m_places.constEnd()) {
        return true;
    }
    const auto & others = m_entities[*place].properties;
    const bool hasInverse =
        relation.getInverseId() == 0 || std::any_of(others.begin(), others.end(), [&](const auto & each) {
            // One with a new relationship may lead elsewhere now.
            return each->getId() == relation.getInverseId() && each->hasRelationship() &&
                   (!m_related.contains(each) || each->getRelation()->getInverseId() == property.getId());
        });
    return !hasInverse ||
           (relation.getType() == relationship::many_to_many && isGone(relation.getExtraTable()));
}

/// Takes the relationship away from a column that stays while what it led to goes.
void merging::loosen(model::property & property) const
{
    const std::shared_ptr<model::property> key = property.getRelation()->getKeyProperty();
    const std::shared_ptr<model::property_type> type = key ? key->getType() : nullptr;
    const QString forced = property.getForceSqlType();
    property.setRelation(nullptr);
    property.setType(type);
    property.setForceSqlType(forced);
}

/// Takes away what refers to something that is gone, until nothing does.
void merging::dropLoose()
{
    for (bool isDone = false; !isDone;) {
        isDone = true;
        for (merged_entity & each : m_entities) {
            isDone = std::erase_if(each.properties,
                                   [this](const property_pointer & property) {
                                       return property->hasRelationship() &&
                                              !property->getRelation()->hasColumns() && isLoose(*property);
                                   }) == 0 &&
                     isDone;
        }
    }
    for (merged_entity & each : m_entities) {
        for (const property_pointer & property : each.properties) {
            if (!property->hasRelationship() || !property->getRelation()->hasColumns()) {
                continue;
            }
            if (!m_places.contains(property->getRelation()->getEntityTargetId())) {
                loosen(*property);
            } else if (isLoose(*property)) {
                property->getRelation()->setInverseId(0);
            }
        }
    }
}

void merging::assemble(model::project & into)
{
    into.setName(m_former.getName());
    for (const auto & each : m_former.getListOfEnumeration()->values()) {
        into.addEnumeration(each);
    }
    for (merged_entity & each : m_entities) {
        for (const property_pointer & property : each.properties) {
            each.made->addProperty(property);
        }
        into.addEntity(each.made);
    }
}

} // namespace

std::vector<possible_rename> mergeSchema(const schema_import & import, model::project & former,
                                         model::project & into)
{
    return merging(import, former).run(into);
}

} // namespace check
