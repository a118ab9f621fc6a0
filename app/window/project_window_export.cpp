// An export from the window.

#include "app/window/dialog_watch.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/project_session.h"
#include "app/window/project_window.h"

#include "app/export_run.h"

#include "model/project.h"
#include "plugin/export_interface.h"
#include "tools/held_dialog.h"
#include "tools/script_permission.h"

#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTabWidget>

namespace app {

namespace {

constexpr int EventInterval = 40; ///< milliseconds between two looks at the window's events during an export

} // namespace

/// While it lives an export is under way: commands that would meddle with it are off.
class project_window::busy_scope
{
public:
    explicit busy_scope(project_window & window) : m_window(window)
    {
        ++m_window.m_iBusy;
        m_window.m_pSession->hold();
        m_window.updateCommands();
        m_window.m_sinceEvents.start();
    }
    ~busy_scope()
    {
        m_window.m_pSession->letGo();
        --m_window.m_iBusy;
        m_window.updateCommands();
        if (m_window.m_bCloseWhenIdle && m_window.m_iBusy == 0) {
            m_window.m_bCloseWhenIdle = false;
            QMetaObject::invokeMethod(&m_window, "close", Qt::QueuedConnection);
        }
    }
    busy_scope(const busy_scope &) = delete;
    busy_scope & operator=(const busy_scope &) = delete;

private:
    project_window & m_window;
};

void project_window::exportWith(plugin::export_interface * plugin)
{
    if (m_iBusy > 0 || !refreshProject(tr("Korvane - Export"))) {
        return;
    }
    const std::shared_ptr<model::project> project = m_pSession->project();
    export_listener listener;
    listener.message = [this](const QString & text, int type) {
        m_pMessages->addMessage(text, type);
        giveWayToEvents();
    };
    listener.progress = [this](int done, int total) {
        m_pMessages->setProgress(done, total);
        giveWayToEvents();
    };
    const busy_scope busy(*this);
    m_pMessages->begin(tr("Export of '%1' with %2").arg(project->getName(), plugin->getName()));
    // What another project left in the plug-in's memory is none of this one's.
    plugin->clearSettings();
    bool isRefused = false;
    const tools::script_guard_scope guard([this, &isRefused](const QString & file, bool isStored) {
        const auto permission = isStored ? mayRunScript(file) : tools::script_permission::run;
        isRefused = permission == tools::script_permission::cancel;
        return permission;
    });
    const dialog_watch watch;
    const export_report report = runPlugin(*plugin, *project, listener);
    showExportEnd(report, isRefused || watch.isLastGivenUp());
}

/// Asks once for each script of a project, which anybody may have written.
tools::script_permission project_window::mayRunScript(const QString & file)
{
    const QPair<QString, QString> script(m_pSession->file(), file);
    if (m_allowedScripts.contains(script)) {
        return tools::script_permission::run;
    }
    const tools::held_dialog<QMessageBox> box(QMessageBox::Question, tr("Korvane - Custom script"),
                                              tr("The project names a custom script, which runs with your "
                                                 "rights:\n%1\n\nDo you want to run it? With No "
                                                 "the export leaves it out.")
                                                  .arg(QDir::toNativeSeparators(file)),
                                              QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, this);
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
QString project_window::whyNothing(const export_report & report)
{
    if (report.isVersionMissing) {
        return tr("Nothing was written: evolution scripts need a tagged version. Use \"Actions > Tag project "
                  "state…\" first");
    }
    return report.reasonForNoFile.isEmpty() ? tr("Nothing was written") : report.reasonForNoFile;
}

void project_window::showExportEnd(const export_report & report, bool isCancelled)
{
    // After a failure the scripts of an earlier export are no longer what is in the files.
    if (!report.files.isEmpty() || !report.ok) {
        m_pScripts->setScripts(report.files);
    }
    if (!report.ok) {
        if (!report.untoldReason.isEmpty()) {
            m_pMessages->addMessage(report.untoldReason, ErrorMessage);
        }
        m_pMessages->end(false, tr("The export failed"));
        m_pMessageDock->show();
        m_pMessageDock->raise();
        showStatus(tr("The export failed: see the messages"));
        return;
    }
    if (report.files.isEmpty()) {
        const QString nothing =
            isCancelled ? tr("The export was cancelled; nothing was written") : whyNothing(report);
        m_pMessages->end(true, nothing);
        showStatus(nothing);
        return;
    }
    const QString folder = QDir::toNativeSeparators(QFileInfo(report.files.constFirst()).absolutePath());
    const QString written =
        report.files.size() == 1
            ? tr("1 script written to %1").arg(folder)
            : tr("%1 scripts written to %2").arg(QLocale().toString(report.files.size()), folder);
    m_pMessages->end(true, written);
    m_tabPages->setCurrentWidget(m_pScripts);
    showStatus(written);
}

/// An export runs on the thread of the window: from time to time it lets the window show what it was told.
void project_window::giveWayToEvents()
{
    if (m_sinceEvents.elapsed() >= EventInterval) {
        QCoreApplication::processEvents();
        m_sinceEvents.start();
    }
}

} // namespace app
