#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace plugin {
class statement_source;
}

namespace app {

struct database_import_result;
struct found_plugins;
struct held_schema;
class message_panel;
class project_commands;
class project_session;

/// Makes a model of a database: asks for the database and its tables, for the project, shows what would
/// change, and stores it.
class database_controller : public QObject
{
    Q_OBJECT

public:
    /// @param window the parent of the dialogs, and of this; all others outlive it
    database_controller(project_session & session, message_panel & messages, project_commands & projects,
                        const found_plugins & found, QWidget * window);

    void importDatabase();

Q_SIGNALS:
    /// There are messages that the person has to see.
    void messagesWanted();

private:
    /// Asks into which project the chosen tables go, shows what would change, and stores it.
    void importTables(const held_schema & held, const QStringList & tables, bool tellsLinks,
                      plugin::statement_source & statements);
    /// Whether the person wants what is planned.
    [[nodiscard]] bool isWanted(const QString & target, const QString & source,
                                const database_import_result & planned) const;
    void tell(const QString & target, const QString & source, const database_import_result & done);

    project_session & m_session;
    message_panel & m_messages;
    project_commands & m_projects;
    const found_plugins & m_found;
    QWidget * m_pWindow;
};

} // namespace app
