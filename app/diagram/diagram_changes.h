#pragma once

#include "app/diagram/diagram_graph.h"

#include "model/model_difference.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

namespace model {
class entity;
class project;
class property;
} // namespace model

namespace app {

/// What happened to an object.
struct object_changes
{
    diagram_change change = diagram_change::none;
    QString former; ///< of what was renamed: the name that it had
    QString later;  ///< the name that it has, when that is the one in the database
};

/// What changed from one version of a project to another, by the ids of the objects that a diagram shows.
class diagram_changes
{
public:
    /// No changes.
    diagram_changes() = default;
    /// @param changes from `before` to `after`; the dropped objects of `before` are kept, and with them what
    /// they refer to as long as `before` lives
    diagram_changes(const model::project & before, const model::project & after,
                    const std::vector<model::model_change> & changes);

    /// Null when nothing of it changed. An entity changes with its properties.
    [[nodiscard]] const object_changes * ofEntity(long id) const;
    [[nodiscard]] const object_changes * ofProperty(long id) const;
    /// What changed of an entity and of its properties, in words of the model.
    [[nodiscard]] QStringList linesOf(long entity) const { return m_lines.value(entity); }

    [[nodiscard]] const std::vector<std::shared_ptr<model::entity>> & droppedEntities() const
    {
        return m_droppedEntities;
    }
    /// The properties that an entity has no more; those of an entity that was dropped go with it.
    [[nodiscard]] std::vector<std::shared_ptr<model::property>> droppedOf(long entity) const
    {
        return m_droppedProperties.value(entity);
    }

private:
    void takeEntity(const model::project & before, const model::model_change & change);
    void takeProperty(const model::project & before, const model::model_change & change, long entity);
    void noteContents(long entity);

    QHash<long, object_changes> m_entities;
    QHash<long, object_changes> m_properties;
    QHash<long, QStringList> m_lines;
    std::vector<std::shared_ptr<model::entity>> m_droppedEntities;
    QHash<long, std::vector<std::shared_ptr<model::property>>> m_droppedProperties;
};

} // namespace app
