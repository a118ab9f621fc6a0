#include "model/entity.h"

namespace model {

entity::entity(long id, const QString & name)
    : persistable(id), m_sName(name), m_pProperties(std::make_shared<list_of_property>())
{
}

std::shared_ptr<property> entity::getPropertyId(bool) const
{
    const std::lock_guard lock(m_pProperties->mutex());
    for (long i = 0; i < m_pProperties->count(); ++i) {
        if (const std::shared_ptr<property> p = m_pProperties->getByIndex(i); p && p->isIdentifier()) {
            return p;
        }
    }
    return nullptr;
}

std::shared_ptr<property> entity::getPropertyById(long id) const
{
    const std::lock_guard lock(m_pProperties->mutex());
    return m_pProperties->getByKey(id);
}

std::shared_ptr<entity::list_of_property> entity::getListOfProperty(bool withIdentifier, bool withTransient,
                                                                    bool) const
{
    if (withIdentifier && withTransient) {
        return m_pProperties;
    }
    const auto result = std::make_shared<list_of_property>();
    for (const std::shared_ptr<property> & p : m_pProperties->values()) {
        if (p && (withIdentifier || !p->isIdentifier()) && (withTransient || !p->isTransient())) {
            result->insert(p->getId(), p);
        }
    }
    return result;
}

std::shared_ptr<entity::list_of_relation> entity::getListOfRelation() const
{
    const auto result = std::make_shared<list_of_relation>();
    const std::lock_guard lock(m_pProperties->mutex());
    for (long i = 0; i < m_pProperties->count(); ++i) {
        const std::shared_ptr<property> p = m_pProperties->getByIndex(i);
        if (p && p->hasRelationship() && !p->isTransient()) {
            result->insert(p->getRelation()->getId(), p->getRelation());
        }
    }
    return result;
}

bool entity::addProperty(const std::shared_ptr<property> & p)
{
    const std::lock_guard lock(m_pProperties->mutex());
    if (!p || !m_pProperties->insert(p->getId(), p)) {
        return false;
    }
    p->m_pEntity = weak_from_this();
    return true;
}

} // namespace model
