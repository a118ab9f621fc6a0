#include "plugin/builder/ddl_export_builder_mysql.h"

#include "model/property.h"

#include <QStringBuilder>

namespace plugin {

namespace {

/// MySQL indexes no column of unbounded text; this is how much of one it indexes.
QString prefixLength(const model::property & property, int index)
{
    return property.isString(false, index) ? QStringLiteral("(255)") : QString();
}

} // namespace

ddl_export_builder_mysql::ddl_export_builder_mysql(ddl_export * plugin) : ddl_export_builder_default(plugin)
{
    m_sSqlNameDelimiter = QStringLiteral("`");
}

ddl_export_builder_mysql::~ddl_export_builder_mysql() = default;

ddl_export::database_type ddl_export_builder_mysql::databaseType() const
{
    return ddl_export::db_mysql;
}

QString ddl_export_builder_mysql::keyColumnType(const std::shared_ptr<model::property> & key, int index) const
{
    return exportsRelationships() && key->isString(false, index)
               ? QStringLiteral("VARCHAR(255)")
               : ddl_export_builder_default::keyColumnType(key, index);
}

QString ddl_export_builder_mysql::keyColumnSuffix(const table_key & key) const
{
    return key.isCounted() ? QStringLiteral(" AUTO_INCREMENT") : QString();
}

QString ddl_export_builder_mysql::keyClause(const table_key & key) const
{
    return key.columns > 0 ? keyClauseText(key) : QString();
}

QString ddl_export_builder_mysql::keyClauseColumn(const std::shared_ptr<model::property> & key,
                                                  int index) const
{
    // A column that foreign keys refer to is a VARCHAR, which needs no prefix.
    const QString column = ddl_export_builder_default::keyClauseColumn(key, index);
    return exportsRelationships() ? column : column % prefixLength(*key, index);
}

QString ddl_export_builder_mysql::renameTableStatement(const QString & from, const QString & to) const
{
    return u"RENAME TABLE " % from % u" TO " % to % u";";
}

QString ddl_export_builder_mysql::renameColumnStatement(const QString & table, const QString & from,
                                                        const QString & to,
                                                        const std::shared_ptr<model::property> & property,
                                                        int index) const
{
    return u"ALTER TABLE " % table % u" CHANGE " % from % u" " % to % u" " %
           getSqlPropertyType(property, index) % QLatin1String(property->getAllowNull() ? "" : " NOT NULL") %
           u";";
}

QString ddl_export_builder_mysql::indexColumn(const std::shared_ptr<model::property> & property,
                                              int index) const
{
    return ddl_export_builder_default::indexColumn(property, index) % prefixLength(*property, index);
}

} // namespace plugin
