#pragma once

#include "plugin/export_details.h"
#include "plugin/export_interface.h"
#include "plugin/statement_source.h"
#include "plugin/stoppable.h"
#include "zk/zk_collection.h"

#include <QMap>
#include <QString>

#include <functional>
#include <memory>

namespace plugin {

class ddl_export_builder;

/// The export plug-in: turns the current project into DDL SQL scripts for one database.
///
/// It holds the settings of the export, keeps them in the project's database, and drives a builder that
/// writes the scripts.
class ddl_export : public export_interface, public export_details, public statement_source, public stoppable
{
    Q_OBJECT
    Q_INTERFACES(plugin::export_details plugin::statement_source plugin::stoppable)
    Q_PLUGIN_METADATA(IID "KorvGenericDDLExport" FILE "ddl_export.json")

public:
    /// Target database. The numbers are stored and given on the command line.
    enum database_type : int
    {
        db_default = 0,
        db_sqlite = 1,
        db_mysql = 2,
        db_postgresql = 3,
        db_oracle = 4,
        db_mssqlserver = 5
    };
    /// Which scripts are built. The numbers are stored and given on the command line.
    enum export_db_schema : int
    {
        full = 0,
        evolution = 1,
        full_and_evolution = 2
    };

    using type_mapping = zk::ZkCollection<QString, QString>;
    /// Lets a person edit the settings of `plugin` in a modal dialog; true when they were accepted.
    using settings_dialog = bool (*)(ddl_export & plugin);

    /// Hands in the dialog of every plug-in object of this process: this layer knows no dialog by itself.
    /// Null takes it away.
    static void setSettingsDialog(settings_dialog dialog);

    ddl_export();
    ~ddl_export() override;

    [[nodiscard]] QString getGuid() const override;
    [[nodiscard]] QString getName() const override;
    [[nodiscard]] QString getShortDesc() const override;
    [[nodiscard]] QString getDescription() const override;
    [[nodiscard]] QString getVersion() const override;
    [[nodiscard]] QString getCommandLineInfos() const override;
    [[nodiscard]] QIcon getIcon() const override;
    [[nodiscard]] QIcon getIconSettings() const override;
    [[nodiscard]] bool hasSettings() const override;
    /// The answer of the dialog that was handed in; without one the settings cannot be shown, which counts as
    /// a dialog that was cancelled.
    bool showSettings() override;
    QSqlError saveSettings() override;
    QSqlError loadSettings() override;
    void clearSettings() override;
    QWidget * getPreviewWidget() override;
    void terminate() override;
    zk::ZkBool exportProject(model::project & project) override;

    [[nodiscard]] QList<command_option> getCommandLineOptions() const override;
    [[nodiscard]] QString getTakenFor(const QString & option, const QString & value) const override;
    [[nodiscard]] QString getReasonForNoFile() const override { return m_sReasonForNoFile; }
    [[nodiscard]] bool isVersionMissing() const override { return m_bVersionMissing; }
    void stopExport() override { m_bStopWanted = true; }
    /// Whether the export that is under way is to end.
    [[nodiscard]] bool isStopWanted() const { return m_bStopWanted; }

    zk::ZkBool listDatabases(QList<statement_database> & databases) override;
    zk::ZkBool listOptions(QList<friendly_option> & options) override;
    zk::ZkBool storeOptions(const friendly_settings & options) override;
    [[nodiscard]] statement_list fullStatements(model::project & project, const friendly_settings & options,
                                                const statement_receiver & receiver = {}) override;
    [[nodiscard]] statement_list historyStatements(model::project & project,
                                                   const friendly_settings & options,
                                                   const statement_receiver & receiver = {}) override;
    [[nodiscard]] statement_list stepStatements(const project_step & step, const friendly_settings & options,
                                                const statement_receiver & receiver = {}) override;

    /// Folder that receives the scripts: as stored, or with `resolve` taken relative to the project file's
    /// folder.
    [[nodiscard]] QString getDDLExportPath(bool resolve) const;
    void setDDLExportPath(const QString & path) { m_settings.path = path; }
    [[nodiscard]] database_type getDatabaseType() const { return m_settings.databaseType; }
    void setDatabaseType(database_type db) { m_settings.databaseType = db; }
    [[nodiscard]] export_db_schema getExportDatabaseSchema() const { return m_settings.schema; }
    void setExportDatabaseSchema(export_db_schema schema) { m_settings.schema = schema; }
    /// Path of the user's JavaScript file, empty for none.
    [[nodiscard]] QString getCustomScriptFile() const { return m_settings.customScript; }
    void setCustomScriptFile(const QString & file) { m_settings.customScript = file; }
    /// Whether relationships become foreign keys.
    [[nodiscard]] bool getExportRelationships() const { return m_settings.relationships; }
    void setExportRelationships(bool b) { m_settings.relationships = b; }

    /// The C++-type to SQL-type list of `db`; the dialect's defaults, which are then kept, when it has none.
    [[nodiscard]] type_mapping getListTypeMappingByDb(database_type db);
    /// Replaces the list of `db`; an empty one brings the dialect's defaults back.
    void setListTypeMappingByDb(database_type db, const type_mapping & list);

    /// A new builder for `db`, owned by the caller; the generic one for a number outside the enumeration.
    [[nodiscard]] std::shared_ptr<ddl_export_builder> getBuilder(database_type db);

protected:
    /// Reads the text file `fileName` into `content`, which keeps its value when the file cannot be opened or
    /// is empty.
    void readFile(const QString & fileName, QString & content) const;

private:
    struct settings
    {
        QString path;
        database_type databaseType = db_sqlite;
        QMap<int, type_mapping> mappings;
        export_db_schema schema = full;
        QString customScript;
        bool relationships = false;
    };

    void applyStoredParam(const QString & key, const QVariant & value);
    void applyCommandLine();
    bool makeSureExportPathExists(model::project & project, zk::ZkBool & result);
    [[nodiscard]] bool exportPathExists() const;
    void createExportPath(const QString & folder);
    [[nodiscard]] bool isDebugging() const;
    bool mayRunCustomScript();
    zk::ZkBool loadCustomScript();
    zk::ZkBool prepareCustomScript();
    [[nodiscard]] static zk::ZkBool settingsFailure(const QSqlError & error);
    zk::ZkBool loadStoredSettings();
    /// Has the builder write the scripts. That the person ended it is no failure.
    zk::ZkBool build(ddl_export_builder & builder, model::project & project);
    zk::ZkBool applyOptions(const friendly_settings & options);
    zk::ZkBool prepareStatements(const friendly_settings & options);
    statement_list collect(const friendly_settings & options, export_db_schema scripts,
                           const statement_receiver & receiver,
                           const std::function<zk::ZkBool(ddl_export_builder &)> & build);

    settings m_settings;
    bool m_bScriptIsStored = true; ///< rather than given on the command line
    QString m_sReasonForNoFile;
    bool m_bVersionMissing = false;
    bool m_bStopWanted = false;
};

} // namespace plugin
