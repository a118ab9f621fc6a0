#include "check/import/entity_merge.h"

#include "database/facts/names.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/property_type.h"

#include <algorithm>

namespace check {

namespace {

using model::relationship;

const database::table * meantTable(const schema_import & import, const table_draft & draft)
{
    if (!import.meant) {
        return nullptr;
    }
    const auto found = import.meant->tables.find(tableKey(*import.meant, import.known, draft.table->name));
    return found == import.meant->tables.end() ? nullptr : &found->second;
}

/// What a relationship over the columns is called: the column without what says that it is a key.
QString nameOfRelation(const QStringList & columns)
{
    if (columns.size() > 1) {
        return columns.join(QLatin1Char('_'));
    }
    for (const QLatin1String ending : {QLatin1String("_id"), QLatin1String("Id"), QLatin1String("_ID")}) {
        if (columns.constFirst().size() > ending.size() && columns.constFirst().endsWith(ending)) {
            return columns.constFirst().chopped(ending.size());
        }
    }
    return columns.constFirst();
}

} // namespace

QString freeName(const merged_entity & in, const QString & wanted)
{
    const auto isTaken = [&in](const QString & name) {
        return std::any_of(in.properties.begin(), in.properties.end(),
                           [&name](const auto & each) { return each->getName() == name; });
    };
    QString name = wanted;
    for (int number = 2; isTaken(name); ++number) {
        name = wanted + QString::number(number);
    }
    return name;
}

entity_merge::entity_merge(schema_import & import, merged_entity & work, const entity_ids & ids,
                           related_properties & related)
    : m_import(import), m_work(work), m_ids(ids), m_related(related),
      m_columns(import, *work.draft->table, meantTable(import, *work.draft))
{
}

void entity_merge::run()
{
    if (m_work.former) {
        for (const auto & each : m_work.former->getListOfProperty(true, true, false)->values()) {
            keep(each);
        }
    }
    for (const property_draft & each : m_work.draft->properties) {
        const bool isMade = m_taken.contains(&each) || (!each.isRelation() && hasColumnOf(each.columns));
        if (!isMade) {
            add(each);
        }
    }
}

const property_draft * entity_merge::relationOf(const QStringList & columns) const
{
    const QList<property_draft> & drafts = m_work.draft->properties;
    const auto found = std::find_if(drafts.begin(), drafts.end(), [&](const property_draft & each) {
        return each.isRelation() && !m_taken.contains(&each) &&
               areSameColumns(m_import.known, each.columns, columns);
    });
    return found == drafts.end() ? nullptr : &*found;
}

bool entity_merge::hasColumnOf(const QStringList & columns) const
{
    return std::all_of(columns.begin(), columns.end(), [this](const QString & each) {
        return m_covered.contains(database::foldedName(m_import.known, each));
    });
}

bool entity_merge::isRelatedElsewhere(const model::property & property, const QStringList & columns,
                                      long target) const
{
    const auto all = m_work.former->getListOfProperty(true, false, false)->values();
    return std::any_of(all.begin(), all.end(), [&](const auto & each) {
        return each.get() != &property && each->hasRelationship() &&
               (target == 0 || each->getRelation()->getEntityTargetId() == target) &&
               areSameColumns(m_import.known, m_columns.storedColumnsOf(*each), columns);
    });
}

// Of two properties of one column no more than one is the key.
bool entity_merge::isKey(const model::property & property, const QStringList & columns) const
{
    if (!areSameColumns(m_import.known, columns, keyColumnsOf(*m_work.draft->table))) {
        return false;
    }
    const std::shared_ptr<model::property> former = m_work.former->getPropertyId(true);
    const bool isOther = former && former.get() != &property && !former->hasRelationship() &&
                         areSameColumns(m_import.known, m_columns.storedColumnsOf(*former), columns);
    const bool isSecond = std::any_of(m_work.properties.begin(), m_work.properties.end(),
                                      [](const auto & each) { return each->isIdentifier(); });
    return !isOther && !isSecond;
}

void entity_merge::keep(const std::shared_ptr<model::property> & property)
{
    const QStringList columns = m_columns.storedColumnsOf(*property);
    const bool isMissing = !m_columns.hasColumns(columns);
    // The key is made even of a transient property.
    const bool isUnstored = property->isTransient() && !property->isIdentifier();
    if (isUnstored || columns.isEmpty() || (isMissing && m_columns.isUnwritten(columns))) {
        m_work.properties.push_back(property);
        return;
    }
    if (isMissing) {
        m_work.gone.push_back(property);
        return;
    }
    if (property->hasRelationship()) {
        keepRelation(property, columns);
    } else {
        keepPlain(property, columns);
    }
    m_work.properties.push_back(property);
    if (!property->hasRelationship() || property->getRelation()->getType() == relationship::many_to_one) {
        for (const QString & each : columns) {
            m_covered += database::foldedName(m_import.known, each);
        }
    }
}

// Without a foreign key a relationship stays: scripts without relationships make none, nor does one of a
// table to itself get one.
void entity_merge::keepRelation(const std::shared_ptr<model::property> & property,
                                const QStringList & columns)
{
    const property_draft * const draft = relationOf(columns);
    const long target = property->getRelation()->getEntityTargetId();
    if (draft) {
        const long wanted = m_ids.byTable.value(draft->relation.target);
        if (wanted != target && !isRelatedElsewhere(*property, columns, wanted)) {
            take(*draft);
            relate(*property, draft->relation);
            m_related.insert(property);
        }
        if (wanted == target) {
            take(*draft);
        }
    } else if (!m_ids.all.contains(target)) {
        property->setRelation(nullptr);
        m_columns.settle(*property, columns, isKey(*property, columns));
        return;
    }
    m_columns.settleRelation(*property);
}

void entity_merge::keepPlain(const std::shared_ptr<model::property> & property, const QStringList & columns)
{
    const property_draft * const draft = relationOf(columns);
    const bool becomesRelation =
        draft && draft->relation.type == relationship::many_to_one && !isRelatedElsewhere(*property, columns);
    if (becomesRelation) {
        take(*draft);
        property->setIdentifier(false);
        property->setForceSqlType({});
        property->setAutoIncrement({});
        relate(*property, draft->relation);
        m_columns.settleRelation(*property);
        m_related.insert(property);
    } else {
        m_columns.settle(*property, columns, isKey(*property, columns));
    }
}

void entity_merge::relate(model::property & property, const relation_draft & to)
{
    const auto relation = std::make_shared<relationship>(m_import.ids.relationship++, to.type);
    relation->setEntityTargetId(m_ids.byTable.value(to.target));
    property.setRelation(relation);
}

void entity_merge::add(const property_draft & draft)
{
    const database::column * const mark =
        columnOf(m_import.known, *m_work.draft->table, m_work.made->getSoftDeleteColumn());
    if (mark && draft.columns == QStringList(mark->name)) {
        return; // the entity has it already
    }
    const auto property = std::make_shared<model::property>(m_import.ids.property++);
    const QString wanted =
        draft.isRelation() ? nameOfRelation(draft.columns) : draft.columns.join(QLatin1Char('_'));
    property_merge::name(*property, freeName(m_work, wanted), draft.columns);
    if (draft.isRelation()) {
        relate(*property, draft.relation);
        m_columns.settleRelation(*property);
        m_related.insert(property);
    } else {
        m_columns.settle(*property, draft.columns, draft.isIdentifier);
    }
    m_work.properties.push_back(property);
    m_work.added.push_back(property);
}

} // namespace check
