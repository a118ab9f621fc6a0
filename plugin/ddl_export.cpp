#include "plugin/ddl_export.h"

#include "plugin/builder/databases.h"
#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export_options.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "model/project.h"
#include "tools/custom_javascript.h"
#include "tools/script_permission.h"
#include "tools/wait_cursor.h"
#include "view/main_wnd.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QTextStream>

#include <filesystem>
#include <system_error>

namespace plugin {

namespace {

/// The command-line options override the stored settings once in the life of the process.
bool commandLineIsPending = true;

ddl_export::settings_dialog handedInDialog = nullptr;

} // namespace

void ddl_export::setSettingsDialog(settings_dialog dialog)
{
    handedInDialog = dialog;
}

ddl_export::ddl_export() = default;
ddl_export::~ddl_export() = default;

QString ddl_export::getGuid() const
{
    return QStringLiteral("713A034E-3F7A-422A-BC81-22132DA57110");
}

QString ddl_export::getName() const
{
    return QStringLiteral("KorvGenericDDLExport");
}

QString ddl_export::getShortDesc() const
{
    return tr("Export to DDL SQL script file");
}

QString ddl_export::getDescription() const
{
    return tr("This plugin exports current opened project to a DDL SQL script file.");
}

QString ddl_export::getVersion() const
{
    return QStringLiteral("1.1.7");
}

QString ddl_export::getCommandLineInfos() const
{
    QStringList databases;
    for (const database & db : allDatabases()) {
        databases << QString::number(db.number) + QLatin1Char('=') + db.getShortName();
    }
    return tr("\n  !!! Note : this plugin loads automatically previous parameters values before starting the "
              "export process, but you can use following parameters to override them !!!") +
           tr("\n  --KorvGenericDDLExport_path=\"<Export Path>\" : [Optional] DDL export path parameter") +
           tr("\n  --KorvGenericDDLExport_db_type=<numeric value> : [Optional] Database type (%1)")
               .arg(databases.join(QStringLiteral(", "))) +
           tr("\n  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign "
              "keys in database") +
           tr("\n  --KorvGenericDDLExport_schema_type=<numeric value> : [Optional] Way to export database "
              "schema (0=full, 1=evolution, 2=full_and_evolution)") +
           tr("\n  --KorvGenericDDLExport_custom_javacript=\"<Custom JS>\" : [Optional] Custom script "
              "(javascript file) to change the default behaviour of the export process");
}

QIcon ddl_export::getIcon() const
{
    return QIcon(QStringLiteral(":/ddl_export/images/ddl_export.png"));
}

QIcon ddl_export::getIconSettings() const
{
    return getIcon();
}

bool ddl_export::hasSettings() const
{
    return true;
}

bool ddl_export::showSettings()
{
    return handedInDialog && handedInDialog(*this);
}

QWidget * ddl_export::getPreviewWidget()
{
    return nullptr;
}

void ddl_export::terminate()
{
    export_interface::terminate();
}

std::shared_ptr<ddl_export_builder> ddl_export::getBuilder(database_type db)
{
    return createBuilder(db, this);
}

zk::ZkBool ddl_export::settingsFailure(const QSqlError & error)
{
    return zk::ZkBool::failure(tr("Error loading plugin settings : ") + error.text());
}

zk::ZkBool ddl_export::exportProject(model::project & project)
{
    if (const QSqlError error = loadSettings(); error.isValid()) {
        return settingsFailure(error);
    }
    if (project.getName().isEmpty()) {
        return zk::ZkBool::failure(tr("Cannot export project to DDL file : project name is empty"));
    }
    m_bScriptIsStored = true;
    m_bVersionMissing = false;
    m_bStopWanted = false;
    m_sReasonForNoFile.clear();
    applyCommandLine();
    zk::ZkBool result(false);
    if (!makeSureExportPathExists(project, result)) {
        return result;
    }
    if (!mayRunCustomScript()) {
        return zk::ZkBool::success();
    }
    if (result = prepareCustomScript(); !result) {
        return result;
    }
    m_bVersionMissing = getExportDatabaseSchema() == evolution;
    m_sReasonForNoFile = m_bVersionMissing
                             ? tr("Nothing was written: evolution scripts need a tagged version")
                             : tr("Nothing was written: the setting for the schema has no such value");
    const tools::wait_cursor cursor;
    const std::shared_ptr<ddl_export_builder> builder = getBuilder(getDatabaseType());
    if (!builder) {
        return zk::ZkBool::failure(tr("Cannot create a builder to generate DDL SQL script"));
    }
    return build(*builder, project);
}

zk::ZkBool ddl_export::build(ddl_export_builder & builder, model::project & project)
{
    connect(&builder, &ddl_export_builder::onMessage, this, &ddl_export::onMessage);
    connect(&builder, &ddl_export_builder::onProgress, this, &ddl_export::onProgress);
    connect(&builder, &ddl_export_builder::onFileWritten, this, &ddl_export::onFileWritten);
    zk::ZkBool result = builder.build(project);
    if (!result && m_bStopWanted) {
        m_bVersionMissing = false;
        m_sReasonForNoFile = tr("The export was cancelled; no script is complete");
        return zk::ZkBool::success();
    }
    return result;
}

void ddl_export::applyCommandLine()
{
    const view::main_wnd * const wnd = context::ctx_global::getMainWnd();
    if (!commandLineIsPending || !wnd) {
        return;
    }
    commandLineIsPending = false;
    for (const export_option & option : allOptions()) {
        const QList<QString> values = wnd->getAppArg(option.longName);
        if (values.isEmpty() || values.constFirst().isEmpty()) {
            continue;
        }
        option.set(*this, values.constFirst());
        m_bScriptIsStored = m_bScriptIsStored && option.longName != CustomScriptOption;
    }
}

bool ddl_export::exportPathExists() const
{
    return !m_settings.path.isEmpty() && QDir().exists(getDDLExportPath(true));
}

/// Makes the folder; what goes wrong is told, as the settings dialog that follows gives no reason.
void ddl_export::createExportPath(const QString & folder)
{
    std::error_code code;
    std::filesystem::create_directories(QFileInfo(folder).filesystemFilePath(), code);
    if (code) {
        Q_EMIT onMessage(tr("Export directory '%1' cannot be created (%2)")
                             .arg(folder, QString::fromLocal8Bit(code.message().c_str())),
                         ErrorMessage, MessageTimeout);
    }
}

/// Asks to create a missing export folder, else lets the user choose one in the settings. False, with
/// `result` set, when there is nothing to export into.
bool ddl_export::makeSureExportPathExists(model::project & project, zk::ZkBool & result)
{
    if (!m_settings.path.isEmpty() && !exportPathExists()) {
        const QString resolved = getDDLExportPath(true);
        const QMessageBox::StandardButton answer =
            QMessageBox::question(nullptr, QStringLiteral("Korvane - ") + getName(),
                                  tr("Export directory '%1' doesn't exist.\nDo you want to create it and "
                                     "start the export process ?")
                                      .arg(resolved),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
        if (answer == QMessageBox::Yes) {
            createExportPath(resolved);
        }
    }
    if (!exportPathExists()) {
        setDDLExportPath(project.getLocation());
        if (!showSettings()) {
            setDDLExportPath(QString());
            result = zk::ZkBool::success();
            return false;
        }
    }
    if (!exportPathExists()) {
        result = zk::ZkBool::failure(
            tr("Export path to create DDL SQL script doesn't exist : '%1'").arg(m_settings.path));
        return false;
    }
    return true;
}

/// False when the person would rather not export. A script that is to be left out is set no more.
bool ddl_export::mayRunCustomScript()
{
    if (m_settings.customScript.isEmpty() || isDebugging()) {
        return true;
    }
    const QString file =
        QFileInfo(context::ctx_project::getSingleton().getPathFromProjectFile(m_settings.customScript))
            .absoluteFilePath();
    const tools::script_permission permission =
        tools::askScriptGuard(file, m_bScriptIsStored && !tools::isChosenScript(file));
    if (permission == tools::script_permission::leave_out) {
        m_settings.customScript.clear();
    }
    return permission != tools::script_permission::cancel;
}

bool ddl_export::isDebugging() const
{
    return getCustomScript() && getCustomScript()->isDebugging();
}

zk::ZkBool ddl_export::loadCustomScript()
{
    if (m_settings.customScript.isEmpty()) {
        return zk::ZkBool::success();
    }
    setCustomScript(std::make_shared<tools::custom_javascript>());
    return getCustomScript()->initEngine(m_settings.customScript, this);
}

zk::ZkBool ddl_export::prepareCustomScript()
{
    if (!isDebugging()) {
        setCustomScript(nullptr);
    }
    if (!isDebugging()) {
        if (const zk::ZkBool loaded = loadCustomScript(); !loaded) {
            return loaded;
        }
    }
    if (getCustomScript() && !isDebugging() && QGuiApplication::keyboardModifiers() == Qt::ShiftModifier) {
        return getCustomScript()->runDebugger();
    }
    return zk::ZkBool::success();
}

} // namespace plugin
