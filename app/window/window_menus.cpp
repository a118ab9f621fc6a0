#include "app/window/window_menus.h"

#include "app/plugin_choice.h"
#include "app/window/changes/changes_panel.h"
#include "app/window/check_controller.h"
#include "app/window/database/database_controller.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/export_controller.h"
#include "app/window/export_menu.h"
#include "app/window/help_commands.h"
#include "app/window/project_commands.h"
#include "app/window/recent_menu.h"
#include "app/window/tree/project_tree.h"
#include "app/window/window_panes.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QToolBar>

namespace app {

namespace {

QIcon icon(const char * name)
{
    return QIcon(QStringLiteral(":/korvane/window/icons/%1.svg").arg(QLatin1String(name)));
}

} // namespace

window_menus::window_menus(QMainWindow & window, const targets & to)
    : QObject(&window), m_window(window), m_targets(to)
{
    createFileMenu();
    createActionsMenu();
    createExportMenu();
    createViewMenu();
    createHelpMenu();
    createToolBar();
}

window_menus::~window_menus()
{
    // Its icons are the plug-ins', which may go before the window does.
    delete m_mnuExport;
}

void window_menus::setPossible(bool isIdle, bool isOpen)
{
    for (const possible when : {possible::idle, possible::idle_open, possible::open}) {
        const bool needsProject = when != possible::idle;
        const bool needsRest = when != possible::open;
        for (QAction * const action : std::as_const(commands(when))) {
            action->setEnabled((isOpen || !needsProject) && (isIdle || !needsRest));
        }
    }
}

void window_menus::setRecentFiles(const QStringList & files)
{
    m_mnuRecent->setFiles(files);
}

QAction * window_menus::add(QMenu * menu, const char * name, const QString & text, const QKeySequence & key,
                            possible when)
{
    QAction * const action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    commands(when) << action;
    return action;
}

QAction * window_menus::addProjectCommand(QMenu * menu, const char * name, const QString & text,
                                          const QKeySequence & key, const QString & tip, possible when,
                                          void (project_commands::*command)(), const char * iconName)
{
    QAction * const action = add(menu, name, text, key, when);
    // On the tool bar; Qt itself takes three dots away, but not an ellipsis.
    action->setIconText(QString(text).remove(QLatin1Char('&')).remove(QChar(0x2026)));
    action->setStatusTip(tip);
    if (iconName) {
        action->setIcon(icon(iconName));
    }
    connect(action, &QAction::triggered, &m_targets.projects, command);
    return action;
}

void window_menus::createFileMenu()
{
    QMenu * const menu = m_window.menuBar()->addMenu(tr("&File"));
    m_actOpen =
        addProjectCommand(menu, "m_actOpen", tr("&Open…"), Qt::CTRL | Qt::Key_O, tr("Open a project file"),
                          possible::idle, &project_commands::chooseAndOpen, "open");
    addProjectCommand(menu, "m_actNew", tr("&New project…"), Qt::CTRL | Qt::Key_N,
                      tr("Make a project of a small model, which is written as text beside it"),
                      possible::idle, &project_commands::chooseAndBegin);
    m_mnuRecent = new recent_menu(&m_window);
    menu->addMenu(m_mnuRecent);
    connect(m_mnuRecent, &recent_menu::fileRequested, &m_targets.projects, &project_commands::openFile);
    connect(m_mnuRecent, &recent_menu::clearRequested, &m_targets.projects,
            &project_commands::clearRecentFiles);
    commands(possible::idle) << m_mnuRecent->menuAction();
    addProjectCommand(menu, "m_actReload", tr("Re&load"), Qt::Key_F5, tr("Read the project file again"),
                      possible::idle_open, &project_commands::reload, "reload");
    addProjectCommand(menu, "m_actClose", tr("&Close project"), Qt::CTRL | Qt::Key_W, tr("Close the project"),
                      possible::idle_open, &project_commands::close);
    menu->addSeparator();
    m_actImport =
        addProjectCommand(menu, "m_actImport", tr("&Import model…"), Qt::CTRL | Qt::Key_I,
                          tr("Create a project from a model in text form, or replace a project's model"),
                          possible::idle, &project_commands::chooseAndImport, "import");
    QAction * const database = add(menu, "m_actImportDatabase", tr("Import from &database…"),
                                   Qt::CTRL | Qt::SHIFT | Qt::Key_I, possible::idle);
    database->setStatusTip(tr("Make the model that of a database: a SQLite file, a server, or a script"));
    connect(database, &QAction::triggered, &m_targets.databases, &database_controller::importDatabase);
    addProjectCommand(menu, "m_actSaveText", tr("&Save model as text…"), Qt::CTRL | Qt::Key_S,
                      tr("Write the model as text, to edit it or to keep it under version control"),
                      possible::open, &project_commands::chooseAndSaveText, "save");
    menu->addSeparator();
    QAction * const quit = add(menu, "m_actQuit", tr("&Quit"), Qt::CTRL | Qt::Key_Q, possible::always);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, &m_window, &QWidget::close);
}

void window_menus::createActionsMenu()
{
    QMenu * const menu = m_window.menuBar()->addMenu(tr("&Actions"));
    m_actTag = addProjectCommand(menu, "m_actTag", tr("&Tag project state…"), Qt::CTRL | Qt::Key_T,
                                 tr("Tag the current state of the project as a new version"),
                                 possible::idle_open, &project_commands::tag, "tag");
    addProjectCommand(menu, "m_actVersions", tr("&Versions…"), Qt::CTRL | Qt::SHIFT | Qt::Key_T,
                      tr("Show the versions of the project"), possible::idle_open,
                      &project_commands::showVersions, "versions");
}

void window_menus::createExportMenu()
{
    m_mnuExport = new export_menu(m_targets.found, &m_window);
    m_window.menuBar()->addMenu(m_mnuExport);
    connect(m_mnuExport, &export_menu::exportRequested, &m_targets.exports, &export_controller::exportWith);
    connect(m_mnuExport, &export_menu::settingsRequested, &m_targets.exports,
            &export_controller::showSettings);
    connect(m_mnuExport, &export_menu::checkRequested, &m_targets.checks, &check_controller::checkProject);
    commands(possible::idle_open) << m_mnuExport->commands();
}

void window_menus::addPane(QMenu * menu, const char * name, const QString & text, Qt::Key key, QWidget & pane,
                           possible when)
{
    QAction * const action = add(menu, name, text, Qt::ALT | key, when);
    connect(action, &QAction::triggered, &m_targets.panes, [this, &pane] { m_targets.panes.goTo(pane); });
}

void window_menus::createViewMenu()
{
    QMenu * const menu = m_window.menuBar()->addMenu(tr("&View"));
    window_panes & panes = m_targets.panes;
    addPane(menu, "m_actGoModel", tr("Go to the &model"), Qt::Key_1, panes.tree(), possible::always);
    addPane(menu, "m_actGoDiagram", tr("Go to the dia&gram"), Qt::Key_2, panes.diagram(), possible::open);
    addPane(menu, "m_actGoScripts", tr("Go to the scri&pts"), Qt::Key_3, panes.scripts(), possible::open);
    addPane(menu, "m_actGoMessages", tr("Go to the m&essages"), Qt::Key_4, panes.messages(),
            possible::always);
    addPane(menu, "m_actGoChanges", tr("Go to the &changes"), Qt::Key_5, panes.changes(), possible::open);
    menu->addSeparator();
    connect(
        add(menu, "m_actFilter", tr("Fi&lter the model"), Qt::CTRL | Qt::SHIFT | Qt::Key_F, possible::open),
        &QAction::triggered, &panes, &window_panes::goToFilter);
    connect(add(menu, "m_actFind", tr("Find in the scrip&t"), Qt::CTRL | Qt::Key_F, possible::open),
            &QAction::triggered, &panes, &window_panes::findInScript);
    menu->addSeparator();
    menu->addActions(panes.diagram().diagramActions());
    menu->addSeparator();
    menu->addAction(panes.treeDock().toggleViewAction());
    menu->addAction(panes.messageDock().toggleViewAction());
}

void window_menus::createHelpMenu()
{
    QMenu * const menu = m_window.menuBar()->addMenu(tr("&Help"));
    QAction * const manual = add(menu, "m_actManual", tr("&Manual"), Qt::Key_F1, possible::always);
    manual->setStatusTip(tr("Open the manual"));
    manual->setIcon(icon("manual"));
    connect(manual, &QAction::triggered, &m_window, [this] { showManual(&m_window); });
    QAction * const about = add(menu, "m_actAbout", tr("&About Korvane"), {}, possible::always);
    about->setStatusTip(tr("Versions of the program and of its plugins"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, &m_window, [this] { showAbout(&m_window, m_targets.found); });
}

void window_menus::createToolBar()
{
    QToolBar * const bar = m_window.addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("m_barTools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addActions({m_actOpen, m_actImport, m_actTag});
    if (QAction * const run = m_mnuExport->mainCommand()) {
        bar->addSeparator();
        bar->addAction(run);
    }
}

} // namespace app
