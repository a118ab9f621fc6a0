#include "plugin/builder/ddl_export_builder_postgresql.h"

#include "model/property.h"

namespace plugin {

ddl_export_builder_postgresql::ddl_export_builder_postgresql(ddl_export * plugin)
    : ddl_export_builder_default(plugin)
{
}

ddl_export_builder_postgresql::~ddl_export_builder_postgresql() = default;

ddl_export::database_type ddl_export_builder_postgresql::databaseType() const
{
    return ddl_export::db_postgresql;
}

QString ddl_export_builder_postgresql::keyColumnType(const std::shared_ptr<model::property> & key,
                                                     int index) const
{
    return key->isNumber(true, -1) ? QStringLiteral("BIGSERIAL")
                                   : ddl_export_builder_default::keyColumnType(key, index);
}

QString ddl_export_builder_postgresql::keyColumnSuffix(const table_key & key) const
{
    return primaryKeyOfSingleColumn(key);
}

QString ddl_export_builder_postgresql::tableTail() const
{
    return QStringLiteral(") WITH (OIDS = FALSE);");
}

QString ddl_export_builder_postgresql::dropIndex(std::shared_ptr<model::property> property)
{
    return dropIndexByName(property);
}

} // namespace plugin
