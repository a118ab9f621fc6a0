#pragma once

#include "app/plugin_choice.h"

#include "view/main_wnd.h"

#include <memory>

class QLabel;

namespace app {

class changes_controller;
class check_controller;
class database_controller;
class export_controller;
class project_commands;
class project_session;
class version_comparison;
class window_menus;
class window_panes;

/// The main window: puts panels, menus and commands together, and shows which project is open.
class project_window : public view::main_wnd
{
    Q_OBJECT

public:
    explicit project_window(QWidget * parent = nullptr);
    ~project_window() override;

    /// Opens a project file; a failure is shown, and what was open stays open.
    void openFile(const QString & file);

protected:
    void closeEvent(QCloseEvent * event) override;
    void dragEnterEvent(QDragEnterEvent * event) override;
    void dropEvent(QDropEvent * event) override;

private:
    void connectSession();
    void connectCommands();
    void projectChanged();
    void goTo(const QVariant & target);
    void heldChanged();
    void fileLost(const QString & reason);
    void updateCommands();
    void updateTitle();
    void updateRecentFiles();
    void showPluginProblems();
    void createHoldNotice();
    void showStatus(const QString & text);

    found_plugins m_found;
    project_session * m_pSession;
    window_panes * m_pPanes;
    export_controller * m_pExports;
    std::unique_ptr<version_comparison> m_pComparison;
    project_commands * m_pProjects;
    database_controller * m_pDatabases;
    changes_controller * m_pChanges;
    check_controller * m_pChecks;
    window_menus * m_pMenus;
    QLabel * m_lblModel;
    QLabel * m_lblFindings;
    QString m_sShownFile; ///< of the project whose scripts may be shown
    bool m_bCloseWhenIdle = false;
};

} // namespace app
