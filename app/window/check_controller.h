#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace check {
struct finding;
struct report;
} // namespace check

namespace plugin {
class export_interface;
}

namespace app {

class export_controller;
class message_panel;
class project_session;

/// Foretells what databases will do with the scripts of the open project, and shows the findings among the
/// messages.
class check_controller : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of this; all others outlive it
    check_controller(project_session & session, message_panel & messages, export_controller & exports,
                     QWidget * window);

    /// Judges the full script, and the step from the newest version to the state.
    void checkProject(plugin::export_interface * plugin);
    /// Judges the scripts that an export has written; nothing is said when there is nothing to say.
    void checkScripts(plugin::export_interface * plugin, const QStringList & files);

Q_SIGNALS:
    /// There are findings that the person has asked for.
    void messagesWanted();
    /// What came of it, on one line.
    void statusTold(const QString & text);
    /// How many findings there are, in short.
    void countsTold(const QString & text);

private:
    /// @param scripts file names to which it is restricted; none for the usual ones
    bool judge(plugin::export_interface & plugin, const QStringList & scripts, check::report & report,
               QString & reason);
    void show(const check::report & report, const QString & title, const QString & reason);
    void add(const check::finding & finding);

    project_session & m_session;
    message_panel & m_messages;
    export_controller & m_exports;
    QWidget * m_pWindow;
};

} // namespace app
