#include "app/window/project_window.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/changes_controller.h"
#include "app/window/check_controller.h"
#include "app/window/database/database_controller.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/finding_target.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/export_controller.h"
#include "app/window/help_commands.h"
#include "app/window/project_commands.h"
#include "app/window/project_session.h"
#include "app/window/tree/project_tree.h"
#include "app/window/version_comparison.h"
#include "app/window/welcome_page.h"
#include "app/window/window_dialogs.h"
#include "app/window/window_menus.h"
#include "app/window/window_panes.h"

#include "app/project_work.h"

#include "context/ctx_global.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "zk/visible_text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

namespace app {

namespace {

QString countsOf(model::project & project)
{
    qsizetype properties = 0;
    qsizetype relationships = 0;
    const auto entities = project.getListOfAllEntities()->values();
    for (const std::shared_ptr<model::entity> & entity : entities) {
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            ++properties;
            relationships += property->hasRelationship() ? 1 : 0;
        }
    }
    const QLocale locale;
    return project_window::tr("Entities: %1   Properties: %2   Relationships: %3")
        .arg(locale.toString(static_cast<qlonglong>(entities.size())), locale.toString(properties),
             locale.toString(relationships));
}

/// The file that is dragged when it is one that the window can take; else the empty text.
QString fileOf(const QMimeData * data)
{
    const QList<QUrl> urls = data->urls();
    const QString file = urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
    return isProjectName(file) || isTextName(file) ? file : QString();
}

} // namespace

project_window::project_window(QWidget * parent)
    : view::main_wnd(parent), m_found(found_plugins::inFolders()), m_pSession(new project_session(this)),
      m_pPanes(new window_panes(*this)),
      m_pExports(new export_controller(*m_pSession, m_pPanes->messages(), m_pPanes->scripts(), this)),
      m_pComparison(std::make_unique<version_comparison>(*m_pSession, *m_pExports, m_found)),
      m_pProjects(new project_commands(*m_pSession, m_pPanes->messages(), *m_pComparison, this)),
      m_pDatabases(new database_controller(*m_pSession, m_pPanes->messages(), *m_pProjects, m_found, this)),
      m_pChanges(new changes_controller(*m_pSession, m_pPanes->changes(), m_pPanes->diagram(), *m_pComparison,
                                        this)),
      m_pChecks(new check_controller(*m_pSession, m_pPanes->messages(), *m_pExports, this)),
      m_pMenus(new window_menus(*this,
                                {*m_pProjects, *m_pDatabases, *m_pExports, *m_pChecks, *m_pPanes, m_found})),
      m_lblModel(new QLabel), m_lblFindings(new QLabel)
{
    setObjectName(QStringLiteral("wnd_project"));
    setWindowIcon(QIcon(QStringLiteral(":/korvane/window/icons/korvane.svg")));
    setAcceptDrops(true);
    context::ctx_global::setMainWnd(this);
    m_lblModel->setObjectName(QStringLiteral("m_lblModel"));
    m_lblFindings->setObjectName(QStringLiteral("m_lblFindings"));
    createHoldNotice();
    statusBar()->addPermanentWidget(m_lblFindings);
    statusBar()->addPermanentWidget(m_lblModel);
    connectSession();
    connectCommands();
    m_pPanes->readState();
    projectChanged();
    updateRecentFiles();
    showPluginProblems();
}

project_window::~project_window()
{
    // Plug-ins go last, and what they hold of the project before the project.
    for (const auto & loaded : m_found.plugins) {
        loaded->getInterface()->setCustomScript(nullptr);
    }
    delete m_pSession;
    delete m_pMenus;
    context::ctx_global::setMainWnd(nullptr);
}

/// An export that its debugger holds looks like one that hangs: this says so, and leads there.
void project_window::createHoldNotice()
{
    auto * const notice = new QWidget;
    notice->setObjectName(QStringLiteral("m_wdgHeld"));
    auto * const label = new QLabel(tr("The script debugger holds the export"));
    auto * const go = new QPushButton(tr("&Go to the debugger"));
    go->setObjectName(QStringLiteral("m_btnGoToDebugger"));
    auto * const layout = new QHBoxLayout(notice);
    layout->setContentsMargins({});
    layout->addWidget(label);
    layout->addWidget(go);
    notice->hide();
    statusBar()->addPermanentWidget(notice);
    setUsableWhileHeld(notice);
    connect(this, &view::main_wnd::holderChanged, notice, [this, notice] { notice->setVisible(holder()); });
    connect(go, &QPushButton::clicked, this, [this] {
        if (QWidget * const debugger = holder()) {
            debugger->showNormal();
            debugger->raise();
            debugger->activateWindow();
        }
    });
}

void project_window::connectSession()
{
    connect(m_pSession, &project_session::projectChanged, this, &project_window::projectChanged);
    // After the window: the diagram has the project by then.
    connect(m_pSession, &project_session::projectChanged, m_pChanges, &changes_controller::projectChanged);
    connect(m_pSession, &project_session::fileLost, this, &project_window::fileLost);
    connect(m_pSession, &project_session::lostChanged, this, &project_window::updateTitle);
    connect(m_pSession, &project_session::heldChanged, this, &project_window::heldChanged);
}

void project_window::connectCommands()
{
    connect(m_pProjects, &project_commands::recentFilesChanged, this, &project_window::updateRecentFiles);
    connect(m_pProjects, &project_commands::messagesWanted, &m_pPanes->messageDock(), &QWidget::show);
    connect(m_pProjects, &project_commands::statusTold, this, &project_window::showStatus);
    connect(m_pProjects, &project_commands::tagged, m_pChanges, &changes_controller::refresh);
    connect(m_pProjects, &project_commands::comparisonWanted, this, [this](int from, int to) {
        m_pPanes->goTo(m_pPanes->changes());
        m_pPanes->changes().choose(from, to);
    });
    connect(m_pDatabases, &database_controller::messagesWanted, &m_pPanes->messageDock(), &QWidget::show);
    connect(m_pExports, &export_controller::messagesWanted, m_pPanes, &window_panes::showMessages);
    connect(m_pExports, &export_controller::scriptsWanted, this,
            [this] { m_pPanes->showPage(m_pPanes->scripts()); });
    connect(m_pExports, &export_controller::statusTold, this, &project_window::showStatus);
    connect(m_pExports, &export_controller::exported, m_pChecks, &check_controller::checkScripts);
    connect(m_pChecks, &check_controller::messagesWanted, m_pPanes, &window_panes::showMessages);
    connect(m_pChecks, &check_controller::statusTold, this, &project_window::showStatus);
    connect(m_pChecks, &check_controller::countsTold, m_lblFindings, &QLabel::setText);
    connect(&m_pPanes->messages(), &message_panel::targetWanted, this, &project_window::goTo);
    connect(&m_pPanes->changes(), &changes_panel::targetWanted, this, &project_window::goTo);
    connect(&m_pPanes->scripts(), &script_panel::openFolderRequested, this,
            [this](const QString & folder) { showFolder(this, folder); });
    const welcome_page & welcome = m_pPanes->welcome();
    connect(&welcome, &welcome_page::openRequested, m_pProjects, &project_commands::chooseAndOpen);
    connect(&welcome, &welcome_page::importRequested, m_pProjects, &project_commands::chooseAndImport);
    connect(&welcome, &welcome_page::databaseRequested, m_pDatabases, &database_controller::importDatabase);
    connect(&welcome, &welcome_page::newRequested, m_pProjects, &project_commands::chooseAndBegin);
    connect(&welcome, &welcome_page::sampleRequested, m_pProjects, &project_commands::chooseAndTrySample);
    connect(&welcome, &welcome_page::manualRequested, this, [this] { showManual(this); });
    connect(&welcome, &welcome_page::fileRequested, m_pProjects, &project_commands::openFile);
}

/// Shows what a finding is about: the object in tree and diagram, the line in the scripts.
void project_window::goTo(const QVariant & target)
{
    const auto wanted = target.value<finding_target>();
    if (wanted.entity != 0) {
        m_pPanes->tree().selectProperty(wanted.entity, wanted.property);
        m_pPanes->diagram().selectEntity(wanted.entity);
    }
    if (!m_pPanes->scripts().showLine(wanted.script, wanted.line)) {
        m_pPanes->showPage(m_pPanes->diagram());
        return;
    }
    m_pPanes->showPage(m_pPanes->scripts());
}

void project_window::showPluginProblems()
{
    if (m_found.problems.isEmpty()) {
        return;
    }
    message_panel & messages = m_pPanes->messages();
    messages.begin(tr("Plugins"));
    for (const QString & problem : std::as_const(m_found.problems)) {
        messages.addMessage(problem, plugin::ErrorMessage);
    }
    messages.end(false, tr("Some plugins could not be loaded; see the messages"));
}

void project_window::closeEvent(QCloseEvent * event)
{
    // A debugger goes with the window: an export that it holds runs on to its end.
    for (QWidget * const window : QApplication::topLevelWidgets()) {
        if (window != this && window->isVisible() && qobject_cast<QMainWindow *>(window)) {
            window->close();
        }
    }
    if (m_pSession->isHeld()) {
        m_bCloseWhenIdle = true;
        statusBar()->showMessage(tr("The window closes when the export has ended"));
        event->ignore();
        return;
    }
    m_pPanes->writeState();
    event->accept();
}

void project_window::dragEnterEvent(QDragEnterEvent * event)
{
    if (!m_pSession->isHeld() && !fileOf(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void project_window::dropEvent(QDropEvent * event)
{
    const QString file = fileOf(event->mimeData());
    if (m_pSession->isHeld() || file.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    // The program that the file comes from waits until the drop is done; a dialog must not hold it.
    QTimer::singleShot(
        0, this, [this, file] { isProjectName(file) ? openFile(file) : m_pProjects->importModel(file); });
}

void project_window::openFile(const QString & file)
{
    m_pProjects->openFile(file);
}

void project_window::heldChanged()
{
    updateCommands();
    if (m_bCloseWhenIdle && !m_pSession->isHeld()) {
        m_bCloseWhenIdle = false;
        QMetaObject::invokeMethod(this, "close", Qt::QueuedConnection);
    }
}

void project_window::projectChanged()
{
    const std::shared_ptr<model::project> project = m_pSession->project();
    const QString file = m_pSession->file();
    if (file != m_sShownFile) {
        m_sShownFile = file;
        // A debugger that waits for the next export would run the script of the former project.
        for (const auto & loaded : m_found.plugins) {
            loaded->getInterface()->setCustomScript(nullptr);
        }
        m_pPanes->scripts().setScripts({});
        m_lblFindings->clear();
        m_pPanes->showPage(m_pPanes->diagram());
    }
    project_tree & tree = m_pPanes->tree();
    tree.setProject(project);
    m_pPanes->diagram().setProject(project);
    m_pPanes->diagram().selectEntity(tree.selectedEntity());
    m_pPanes->showProject(project != nullptr);
    m_lblModel->setText(project ? countsOf(*project) : QString());
    updateTitle();
    updateCommands();
}

void project_window::fileLost(const QString & reason)
{
    updateTitle();
    warn(this, tr("Korvane - Project file"),
         tr("%1\n\nThe window still shows the project as last read. "
            "To keep its model, use \"File > Save model as text…\".")
             .arg(reason));
}

void project_window::updateTitle()
{
    const std::shared_ptr<model::project> project = m_pSession->project();
    if (!project) {
        setWindowTitle(tr("Korvane"));
        setWindowFilePath({});
        return;
    }
    const QString file = zk::visibleText(QFileInfo(m_pSession->file()).fileName());
    const QString shown = m_pSession->isLost() ? tr("%1, cannot be read any more").arg(file) : file;
    setWindowTitle(tr("%1 (%2) - Korvane").arg(project->getName(), shown));
}

void project_window::updateCommands()
{
    const bool isIdle = !m_pSession->isHeld();
    m_pMenus->setPossible(isIdle, m_pSession->project() != nullptr);
    m_pPanes->welcome().setEnabled(isIdle);
}

void project_window::updateRecentFiles()
{
    const QStringList files = m_pProjects->recentFiles();
    m_pPanes->welcome().setRecentFiles(files);
    m_pMenus->setRecentFiles(files);
}

void project_window::showStatus(const QString & text)
{
    constexpr int time = 8000; // milliseconds
    statusBar()->showMessage(zk::visibleText(text), time);
}

} // namespace app
