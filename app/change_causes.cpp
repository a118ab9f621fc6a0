#include "app/change_causes.h"

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

constexpr const char * CreateTable = "metaData.DDL_EXPORT_CREATE_TABLE";

/// By action, the nearest cause first: the first that is there is the one.
constexpr cause Causes[] = {
    {statement_action::create_table, object_kind::entity, change_kind::added},
    {statement_action::create_table, object_kind::entity, change_kind::changed, CreateTable},

    {statement_action::create_extra_table, object_kind::relationship, change_kind::added},
    {statement_action::create_extra_table, object_kind::relationship, change_kind::moved},
    {statement_action::create_extra_table, object_kind::property, change_kind::added},
    {statement_action::create_extra_table, object_kind::property, change_kind::moved},
    {statement_action::create_extra_table, object_kind::property, change_kind::changed, "transient"},
    {statement_action::create_extra_table, object_kind::entity, change_kind::added},
    {statement_action::create_extra_table, object_kind::entity, change_kind::changed, CreateTable},

    {statement_action::create_index, object_kind::property, change_kind::changed, "index"},
    {statement_action::create_index, object_kind::property, change_kind::changed, "transient"},
    {statement_action::create_index, object_kind::property, change_kind::added},
    {statement_action::create_index, object_kind::property, change_kind::moved},
    {statement_action::create_index, object_kind::entity, change_kind::added},
    {statement_action::create_index, object_kind::entity, change_kind::changed, CreateTable},

    {statement_action::add_foreign_key, object_kind::relationship, change_kind::added},
    {statement_action::add_foreign_key, object_kind::relationship, change_kind::moved},
    {statement_action::add_foreign_key, object_kind::property, change_kind::added},
    {statement_action::add_foreign_key, object_kind::property, change_kind::moved},
    {statement_action::add_foreign_key, object_kind::property, change_kind::changed, "transient"},
    {statement_action::add_foreign_key, object_kind::entity, change_kind::added},
    {statement_action::add_foreign_key, object_kind::entity, change_kind::changed, CreateTable},

    {statement_action::drop_table, object_kind::entity, change_kind::removed},
    {statement_action::drop_table, object_kind::entity, change_kind::changed, CreateTable},

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

} // namespace app
