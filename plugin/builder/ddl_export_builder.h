#pragma once

#include "plugin/builder/ddl_export_progress.h"

#include "zk/zk_bool.h"
#include "zk/zk_collection.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace model {
class project;
class project_historic;
class entity;
class property;
class relationship;
} // namespace model

namespace storage {
class restored_version;
}

namespace tools {
class custom_javascript;
}

class QSqlError;

namespace plugin {

class ddl_export;
class ddl_export_script;

/// Turns one project into DDL SQL script files: decides which scripts are written, what is visited in which
/// order, and how names and types are formed. A dialect supplies the statement texts.
///
/// Every statement generator returns one statement, or a short run of them, without a line end at its end;
/// the empty text when there is nothing to say for its arguments.
class ddl_export_builder : public QObject
{
    Q_OBJECT

public:
    using type_mapping = zk::ZkCollection<QString, QString>;

    /// @param plugin source of all settings, not owned
    explicit ddl_export_builder(ddl_export * plugin);
    ~ddl_export_builder() override;

    /// Writes the scripts that the plug-in's settings ask for. A failure carries the message to show; scripts
    /// completed before it stay on disk.
    zk::ZkBool build(model::project & project);

Q_SIGNALS:
    /// Progress (`type` 1) and errors (`type` 3), to be shown for `timeout` milliseconds.
    void onMessage(const QString & msg, int type, int timeout);
    /// `done` of `total` units are written; the total is the same throughout one build.
    void onProgress(int done, int total);
    /// A script is complete on disk; `file` is its absolute name.
    void onFileWritten(const QString & file);

public:
    /// The dialect's default C++-type to SQL-type list.
    [[nodiscard]] virtual type_mapping getDefaultListTypeMapping() const = 0;

protected:
    [[nodiscard]] virtual QString exportBegin() const = 0;
    [[nodiscard]] virtual QString exportEnd() const = 0;
    /// Short name of the dialect, a part of the script file names.
    [[nodiscard]] virtual QString getBuilderName() const = 0;
    /// SQL type without any mapping: for numbers (`numeric`) or for everything else.
    [[nodiscard]] virtual QString getDefaultSqlPropertyType(bool numeric) const = 0;
    /// Also registers the entity's link tables in m_lstExtraTable and its indexed properties in m_lstIndex.
    virtual QString createTable(std::shared_ptr<model::entity> entity) = 0;
    virtual QString addConstraintFKInCreateTable(std::shared_ptr<model::entity> entity) = 0;
    virtual QString dropTable(std::shared_ptr<model::entity> entity) = 0;
    virtual QString renameTable(std::shared_ptr<model::entity> previous,
                                std::shared_ptr<model::entity> current) = 0;
    virtual QString addColumn(std::shared_ptr<model::property> property) = 0;
    virtual QString dropColumn(std::shared_ptr<model::property> property) = 0;
    virtual QString renameColumn(std::shared_ptr<model::property> previous,
                                 std::shared_ptr<model::property> current) = 0;
    virtual QString addForeignKey(std::shared_ptr<model::relationship> relationship) = 0;
    virtual QString dropForeignKey(std::shared_ptr<model::relationship> relationship) = 0;
    virtual QString createIndex(std::shared_ptr<model::property> property) = 0;
    virtual QString dropIndex(std::shared_ptr<model::property> property) = 0;
    virtual QString createExtraTable(std::shared_ptr<model::relationship> relationship) = 0;

    /// Writes the schema of `project` as one script, if the schema mode asks for it or `firstVersion` is set.
    zk::ZkBool buildSchemaFull(model::project & project, bool firstVersion);
    /// Writes one script per tagged version of `project`, if the schema mode asks for it.
    zk::ZkBool buildSchemaEvolution(model::project & project);
    /// Writes the script that leads from `previous` to `current`, whose version number is `version`.
    zk::ZkBool buildSchemaEvolutionCompare(std::shared_ptr<model::project> previous,
                                           std::shared_ptr<model::project> current, int version);

    /// Whether the entity gets a table: not when its meta-data "DDL_EXPORT_CREATE_TABLE" is "0" or "false".
    [[nodiscard]] bool canCreateTable(std::shared_ptr<model::entity> entity) const;
    [[nodiscard]] QString getSqlName(const QString & name) const;
    [[nodiscard]] QString getSqlTableName(std::shared_ptr<model::entity> entity, bool quoted) const;
    /// @param index column of a multi-column property (0-based), -1 for the property as a whole
    [[nodiscard]] QString getSqlColumnName(std::shared_ptr<model::property> property, int index,
                                           bool quoted) const;
    /// @param current whether the property's entity is looked up in the current or in the previous project
    [[nodiscard]] QString getSqlPrimaryKeyName(std::shared_ptr<model::property> property, bool current) const;
    [[nodiscard]] QString getSqlForeignKeyName(std::shared_ptr<model::relationship> relationship) const;
    [[nodiscard]] QString getSqlIndexName(std::shared_ptr<model::property> property, bool current,
                                          int index) const;
    [[nodiscard]] QString getSqlPropertyType(std::shared_ptr<model::property> property, int index) const;

    ddl_export * m_pPlugin = nullptr;
    type_mapping m_lstTypeMapping;
    zk::ZkCollection<QString, std::shared_ptr<model::relationship>> m_lstExtraTable;
    zk::ZkCollection<long, std::shared_ptr<model::property>> m_lstIndex;
    model::project * m_pCurrentProject = nullptr;
    model::project * m_pPreviousProject = nullptr;
    std::shared_ptr<tools::custom_javascript> m_pCustomScript;
    bool m_bAlterTableForeignKey = true;
    int m_iMaxSqlNameLength = -1;
    QString m_sSqlNameDelimiter;

private:
    using list_of_tables = std::vector<std::shared_ptr<model::entity>>;

    static zk::ZkBool noPluginFailure();
    /// How many scripts the settings ask for.
    [[nodiscard]] int countScripts();
    /// The project in which getSqlPrimaryKeyName() and getSqlIndexName() look an entity up; may be null.
    [[nodiscard]] const model::project * projectForNames(bool current) const;
    /// The entities that get a table, in order.
    [[nodiscard]] list_of_tables
    tablesOf(const zk::ZkCollection<long, std::shared_ptr<model::entity>> & entities) const;

    [[nodiscard]] std::unique_ptr<ddl_export_script> newScript(const QString & projectName,
                                                               const QString & suffix, const QString & title);
    zk::ZkBool writeBegin(ddl_export_script & script);
    zk::ZkBool writeTable(ddl_export_script & script, const std::shared_ptr<model::entity> & entity);
    zk::ZkBool writeLinkTables(ddl_export_script & script);
    zk::ZkBool writeIndexes(ddl_export_script & script);
    zk::ZkBool writeIndex(ddl_export_script & script, const std::shared_ptr<model::property> & property,
                          model::entity * entity);
    zk::ZkBool writeTables(ddl_export_script & script, const list_of_tables & tables);
    zk::ZkBool writeForeignKeys(ddl_export_script & script, const list_of_tables & tables);
    /// Writes nothing for a relationship that has no foreign key of its own.
    zk::ZkBool writeForeignKey(ddl_export_script & script, const std::shared_ptr<model::entity> & entity,
                               const std::shared_ptr<model::relationship> & relationship);
    zk::ZkBool writeEnd(ddl_export_script & script, const QString & projectName);

    struct entity_change;
    struct property_change;
    using list_of_property = zk::ZkCollection<long, std::shared_ptr<model::property>>;
    /// The entities of the current version that are new or differ from the previous version, in order.
    [[nodiscard]] std::vector<entity_change> changedEntities() const;
    zk::ZkBool writeChanges(ddl_export_script & script);
    zk::ZkBool writeDroppedTables(ddl_export_script & script);
    zk::ZkBool writeChangedTables(ddl_export_script & script, const std::vector<entity_change> & changes);
    zk::ZkBool writeChangedForeignKeys(ddl_export_script & script,
                                       const std::vector<entity_change> & changes);
    zk::ZkBool writeTableChanges(ddl_export_script & script, const entity_change & change);
    zk::ZkBool writeDroppedColumns(ddl_export_script & script, const std::shared_ptr<model::entity> & entity,
                                   const list_of_property & before, const list_of_property & after);
    zk::ZkBool writeColumnChanges(ddl_export_script & script, const std::shared_ptr<model::entity> & entity,
                                  const property_change & property);
    zk::ZkBool writeColumnStep(ddl_export_script & script, const std::shared_ptr<model::entity> & entity,
                               const property_change & property);
    zk::ZkBool writeForeignKeyChanges(ddl_export_script & script, const entity_change & change);

    struct fetched_tags;
    /// The tags of the project that is exported, asked for once a build, by countScripts().
    [[nodiscard]] const fetched_tags & tags();
    [[nodiscard]] static zk::ZkBool tagsFailure(const QSqlError & error);
    /// Writes what `tag` holds into a new file of the folder `temp`, whose name begins with `start`.
    zk::ZkBool restoreTag(const model::project_historic & tag, const QString & temp, const QString & start,
                          storage::restored_version & file);
    /// Writes the script that leads to the version `tag`; `previous` is the version before it, and becomes
    /// this one.
    zk::ZkBool buildTaggedVersion(const model::project_historic & tag, const QString & temp,
                                  const model::project & project, int version,
                                  std::shared_ptr<model::project> & previous);

    ddl_export_progress m_progress;
    std::shared_ptr<fetched_tags> m_tags;
    QString m_sExportPath; ///< resolved once, as the scripts of one build belong into one folder
};

} // namespace plugin
