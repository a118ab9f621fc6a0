#pragma once

#include <QObject>

class QDockWidget;
class QMainWindow;
class QStackedWidget;
class QTabWidget;
class QWidget;

namespace app {

class changes_panel;
class diagram_panel;
class message_panel;
class project_tree;
class script_panel;
class welcome_page;

/// The layout of the main window: its panels in docks and tabs, and the ways from one to another. They belong
/// to the window.
class window_panes : public QObject
{
    Q_OBJECT

public:
    explicit window_panes(QMainWindow & window);

    [[nodiscard]] project_tree & tree() const { return *m_pTree; }
    [[nodiscard]] diagram_panel & diagram() const { return *m_pDiagram; }
    [[nodiscard]] changes_panel & changes() const { return *m_pChanges; }
    [[nodiscard]] message_panel & messages() const { return *m_pMessages; }
    [[nodiscard]] script_panel & scripts() const { return *m_pScripts; }
    [[nodiscard]] welcome_page & welcome() const { return *m_pWelcome; }
    [[nodiscard]] QDockWidget & treeDock() const { return *m_pTreeDock; }
    [[nodiscard]] QDockWidget & messageDock() const { return *m_pMessageDock; }

    /// Shows diagram, changes and scripts, or the page for a window without a project.
    void showProject(bool isOpen);
    /// Brings the diagram, the changes or the scripts to the front, and leaves the keyboard where it is.
    void showPage(QWidget & page);
    /// Brings a panel to the front and the keyboard to it.
    void goTo(QWidget & pane);
    void goToFilter();
    void findInScript();
    void showMessages();

    /// Gives the window the size and the docks that it had last, or those of a new one.
    void readState();
    void writeState() const;

private:
    QDockWidget * createDock(const QString & title, const char * name, QWidget * pane,
                             Qt::DockWidgetArea area);

    QMainWindow & m_window;
    project_tree * m_pTree;
    diagram_panel * m_pDiagram;
    changes_panel * m_pChanges;
    message_panel * m_pMessages;
    script_panel * m_pScripts;
    welcome_page * m_pWelcome;
    QStackedWidget * m_pCentre;
    QTabWidget * m_tabPages;
    QDockWidget * m_pTreeDock;
    QDockWidget * m_pMessageDock;
};

} // namespace app
