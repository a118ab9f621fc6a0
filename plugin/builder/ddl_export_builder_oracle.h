#pragma once

#include "plugin/builder/ddl_export_builder_default.h"

namespace plugin {

/// Oracle: a counted key takes its values from a sequence through a trigger, generated names are short, and
/// strings in keys and indexes are bounded.
class ddl_export_builder_oracle : public ddl_export_builder_default
{
    Q_OBJECT

public:
    explicit ddl_export_builder_oracle(ddl_export * plugin);
    ~ddl_export_builder_oracle() override;

protected:
    QString addColumn(std::shared_ptr<model::property> property) override;
    QString dropIndex(std::shared_ptr<model::property> property) override;

    [[nodiscard]] QString keyColumnType(const std::shared_ptr<model::property> & key,
                                        int index) const override;
    [[nodiscard]] QString keyColumnSuffix(const table_key & key) const override;
    [[nodiscard]] QString columnType(const std::shared_ptr<model::property> & property) const override;
    [[nodiscard]] QString keyClause(const table_key & key) const override;
    [[nodiscard]] QString statementsAfterTable(const table_key & key) const override;
    [[nodiscard]] ddl_export::database_type databaseType() const override;
};

} // namespace plugin
