// An export from the window.

#include "app/window/dialog_watch.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/project_session.h"
#include "app/window/project_window.h"

#include "app/export_run.h"

#include "model/project.h"
#include "plugin/export_interface.h"
#include "storage/history.h"

#include <QCoreApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLocale>
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
    const dialog_watch watch;
    const export_report report = runPlugin(*plugin, *project, listener);
    showExportEnd(report, watch.isLastGivenUp());
}

/// Why an export that nobody cancelled wrote no script.
QString project_window::whyNothing() const
{
    QList<storage::history::version> versions;
    const QSqlError error = storage::history::list(m_pSession->file(), versions);
    return !error.isValid() && versions.isEmpty()
               ? tr("Nothing was written: evolution scripts need a tagged version. Use \"Actions > Tag "
                    "project "
                    "state…\" first")
               : tr("Nothing was written: the settings of the export ask for no script");
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
            isCancelled ? tr("The export was cancelled; nothing was written") : whyNothing();
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
