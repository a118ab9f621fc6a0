#include "plugin/builder/ddl_export_builder_oracle.h"

#include "model/entity.h"
#include "model/property.h"

#include <QStringBuilder>

namespace plugin {

namespace {

/// Longest string that a key or an index can hold.
QString boundedString()
{
    return QStringLiteral("VARCHAR2(4000)");
}

} // namespace

ddl_export_builder_oracle::ddl_export_builder_oracle(ddl_export * plugin) : ddl_export_builder_default(plugin)
{
    m_iMaxSqlNameLength = 30;
}

ddl_export_builder_oracle::~ddl_export_builder_oracle() = default;

ddl_export::database_type ddl_export_builder_oracle::databaseType() const
{
    return ddl_export::db_oracle;
}

QString ddl_export_builder_oracle::addColumn(std::shared_ptr<model::property> property)
{
    return addColumnWithoutKeyword(property);
}

QString ddl_export_builder_oracle::dropIndex(std::shared_ptr<model::property> property)
{
    return dropIndexByName(property);
}

QString ddl_export_builder_oracle::keyColumnType(const std::shared_ptr<model::property> & key,
                                                 int index) const
{
    return key->isString(false, index) ? boundedString()
                                       : ddl_export_builder_default::keyColumnType(key, index);
}

QString ddl_export_builder_oracle::keyColumnSuffix(const table_key & key) const
{
    return primaryKeyOfSingleColumn(key);
}

QString ddl_export_builder_oracle::columnType(const std::shared_ptr<model::property> & property) const
{
    return property->isIndex() && property->isString(true, -1)
               ? boundedString()
               : ddl_export_builder_default::columnType(property);
}

QString ddl_export_builder_oracle::keyClause(const table_key & key) const
{
    return namedKeyClause(key);
}

QString ddl_export_builder_oracle::statementsAfterTable(const table_key & key) const
{
    if (!key.isCounted()) {
        return {};
    }
    const QString table = getSqlTableName(key.entity, false);
    const QString column = getSqlColumnName(key.property, -1, false);
    return u"\nCREATE SEQUENCE seq_inc_" % table % u" START WITH 1 INCREMENT BY 1;" %
           u"\nCREATE OR REPLACE TRIGGER trigger_inc_" % table % u"\n\tBEFORE INSERT OR UPDATE OF " %
           getSqlColumnName(key.property, -1, true) % u" ON " % getSqlTableName(key.entity, true) %
           u"\n\tFOR EACH ROW" % u"\n\tBEGIN" % u"\n\t\tIF ( :NEW." % column % u" = 0 OR :NEW." % column %
           u" IS NULL ) THEN" % u"\n\t\t\tSELECT seq_inc_" % table % u".NEXTVAL INTO :NEW." % column %
           u" FROM DUAL;" % u"\n\t\tEND IF;" % u"\n\tEND;\n\t/\n";
}

} // namespace plugin
