#pragma once

#include "plugin/builder/ddl_export_progress.h"

#include "zk/zk_bool.h"
#include "zk/zk_collection.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace model {
class project;
class entity;
class property;
class relationship;
} // namespace model

namespace tools {
class custom_javascript;
}

namespace plugin {

class ddl_export;
class ddl_export_history;
class ddl_export_passes;
class ddl_export_script;
class statement_sink;
struct script_identity;

/// Turns one project into DDL SQL scripts: decides which scripts there are, and how names and types are
/// formed. What is visited in which order is up to ddl_export_passes; a dialect supplies the statement texts.
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

    /// Makes what takes the statements of a script.
    using sink_maker = std::function<std::unique_ptr<statement_sink>(const script_identity & script)>;
    /// Lets the statements go elsewhere than into files.
    void setSinks(const sink_maker & sinks);
    /// The same as build(), for sinks that need no export folder.
    zk::ZkBool buildScripts(model::project & project);
    /// Writes the script of one step, whatever the settings say about scripts; `from` and `to` are the
    /// numbers of the versions that the projects are.
    zk::ZkBool buildStep(const std::shared_ptr<model::project> & previous,
                         const std::shared_ptr<model::project> & current, int from, int to);

Q_SIGNALS:
    /// Progress and errors, of the types that base_interface has for messages; to be shown for `timeout`
    /// milliseconds.
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
    friend class ddl_export_passes;
    using script_body = std::function<zk::ZkBool(ddl_export_passes & passes)>;

    static zk::ZkBool noPluginFailure();
    void takeSettings();
    void releaseSettings();
    void releasePrevious(const std::shared_ptr<model::project> & previous);
    /// The tags of the current project, asked for once a build.
    [[nodiscard]] const ddl_export_history & history();
    /// How many scripts the settings ask for.
    [[nodiscard]] int countScripts();
    zk::ZkBool compare(const std::shared_ptr<model::project> & previous,
                       const std::shared_ptr<model::project> & current, int from, int to);
    /// The name of a script, without its folder; `from` and `to` are those of script_identity.
    [[nodiscard]] QString scriptName(const QString & projectName, int from, int to) const;
    /// Writes one script, with `body` between its begin and its end.
    zk::ZkBool writeScript(const QString & projectName, int from, int to, const QString & title,
                           const script_body & body);
    zk::ZkBool endScript(ddl_export_script & script, const QString & projectName);
    /// The project in which getSqlPrimaryKeyName() and getSqlIndexName() look an entity up; may be null.
    [[nodiscard]] const model::project * projectForNames(bool current) const;

    ddl_export_progress m_progress;
    sink_maker m_sinks;
    std::shared_ptr<ddl_export_history> m_pHistory;
    QString m_sExportPath; ///< resolved once, as the scripts of one build belong into one folder
};

} // namespace plugin
