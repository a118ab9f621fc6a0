#pragma once

#include "tools/script_permission.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPair>
#include <QSet>

class QWidget;

namespace plugin {
class export_interface;
}

namespace app {

struct export_report;
class message_panel;
class project_session;
class script_panel;

/// Runs exports of the open project: asks what has to be asked, holds the session meanwhile, and shows
/// messages and scripts in their panels.
class export_controller : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of the dialogs, and of this; session and panels outlive it
    export_controller(project_session & session, message_panel & messages, script_panel & scripts,
                      QWidget * window);

    /// Lets `plugin` export the open project; returns when it is over. Not while another export is under way.
    void exportWith(plugin::export_interface * plugin);
    /// What says whether the custom scripts of the project may run: the person is asked once for each.
    [[nodiscard]] tools::script_guard scriptGuard();
    /// The same without a question: a script that was not allowed yet is left out, and `isLeftOut` becomes
    /// true.
    [[nodiscard]] tools::script_guard quietScriptGuard(bool & isLeftOut) const;
    /// Lets the person edit the settings of `plugin` that are stored in the project.
    void showSettings(plugin::export_interface * plugin);

Q_SIGNALS:
    /// There are messages that the person has to see.
    void messagesWanted();
    /// An export with `plugin` has written `files`.
    void exported(plugin::export_interface * plugin, const QStringList & files);
    /// There are scripts to be seen.
    void scriptsWanted();
    /// What came of it, on one line.
    void statusTold(const QString & text);

private:
    tools::script_permission mayRunScript(const QString & file);
    void showEnd(const export_report & report, bool isCancelled);
    void showCancelled(const export_report & report);
    void showFailure(const QString & untoldReason);
    [[nodiscard]] static QString whyNothing(const export_report & report);
    void giveWayToEvents();

    project_session & m_session;
    message_panel & m_messages;
    script_panel & m_scripts;
    QWidget * m_pWindow;
    QElapsedTimer m_sinceEvents;
    QSet<QPair<QString, QString>> m_allowedScripts; ///< project file and script
};

} // namespace app
