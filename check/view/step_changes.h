#pragma once

#include "model/model_difference.h"

#include <QHash>
#include <QSet>

#include <utility>
#include <vector>

namespace check {

/// What changed in the model from one version to the next, by object.
class step_changes
{
public:
    step_changes(const model::project & before, const model::project & now);

    [[nodiscard]] bool isAdded(model::object_kind kind, long id) const;
    [[nodiscard]] bool isRemoved(model::object_kind kind, long id) const;
    /// Whether one of the fields differs, named as in the text form.
    [[nodiscard]] bool has(model::object_kind kind, long id,
                           std::initializer_list<const char *> fields) const;
    /// Whether the object is another one in any way.
    [[nodiscard]] bool touches(model::object_kind kind, long id) const;
    /// Whether the entity, or something that belongs to it, is another one.
    [[nodiscard]] bool touchesWithin(long entity) const { return m_entities.contains(entity); }

    [[nodiscard]] const std::vector<model::model_change> & all() const { return m_changes; }

private:
    using key = std::pair<int, long>;

    std::vector<model::model_change> m_changes;
    QHash<key, QSet<QString>> m_fields;
    QSet<key> m_added;
    QSet<key> m_removed;
    QSet<long> m_entities;
};

} // namespace check
