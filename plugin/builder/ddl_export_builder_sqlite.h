#pragma once

#include "plugin/builder/ddl_export_builder_default.h"

namespace plugin {

/// SQLite: foreign keys stand inside CREATE TABLE, every script is one transaction, and what ALTER TABLE
/// cannot do there becomes a comment that says so.
class ddl_export_builder_sqlite : public ddl_export_builder_default
{
    Q_OBJECT

public:
    explicit ddl_export_builder_sqlite(ddl_export * plugin);
    ~ddl_export_builder_sqlite() override;

protected:
    [[nodiscard]] QString exportBegin() const override;
    [[nodiscard]] QString exportEnd() const override;
    QString addConstraintFKInCreateTable(std::shared_ptr<model::entity> entity) override;
    QString dropColumn(std::shared_ptr<model::property> property) override;
    QString renameColumn(std::shared_ptr<model::property> previous,
                         std::shared_ptr<model::property> current) override;
    QString addForeignKey(std::shared_ptr<model::relationship> relationship) override;
    QString dropForeignKey(std::shared_ptr<model::relationship> relationship) override;
    QString dropIndex(std::shared_ptr<model::property> property) override;

    [[nodiscard]] ddl_export::database_type databaseType() const override;

private:
    [[nodiscard]] QString foreignKeyWarning(const std::shared_ptr<model::relationship> & relationship,
                                            const QString & verb) const;
};

} // namespace plugin
