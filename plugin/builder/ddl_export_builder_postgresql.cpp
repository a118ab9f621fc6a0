#include "plugin/builder/ddl_export_builder_postgresql.h"

#include "plugin/builder/default_type_mapping.h"

#include "model/property.h"

namespace plugin {

ddl_export_builder_postgresql::ddl_export_builder_postgresql(ddl_export * plugin)
    : ddl_export_builder_default(plugin)
{
}

ddl_export_builder_postgresql::~ddl_export_builder_postgresql() = default;

ddl_export_builder::type_mapping ddl_export_builder_postgresql::getDefaultListTypeMapping() const
{
    return defaultTypeMapping(&default_type::postgresql);
}

QString ddl_export_builder_postgresql::getBuilderName() const
{
    return QStringLiteral("postgresql");
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
