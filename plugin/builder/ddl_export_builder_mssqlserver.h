#pragma once

#include "plugin/builder/ddl_export_builder_default.h"

namespace plugin {

/// Microsoft SQL Server: IDENTITY keys, renames through sp_rename, and strings in keys and indexes of a
/// bounded length.
class ddl_export_builder_mssqlserver : public ddl_export_builder_default
{
    Q_OBJECT

public:
    explicit ddl_export_builder_mssqlserver(ddl_export * plugin);
    ~ddl_export_builder_mssqlserver() override;

protected:
    [[nodiscard]] QString getDefaultSqlPropertyType(bool numeric) const override;
    QString addColumn(std::shared_ptr<model::property> property) override;

    [[nodiscard]] QString keyColumnType(const std::shared_ptr<model::property> & key,
                                        int index) const override;
    [[nodiscard]] QString keyColumnSuffix(const table_key & key) const override;
    [[nodiscard]] QString columnType(const std::shared_ptr<model::property> & property) const override;
    [[nodiscard]] QString keyClause(const table_key & key) const override;
    [[nodiscard]] QString renameTableStatement(const QString & from, const QString & to) const override;
    [[nodiscard]] QString renameColumnStatement(const QString & table, const QString & from,
                                                const QString & to,
                                                const std::shared_ptr<model::property> & property,
                                                int index) const override;
    [[nodiscard]] QString dropIndexStatement(const QString & index, const QString & table) const override;
    [[nodiscard]] ddl_export::database_type databaseType() const override;
};

} // namespace plugin
