#include "plugin/builder/ddl_export_builder_mssqlserver.h"

#include "model/property.h"

#include <QStringBuilder>

namespace plugin {

ddl_export_builder_mssqlserver::ddl_export_builder_mssqlserver(ddl_export * plugin)
    : ddl_export_builder_default(plugin)
{
}

ddl_export_builder_mssqlserver::~ddl_export_builder_mssqlserver() = default;

ddl_export::database_type ddl_export_builder_mssqlserver::databaseType() const
{
    return ddl_export::db_mssqlserver;
}

QString ddl_export_builder_mssqlserver::getDefaultSqlPropertyType(bool numeric) const
{
    return numeric ? QStringLiteral("INT") : QStringLiteral("TEXT");
}

QString ddl_export_builder_mssqlserver::addColumn(std::shared_ptr<model::property> property)
{
    return addColumnWithoutKeyword(property);
}

QString ddl_export_builder_mssqlserver::keyColumnType(const std::shared_ptr<model::property> & key,
                                                      int index) const
{
    return key->isString(false, index) ? QStringLiteral("VARCHAR(255)")
                                       : ddl_export_builder_default::keyColumnType(key, index);
}

QString ddl_export_builder_mssqlserver::keyColumnSuffix(const table_key & key) const
{
    const bool isIdentity = key.isCounted() && !key.isComposite();
    return primaryKeyOfSingleColumn(key) % QLatin1String(isIdentity ? " IDENTITY(1,1)" : "");
}

QString ddl_export_builder_mssqlserver::columnType(const std::shared_ptr<model::property> & property) const
{
    // An index may span 900 bytes; a key column is kept shorter.
    return property->isIndex() && property->isString(true, -1)
               ? QStringLiteral("VARCHAR(900)")
               : ddl_export_builder_default::columnType(property);
}

QString ddl_export_builder_mssqlserver::keyClause(const table_key & key) const
{
    return namedKeyClause(key);
}

QString ddl_export_builder_mssqlserver::renameTableStatement(const QString & from, const QString & to) const
{
    return u"EXEC sp_rename '" % from % u"', '" % to % u"';";
}

QString ddl_export_builder_mssqlserver::renameColumnStatement(const QString & table, const QString & from,
                                                              const QString & to,
                                                              const std::shared_ptr<model::property> &,
                                                              int) const
{
    return u"EXEC sp_rename '" % table % u"." % from % u"', '" % to % u"', 'COLUMN';";
}

QString ddl_export_builder_mssqlserver::dropIndexStatement(const QString & index, const QString & table) const
{
    return u"DROP INDEX " % table % u"." % index % u";";
}

} // namespace plugin
