#include "app/window/export_controller.h"

#include "app/window/dialog_watch.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/project_session.h"
#include "app/window/window_dialogs.h"

#include "app/export_run.h"

#include "model/project.h"
#include "plugin/export_interface.h"
#include "plugin/stoppable.h"
#include "tools/held_dialog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>

#include <optional>
#include <utility>

namespace app {

namespace {

constexpr int EventInterval = 40; ///< milliseconds between two looks at the window's events during an export

/// Hands it on to the plug-in when the person wants an export to end.
class stop_request : public QObject
{
public:
    stop_request(message_panel & messages, plugin::export_interface * plugin)
        : m_pStoppable(qobject_cast<plugin::stoppable *>(plugin))
    {
        messages.setCancellable(m_pStoppable != nullptr);
        connect(&messages, &message_panel::cancelRequested, this, &stop_request::give);
    }

    [[nodiscard]] bool isGiven() const { return m_bGiven; }

private:
    void give()
    {
        m_bGiven = true;
        m_pStoppable->stopExport();
    }

    plugin::stoppable * m_pStoppable;
    bool m_bGiven = false;
};

} // namespace

export_controller::export_controller(project_session & session, message_panel & messages,
                                     script_panel & scripts, QWidget * window)
    : QObject(window), m_session(session), m_messages(messages), m_scripts(scripts), m_pWindow(window)
{
}

void export_controller::showSettings(plugin::export_interface * plugin)
{
    if (m_session.isHeld() || !refreshProject(m_session, m_pWindow, tr("Korvane - Settings"))) {
        return;
    }
    // What another project left in the plug-in's memory is none of this one's.
    plugin->clearSettings();
    plugin->showSettings();
}

void export_controller::exportWith(plugin::export_interface * plugin)
{
    if (m_session.isHeld() || !refreshProject(m_session, m_pWindow, tr("Korvane - Export"))) {
        return;
    }
    const std::shared_ptr<model::project> project = m_session.project();
    export_listener listener;
    listener.message = [this](const QString & text, int type) {
        m_messages.addMessage(text, type);
        giveWayToEvents();
    };
    listener.progress = [this](int done, int total) {
        m_messages.setProgress(done, total);
        giveWayToEvents();
    };
    const session_hold busy(m_session);
    m_sinceEvents.start();
    m_messages.begin(tr("Export of '%1' with %2").arg(project->getName(), plugin->getName()));
    // What another project left in the plug-in's memory is none of this one's.
    plugin->clearSettings();
    bool isRefused = false;
    const tools::script_guard_scope guard([this, &isRefused](const QString & file, bool isStored) {
        const auto permission = isStored ? mayRunScript(file) : tools::script_permission::run;
        isRefused = permission == tools::script_permission::cancel;
        return permission;
    });
    const dialog_watch watch;
    std::optional<stop_request> stop(std::in_place, m_messages, plugin);
    const export_report report = runPlugin(*plugin, *project, listener);
    const bool isStopped = stop->isGiven();
    stop.reset();
    if (isStopped && report.ok) {
        showCancelled(report);
        return;
    }
    showEnd(report, isRefused || watch.isLastGivenUp());
    if (report.ok && !report.files.isEmpty()) {
        Q_EMIT exported(plugin, report.files);
    }
}

tools::script_guard export_controller::scriptGuard()
{
    return [this](const QString & file, bool isStored) {
        return isStored ? mayRunScript(file) : tools::script_permission::run;
    };
}

tools::script_guard export_controller::quietScriptGuard(bool & isLeftOut) const
{
    return [this, &isLeftOut](const QString & file, bool isStored) {
        const bool isAllowed = !isStored || m_allowedScripts.contains({m_session.file(), file});
        isLeftOut = isLeftOut || !isAllowed;
        return isAllowed ? tools::script_permission::run : tools::script_permission::leave_out;
    };
}

/// Asks once for each script of a project, which anybody may have written.
tools::script_permission export_controller::mayRunScript(const QString & file)
{
    const QPair<QString, QString> script(m_session.file(), file);
    if (m_allowedScripts.contains(script)) {
        return tools::script_permission::run;
    }
    const tools::held_dialog<QMessageBox> box(
        QMessageBox::Question, tr("Korvane - Custom script"),
        tr("The project names a custom script, which runs with your rights:\n%1\n\n"
           "Do you want to run it? With No the export leaves it out.")
            .arg(QDir::toNativeSeparators(file)),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, m_pWindow);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Yes:
        m_allowedScripts.insert(script);
        return tools::script_permission::run;
    case QMessageBox::No:
        return tools::script_permission::leave_out;
    default:
        return tools::script_permission::cancel;
    }
}

/// Why an export that nobody cancelled wrote no script.
QString export_controller::whyNothing(const export_report & report)
{
    if (report.isVersionMissing) {
        return tr("Nothing was written: evolution scripts need a tagged version. "
                  "Use \"Actions > Tag project state…\" first");
    }
    return report.reasonForNoFile.isEmpty() ? tr("Nothing was written") : report.reasonForNoFile;
}

void export_controller::showFailure(const QString & untoldReason)
{
    if (!untoldReason.isEmpty()) {
        m_messages.addMessage(untoldReason, plugin::ErrorMessage);
    }
    m_messages.end(false, tr("The export failed"));
    Q_EMIT messagesWanted();
    Q_EMIT statusTold(tr("The export failed: see the messages"));
}

/// The messages have told already which script is incomplete.
void export_controller::showCancelled(const export_report & report)
{
    m_scripts.setScripts(report.files);
    const QString told = report.files.size() == 1 ? tr("The export was cancelled; 1 script is complete")
                                                  : tr("The export was cancelled; %1 scripts are complete")
                                                        .arg(QLocale().toString(report.files.size()));
    m_messages.end(true, told);
    Q_EMIT messagesWanted();
    Q_EMIT statusTold(told);
}

void export_controller::showEnd(const export_report & report, bool isCancelled)
{
    // After a failure the scripts of an earlier export are no longer what is in the files.
    if (!report.files.isEmpty() || !report.ok) {
        m_scripts.setScripts(report.files);
    }
    if (!report.ok) {
        showFailure(report.untoldReason);
        return;
    }
    if (report.files.isEmpty()) {
        const QString nothing =
            isCancelled ? tr("The export was cancelled; nothing was written") : whyNothing(report);
        m_messages.end(true, nothing);
        Q_EMIT statusTold(nothing);
        return;
    }
    const QString folder = QDir::toNativeSeparators(QFileInfo(report.files.constFirst()).absolutePath());
    const QString written =
        report.files.size() == 1
            ? tr("1 script written to %1").arg(folder)
            : tr("%1 scripts written to %2").arg(QLocale().toString(report.files.size()), folder);
    m_messages.end(true, written);
    Q_EMIT scriptsWanted();
    Q_EMIT statusTold(written);
}

/// An export runs on the thread of the window: from time to time it lets the window show what it was told.
void export_controller::giveWayToEvents()
{
    if (m_sinceEvents.elapsed() >= EventInterval) {
        QCoreApplication::processEvents();
        m_sinceEvents.start();
    }
}

} // namespace app
