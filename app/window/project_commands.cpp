#include "app/window/project_commands.h"

#include "app/window/export/message_panel.h"
#include "app/window/project_session.h"
#include "app/window/version_comparison.h"
#include "app/window/version_dialogs.h"
#include "app/window/window_dialogs.h"

#include "app/new_project.h"
#include "app/project_work.h"
#include "app/source.h"

#include "model/file_suffix.h"
#include "model/project.h"
#include "plugin/base_interface.h"
#include "storage/history.h"
#include "tools/held_dialog.h"
#include "tools/wait_cursor.h"

#include <QDir>
#include <QFileDialog>
#include <QLocale>

#include <memory>

namespace app {

namespace {

/// What `work` gives. The busy cursor is gone when it is told.
template <class Work>
auto whileBusy(const Work & work)
{
    const tools::wait_cursor cursor;
    return work();
}

QString openTitle()
{
    return project_commands::tr("Korvane - Open");
}

QString importTitle()
{
    return project_commands::tr("Korvane - Import model");
}

QString newTitle()
{
    return project_commands::tr("Korvane - New project");
}

QString sampleTitle()
{
    return project_commands::tr("Korvane - Sample project");
}

QString saveTitle()
{
    return project_commands::tr("Korvane - Save model as text");
}

// What file dialogs offer to show.
QString projectFiles()
{
    return project_commands::tr("Projects (*.korv)");
}

QString orAll(const QString & files)
{
    return files + QStringLiteral(";;") + project_commands::tr("All files (*)");
}

QString textsOrAll()
{
    return orAll(project_commands::tr("Models in text form (*.json)"));
}

/// The file of the same name and folder that ends in `suffix`.
QString besideWith(QLatin1String suffix, const QString & file)
{
    const QFileInfo of(file);
    return of.path() + QLatin1Char('/') + of.completeBaseName() + QLatin1Char('.') + suffix;
}

QString taggedText(const storage::history::tag_result & done, const QString & file)
{
    const QString number = QString::number(done.number);
    return done.unchanged == 0
               ? project_commands::tr("Version %1 of %2 tagged").arg(number, file)
               : project_commands::tr("Version %1 of %2 tagged; the model has not changed since version %3")
                     .arg(number, file, QString::number(done.unchanged));
}

} // namespace

project_commands::project_commands(project_session & session, message_panel & messages,
                                   version_comparison & comparison, QWidget * window)
    : QObject(window), m_session(session), m_messages(messages), m_comparison(comparison), m_pWindow(window)
{
}

void project_commands::openFile(const QString & file)
{
    if (m_session.isHeld()) {
        return;
    }
    const QString absolute = QFileInfo(file).absoluteFilePath();
    if (const zk::ZkBool opened = m_session.open(absolute); !opened) {
        if (!QFileInfo::exists(absolute)) {
            m_recent.remove(absolute);
            Q_EMIT recentFilesChanged();
        }
        warn(m_pWindow, openTitle(), opened.getDesc());
        return;
    }
    m_recent.add(absolute);
    Q_EMIT recentFilesChanged();
    Q_EMIT statusTold(tr("%1 opened").arg(QDir::toNativeSeparators(absolute)));
}

void project_commands::clearRecentFiles()
{
    m_recent.clear();
    Q_EMIT recentFilesChanged();
}

QString project_commands::folderToStartIn() const
{
    const QString file = m_session.file().isEmpty() ? m_recent.files().value(0) : m_session.file();
    return file.isEmpty() ? QDir::currentPath() : QFileInfo(file).absolutePath();
}

void project_commands::chooseAndOpen()
{
    const tools::held_dialog<QFileDialog> dialog(m_pWindow, openTitle(), folderToStartIn(),
                                                 orAll(projectFiles()));
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (const QString file = chosenFile(dialog, QStringLiteral("wnd_open")); !file.isEmpty()) {
        openFile(file);
    }
}

void project_commands::chooseAndImport()
{
    const tools::held_dialog<QFileDialog> dialog(m_pWindow, importTitle(), folderToStartIn(), textsOrAll());
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (const QString file = chosenFile(dialog, QStringLiteral("wnd_import")); !file.isEmpty()) {
        importModel(file);
    }
}

/// Asks for a project file that is not there yet, or may be replaced; empty when the person thinks better of
/// it.
QString project_commands::chooseNewFile(const QString & title, const QString & objectName,
                                        const QString & proposed) const
{
    const tools::held_dialog<QFileDialog> dialog(m_pWindow, title, folderToStartIn(), projectFiles());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(model::ProjectFileSuffix);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(proposed + QLatin1Char('.') + model::ProjectFileSuffix);
    const QString file = chosenFile(dialog, objectName);
    const QString text = besideWith(TextSuffix, file);
    for (const QString & taken : file.isEmpty() ? QStringList() : QStringList{file, text}) {
        if (QFileInfo::exists(taken)) {
            warn(m_pWindow, title,
                 tr("%1 is there already; choose another name").arg(QDir::toNativeSeparators(taken)));
            return {};
        }
    }
    return file;
}

void project_commands::chooseAndBegin()
{
    const QString file = chooseNewFile(newTitle(), QStringLiteral("wnd_new"), QStringLiteral("model"));
    if (file.isEmpty()) {
        return;
    }
    const QString text = besideWith(TextSuffix, file);
    if (const zk::ZkBool begun = beginProject(text, file); !begun) {
        warn(m_pWindow, newTitle(), begun.getDesc());
        return;
    }
    openFile(file);
    m_messages.begin(tr("New project"));
    m_messages.addMessage(
        tr("%1 is the model as text: edit it, then import it again").arg(QDir::toNativeSeparators(text)),
        plugin::ProgressMessage);
    m_messages.end(true, {});
    Q_EMIT messagesWanted();
}

void project_commands::chooseAndTrySample()
{
    const QString file =
        chooseNewFile(sampleTitle(), QStringLiteral("wnd_sample"), QStringLiteral("festival"));
    if (file.isEmpty()) {
        return;
    }
    if (const zk::ZkBool copied = copySample(file); !copied) {
        warn(m_pWindow, sampleTitle(), copied.getDesc());
        return;
    }
    openFile(file);
}

QString project_commands::chooseTarget(const QString & source, const QString & proposed) const
{
    const QString first = m_session.file().isEmpty() ? proposed : m_session.file();
    const tools::held_dialog<QFileDialog> dialog(m_pWindow,
                                                 tr("Korvane - Import %1 into the project file").arg(source),
                                                 QFileInfo(first).absolutePath(), projectFiles());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(model::ProjectFileSuffix);
    // The file is not overwritten: its settings and versions stay, and the question that follows says so.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->selectFile(QFileInfo(first).fileName());
    return chosenFile(dialog, QStringLiteral("wnd_import_into"));
}

/// Asks whether the model is to be replaced; that of the open project with what would change.
bool project_commands::isReplacementWanted(const QFileInfo & text, const QString & target)
{
    const QString question = tr("'%1' already exists.\n"
                                "Replace its model with the one from '%2'? Settings and versions are kept.")
                                 .arg(QDir::toNativeSeparators(target), text.fileName());
    std::optional<tools::held_dialog<import_dialog>> dialog;
    const bool isOpen = QFileInfo(target) == QFileInfo(m_session.file()) && refresh(importTitle());
    whileBusy([&] {
        diff_report report; // which takes its time to go, too
        // A text that cannot be read is told of by the import.
        if (isOpen && m_comparison.compareWithText(text.filePath(), report)) {
            dialog.emplace(importTitle(), question, report, m_pWindow);
        }
    });
    return dialog ? dialog->exec() == QDialog::Accepted : isConfirmed(m_pWindow, importTitle(), question);
}

void project_commands::importModel(const QString & modelFile)
{
    if (m_session.isHeld()) {
        return;
    }
    const QFileInfo text(modelFile);
    const QString target =
        chooseTarget(text.fileName(), besideWith(model::ProjectFileSuffix, text.absoluteFilePath()));
    if (target.isEmpty() || (replacesModel(target) && !isReplacementWanted(text, target))) {
        return;
    }
    const import_result done = whileBusy([&] { return importText(modelFile, target); });
    if (!done.result) {
        warn(m_pWindow, importTitle(), done.result.getDesc());
        return;
    }
    m_messages.begin(tr("Import of %1").arg(QDir::toNativeSeparators(modelFile)));
    for (const QString & warning : std::as_const(done.warnings)) {
        m_messages.addMessage(warning, plugin::WarningMessage);
    }
    m_messages.end(true, tr("Project '%1' imported into %2 (entities: %3)")
                             .arg(done.projectName, QDir::toNativeSeparators(target),
                                  QLocale().toString(static_cast<qlonglong>(done.entities))));
    if (!done.warnings.isEmpty()) {
        Q_EMIT messagesWanted();
    }
    openFile(target);
}

void project_commands::chooseAndSaveText()
{
    const tools::held_dialog<QFileDialog> dialog(m_pWindow, saveTitle(), folderToStartIn(), textsOrAll());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(TextSuffix);
    dialog->selectFile(QFileInfo(m_session.file()).completeBaseName() + QLatin1Char('.') + TextSuffix);
    const QString file = chosenFile(dialog, QStringLiteral("wnd_save_text"));
    if (file.isEmpty()) {
        return;
    }
    // While the dialog was open the project may have been read again.
    const std::shared_ptr<model::project> project = m_session.project();
    if (!project) {
        return;
    }
    if (isProjectName(file)) {
        // The dialog's question speaks of one file that is replaced, not of the versions that would be lost.
        warn(m_pWindow, saveTitle(),
             tr("%1 is a project file and was not overwritten. Choose a name that ends in .json")
                 .arg(QDir::toNativeSeparators(file)));
        return;
    }
    if (const zk::ZkBool saved = whileBusy([&] { return saveText(*project, file); }); !saved) {
        warn(m_pWindow, saveTitle(), saved.getDesc());
        return;
    }
    Q_EMIT statusTold(tr("%1 written").arg(QDir::toNativeSeparators(file)));
}

void project_commands::reload()
{
    if (!m_session.isHeld() && refresh(tr("Korvane - Reload"))) {
        Q_EMIT statusTold(tr("%1 is up to date").arg(QDir::toNativeSeparators(m_session.file())));
    }
}

bool project_commands::refresh(const QString & title)
{
    return refreshProject(m_session, m_pWindow, title);
}

/// The versions of the project as it is now; nothing after a failure, which is shown.
std::optional<project_commands::list_of_versions> project_commands::listVersions(const QString & title)
{
    list_of_versions versions;
    if (!refresh(title)) {
        return std::nullopt;
    }
    if (const QSqlError error = whileBusy([&] { return storage::history::list(m_session.file(), versions); });
        error.isValid()) {
        warn(m_pWindow, title, error.text());
        return std::nullopt;
    }
    return versions;
}

void project_commands::close()
{
    m_session.close();
}

void project_commands::tag()
{
    const QString title = tag_dialog::title();
    const std::optional<list_of_versions> stored = m_session.isHeld() ? std::nullopt : listVersions(title);
    if (!stored) {
        return;
    }
    const list_of_versions & versions = *stored;
    const int number = versions.isEmpty() ? 1 : versions.constLast().number + 1;
    storage::history::tag_result result;
    const tools::held_dialog<tag_dialog> dialog(m_session.project()->getName(), number, m_pWindow);
    whileBusy([&] {
        diff_report report;
        QString note;
        // What cannot be compared can be tagged all the same.
        if (!versions.isEmpty() && m_comparison.compare(number - 1, Now, {}, report, note)) {
            dialog->showChanges(report, note);
        }
    });
    // While the dialog was open another program may have changed the model that is tagged.
    if (dialog.exec() != QDialog::Accepted || !refresh(title)) {
        return;
    }
    if (const zk::ZkBool tagged = whileBusy([&] {
            return tagState(m_session.file(), dialog->message(), storage::history::tag_when::always, result);
        });
        !tagged) {
        warn(m_pWindow, title, tagged.getDesc());
        return;
    }
    m_session.keepOwnChange();
    Q_EMIT tagged();
    const QString told = taggedText(result, QDir::toNativeSeparators(m_session.file()));
    m_messages.addMessage(told, plugin::ProgressMessage);
    Q_EMIT statusTold(told);
}

void project_commands::showVersions()
{
    const QString title = versions_dialog::title();
    const std::optional<list_of_versions> versions = listVersions(title);
    if (!versions) {
        return;
    }
    const tools::held_dialog<versions_dialog> dialog(m_session.project()->getName(), *versions, m_pWindow);
    if (dialog.exec() == QDialog::Accepted) {
        Q_EMIT comparisonWanted(dialog->from(), dialog->to());
    }
}

} // namespace app
