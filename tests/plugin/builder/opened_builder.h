#pragma once

#include "plugin/builder/databases.h"
#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"
#include "support/virtual_places.h"

#include <memory>

/// A builder as the plug-in makes it, with its protected operations in reach of a test.
class opened_builder
{
    // Never instantiated: it only lends the names of what it may access.
    class door : public plugin::ddl_export_builder
    {
    public:
        using plugin::ddl_export_builder::addColumn;
        using plugin::ddl_export_builder::addConstraintFKInCreateTable;
        using plugin::ddl_export_builder::addForeignKey;
        using plugin::ddl_export_builder::buildSchemaEvolution;
        using plugin::ddl_export_builder::buildSchemaEvolutionCompare;
        using plugin::ddl_export_builder::buildSchemaFull;
        using plugin::ddl_export_builder::canCreateTable;
        using plugin::ddl_export_builder::createExtraTable;
        using plugin::ddl_export_builder::createIndex;
        using plugin::ddl_export_builder::createTable;
        using plugin::ddl_export_builder::dropColumn;
        using plugin::ddl_export_builder::dropForeignKey;
        using plugin::ddl_export_builder::dropIndex;
        using plugin::ddl_export_builder::dropTable;
        using plugin::ddl_export_builder::exportBegin;
        using plugin::ddl_export_builder::exportEnd;
        using plugin::ddl_export_builder::getBuilderName;
        using plugin::ddl_export_builder::getDefaultSqlPropertyType;
        using plugin::ddl_export_builder::getSqlColumnName;
        using plugin::ddl_export_builder::getSqlForeignKeyName;
        using plugin::ddl_export_builder::getSqlIndexName;
        using plugin::ddl_export_builder::getSqlName;
        using plugin::ddl_export_builder::getSqlPrimaryKeyName;
        using plugin::ddl_export_builder::getSqlPropertyType;
        using plugin::ddl_export_builder::getSqlTableName;
        using plugin::ddl_export_builder::m_bAlterTableForeignKey;
        using plugin::ddl_export_builder::m_iMaxSqlNameLength;
        using plugin::ddl_export_builder::m_lstExtraTable;
        using plugin::ddl_export_builder::m_lstIndex;
        using plugin::ddl_export_builder::m_lstTypeMapping;
        using plugin::ddl_export_builder::m_pCurrentProject;
        using plugin::ddl_export_builder::m_pCustomScript;
        using plugin::ddl_export_builder::m_pPreviousProject;
        using plugin::ddl_export_builder::m_sSqlNameDelimiter;
        using plugin::ddl_export_builder::renameColumn;
        using plugin::ddl_export_builder::renameTable;
    };

public:
    using entity_ptr = std::shared_ptr<model::entity>;
    using property_ptr = std::shared_ptr<model::property>;
    using relationship_ptr = std::shared_ptr<model::relationship>;
    using project_ptr = std::shared_ptr<model::project>;

    /// Where the generators of statements stand among the virtual operations.
    static std::vector<std::size_t> placesOfGenerators()
    {
        return support::virtualPlaces(
            &plugin::ddl_export_builder::getDefaultListTypeMapping, &door::exportBegin, &door::exportEnd,
            &door::getBuilderName, &door::getDefaultSqlPropertyType, &door::createTable,
            &door::addConstraintFKInCreateTable, &door::dropTable, &door::renameTable, &door::addColumn,
            &door::dropColumn, &door::renameColumn, &door::addForeignKey, &door::dropForeignKey,
            &door::createIndex, &door::dropIndex, &door::createExtraTable);
    }

    opened_builder(plugin::ddl_export::database_type db, plugin::ddl_export * plugin)
        : m_builder(plugin::createBuilder(db, plugin)), b(*m_builder)
    {
        types() = b.getDefaultListTypeMapping();
    }

    plugin::ddl_export_builder & builder() { return b; }
    void setProjects(model::project * current, model::project * previous = nullptr)
    {
        b.*& door::m_pCurrentProject = current;
        b.*& door::m_pPreviousProject = previous;
    }
    plugin::ddl_export_builder::type_mapping & types() { return b.*&door::m_lstTypeMapping; }
    auto & linkTables() { return b.*&door::m_lstExtraTable; }
    auto & indexes() { return b.*&door::m_lstIndex; }
    int & maxNameLength() { return b.*&door::m_iMaxSqlNameLength; }
    QString & delimiter() { return b.*&door::m_sSqlNameDelimiter; }
    bool & altersTableForForeignKeys() { return b.*&door::m_bAlterTableForeignKey; }
    model::project * currentProject() { return b.*&door::m_pCurrentProject; }
    model::project * previousProject() { return b.*&door::m_pPreviousProject; }
    std::shared_ptr<tools::custom_javascript> customScript() { return b.*&door::m_pCustomScript; }

    void setCustomScript(const std::shared_ptr<tools::custom_javascript> & script)
    {
        b.*& door::m_pCustomScript = script;
    }

    QString name() { return (b.*&door::getBuilderName)(); }
    QString begin() { return (b.*&door::exportBegin)(); }
    QString end() { return (b.*&door::exportEnd)(); }
    QString defaultType(bool numeric) { return (b.*&door::getDefaultSqlPropertyType)(numeric); }
    QString createTable(const entity_ptr & e) { return (b.*&door::createTable)(e); }
    QString inlineForeignKeys(const entity_ptr & e) { return (b.*&door::addConstraintFKInCreateTable)(e); }
    QString dropTable(const entity_ptr & e) { return (b.*&door::dropTable)(e); }
    QString renameTable(const entity_ptr & from, const entity_ptr & to)
    {
        return (b.*&door::renameTable)(from, to);
    }
    QString addColumn(const property_ptr & p) { return (b.*&door::addColumn)(p); }
    QString dropColumn(const property_ptr & p) { return (b.*&door::dropColumn)(p); }
    QString renameColumn(const property_ptr & from, const property_ptr & to)
    {
        return (b.*&door::renameColumn)(from, to);
    }
    QString addForeignKey(const relationship_ptr & r) { return (b.*&door::addForeignKey)(r); }
    QString dropForeignKey(const relationship_ptr & r) { return (b.*&door::dropForeignKey)(r); }
    QString createIndex(const property_ptr & p) { return (b.*&door::createIndex)(p); }
    QString dropIndex(const property_ptr & p) { return (b.*&door::dropIndex)(p); }
    QString createExtraTable(const relationship_ptr & r) { return (b.*&door::createExtraTable)(r); }

    zk::ZkBool buildFull(model::project & p, bool first) { return (b.*&door::buildSchemaFull)(p, first); }
    zk::ZkBool buildEvolution(model::project & p) { return (b.*&door::buildSchemaEvolution)(p); }
    zk::ZkBool compare(const project_ptr & previous, const project_ptr & current, int version)
    {
        return (b.*&door::buildSchemaEvolutionCompare)(previous, current, version);
    }

    bool canCreateTable(const entity_ptr & e) { return (b.*&door::canCreateTable)(e); }
    QString sqlName(const QString & name) { return (b.*&door::getSqlName)(name); }
    QString tableName(const entity_ptr & e, bool quoted) { return (b.*&door::getSqlTableName)(e, quoted); }
    QString columnName(const property_ptr & p, int index, bool quoted)
    {
        return (b.*&door::getSqlColumnName)(p, index, quoted);
    }
    QString primaryKeyName(const property_ptr & p, bool current)
    {
        return (b.*&door::getSqlPrimaryKeyName)(p, current);
    }
    QString foreignKeyName(const relationship_ptr & r) { return (b.*&door::getSqlForeignKeyName)(r); }
    QString indexName(const property_ptr & p, bool current, int index)
    {
        return (b.*&door::getSqlIndexName)(p, current, index);
    }
    QString propertyType(const property_ptr & p, int index)
    {
        return (b.*&door::getSqlPropertyType)(p, index);
    }

private:
    std::shared_ptr<plugin::ddl_export_builder> m_builder;
    plugin::ddl_export_builder & b;
};
