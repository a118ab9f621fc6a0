#include "view/ddl_export_settings.h"

#include "view/ddl_export_type_mapping.h"

#include "plugin/builder/databases.h"
#include "plugin/ddl_export.h"

#include "context/ctx_global.h"
#include "context/ctx_project.h"
#include "tools/custom_javascript.h"
#include "tools/held_dialog.h"
#include "tools/script_permission.h"
#include "tools/wait_cursor.h"
#include "view/main_wnd.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QUrl>

#include <algorithm>

using plugin::ddl_export;

namespace view {

namespace {

QString resolved(const QString & path)
{
    return context::ctx_project::getSingleton().getPathFromProjectFile(path);
}

} // namespace

ddl_export_settings::ddl_export_settings(QWidget * parent, Qt::WindowFlags flags) : QDialog(parent, flags)
{
    setupUi(this);
    keepTitlesLegible();
    m_pTypeMapping = std::make_shared<ddl_export_type_mapping>(m_lstTypeMapping, m_grpTypeMapping,
                                                               m_grpTypeMapping->title());
    fillDatabaseTypes();

    connect(m_btnOk, &QPushButton::clicked, this, &ddl_export_settings::doBtnOk);
    connect(m_btnCancel, &QPushButton::clicked, this, &ddl_export_settings::close);
    connect(m_btnFileLocation, &QPushButton::clicked, this, &ddl_export_settings::doBtnFileLocation);
    connect(m_btnCustomScriptLocation, &QPushButton::clicked, this,
            &ddl_export_settings::doBtnCustomScriptLocation);
    connect(m_btnDebugCustomScript, &QPushButton::clicked, this,
            &ddl_export_settings::doBtnDebugCustomScript);
    connect(m_cboDatabaseType, &QComboBox::currentIndexChanged, this,
            &ddl_export_settings::doCboDatabaseTypeChanged);
    connect(m_btnRestoreDefaultTypeMapping, &QPushButton::clicked, this,
            &ddl_export_settings::doBtnRestoreDefaultTypeMapping);
    connect(m_btnHelpManual, &QPushButton::clicked, this, &ddl_export_settings::doClickBtnHelpManual);
    auto * const help = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(help, &QShortcut::activated, this, &ddl_export_settings::doClickBtnHelpManual);
}

ddl_export_settings::~ddl_export_settings() = default;

void ddl_export_settings::showEvent(QShowEvent * event)
{
    // Only now its contents and their fonts are known.
    if (!event->spontaneous() && !m_bFitted) {
        m_bFitted = true;
        fitScreen();
    }
    QDialog::showEvent(event);
}

/// Shows all of the form where there is room; else, on a small screen, the height is scrolled.
void ddl_export_settings::fitScreen()
{
    constexpr int TitleBar = 40;
    const int width = m_wdgContent->minimumSizeHint().width();
    m_scrContent->setMinimumWidth(width + m_scrContent->verticalScrollBar()->sizeHint().width());
    const int height =
        std::max(m_wdgContent->sizeHint().height(), m_wdgContent->layout()->totalHeightForWidth(width));
    const int others = minimumSizeHint().height() - m_scrContent->minimumSizeHint().height();
    const QSize wanted(minimumSizeHint().width(), height + others);
    resize(size().expandedTo(wanted).boundedTo(screen()->availableSize() - QSize(0, TitleBar)));
}

/// The form's dark blue titles cannot be read on a dark window.
void ddl_export_settings::keepTitlesLegible()
{
    constexpr int HalfLightness = 128;
    if (palette().color(QPalette::Window).lightness() >= HalfLightness) {
        return;
    }
    for (QGroupBox * const box : findChildren<QGroupBox *>()) {
        box->setStyleSheet(QStringLiteral("QGroupBox::title{color:rgb(120, 170, 255)}"));
    }
}

void ddl_export_settings::fillDatabaseTypes()
{
    for (const plugin::database & db : plugin::allDatabases()) {
        // Who exports by hand has a database in mind; generic SQL is for none.
        if (db.number != ddl_export::db_default) {
            m_cboDatabaseType->addItem(QString::fromLatin1(db.label), static_cast<int>(db.number));
        }
    }
}

void ddl_export_settings::init(ddl_export * p)
{
    m_pPlugin = p;
    if (p) {
        p->loadSettings();
    }
    m_txtFileLocation->setText(p ? QDir::toNativeSeparators(p->getDDLExportPath(false)) : QString());
    // What the combo box announces while it is set up is shown by loadTypeMapping() below.
    const QSignalBlocker quiet(m_cboDatabaseType);
    m_cboDatabaseType->setCurrentIndex(p ? m_cboDatabaseType->findData(static_cast<int>(p->getDatabaseType()))
                                         : -1);
    showSchema(p ? static_cast<int>(p->getExportDatabaseSchema()) : static_cast<int>(ddl_export::full));
    m_txtCustomScript->setText(p ? QDir::toNativeSeparators(p->getCustomScriptFile()) : QString());
    m_chkRelationships->setChecked(p && p->getExportRelationships());
    loadTypeMapping();
}

std::array<std::pair<int, QRadioButton *>, 3> ddl_export_settings::schemaOptions() const
{
    return {{{ddl_export::full, m_optSchemaFull},
             {ddl_export::evolution, m_optSchemaEvolution},
             {ddl_export::full_and_evolution, m_optSchemaFullAndEvolution}}};
}

void ddl_export_settings::showSchema(int schema)
{
    for (const auto & [value, button] : schemaOptions()) {
        // An exclusive button cannot be unchecked, and an unknown mode checks none.
        button->setAutoExclusive(false);
        button->setChecked(value == schema);
        button->setAutoExclusive(true);
    }
}

int ddl_export_settings::checkedSchema() const
{
    for (const auto & [value, button] : schemaOptions()) {
        if (button->isChecked()) {
            return value;
        }
    }
    return ddl_export::full;
}

int ddl_export_settings::selectedDatabase() const
{
    return m_cboDatabaseType->currentData().toInt();
}

void ddl_export_settings::loadTypeMapping()
{
    if (m_pPlugin && m_pTypeMapping) {
        const auto db = static_cast<ddl_export::database_type>(selectedDatabase());
        m_pTypeMapping->setListOfTypeMapping(m_pPlugin->getListTypeMappingByDb(db));
        m_pTypeMapping->fill();
    }
}

void ddl_export_settings::resizeEvent(QResizeEvent * event)
{
    QDialog::resizeEvent(event);
    if (m_pTypeMapping) {
        m_pTypeMapping->resizeTableWidget();
    }
}

void ddl_export_settings::doCboDatabaseTypeChanged(int)
{
    const tools::wait_cursor cursor;
    loadTypeMapping();
}

void ddl_export_settings::doBtnRestoreDefaultTypeMapping()
{
    const tools::wait_cursor cursor;
    if (m_pPlugin && m_pTypeMapping) {
        m_pPlugin->setListTypeMappingByDb(static_cast<ddl_export::database_type>(selectedDatabase()), {});
        loadTypeMapping();
    }
}

void ddl_export_settings::doBtnFileLocation()
{
    const tools::held_dialog<QFileDialog> dialog(this, QString(), QString(), QString());
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly, true);
    dialog->setOption(QFileDialog::DontUseNativeDialog, false);
    const QString typed = m_txtFileLocation->text();
    if (!typed.isEmpty() && QDir(typed).exists()) {
        dialog->setDirectory(typed);
    }
    if (dialog.exec() == QDialog::Accepted && !dialog->selectedFiles().isEmpty()) {
        m_txtFileLocation->setText(
            QDir::toNativeSeparators(QDir(dialog->selectedFiles().constFirst()).absolutePath()));
    }
}

void ddl_export_settings::doBtnCustomScriptLocation()
{
    const tools::held_dialog<QFileDialog> dialog(this, QString(), QString(), QString());
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted && !dialog->selectedFiles().isEmpty()) {
        m_txtCustomScript->setText(QDir::toNativeSeparators(dialog->selectedFiles().constFirst()));
    }
}

void ddl_export_settings::showMessage(QMessageBox::Icon icon, const QString & text)
{
    const tools::held_dialog<QMessageBox> box(icon, m_pPlugin ? m_pPlugin->getName() : QString(), text,
                                              QMessageBox::Ok, this);
    box.exec();
}

void ddl_export_settings::warn(const QString & text)
{
    showMessage(QMessageBox::Warning, text);
}

/// What a person does next with a debugger that has just come up.
QString ddl_export_settings::debuggerNote()
{
    return tr("A new debugger window has been attached to the DDL SQL export process ('KorvGenericDDLExport' "
              "plugin) :\n") +
           tr("  1- save your settings and close this settings window ;\n") +
           tr("  2- execute the export process : you will be able to debug your custom javascript (putting a "
              "breakpoint for example).\n\n") +
           tr("Note : debugger process is automatically detached from the DDL SQL export process when "
              "closing the debugger window.") +
           tr("\n\nOther note : another way to start the debugger is to press the SHIFT key on the keyboard "
              "when executing the export process.");
}

void ddl_export_settings::doBtnDebugCustomScript()
{
    const QString typed = m_txtCustomScript->text();
    if (typed.isEmpty()) {
        warn(QStringLiteral("Cannot debug custom script : custom script file location is empty"));
        return;
    }
    if (!QFileInfo::exists(resolved(typed))) {
        warn(tr("Cannot debug custom script : custom script file '%1' doesn't exist").arg(typed));
        return;
    }
    if (!m_pPlugin) {
        return;
    }
    m_pPlugin->setCustomScript(nullptr);
    const auto engine = std::make_shared<tools::custom_javascript>();
    if (const zk::ZkBool loaded = engine->initEngine(typed, m_pPlugin); !loaded) {
        warn(loaded.getDesc());
        return;
    }
    if (const zk::ZkBool started = engine->runDebugger(); !started) {
        warn(started.getDesc());
        return;
    }
    m_pPlugin->setCustomScript(engine);
    showMessage(QMessageBox::Information, debuggerNote());
}

void ddl_export_settings::doClickBtnHelpManual()
{
    QDesktopServices::openUrl(
        QUrl(context::ctx_global::getAppHelpManualUrl() + QStringLiteral("#ddl_export_settings"),
             QUrl::TolerantMode));
}

/// False, after a warning, when a folder or file that the user typed is not there.
bool ddl_export_settings::checkInput()
{
    const QString folder = m_txtFileLocation->text();
    if (!QFileInfo(resolved(folder)).isDir()) {
        warn(tr("Directory doesn't exist : '%1'").arg(folder));
        return false;
    }
    const QString script = m_txtCustomScript->text();
    if (!script.isEmpty() && !QFileInfo::exists(resolved(script))) {
        warn(tr("Custom script file doesn't exist : '%1'").arg(script));
        return false;
    }
    return true;
}

void ddl_export_settings::doBtnOk()
{
    const tools::wait_cursor cursor;
    if (!m_pPlugin || !checkInput()) {
        return;
    }
    const QString script = QDir::fromNativeSeparators(m_txtCustomScript->text());
    if (!script.isEmpty() && script != m_pPlugin->getCustomScriptFile()) {
        tools::noteChosenScript(QFileInfo(resolved(script)).absoluteFilePath());
    }
    m_pPlugin->setCustomScriptFile(script);
    const auto db = static_cast<ddl_export::database_type>(selectedDatabase());
    m_pPlugin->setDatabaseType(db);
    m_pPlugin->setDDLExportPath(QDir::fromNativeSeparators(m_txtFileLocation->text()));
    m_pPlugin->setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(checkedSchema()));
    m_pPlugin->setExportRelationships(m_chkRelationships->isChecked());
    if (m_pTypeMapping) {
        m_pTypeMapping->file();
        m_pPlugin->setListTypeMappingByDb(db, m_pTypeMapping->getListOfTypeMapping());
    }
    if (const QSqlError error = m_pPlugin->saveSettings(); error.isValid()) {
        warn(tr("Error saving plugin settings : ") + error.text());
        return;
    }
    accept();
}

bool showSettingsDialog(ddl_export & plugin)
{
    const tools::held_dialog<ddl_export_settings> dialog(context::ctx_global::getMainWnd());
    dialog->setModal(true);
    dialog->init(&plugin);
    return dialog.exec() != 0;
}

} // namespace view
