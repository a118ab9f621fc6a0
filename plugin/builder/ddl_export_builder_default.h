#pragma once

#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export.h"

#include <QString>

#include <memory>

namespace plugin {

/// The generic SQL dialect, and the base of all others.
///
/// The order of a table's columns and clauses, the link tables and the loops over columns stand here and only
/// here. A dialect changes a type, a word, a clause or a tail by overriding one of the hooks below the
/// statements.
class ddl_export_builder_default : public ddl_export_builder
{
    Q_OBJECT

public:
    explicit ddl_export_builder_default(ddl_export * plugin);
    ~ddl_export_builder_default() override;

    [[nodiscard]] type_mapping getDefaultListTypeMapping() const override;

protected:
    [[nodiscard]] QString exportBegin() const override;
    [[nodiscard]] QString exportEnd() const override;
    [[nodiscard]] QString getBuilderName() const override;
    [[nodiscard]] QString getDefaultSqlPropertyType(bool numeric) const override;
    QString createTable(std::shared_ptr<model::entity> entity) override;
    QString addConstraintFKInCreateTable(std::shared_ptr<model::entity> entity) override;
    QString dropTable(std::shared_ptr<model::entity> entity) override;
    QString renameTable(std::shared_ptr<model::entity> previous,
                        std::shared_ptr<model::entity> current) override;
    QString addColumn(std::shared_ptr<model::property> property) override;
    QString dropColumn(std::shared_ptr<model::property> property) override;
    QString renameColumn(std::shared_ptr<model::property> previous,
                         std::shared_ptr<model::property> current) override;
    QString addForeignKey(std::shared_ptr<model::relationship> relationship) override;
    QString dropForeignKey(std::shared_ptr<model::relationship> relationship) override;
    QString createIndex(std::shared_ptr<model::property> property) override;
    QString dropIndex(std::shared_ptr<model::property> property) override;
    QString createExtraTable(std::shared_ptr<model::relationship> relationship) override;

    /// The key of a table.
    struct table_key
    {
        std::shared_ptr<model::entity> entity;
        std::shared_ptr<model::property> property; ///< the identifier, null without one
        int columns = 0;                           ///< 0 also for an identifier without type

        [[nodiscard]] bool isComposite() const { return columns > 1; }
        /// Whether the database counts the key up.
        [[nodiscard]] bool isCounted() const;
    };

    /// The database that this is the dialect of.
    [[nodiscard]] virtual ddl_export::database_type databaseType() const;
    /// SQL type of column `index` of a key, in its own table and in the link tables that refer to it.
    [[nodiscard]] virtual QString keyColumnType(const std::shared_ptr<model::property> & key,
                                                int index) const;
    /// What follows "NOT NULL" on every column of a key: empty, or beginning with a blank.
    [[nodiscard]] virtual QString keyColumnSuffix(const table_key & key) const;
    /// SQL type of a property that is neither key nor relationship.
    [[nodiscard]] virtual QString columnType(const std::shared_ptr<model::property> & property) const;
    /// The clause that declares the key behind the columns; empty when the columns say it.
    [[nodiscard]] virtual QString keyClause(const table_key & key) const;
    /// Column `index` of a key as the key clause names it.
    [[nodiscard]] virtual QString keyClauseColumn(const std::shared_ptr<model::property> & key,
                                                  int index) const;
    /// What closes every CREATE TABLE, that of link tables included.
    [[nodiscard]] virtual QString tableTail() const;
    /// Statements that belong to a table and follow it: empty, or beginning with a line end.
    [[nodiscard]] virtual QString statementsAfterTable(const table_key & key) const;
    [[nodiscard]] virtual QString renameTableStatement(const QString & from, const QString & to) const;
    /// Renames column `index` of `property`, whose name was `from` and is now `to`.
    [[nodiscard]] virtual QString renameColumnStatement(const QString & table, const QString & from,
                                                        const QString & to,
                                                        const std::shared_ptr<model::property> & property,
                                                        int index) const;
    /// Column `index` as its index names it.
    [[nodiscard]] virtual QString indexColumn(const std::shared_ptr<model::property> & property,
                                              int index) const;
    [[nodiscard]] virtual QString dropIndexStatement(const QString & index, const QString & table) const;

    // --- services for dialects
    [[nodiscard]] bool exportsRelationships() const;
    /// " PRIMARY KEY" for a key of one column, which needs no clause of its own.
    [[nodiscard]] static QString primaryKeyOfSingleColumn(const table_key & key);
    /// "PRIMARY KEY (…)".
    [[nodiscard]] QString keyClauseText(const table_key & key) const;
    /// "CONSTRAINT … PRIMARY KEY (…)" for a composite key.
    [[nodiscard]] QString namedKeyClause(const table_key & key) const;
    /// The entity of `property` in the project that is being written; null when anything is missing.
    [[nodiscard]] std::shared_ptr<model::entity>
    currentEntityOf(const std::shared_ptr<model::property> & property) const;
    /// `entity`, or its counterpart in the project that is being written, with a usable identifier; null when
    /// neither has one.
    [[nodiscard]] std::shared_ptr<model::entity>
    entityWithIdentifier(const std::shared_ptr<model::entity> & entity) const;
    /// "FOREIGN KEY (…) REFERENCES …" from the columns of `property` to the key of `target`.
    [[nodiscard]] QString foreignKeyClause(const std::shared_ptr<model::property> & property,
                                           const std::shared_ptr<model::entity> & target) const;
    /// Name that the index of column `index` has in the database.
    [[nodiscard]] QString existingIndexName(const std::shared_ptr<model::property> & property,
                                            int index) const;
    /// addColumn() of the databases that do not know the word COLUMN there.
    QString addColumnWithoutKeyword(const std::shared_ptr<model::property> & property);
    /// dropIndex() of the databases whose indexes are not named together with their table.
    [[nodiscard]] QString dropIndexByName(const std::shared_ptr<model::property> & property) const;

private:
    struct table_draft;

    void appendKeyColumns(table_draft & draft) const;
    void appendColumns(table_draft & draft);
    void appendSoftDelete(table_draft & draft) const;
    void appendRelationships(table_draft & draft);
    void appendClauses(table_draft & draft);
    void registerIndex(const std::shared_ptr<model::property> & property);
    void registerLinkTable(const std::shared_ptr<model::relationship> & relationship);
    [[nodiscard]] QString linkColumns(const QString & names,
                                      const std::shared_ptr<model::property> & key) const;
};

} // namespace plugin
