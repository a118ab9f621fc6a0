#include "model/property.h"

#include "model/column_list.h"
#include "model/entity.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QSet>

namespace model {

namespace {

bool isIntegerType(const QString & cppType)
{
    static const QSet<QString> types = {
        QStringLiteral("short"),          QStringLiteral("int"),
        QStringLiteral("long"),           QStringLiteral("long long"),
        QStringLiteral("unsigned short"), QStringLiteral("unsigned int"),
        QStringLiteral("unsigned long"),  QStringLiteral("unsigned long long"),
        QStringLiteral("qint8"),          QStringLiteral("quint8"),
        QStringLiteral("qint16"),         QStringLiteral("quint16"),
        QStringLiteral("qint32"),         QStringLiteral("quint32"),
        QStringLiteral("qint64"),         QStringLiteral("quint64")};
    return types.contains(cppType);
}

bool isTextType(const QString & cppType)
{
    static const QSet<QString> types = {QStringLiteral("std::string"),
                                        QStringLiteral("std::wstring"),
                                        QStringLiteral("QString"),
                                        QStringLiteral("QUuid"),
                                        QStringLiteral("zk::ZkDateNeutral"),
                                        QStringLiteral("zk::ZkTimeNeutral"),
                                        QStringLiteral("zk::ZkDateTimeNeutral")};
    return types.contains(cppType);
}

} // namespace

QString property::getKey() const
{
    if (!m_sKey.isEmpty()) {
        return m_sKey;
    }
    const std::shared_ptr<entity> owner = getEntity();
    return owner ? owner->getKey() + QLatin1Char('.') + m_sName : m_sName;
}

QString property::getColumnName(int index) const
{
    if (index < 0) {
        return index == -1 ? m_sColumnName : QString();
    }
    if (!m_sColumnName.contains(ColumnSeparator)) {
        return index == 0 ? m_sColumnName : QString();
    }
    return m_sColumnName.section(ColumnSeparator, index, index);
}

int property::getColumnNameCount() const
{
    if (!m_pType || (m_pRelation && !m_pRelation->hasColumns())) {
        return 0;
    }
    return static_cast<int>(m_sColumnName.count(ColumnSeparator)) + 1;
}

long property::getEntityId() const
{
    const std::shared_ptr<entity> owner = getEntity();
    return owner ? owner->getId() : 0;
}

void property::setType(const QString & cppType)
{
    m_pType = std::make_shared<property_type>(QStringList{cppType});
}

QString property::getForceSqlType() const
{
    if (!m_sForceSqlType.isEmpty() || !m_pRelation) {
        return m_sForceSqlType;
    }
    QString sqlType;
    QSet<const property *> visited{this};
    std::shared_ptr<relationship> relation = m_pRelation;
    while (sqlType.isEmpty() && relation) {
        const std::shared_ptr<entity> target = relation->getEntityTarget();
        const std::shared_ptr<property> key = target ? target->getPropertyId(true) : nullptr;
        if (!key || visited.contains(key.get())) {
            break;
        }
        visited.insert(key.get());
        sqlType = key->m_sForceSqlType;
        relation = key->m_pRelation;
    }
    return sqlType;
}

void property::setRelation(const std::shared_ptr<relationship> & relation)
{
    if (m_pRelation) {
        m_pRelation->m_pProperty.reset();
        m_pType.reset();
    }
    m_pRelation = relation;
    if (m_pRelation) {
        m_pRelation->m_pProperty = weak_from_this();
        m_pType = std::make_shared<property_type>(std::weak_ptr<relationship>(m_pRelation));
    }
}

bool property::isNumber(bool, int index) const
{
    if (!m_pType || m_pRelation || m_pType->getEnumeration()) {
        return false;
    }
    if (index != -1) {
        return isIntegerType(m_pType->getPrimitiveType(index));
    }
    return m_bAutoIncrement.value_or(getColumnNameCount() == 1 &&
                                     isIntegerType(m_pType->getPrimitiveType(0)));
}

bool property::isString(bool, int index) const
{
    if (m_pRelation) {
        const std::shared_ptr<property> key = m_pRelation->getKeyProperty();
        return key && key->isString(false, index);
    }
    if (!m_pType || m_pType->getEnumeration()) {
        return false;
    }
    if (index != -1) {
        return isTextType(m_pType->getPrimitiveType(index));
    }
    const int n = getColumnNameCount();
    for (int i = 0; i < n; ++i) {
        if (!isTextType(m_pType->getPrimitiveType(i))) {
            return false;
        }
    }
    return n > 0;
}

} // namespace model
