#include "check/view/step_changes.h"

#include <algorithm>

namespace check {

step_changes::step_changes(const model::project & before, const model::project & now)
    : m_changes(model::difference(before, now))
{
    for (const model::model_change & each : m_changes) {
        const key of(static_cast<int>(each.object.kind), each.object.id);
        m_fields[of].insert(each.field);
        if (each.change == model::change_kind::added) {
            m_added.insert(of);
        } else if (each.change == model::change_kind::removed) {
            m_removed.insert(of);
        }
        if (each.object.kind == model::object_kind::entity) {
            m_entities.insert(each.object.id);
        }
        for (const model::named_object & owner : each.owners) {
            if (owner.kind == model::object_kind::entity) {
                m_entities.insert(owner.id);
            }
        }
    }
}

bool step_changes::isAdded(model::object_kind kind, long id) const
{
    return m_added.contains({static_cast<int>(kind), id});
}

bool step_changes::isRemoved(model::object_kind kind, long id) const
{
    return m_removed.contains({static_cast<int>(kind), id});
}

bool step_changes::has(model::object_kind kind, long id, std::initializer_list<const char *> fields) const
{
    const auto found = m_fields.constFind({static_cast<int>(kind), id});
    return found != m_fields.constEnd() && std::any_of(fields.begin(), fields.end(), [&](const char * field) {
               return found->contains(QLatin1String(field));
           });
}

bool step_changes::touches(model::object_kind kind, long id) const
{
    return m_fields.contains({static_cast<int>(kind), id});
}

} // namespace check
