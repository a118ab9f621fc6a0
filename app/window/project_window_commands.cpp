// What the commands of the menus do.

#include "app/window/export/message_panel.h"
#include "app/window/project_session.h"
#include "app/window/project_window.h"
#include "app/window/version_dialogs.h"

#include "app/export_run.h"
#include "app/project_work.h"

#include "context/ctx_global.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "storage/history.h"
#include "tools/held_dialog.h"
#include "tools/visible_text.h"
#include "tools/wait_cursor.h"

#include <QDesktopServices>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QLocale>
#include <QMessageBox>
#include <QStandardPaths>
#include <QUrl>

namespace app {

namespace {

const char ProjectSuffix[] = "korv";
const char TextSuffix[] = "json";

/// Asks for one file; the empty text when the person has none.
QString chosenFile(const tools::held_dialog<QFileDialog> & dialog, const QString & name)
{
    dialog->setObjectName(name);
    return dialog.exec() == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
}

/// Asks Yes or No; what is asked about may have any name, which is no mark-up.
bool isConfirmed(QWidget * parent, const QString & title, const QString & question)
{
    const tools::held_dialog<QMessageBox> box(QMessageBox::Question, title, tools::visibleText(question),
                                              QMessageBox::Yes | QMessageBox::No, parent);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

/// What `work` gives. The busy cursor is gone when it is told.
template <class Work>
auto whileBusy(const Work & work)
{
    const tools::wait_cursor cursor;
    return work();
}

} // namespace

QString project_window::folderToStartIn() const
{
    const QString file = m_pSession->file().isEmpty() ? m_recent.files().value(0) : m_pSession->file();
    return file.isEmpty() ? QDir::currentPath() : QFileInfo(file).absolutePath();
}

void project_window::chooseAndOpen()
{
    const tools::held_dialog<QFileDialog> dialog(this, tr("Korvane - Open"), folderToStartIn(),
                                                 tr("Projects (*.korv)") + QStringLiteral(";;") +
                                                     tr("All files (*)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (const QString file = chosenFile(dialog, QStringLiteral("wnd_open")); !file.isEmpty()) {
        openFile(file);
    }
}

void project_window::chooseAndImport()
{
    const tools::held_dialog<QFileDialog> dialog(this, tr("Korvane - Import model"), folderToStartIn(),
                                                 tr("Models in text form (*.json)") + QStringLiteral(";;") +
                                                     tr("All files (*)"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (const QString file = chosenFile(dialog, QStringLiteral("wnd_import")); !file.isEmpty()) {
        importModel(file);
    }
}

/// Asks into which project file the text is to go; the empty text when the person thinks better of it.
QString project_window::chooseImportTarget(const QFileInfo & text)
{
    const QString proposed =
        m_pSession->file().isEmpty()
            ? text.absolutePath() + QLatin1Char('/') + text.completeBaseName() + QStringLiteral(".korv")
            : m_pSession->file();
    const tools::held_dialog<QFileDialog> dialog(
        this, tr("Korvane - Import %1 into the project file").arg(text.fileName()),
        QFileInfo(proposed).absolutePath(), tr("Projects (*.korv)"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QLatin1String(ProjectSuffix));
    // The file is not overwritten: its settings and versions stay, and the question below says so.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(QFileInfo(proposed).fileName());
    const QString target = chosenFile(dialog, QStringLiteral("wnd_import_into"));
    if (!target.isEmpty() && replacesModel(target) &&
        !isConfirmed(
            this, tr("Korvane - Import model"),
            tr("'%1' already exists.\nReplace its model with the one from '%2'? Settings and versions are "
               "kept.")
                .arg(QDir::toNativeSeparators(target), text.fileName()))) {
        return {};
    }
    return target;
}

void project_window::importModel(const QString & modelFile)
{
    if (m_iBusy > 0) {
        return;
    }
    const QString target = chooseImportTarget(QFileInfo(modelFile));
    if (target.isEmpty()) {
        return;
    }
    const import_result done = whileBusy([&] { return importText(modelFile, target); });
    if (!done.result) {
        warn(tr("Korvane - Import model"), done.result.getDesc());
        return;
    }
    m_pMessages->begin(tr("Import of %1").arg(QDir::toNativeSeparators(modelFile)));
    for (const QString & warning : std::as_const(done.warnings)) {
        m_pMessages->addMessage(warning, WarningMessage);
    }
    m_pMessages->end(true, tr("Project '%1' imported into %2 (entities: %3)")
                               .arg(done.projectName, QDir::toNativeSeparators(target),
                                    QLocale().toString(static_cast<qlonglong>(done.entities))));
    if (!done.warnings.isEmpty()) {
        m_pMessageDock->show();
    }
    openFile(target);
}

void project_window::chooseAndSaveText()
{
    const tools::held_dialog<QFileDialog> dialog(this, tr("Korvane - Save model as text"), folderToStartIn(),
                                                 tr("Models in text form (*.json)") + QStringLiteral(";;") +
                                                     tr("All files (*)"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QLatin1String(TextSuffix));
    dialog->selectFile(QFileInfo(m_pSession->file()).completeBaseName() + QStringLiteral(".json"));
    const QString file = chosenFile(dialog, QStringLiteral("wnd_save_text"));
    if (file.isEmpty()) {
        return;
    }
    // While the dialog was open the project may have been read again.
    const std::shared_ptr<model::project> project = m_pSession->project();
    if (!project) {
        return;
    }
    if (QFileInfo(file).suffix().toLower() == QLatin1String(ProjectSuffix)) {
        // The dialog's question speaks of one file that is replaced, not of the versions that would be lost.
        warn(tr("Korvane - Save model as text"),
             tr("%1 is a project file and was not overwritten. Choose a name that ends in .json")
                 .arg(QDir::toNativeSeparators(file)));
        return;
    }
    if (const zk::ZkBool saved = whileBusy([&] { return saveText(*project, file); }); !saved) {
        warn(tr("Korvane - Save model as text"), saved.getDesc());
        return;
    }
    showStatus(tr("%1 written").arg(QDir::toNativeSeparators(file)));
}

void project_window::reload()
{
    if (m_iBusy == 0 && refreshProject(tr("Korvane - Reload"))) {
        showStatus(tr("%1 is up to date").arg(QDir::toNativeSeparators(m_pSession->file())));
    }
}

bool project_window::refreshProject(const QString & title)
{
    const zk::ZkBool result = m_pSession->refresh();
    updateTitle();
    if (!result) {
        warn(title, result.getDesc());
    }
    return result.getValue() && m_pSession->project();
}

void project_window::closeProject()
{
    m_pSession->close();
}

void project_window::tag()
{
    const QString title = tr("Korvane - Tag project state");
    if (m_iBusy > 0 || !refreshProject(title)) {
        return;
    }
    QList<storage::history::version> versions;
    if (const QSqlError error = storage::history::list(m_pSession->file(), versions); error.isValid()) {
        warn(title, error.text());
        return;
    }
    const int number = versions.isEmpty() ? 1 : versions.constLast().number + 1;
    storage::history::tag_result result;
    const tools::held_dialog<tag_dialog> dialog(m_pSession->project()->getName(), number, this);
    // While the dialog was open another program may have changed the model that is tagged.
    if (dialog.exec() != QDialog::Accepted || !refreshProject(title)) {
        return;
    }
    if (const zk::ZkBool tagged = whileBusy([&] {
            return tagState(m_pSession->file(), dialog->message(), storage::history::tag_when::always,
                            result);
        });
        !tagged) {
        warn(title, tagged.getDesc());
        return;
    }
    m_pSession->keepOwnChange();
    const QString file = QDir::toNativeSeparators(m_pSession->file());
    const QString told =
        result.unchanged == 0
            ? tr("Version %1 of %2 tagged").arg(QString::number(result.number), file)
            : tr("Version %1 of %2 tagged; the model has not changed since version %3")
                  .arg(QString::number(result.number), file, QString::number(result.unchanged));
    m_pMessages->addMessage(told, ProgressMessage);
    showStatus(told);
}

void project_window::showVersions()
{
    const QString title = tr("Korvane - Versions");
    QList<storage::history::version> versions;
    if (!refreshProject(title)) {
        return;
    }
    if (const QSqlError error = storage::history::list(m_pSession->file(), versions); error.isValid()) {
        warn(title, error.text());
        return;
    }
    const tools::held_dialog<versions_dialog> dialog(m_pSession->project()->getName(), versions, this);
    dialog.exec();
}

void project_window::showSettings(plugin::export_interface * plugin)
{
    if (m_iBusy > 0 || !refreshProject(tr("Korvane - Settings"))) {
        return;
    }
    // What another project left in the plug-in's memory is none of this one's.
    plugin->clearSettings();
    plugin->showSettings();
}

void project_window::showManual()
{
    const QString url = context::ctx_global::getAppHelpManualUrl();
    if (!QDesktopServices::openUrl(QUrl(url))) {
        warn(tr("Korvane - Manual"), tr("The manual could not be opened. Open this file in a browser: %1")
                                         .arg(QDir::toNativeSeparators(QUrl(url).toLocalFile())));
    }
}

void project_window::showFolder(const QString & folder)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) {
        warn(tr("Korvane - Scripts"),
             tr("The folder could not be opened: %1").arg(QDir::toNativeSeparators(folder)));
    }
}

void project_window::showAbout()
{
    QString text = tr("<h3>Korvane %1</h3><p>Trustworthy migration scripts from a class model.</p><p>Runs on "
                      "Qt %2. MIT license.</p>")
                       .arg(QStringLiteral(KORVANE_VERSION), QString::fromLatin1(qVersion()));
    for (const auto & loaded : m_found.plugins) {
        const plugin::export_interface & p = *loaded->getInterface();
        text += QStringLiteral("<p><b>%1 %2</b><br/>%3</p>")
                    .arg(p.getName().toHtmlEscaped(), p.getVersion().toHtmlEscaped(),
                         p.getDescription().toHtmlEscaped());
    }
    QMessageBox::about(this, tr("Korvane - About"), text);
}

} // namespace app
