#pragma once

#include "plugin/builder/ddl_export_builder_default.h"

namespace plugin {

/// MySQL: names in backticks, the key always in a clause of its own, and string columns of a bounded length
/// wherever a key or an index needs one.
class ddl_export_builder_mysql : public ddl_export_builder_default
{
    Q_OBJECT

public:
    explicit ddl_export_builder_mysql(ddl_export * plugin);
    ~ddl_export_builder_mysql() override;

protected:
    [[nodiscard]] QString keyColumnType(const std::shared_ptr<model::property> & key,
                                        int index) const override;
    [[nodiscard]] QString keyColumnSuffix(const table_key & key) const override;
    [[nodiscard]] QString keyClause(const table_key & key) const override;
    [[nodiscard]] QString keyClauseColumn(const std::shared_ptr<model::property> & key,
                                          int index) const override;
    [[nodiscard]] QString renameTableStatement(const QString & from, const QString & to) const override;
    [[nodiscard]] QString renameColumnStatement(const QString & table, const QString & from,
                                                const QString & to,
                                                const std::shared_ptr<model::property> & property,
                                                int index) const override;
    [[nodiscard]] QString indexColumn(const std::shared_ptr<model::property> & property,
                                      int index) const override;
    [[nodiscard]] ddl_export::database_type databaseType() const override;
};

} // namespace plugin
