#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <array>

class QAction;
class QMainWindow;
class QMenu;

namespace app {

class check_controller;
class database_controller;
class export_controller;
class export_menu;
struct found_plugins;
class project_commands;
class recent_menu;
class window_panes;

/// The menus and the tool bar of the main window: which commands there are, how they are called, when they
/// are possible. What they do is done by others.
class window_menus : public QObject
{
    Q_OBJECT

public:
    /// What the commands of the menus are passed on to, all of which outlives the menus.
    struct targets
    {
        project_commands & projects;
        database_controller & databases;
        export_controller & exports;
        check_controller & checks;
        window_panes & panes;
        const found_plugins & found;
    };

    window_menus(QMainWindow & window, const targets & to);
    ~window_menus() override;

    /// Offers the commands that are possible.
    /// @param isIdle no export is under way
    void setPossible(bool isIdle, bool isOpen);
    void setRecentFiles(const QStringList & files);

private:
    /// When a command is possible.
    enum class possible
    {
        always,
        idle,      ///< not while an export is under way
        idle_open, ///< neither, and only with a project
        open       ///< with a project, at any time
    };

    void createFileMenu();
    void createActionsMenu();
    void createExportMenu();
    void createViewMenu();
    void createHelpMenu();
    void createToolBar();
    QAction * add(QMenu * menu, const char * name, const QString & text, const QKeySequence & key,
                  possible when);
    QAction * addProjectCommand(QMenu * menu, const char * name, const QString & text,
                                const QKeySequence & key, const QString & tip, possible when,
                                void (project_commands::*command)(), const char * icon = nullptr);
    void addPane(QMenu * menu, const char * name, const QString & text, Qt::Key key, QWidget & pane,
                 possible when);
    QList<QAction *> & commands(possible when) { return m_commands[static_cast<size_t>(when)]; }

    QMainWindow & m_window;
    targets m_targets;
    export_menu * m_mnuExport = nullptr;
    recent_menu * m_mnuRecent = nullptr;
    QAction * m_actImport = nullptr;
    QAction * m_actOpen = nullptr;
    QAction * m_actTag = nullptr;
    std::array<QList<QAction *>, 4> m_commands; ///< by when they are possible
};

} // namespace app
