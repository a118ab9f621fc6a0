#pragma once

#include "app/plugin_choice.h"
#include "app/window/recent_files.h"

#include "plugin/export_interface.h"
#include "tools/script_permission.h"

#include "view/main_wnd.h"
#include "zk/zk_bool.h"

#include <QElapsedTimer>
#include <QPair>
#include <QSet>

class QFileInfo;
class QLabel;
class QStackedWidget;
class QTabWidget;

namespace app {

class diagram_panel;
class export_menu;
struct export_report;
class message_panel;
class project_session;
class project_tree;
class script_panel;
class welcome_page;

/// The main window: shows a project, tags its versions and drives the export plug-ins.
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
    class busy_scope;

    // Construction.
    void createPanels();
    void createDocks();
    void createMenus();
    void createFileMenu();
    void createActionsMenu();
    void createViewMenu();
    void createHelpMenu();
    void createToolBar();
    QAction * addCommand(QMenu * menu, const QString & name, const QString & text, const QKeySequence & key,
                         const QString & tip, void (project_window::*command)());
    void readState();
    void writeState() const;

    // What the commands do.
    void chooseAndOpen();
    void chooseAndImport();
    QString chooseImportTarget(const QFileInfo & text);
    void importModel(const QString & modelFile);
    void chooseAndSaveText();
    void reload();
    void closeProject();
    void tag();
    void showVersions();
    void exportWith(plugin::export_interface * plugin);
    void showSettings(plugin::export_interface * plugin);
    void showManual();
    void showFolder(const QString & folder);
    void showAbout();
    void findInScript();

    void projectChanged();
    void fileLost(const QString & reason);
    void updateCommands();
    void updateTitle();
    void updateRecentFiles();
    void showPane(QWidget * pane);
    /// Makes sure that the project is as its file says; false after the reason was shown.
    bool refreshProject(const QString & title);
    tools::script_permission mayRunScript(const QString & file);
    void showExportEnd(const export_report & report, bool isCancelled);
    [[nodiscard]] static QString whyNothing(const export_report & report);
    void giveWayToEvents();
    void warn(const QString & title, const QString & text);
    void showStatus(const QString & text);
    [[nodiscard]] QString folderToStartIn() const;

    found_plugins m_found;
    recent_files m_recent;
    project_session * m_pSession = nullptr;
    project_tree * m_pTree = nullptr;
    diagram_panel * m_pDiagram = nullptr;
    message_panel * m_pMessages = nullptr;
    script_panel * m_pScripts = nullptr;
    welcome_page * m_pWelcome = nullptr;
    QStackedWidget * m_pCentre = nullptr;
    QTabWidget * m_tabPages = nullptr;
    QDockWidget * m_pTreeDock = nullptr;
    QDockWidget * m_pMessageDock = nullptr;
    export_menu * m_mnuExport = nullptr;
    QMenu * m_mnuRecent = nullptr;
    QLabel * m_lblModel = nullptr;
    QAction * m_actImport = nullptr;
    QAction * m_actOpen = nullptr;
    QAction * m_actTag = nullptr;
    QList<QAction *> m_whenIdle;  ///< not while an export is under way
    QList<QAction *> m_whenOpen;  ///< neither, and only with a project
    QList<QAction *> m_whenShown; ///< with a project, at any time
    QElapsedTimer m_sinceEvents;
    QString m_sShownFile;                           ///< of the project whose scripts may be shown
    QSet<QPair<QString, QString>> m_allowedScripts; ///< project file and script
    int m_iBusy = 0;
    bool m_bCloseWhenIdle = false;
};

} // namespace app
