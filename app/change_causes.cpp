#include "app/change_causes.h"

#include "check/model/tables.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

using model::change_kind;
using model::object_kind;
using plugin::statement_action;

/// A change that makes a step say something: of the entity, property or relationship that the statement is
/// about.
struct cause
{
    statement_action action;
    object_kind kind;
    change_kind change;
    const char * field = nullptr; ///< null for any
};

/// By action, the nearest cause first: the first that is there is the one.
constexpr cause Causes[] = {
    {statement_action::create_table, object_kind::entity, change_kind::added},
    {statement_action::create_table, object_kind::entity, change_kind::changed, check::CreateTableField},

    {statement_action::create_extra_table, object_kind::relationship, change_kind::added},
    {statement_action::create_extra_table, object_kind::relationship, change_kind::moved},
    {statement_action::create_extra_table, object_kind::property, change_kind::added},
    {statement_action::create_extra_table, object_kind::property, change_kind::moved},
    {statement_action::create_extra_table, object_kind::property, change_kind::changed, "transient"},
    {statement_action::create_extra_table, object_kind::entity, change_kind::added},
    {statement_action::create_extra_table, object_kind::entity, change_kind::changed,
     check::CreateTableField},

    {statement_action::create_index, object_kind::property, change_kind::changed, "index"},
    {statement_action::create_index, object_kind::property, change_kind::changed, "transient"},
    {statement_action::create_index, object_kind::property, change_kind::added},
    {statement_action::create_index, object_kind::property, change_kind::moved},
    {statement_action::create_index, object_kind::entity, change_kind::added},
    {statement_action::create_index, object_kind::entity, change_kind::changed, check::CreateTableField},

    {statement_action::add_foreign_key, object_kind::relationship, change_kind::added},
    {statement_action::add_foreign_key, object_kind::relationship, change_kind::moved},
    {statement_action::add_foreign_key, object_kind::property, change_kind::added},
    {statement_action::add_foreign_key, object_kind::property, change_kind::moved},
    {statement_action::add_foreign_key, object_kind::property, change_kind::changed, "transient"},
    {statement_action::add_foreign_key, object_kind::entity, change_kind::added},
    {statement_action::add_foreign_key, object_kind::entity, change_kind::changed, check::CreateTableField},

    {statement_action::drop_table, object_kind::entity, change_kind::removed},
    {statement_action::drop_table, object_kind::entity, change_kind::changed, check::CreateTableField},

    {statement_action::rename_table, object_kind::entity, change_kind::renamed, "tableName"},
    {statement_action::rename_table, object_kind::entity, change_kind::renamed, "name"},

    {statement_action::drop_column, object_kind::property, change_kind::removed},
    {statement_action::drop_column, object_kind::property, change_kind::moved},
    {statement_action::drop_column, object_kind::property, change_kind::changed, "transient"},

    {statement_action::add_column, object_kind::property, change_kind::added},
    {statement_action::add_column, object_kind::property, change_kind::moved},
    {statement_action::add_column, object_kind::property, change_kind::changed, "transient"},

    {statement_action::rename_column, object_kind::property, change_kind::renamed, "columnName"},
    {statement_action::rename_column, object_kind::property, change_kind::renamed, "name"},

    {statement_action::drop_index, object_kind::property, change_kind::changed, "index"},

    {statement_action::drop_foreign_key, object_kind::relationship, change_kind::removed},
    {statement_action::drop_foreign_key, object_kind::relationship, change_kind::moved},
    {statement_action::drop_foreign_key, object_kind::property, change_kind::removed},
    {statement_action::drop_foreign_key, object_kind::property, change_kind::moved},
    {statement_action::drop_foreign_key, object_kind::property, change_kind::changed, "transient"},
};

long idOf(const plugin::statement_record & statement, object_kind kind)
{
    switch (kind) {
    case object_kind::entity:
        return statement.entity;
    case object_kind::property:
        return statement.property;
    case object_kind::relationship:
        return statement.relationship;
    case object_kind::enumeration:
        break;
    }
    return 0;
}

bool isNew(change_kind change)
{
    return change == change_kind::added || change == change_kind::moved;
}

} // namespace

change_causes::change_causes(const std::vector<model::model_change> & changes, const model::project & after)
    : m_changes(changes), m_after(after)
{
    int index = 0;
    for (const model::model_change & change : changes) {
        m_byObject[{static_cast<int>(change.object.kind), change.object.id}].push_back(index++);
    }
}

std::vector<int> change_causes::find(const plugin::statement_record & statement) const
{
    std::vector<int> found = nearest(statement);
    const std::vector<int> others = ofInverse(statement);
    found.insert(found.end(), others.begin(), others.end());
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::vector<int> change_causes::nearest(const plugin::statement_record & statement) const
{
    for (const cause & each : Causes) {
        if (each.action != statement.action) {
            continue;
        }
        std::vector<int> found = changesOf(each.kind, idOf(statement, each.kind));
        std::erase_if(found, [&](int index) {
            const model::model_change & change = m_changes[static_cast<std::size_t>(index)];
            return change.change != each.change || (each.field && change.field != QLatin1String(each.field));
        });
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

/// A link table belongs to both sides of its relationship, though the statement is about one of them.
std::vector<int> change_causes::ofInverse(const plugin::statement_record & statement) const
{
    const auto entity = statement.action == statement_action::create_extra_table
                            ? m_after.getEntityById(statement.entity)
                            : nullptr;
    const auto property = entity ? entity->getPropertyById(statement.property) : nullptr;
    const auto relation = property ? property->getRelation() : nullptr;
    const auto inverse = relation ? relation->getInverse() : nullptr;
    if (!inverse || !inverse->hasRelationship()) {
        return {};
    }
    std::vector<int> found = changesOf(object_kind::property, inverse->getId());
    const std::vector<int> ofRelation = changesOf(object_kind::relationship, inverse->getRelation()->getId());
    found.insert(found.end(), ofRelation.begin(), ofRelation.end());
    std::erase_if(found,
                  [&](int index) { return !isNew(m_changes[static_cast<std::size_t>(index)].change); });
    return found;
}

std::vector<int> change_causes::changesOf(const std::vector<check::object> & objects,
                                          const condition & isAsked) const
{
    std::vector<int> found;
    for (const check::object & each : objects) {
        for (const int index : changesOf(each.kind, each.id)) {
            if (isAsked(m_changes[static_cast<std::size_t>(index)])) {
                found.push_back(index);
            }
        }
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::vector<int> change_causes::changesWithin(const std::vector<check::object> & objects) const
{
    std::vector<int> found;
    int index = 0;
    for (const model::model_change & change : m_changes) {
        const bool isWithin =
            std::any_of(change.owners.begin(), change.owners.end(), [&](const model::named_object & owner) {
                return std::any_of(objects.begin(), objects.end(), [&owner](const check::object & each) {
                    return each.kind == owner.kind && each.id == owner.id;
                });
            });
        if (isWithin) {
            found.push_back(index);
        }
        ++index;
    }
    return found;
}

/// The addition of what the objects came with.
std::vector<int> change_causes::additionsOf(const std::vector<check::object> & objects) const
{
    std::vector<int> found;
    int index = 0;
    for (const model::model_change & change : m_changes) {
        const bool isNewEntity =
            change.object.kind == object_kind::entity && change.change == change_kind::added;
        const auto entity = isNewEntity ? m_after.getEntityById(change.object.id) : nullptr;
        const bool hasOne =
            entity && std::any_of(objects.begin(), objects.end(), [&entity](const check::object & each) {
                return each.kind == object_kind::property && entity->getPropertyById(each.id);
            });
        if (hasOne) {
            found.push_back(index);
        }
        ++index;
    }
    return found;
}

std::vector<int> change_causes::ofFields(const check::finding & finding) const
{
    std::vector<int> found;
    for (const QString & group : QString(finding.fields).split(u'|')) {
        const QStringList fields = group.split(u' ', Qt::SkipEmptyParts);
        if (found.empty()) {
            found = changesOf(finding.objects, [&fields](const model::model_change & change) {
                return fields.contains(change.field);
            });
        }
    }
    return found;
}

std::vector<int> change_causes::find(const check::finding & finding) const
{
    std::vector<int> found = ofFields(finding);
    for (const object_kind kind :
         {object_kind::relationship, object_kind::property, object_kind::enumeration, object_kind::entity}) {
        if (found.empty()) {
            found = changesOf(finding.objects, [kind](const model::model_change & change) {
                return change.object.kind == kind &&
                       (isNew(change.change) || change.change == change_kind::removed);
            });
        }
    }
    if (found.empty()) {
        found = changesOf(finding.objects, [](const model::model_change &) { return true; });
    }
    if (found.empty()) {
        found = changesWithin(finding.objects);
    }
    return found.empty() ? additionsOf(finding.objects) : found;
}

} // namespace app
