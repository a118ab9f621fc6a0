#include "model/property_type.h"

#include "model/column_list.h"
#include "model/enumeration.h"
#include "model/property.h"
#include "model/relationship.h"

namespace model {

namespace {

std::shared_ptr<property_type> typeOfTarget(const std::weak_ptr<relationship> & relation)
{
    const std::shared_ptr<relationship> r = relation.lock();
    const std::shared_ptr<property> key = r ? r->getKeyProperty() : nullptr;
    return key ? key->getType() : nullptr;
}

} // namespace

property_type::property_type(const QStringList & cppTypes) : m_lstCppType(cppTypes) {}
property_type::property_type(const std::shared_ptr<enumeration> & type) : m_pEnumeration(type) {}
property_type::property_type(const std::weak_ptr<relationship> & relation) : m_pRelation(relation) {}

QString property_type::getPrimitiveType(int index) const
{
    if (m_pEnumeration) {
        return m_pEnumeration->getName();
    }
    if (m_lstCppType.size() == 1) {
        return m_lstCppType.constFirst();
    }
    if (!m_lstCppType.isEmpty()) {
        return index == -1 ? m_lstCppType.join(ColumnSeparator) : m_lstCppType.value(index);
    }
    const std::shared_ptr<property_type> target = typeOfTarget(m_pRelation);
    return target ? target->getPrimitiveType(index) : QString();
}

std::shared_ptr<enumeration> property_type::getEnumeration() const
{
    if (m_pEnumeration || !m_lstCppType.isEmpty()) {
        return m_pEnumeration;
    }
    const std::shared_ptr<property_type> target = typeOfTarget(m_pRelation);
    return target ? target->getEnumeration() : nullptr;
}

} // namespace model
