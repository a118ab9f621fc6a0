#include "model/relationship.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"

#include <QSet>

#include <array>

namespace model {

std::shared_ptr<entity> relationship::getEntityTarget() const
{
    const std::shared_ptr<property> p = getProperty();
    const std::shared_ptr<entity> owner = p ? p->getEntity() : nullptr;
    const project * proj = owner ? owner->getProject() : nullptr;
    return proj ? proj->getEntityById(m_iEntityTargetId) : nullptr;
}

std::shared_ptr<property> relationship::getInverse() const
{
    const std::shared_ptr<entity> target = m_iInverseId ? getEntityTarget() : nullptr;
    return target ? target->getPropertyById(m_iInverseId) : nullptr;
}

int relationship::getColumnNameCount() const
{
    const std::shared_ptr<property> p = getProperty();
    return p ? p->getColumnNameCount() : 0;
}

QString relationship::getColumnName(int index) const
{
    const std::shared_ptr<property> p = getProperty();
    if (!p || !hasColumns()) {
        return {};
    }
    return p->getColumnName().isEmpty() ? p->getName() : p->getColumnName(index);
}

std::shared_ptr<property> relationship::getKeyProperty() const
{
    QSet<const relationship *> visited;
    std::shared_ptr<property> key;
    for (std::shared_ptr<const relationship> next; true; next = key->getRelation()) {
        const relationship * const relation = next ? next.get() : this;
        if (visited.contains(relation)) {
            return nullptr;
        }
        visited.insert(relation);
        const std::shared_ptr<entity> target = relation->getEntityTarget();
        key = target ? target->getPropertyId(true) : nullptr;
        if (!key || !key->hasRelationship()) {
            return key;
        }
    }
}

QLatin1String typeName(relationship::type_relation type)
{
    static constexpr std::array names = {"one-to-one", "one-to-many", "many-to-one", "many-to-many"};
    return QLatin1String(names[static_cast<std::size_t>(type)]);
}

} // namespace model
