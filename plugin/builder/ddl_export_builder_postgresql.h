#pragma once

#include "plugin/builder/ddl_export_builder_default.h"

namespace plugin {

/// PostgreSQL: counted keys are of type BIGSERIAL, and indexes are dropped without naming their table.
class ddl_export_builder_postgresql : public ddl_export_builder_default
{
    Q_OBJECT

public:
    explicit ddl_export_builder_postgresql(ddl_export * plugin);
    ~ddl_export_builder_postgresql() override;

protected:
    QString dropIndex(std::shared_ptr<model::property> property) override;

    [[nodiscard]] QString keyColumnType(const std::shared_ptr<model::property> & key,
                                        int index) const override;
    [[nodiscard]] QString keyColumnSuffix(const table_key & key) const override;
    [[nodiscard]] QString tableTail() const override;
    [[nodiscard]] ddl_export::database_type databaseType() const override;
};

} // namespace plugin
