// What the window is made of: panels, docks, menus, tool bar.

#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/export_menu.h"
#include "app/window/project_session.h"
#include "app/window/project_window.h"
#include "app/window/tree/project_tree.h"
#include "app/window/welcome_page.h"

#include <QApplication>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

namespace app {

namespace {

constexpr int StateVersion = 1; ///< of docks and tool bars; a stored state of another one is left alone
constexpr int TreeWidth = 380;
constexpr int MessageHeight = 190;
const QSize FirstSize(1200, 800);

QIcon icon(const char * name)
{
    return QIcon(QStringLiteral(":/korvane/window/icons/%1.svg").arg(QLatin1String(name)));
}

} // namespace

void project_window::createPanels()
{
    m_pSession = new project_session(this);
    connect(m_pSession, &project_session::projectChanged, this, &project_window::projectChanged);
    connect(m_pSession, &project_session::fileLost, this, &project_window::fileLost);
    connect(m_pSession, &project_session::fileFound, this, &project_window::updateTitle);

    m_pTree = new project_tree;
    m_pDiagram = new diagram_panel;
    connect(m_pTree, &project_tree::entitySelected, m_pDiagram, &diagram_panel::selectEntity);
    connect(m_pDiagram, &diagram_panel::entitySelected, m_pTree, &project_tree::selectEntity);

    m_pMessages = new message_panel;
    m_pScripts = new script_panel;
    connect(m_pScripts, &script_panel::openFolderRequested, this, &project_window::showFolder);

    m_pWelcome = new welcome_page;
    connect(m_pWelcome, &welcome_page::openRequested, this, &project_window::chooseAndOpen);
    connect(m_pWelcome, &welcome_page::importRequested, this, &project_window::chooseAndImport);
    connect(m_pWelcome, &welcome_page::fileRequested, this, &project_window::openFile);

    m_tabPages = new QTabWidget;
    m_tabPages->setObjectName(QStringLiteral("m_tabPages"));
    m_tabPages->setAccessibleName(tr("Diagram and scripts"));
    m_tabPages->setDocumentMode(true);
    m_tabPages->addTab(m_pDiagram, tr("Diagram"));
    m_tabPages->addTab(m_pScripts, tr("Scripts"));
    m_pCentre = new QStackedWidget;
    m_pCentre->addWidget(m_pWelcome);
    m_pCentre->addWidget(m_tabPages);
    setCentralWidget(m_pCentre);
}

void project_window::createDocks()
{
    m_pTreeDock = new QDockWidget(tr("Model"), this);
    m_pTreeDock->setObjectName(QStringLiteral("m_pTreeDock"));
    m_pTreeDock->setWidget(m_pTree);
    addDockWidget(Qt::LeftDockWidgetArea, m_pTreeDock);
    m_pMessageDock = new QDockWidget(tr("Messages"), this);
    m_pMessageDock->setObjectName(QStringLiteral("m_pMessageDock"));
    m_pMessageDock->setWidget(m_pMessages);
    addDockWidget(Qt::BottomDockWidgetArea, m_pMessageDock);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    m_lblModel = new QLabel;
    m_lblModel->setObjectName(QStringLiteral("m_lblModel"));
    statusBar()->addPermanentWidget(m_lblModel);
}

QAction * project_window::addCommand(QMenu * menu, const QString & name, const QString & text,
                                     const QKeySequence & key, const QString & tip,
                                     void (project_window::*command)())
{
    QAction * const action = menu->addAction(text);
    action->setObjectName(name);
    // On the tool bar; Qt itself takes three dots away, but not an ellipsis.
    action->setIconText(QString(text).remove(QLatin1Char('&')).remove(QChar(0x2026)));
    action->setShortcut(key);
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, command);
    return action;
}

void project_window::createMenus()
{
    createFileMenu();
    createActionsMenu();
    m_mnuExport = new export_menu(m_found, this);
    menuBar()->addMenu(m_mnuExport);
    connect(m_mnuExport, &export_menu::exportRequested, this, &project_window::exportWith);
    connect(m_mnuExport, &export_menu::settingsRequested, this, &project_window::showSettings);
    m_whenOpen << m_mnuExport->commands();
    createViewMenu();
    createHelpMenu();
    createToolBar();
}

void project_window::createFileMenu()
{
    QMenu * const menu = menuBar()->addMenu(tr("&File"));
    m_actOpen = addCommand(menu, QStringLiteral("m_actOpen"), tr("&Open…"), Qt::CTRL | Qt::Key_O,
                           tr("Open a project file"), &project_window::chooseAndOpen);
    m_actOpen->setIcon(icon("open"));
    m_mnuRecent = menu->addMenu(tr("Open &recent"));
    m_mnuRecent->setObjectName(QStringLiteral("m_mnuRecent"));
    m_mnuRecent->setToolTipsVisible(true);
    QAction * const reloadAction = addCommand(menu, QStringLiteral("m_actReload"), tr("Re&load"), Qt::Key_F5,
                                              tr("Read the project file again"), &project_window::reload);
    reloadAction->setIcon(icon("reload"));
    QAction * const close =
        addCommand(menu, QStringLiteral("m_actClose"), tr("&Close project"), Qt::CTRL | Qt::Key_W,
                   tr("Close the project"), &project_window::closeProject);
    menu->addSeparator();
    m_actImport = addCommand(menu, QStringLiteral("m_actImport"), tr("&Import model…"), Qt::CTRL | Qt::Key_I,
                             tr("Create a project from a model in text form, or replace a project's model"),
                             &project_window::chooseAndImport);
    m_actImport->setIcon(icon("import"));
    QAction * const save =
        addCommand(menu, QStringLiteral("m_actSaveText"), tr("&Save model as text…"), Qt::CTRL | Qt::Key_S,
                   tr("Write the model as text, to edit it or to keep it under version control"),
                   &project_window::chooseAndSaveText);
    save->setIcon(icon("save"));
    menu->addSeparator();
    QAction * const quit = menu->addAction(tr("&Quit"));
    quit->setObjectName(QStringLiteral("m_actQuit"));
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    m_whenIdle << m_actOpen << m_mnuRecent->menuAction() << m_actImport;
    m_whenOpen << reloadAction << close;
    m_whenShown << save;
}

void project_window::createActionsMenu()
{
    QMenu * const menu = menuBar()->addMenu(tr("&Actions"));
    m_actTag = addCommand(menu, QStringLiteral("m_actTag"), tr("&Tag project state…"), Qt::CTRL | Qt::Key_T,
                          tr("Tag the current state of the project as a new version"), &project_window::tag);
    m_actTag->setIcon(icon("tag"));
    QAction * const versions =
        addCommand(menu, QStringLiteral("m_actVersions"), tr("&Versions…"), Qt::CTRL | Qt::SHIFT | Qt::Key_T,
                   tr("Show the versions of the project"), &project_window::showVersions);
    versions->setIcon(icon("versions"));
    m_whenOpen << m_actTag << versions;
}

void project_window::createViewMenu()
{
    QMenu * const menu = menuBar()->addMenu(tr("&View"));
    const auto addPane = [this, menu](const QString & text, QWidget * pane, Qt::Key key) {
        QAction * const go = menu->addAction(text);
        go->setShortcut(Qt::ALT | key);
        connect(go, &QAction::triggered, this, [this, pane] { showPane(pane); });
        return go;
    };
    addPane(tr("Go to the &model"), m_pTree, Qt::Key_1)->setObjectName(QStringLiteral("m_actGoModel"));
    QAction * const diagram = addPane(tr("Go to the dia&gram"), m_pDiagram, Qt::Key_2);
    diagram->setObjectName(QStringLiteral("m_actGoDiagram"));
    QAction * const scripts = addPane(tr("Go to the scri&pts"), m_pScripts, Qt::Key_3);
    scripts->setObjectName(QStringLiteral("m_actGoScripts"));
    addPane(tr("Go to the m&essages"), m_pMessages, Qt::Key_4)
        ->setObjectName(QStringLiteral("m_actGoMessages"));
    menu->addSeparator();
    QAction * const filter = menu->addAction(tr("Fi&lter the model"));
    filter->setObjectName(QStringLiteral("m_actFilter"));
    filter->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
    connect(filter, &QAction::triggered, this, [this] {
        m_pTreeDock->show();
        m_pTree->focusFilter();
    });
    QAction * const find = menu->addAction(tr("Find in the scrip&t"));
    find->setObjectName(QStringLiteral("m_actFind"));
    find->setShortcut(Qt::CTRL | Qt::Key_F);
    connect(find, &QAction::triggered, this, &project_window::findInScript);
    menu->addSeparator();
    menu->addActions(m_pDiagram->diagramActions());
    menu->addSeparator();
    menu->addAction(m_pTreeDock->toggleViewAction());
    menu->addAction(m_pMessageDock->toggleViewAction());
    m_whenShown << diagram << scripts << filter << find;
}

void project_window::createHelpMenu()
{
    QMenu * const menu = menuBar()->addMenu(tr("&Help"));
    addCommand(menu, QStringLiteral("m_actManual"), tr("&Manual"), Qt::Key_F1, tr("Open the manual"),
               &project_window::showManual)
        ->setIcon(QIcon(QStringLiteral(":/korvane/window/icons/manual.svg")));
    addCommand(menu, QStringLiteral("m_actAbout"), tr("&About Korvane"), {},
               tr("Versions of the program and of its plugins"), &project_window::showAbout)
        ->setMenuRole(QAction::AboutRole);
}

void project_window::createToolBar()
{
    QToolBar * const bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("m_barTools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addAction(m_actOpen);
    bar->addAction(m_actImport);
    bar->addAction(m_actTag);
    if (QAction * const run = m_mnuExport->mainCommand()) {
        bar->addSeparator();
        bar->addAction(run);
    }
}

void project_window::readState()
{
    const QSettings settings;
    resize(FirstSize.boundedTo(screen()->availableSize()));
    restoreGeometry(settings.value(QStringLiteral("window/geometry")).toByteArray());
    if (!restoreState(settings.value(QStringLiteral("window/state")).toByteArray(), StateVersion)) {
        resizeDocks({m_pTreeDock}, {TreeWidth}, Qt::Horizontal);
        resizeDocks({m_pMessageDock}, {MessageHeight}, Qt::Vertical);
    }
}

void project_window::writeState() const
{
    QSettings settings;
    settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("window/state"), saveState(StateVersion));
}

} // namespace app
