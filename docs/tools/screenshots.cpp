// Takes the pictures of the manual from the real windows: screenshots FOLDER; with "all", more states of the
// main window than the manual shows.

#include "app/window/database/database_dialog.h"
#include "app/window/legible_colours.h"
#include "docs/tools/picture_style.h"
#include "docs/tools/window_pictures.h"
#include "support/debugger_driver.h"
#include "support/stored_project.h"

#include "plugin/ddl_export.h"
#include "tools/custom_javascript.h"
#include "view/ddl_export_settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStyleFactory>
#include <QTextBlock>

#include <iostream>

using plugin::ddl_export;

namespace {

/// Takes the pictures in one colour scheme.
class photographer
{
public:
    photographer(const QDir & folder, const QString & scheme) : m_folder(folder), m_sScheme(scheme)
    {
        m_plugin.setDDLExportPath(m_stored.path());
        m_plugin.setDatabaseType(ddl_export::db_postgresql);
        m_plugin.setExportRelationships(true);
        m_plugin.setCustomScriptFile(QStringLiteral("custom_script.js"));
        QFile::copy(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.js"),
                    m_stored.path(QStringLiteral("custom_script.js")));
        if (m_plugin.saveSettings().isValid()) {
            qFatal("the settings cannot be stored");
        }
    }

    void settings()
    {
        view::ddl_export_settings dialog;
        dialog.init(&m_plugin);
        // The folder of this run has a different name each time.
        dialog.findChild<QLineEdit *>(QStringLiteral("m_txtFileLocation"))->setText(QStringLiteral("sql"));
        show(dialog);
        save(dialog, "settings");
        dialog.resize(dialog.width(), 900);
        QCoreApplication::processEvents();
        QWidget * const table = dialog.findChild<QWidget *>(QStringLiteral("m_grpTypeMapping"));
        save(*table, "mapping_postgresql");
        const auto whenShown = [this] {
            if (auto * const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                save(*box, "warning");
                box->accept();
            }
        };
        QTimer::singleShot(300, whenShown);
        dialog.findChild<QPushButton *>(QStringLiteral("m_btnOk"))->click();
    }

    /// The tables of a SQLite file, of which one is left out.
    void database()
    {
        const QString before = QDir::currentPath();
        QDir::setCurrent(m_stored.path()); // a place that is the same in each run
        {
            QSqlDatabase club = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("club"));
            club.setDatabaseName(QStringLiteral("club.db"));
            if (!club.open()) {
                qFatal("the database cannot be made");
            }
            for (const char * const table : {"fee", "member", "team", "team_member", "training"}) {
                QSqlQuery(QStringLiteral("CREATE TABLE %1 (id INTEGER)").arg(QLatin1String(table)), club);
            }
        }
        QSqlDatabase::removeDatabase(QStringLiteral("club"));
        app::database_dialog dialog(QStringLiteral("."), nullptr);
        dialog.findChild<QLineEdit *>(QStringLiteral("m_txtPlace"))->setText(QStringLiteral("club.db"));
        dialog.findChild<QPushButton *>(QStringLiteral("m_btnConnect"))->click();
        dialog.findChild<QListWidget *>(QStringLiteral("m_lstTables"))->item(4)->setCheckState(Qt::Unchecked);
        show(dialog);
        save(dialog, "database");
        QDir::setCurrent(before);
    }

    void debugger()
    {
        const auto script = std::make_shared<tools::custom_javascript>();
        if (!script->initEngine(QStringLiteral("custom_script.js"), &m_plugin) || !script->runDebugger()) {
            qFatal("the debugger does not start");
        }
        m_plugin.setCustomScript(script);
        auto * const source =
            support::debuggerWindow()->findChild<QPlainTextEdit *>(QStringLiteral("m_txtSource"));
        const QTextCursor line = source->document()->find(QStringLiteral("if (ADD_COMMENTS"));
        const QTextCursor other = source->document()->find(QStringLiteral("const columns = "));
        for (const QTextCursor & place : {line, other}) {
            if (!place.isNull()) {
                source->setTextCursor(place);
                support::debuggerWindow()
                    ->findChild<QAction *>(QStringLiteral("m_actToggleBreakpoint"))
                    ->trigger();
            }
        }
        const support::debugger_driver driver(
            {support::debugger_driver::command("m_actContinue"), [this](support::debugger_driver & d) {
                 d.evaluate(QStringLiteral("entity.getName()"));
                 d.evaluate(QStringLiteral("entity.getListOfProperty().map(p => p.getName())"));
                 d.find<QLineEdit>("m_txtInput")->clear();
                 QTest::qWait(200);
                 save(*support::debuggerWindow(), "debugger");
                 d.find<QAction>("m_actDetach")->trigger();
             }});
        if (const zk::ZkBool result = m_plugin.exportProject(m_stored.project()); !result) {
            qFatal("%s", qPrintable(result.getDesc()));
        }
    }

private:
    static void show(QWidget & window)
    {
        window.show();
        window.activateWindow();
        QTest::qWait(200);
    }
    void save(QWidget & window, const char * name) const
    {
        pictures::save(window, m_folder, name, m_sScheme);
    }

    static QByteArray sample()
    {
        QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival.json"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QDir m_folder;
    QString m_sScheme;
    support::stored_project m_stored{sample()};
    ddl_export m_plugin;
};

} // namespace

int main(int argc, char ** argv)
{
    QApplication application(argc, argv);
    if (argc != 2 && argc != 3) {
        std::cerr << "usage: screenshots FOLDER [all]\n";
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    const QPalette light = QApplication::palette();
    for (const bool isDark : {false, true}) {
        QApplication::setPalette(isDark ? pictures::darkPalette() : light);
        const app::legible_colours colours;
        const QString scheme = isDark ? QStringLiteral("dark") : QStringLiteral("light");
        photographer camera(folder, scheme);
        camera.settings();
        camera.database();
        camera.debugger();
        pictures::takeWindow(folder, scheme, argc == 3);
    }
    return 0;
}
