#include "app/window/window_panes.h"

#include "app/window/changes/changes_panel.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/export/message_panel.h"
#include "app/window/export/script_panel.h"
#include "app/window/tree/project_tree.h"
#include "app/window/welcome_page.h"

#include <QAbstractScrollArea>
#include <QDockWidget>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QTabWidget>

namespace app {

namespace {

constexpr int StateVersion = 1; ///< of docks and tool bars; a stored state of another one is left alone
constexpr int TreeWidth = 380;
constexpr int MessageHeight = 190;
const QSize FirstSize(1200, 800);

const QString GeometryKey = QStringLiteral("window/geometry");
const QString StateKey = QStringLiteral("window/state");

/// The widget in which the keyboard is to begin when someone goes to `pane`: what it is there to show, else
/// itself.
QWidget * contentOf(QWidget & pane)
{
    for (QAbstractScrollArea * const area : pane.findChildren<QAbstractScrollArea *>()) {
        if (area->isVisibleTo(&pane) && (area->focusPolicy() & Qt::TabFocus) == Qt::TabFocus) {
            return area;
        }
    }
    return &pane;
}

} // namespace

window_panes::window_panes(QMainWindow & window)
    : QObject(&window), m_window(window), m_pTree(new project_tree), m_pDiagram(new diagram_panel),
      m_pChanges(new changes_panel), m_pMessages(new message_panel), m_pScripts(new script_panel),
      m_pWelcome(new welcome_page), m_pCentre(new QStackedWidget), m_tabPages(new QTabWidget)
{
    connect(m_pTree, &project_tree::entitySelected, m_pDiagram, &diagram_panel::selectEntity);
    connect(m_pDiagram, &diagram_panel::entitySelected, m_pTree, &project_tree::selectEntity);

    connect(m_pChanges, &changes_panel::objectReached, this, [this](long entity, long property) {
        if (entity != 0) {
            m_pTree->selectProperty(entity, property);
            m_pDiagram->selectEntity(entity);
        }
    });

    m_tabPages->setObjectName(QStringLiteral("m_tabPages"));
    m_tabPages->setAccessibleName(tr("Diagram, changes and scripts"));
    m_tabPages->setDocumentMode(true);
    m_tabPages->addTab(m_pDiagram, tr("Diagram"));
    m_tabPages->addTab(m_pChanges, tr("Changes"));
    m_tabPages->addTab(m_pScripts, tr("Scripts"));
    m_pCentre->addWidget(m_pWelcome);
    m_pCentre->addWidget(m_tabPages);
    m_window.setCentralWidget(m_pCentre);
    m_pTreeDock = createDock(tr("Model"), "m_pTreeDock", m_pTree, Qt::LeftDockWidgetArea);
    m_pMessageDock = createDock(tr("Messages"), "m_pMessageDock", m_pMessages, Qt::BottomDockWidgetArea);
    m_window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

QDockWidget * window_panes::createDock(const QString & title, const char * name, QWidget * pane,
                                       Qt::DockWidgetArea area)
{
    auto * const dock = new QDockWidget(title, &m_window);
    dock->setObjectName(QLatin1String(name));
    dock->setWidget(pane);
    m_window.addDockWidget(area, dock);
    return dock;
}

void window_panes::showProject(bool isOpen)
{
    m_pCentre->setCurrentWidget(isOpen ? static_cast<QWidget *>(m_tabPages) : m_pWelcome);
}

void window_panes::showPage(QWidget & page)
{
    m_tabPages->setCurrentWidget(&page);
}

void window_panes::goTo(QWidget & pane)
{
    for (QDockWidget * const dock : {m_pTreeDock, m_pMessageDock}) {
        if (dock->widget() == &pane) {
            dock->show();
            dock->raise();
        }
    }
    if (m_tabPages->indexOf(&pane) >= 0) {
        showPage(pane);
    }
    contentOf(pane)->setFocus(Qt::ShortcutFocusReason);
}

void window_panes::goToFilter()
{
    m_pTreeDock->show();
    m_pTree->focusFilter();
}

void window_panes::findInScript()
{
    goTo(*m_pScripts);
    m_pScripts->find();
}

void window_panes::showMessages()
{
    m_pMessageDock->show();
    m_pMessageDock->raise();
}

void window_panes::readState()
{
    const QSettings settings;
    m_window.resize(FirstSize.boundedTo(m_window.screen()->availableSize()));
    m_window.restoreGeometry(settings.value(GeometryKey).toByteArray());
    if (!m_window.restoreState(settings.value(StateKey).toByteArray(), StateVersion)) {
        m_window.resizeDocks({m_pTreeDock}, {TreeWidth}, Qt::Horizontal);
        m_window.resizeDocks({m_pMessageDock}, {MessageHeight}, Qt::Vertical);
    }
}

void window_panes::writeState() const
{
    QSettings settings;
    settings.setValue(GeometryKey, m_window.saveGeometry());
    settings.setValue(StateKey, m_window.saveState(StateVersion));
}

} // namespace app
