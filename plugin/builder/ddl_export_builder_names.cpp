// Names and types: what model objects are called in SQL, and which of them get a table.

#include "plugin/builder/ddl_export_builder.h"

#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/property_type.h"
#include "model/relationship.h"

#include <QStringBuilder>

namespace plugin {

namespace {

std::shared_ptr<model::entity> entityOf(const model::property & property, const model::project * project)
{
    return project ? project->getEntityById(property.getEntityId()) : nullptr;
}

/// Makes one identifier of the parts of a generated name.
QString cutName(QString name, int maxLength)
{
    name.replace(QLatin1Char('.'), QLatin1Char('_'));
    if (maxLength > 0) {
        name.truncate(maxLength);
    }
    return name;
}

/// The same for a key, whose name is made of all its columns.
QString keyName(QString name, int maxLength)
{
    return cutName(name.replace(model::ColumnSeparator, QLatin1Char('_')), maxLength);
}

} // namespace

QString ddl_export_builder::getSqlName(const QString & name) const
{
    return m_sSqlNameDelimiter.isEmpty() ? name : QString(m_sSqlNameDelimiter % name % m_sSqlNameDelimiter);
}

QString ddl_export_builder::getSqlTableName(std::shared_ptr<model::entity> entity, bool quoted) const
{
    if (!entity) {
        return {};
    }
    QString name = entity->getTableName();
    if (name.isEmpty()) {
        name = entity->getName();
    }
    return quoted && !name.isEmpty() ? getSqlName(name) : name;
}

QString ddl_export_builder::getSqlColumnName(std::shared_ptr<model::property> property, int index,
                                             bool quoted) const
{
    if (!property) {
        return {};
    }
    const QString name =
        property->getColumnName().isEmpty() ? property->getName() : property->getColumnName(index);
    return quoted && !name.isEmpty() ? getSqlName(name) : name;
}

QString ddl_export_builder::getSqlPrimaryKeyName(std::shared_ptr<model::property> property,
                                                 bool current) const
{
    const std::shared_ptr<model::entity> entity =
        property ? entityOf(*property, projectForNames(current)) : nullptr;
    if (!entity) {
        return {};
    }
    return keyName(u"pk_" % getSqlTableName(entity, false) % u"_" % getSqlColumnName(property, -1, false),
                   m_iMaxSqlNameLength);
}

QString ddl_export_builder::getSqlForeignKeyName(std::shared_ptr<model::relationship> relationship) const
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return {};
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> entity = property ? property->getEntity() : nullptr;
    if (!entity) {
        return {};
    }
    return keyName(u"fk_" % getSqlTableName(entity, false) % u"_" % getSqlColumnName(property, -1, false),
                   m_iMaxSqlNameLength);
}

QString ddl_export_builder::getSqlIndexName(std::shared_ptr<model::property> property, bool current,
                                            int index) const
{
    const std::shared_ptr<model::entity> entity =
        property && property->isIndex() ? entityOf(*property, projectForNames(current)) : nullptr;
    if (!entity) {
        return {};
    }
    // The name of one column: a "|" in it is the user's own.
    return cutName(u"idx_" % getSqlTableName(entity, false) % u"_" % getSqlColumnName(property, index, false),
                   m_iMaxSqlNameLength);
}

const model::project * ddl_export_builder::projectForNames(bool current) const
{
    return current && m_pCurrentProject ? m_pCurrentProject : m_pPreviousProject;
}

QString ddl_export_builder::getSqlPropertyType(std::shared_ptr<model::property> property, int index) const
{
    const std::shared_ptr<model::property_type> type = property ? property->getType() : nullptr;
    if (!type) {
        return {};
    }
    QString sqlType = property->getForceSqlType();
    if (sqlType.isEmpty() && type->getEnumeration()) {
        sqlType = getDefaultSqlPropertyType(true);
    }
    if (sqlType.isEmpty()) {
        const std::lock_guard lock(m_lstTypeMapping.mutex());
        sqlType = m_lstTypeMapping.getByKey(type->getPrimitiveType(index));
        if (sqlType.isEmpty()) {
            sqlType = m_lstTypeMapping.getByKey(QStringLiteral("<default type>"));
        }
    }
    return sqlType.isEmpty() ? getDefaultSqlPropertyType(false) : sqlType;
}

bool ddl_export_builder::canCreateTable(std::shared_ptr<model::entity> entity) const
{
    if (!entity) {
        return false;
    }
    const QString value = entity->getMetaData(QStringLiteral("DDL_EXPORT_CREATE_TABLE")).toString().toUpper();
    return value != QLatin1String("0") && value != QLatin1String("FALSE");
}

} // namespace plugin
