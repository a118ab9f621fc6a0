#include "app/window/project_window.h"

#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/export_menu.h"
#include "app/window/project_session.h"
#include "app/window/tree/project_tree.h"
#include "app/window/welcome_page.h"

#include "app/export_run.h"

#include "context/ctx_global.h"
#include "model/project.h"
#include "plugin/export_interface.h"
#include "tools/held_dialog.h"
#include "tools/visible_text.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
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
    const QString suffix = QFileInfo(file).suffix().toLower();
    return suffix == QLatin1String("korv") || suffix == QLatin1String("json") ? file : QString();
}

/// The widget in which the keyboard is to begin when someone goes to `pane`: what it is there to show, else
/// itself.
QWidget * contentOf(QWidget * pane)
{
    for (QAbstractScrollArea * const area : pane->findChildren<QAbstractScrollArea *>()) {
        if (area->isVisibleTo(pane) && (area->focusPolicy() & Qt::TabFocus) == Qt::TabFocus) {
            return area;
        }
    }
    return pane;
}

} // namespace

project_window::project_window(QWidget * parent) : view::main_wnd(parent), m_found(found_plugins::inFolders())
{
    setObjectName(QStringLiteral("wnd_project"));
    setWindowIcon(QIcon(QStringLiteral(":/korvane/window/icons/korvane.svg")));
    setAcceptDrops(true);
    context::ctx_global::setMainWnd(this);
    createPanels();
    createDocks();
    createMenus();
    readState();
    projectChanged();
    updateRecentFiles();
    if (!m_found.problems.isEmpty()) {
        m_pMessages->begin(tr("Plugins"));
        for (const QString & problem : std::as_const(m_found.problems)) {
            m_pMessages->addMessage(problem, ErrorMessage);
        }
        m_pMessages->end(false, tr("Some plugins could not be loaded; see the messages"));
    }
}

project_window::~project_window()
{
    // Plug-ins go last, and what they hold of the project before the project.
    for (const auto & loaded : m_found.plugins) {
        loaded->getInterface()->setCustomScript(nullptr);
    }
    delete m_pSession;
    delete m_mnuExport;
    context::ctx_global::setMainWnd(nullptr);
}

void project_window::closeEvent(QCloseEvent * event)
{
    // A debugger goes with the window: an export that it holds runs on to its end.
    for (QWidget * const window : QApplication::topLevelWidgets()) {
        if (window != this && window->isVisible() && qobject_cast<QMainWindow *>(window)) {
            window->close();
        }
    }
    if (m_iBusy > 0) {
        m_bCloseWhenIdle = true;
        statusBar()->showMessage(tr("The window closes when the export has ended"));
        event->ignore();
        return;
    }
    writeState();
    event->accept();
}

void project_window::dragEnterEvent(QDragEnterEvent * event)
{
    if (m_iBusy == 0 && !fileOf(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void project_window::dropEvent(QDropEvent * event)
{
    const QString file = fileOf(event->mimeData());
    if (m_iBusy > 0 || file.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    // The program that the file comes from waits until the drop is done; a dialog must not hold it.
    QTimer::singleShot(0, this, [this, file] {
        QFileInfo(file).suffix().toLower() == QLatin1String("korv") ? openFile(file) : importModel(file);
    });
}

void project_window::openFile(const QString & file)
{
    if (m_iBusy > 0) {
        return;
    }
    const QString absolute = QFileInfo(file).absoluteFilePath();
    if (const zk::ZkBool opened = m_pSession->open(absolute); !opened) {
        if (!QFileInfo::exists(absolute)) {
            m_recent.remove(absolute);
            updateRecentFiles();
        }
        warn(tr("Korvane - Open"), opened.getDesc());
        return;
    }
    m_recent.add(absolute);
    updateRecentFiles();
    showStatus(tr("%1 opened").arg(QDir::toNativeSeparators(absolute)));
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
        m_pScripts->setScripts({});
        m_tabPages->setCurrentWidget(m_pDiagram);
    }
    m_pTree->setProject(project);
    m_pDiagram->setProject(project);
    m_pDiagram->selectEntity(m_pTree->selectedEntity());
    m_pCentre->setCurrentWidget(project ? static_cast<QWidget *>(m_tabPages) : m_pWelcome);
    m_lblModel->setText(project ? countsOf(*project) : QString());
    updateTitle();
    updateCommands();
}

void project_window::fileLost(const QString & reason)
{
    updateTitle();
    warn(tr("Korvane - Project file"), tr("%1\n\nThe window still shows the project as last read. To keep "
                                          "its model, use \"File > Save model as text…\".")
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
    const QString file = tools::visibleText(QFileInfo(m_pSession->file()).fileName());
    const QString shown = m_pSession->isLost() ? tr("%1, cannot be read any more").arg(file) : file;
    setWindowTitle(tr("%1 (%2) - Korvane").arg(project->getName(), shown));
}

void project_window::updateCommands()
{
    const bool isIdle = m_iBusy == 0;
    const bool isOpen = m_pSession->project() != nullptr;
    for (QAction * const action : std::as_const(m_whenIdle)) {
        action->setEnabled(isIdle);
    }
    for (QAction * const action : std::as_const(m_whenOpen)) {
        action->setEnabled(isIdle && isOpen);
    }
    for (QAction * const action : std::as_const(m_whenShown)) {
        action->setEnabled(isOpen);
    }
    m_pWelcome->setEnabled(isIdle);
}

void project_window::updateRecentFiles()
{
    m_pWelcome->setRecentFiles(m_recent.files());
    m_mnuRecent->clear();
    for (const QString & file : m_recent.files()) {
        QString name = tools::visibleText(QFileInfo(file).fileName());
        const QString path = tools::visibleText(QDir::toNativeSeparators(file));
        QAction * const action = m_mnuRecent->addAction(name.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(QStringLiteral("<qt>%1</qt>").arg(path.toHtmlEscaped()));
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, file] { openFile(file); });
    }
    if (m_recent.files().isEmpty()) {
        m_mnuRecent->addAction(tr("No recent projects"))->setEnabled(false);
        return;
    }
    m_mnuRecent->addSeparator();
    QAction * const clear = m_mnuRecent->addAction(tr("&Clear this list"));
    clear->setObjectName(QStringLiteral("m_actClearRecent"));
    connect(clear, &QAction::triggered, this, [this] {
        m_recent.clear();
        updateRecentFiles();
    });
}

void project_window::showPane(QWidget * pane)
{
    for (QDockWidget * const dock : {m_pTreeDock, m_pMessageDock}) {
        if (dock->widget() == pane) {
            dock->show();
            dock->raise();
        }
    }
    if (m_tabPages->indexOf(pane) >= 0) {
        m_tabPages->setCurrentWidget(pane);
    }
    contentOf(pane)->setFocus(Qt::ShortcutFocusReason);
}

void project_window::findInScript()
{
    showPane(m_pScripts);
    m_pScripts->find();
}

void project_window::showStatus(const QString & text)
{
    constexpr int time = 8000; // milliseconds
    statusBar()->showMessage(tools::visibleText(text), time);
}

void project_window::warn(const QString & title, const QString & text)
{
    const tools::held_dialog<QMessageBox> box(QMessageBox::Warning, title, tools::visibleText(text),
                                              QMessageBox::Ok, this);
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

} // namespace app
