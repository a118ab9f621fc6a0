// Exports from the main window: what it shows, that it writes what the command line writes, and what happens
// when the person says no, the script fails, or the debugger is closed in the middle.

#include "app/window/window_bench.h"
#include "support/browser.h"
#include "support/debugger_driver.h"
#include "support/modal_driver.h"
#include "support/shop_text.h"

#include <QComboBox>
#include <QDockWidget>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTabWidget>
#include <QTextDocument>
#include <QToolBar>
#include <QToolButton>

using support::debugger_driver;
using support::debuggerWindow;
using support::modal_driver;
using support::ShopText;
using support::window_bench;

namespace {

const QByteArray UpperScript = "function exportStep(project, entity, property, enumeration, parameters) {\n"
                               "    return parameters.action + ' ' + (entity ? entity.getName() : '');\n"
                               "}\n";

} // namespace

class tst_window_export : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_bench = std::make_unique<window_bench>(ShopText);
        QDir().mkpath(m_bench->path("sql"));
    }
    void cleanup() { m_bench.reset(); }

    void scriptsAreShown();
    void sameFilesAsTheCommandLine();
    void secondExport();
    void changesOnDiskAreExported();
    void cancelledInTheQuestion();
    void createdInTheQuestion();
    void evolutionWithoutVersions();
    void failingScript();
    void failureKeepsWhatIsComplete();
    void debuggerClosedInTheMiddle();
    void debuggerThatHoldsIsTold();
    void cancelEndsBetweenStatements();
    void cancelKeepsWhatIsComplete_data();
    void cancelKeepsWhatIsComplete();
    void shiftInTheMenu();
    void messagesComeWhileItRuns();
    void nothingElseBeginsMeanwhile();
    void windowClosedMeanwhile();
    void debuggerOutlivesTheExport();
    void folderIsOpened();
    void folderThatNothingCanShow();
    void otherProjectTakesTheScriptsAway();
    void settingsAreThoseOfTheProject();
    void debuggerGoesWithItsProject();
    void settingsOfAFileThatIsRemovedMeanwhile();
    void changeWhileTheSettingsAreShown();
    void nothingDroppedBeginsMeanwhile();
    void toolTipsOfScripts();
    void storedScriptIsAskedFor();

private:
    /// Stores the settings of the export as the dialog of the plug-in does.
    void setUp(const QString & folder, int schema = 0, const QString & script = {}) const
    {
        modal_driver driver({[&](QWidget * w) {
            w->findChild<QLineEdit *>("m_txtFileLocation")->setText(folder);
            w->findChild<QLineEdit *>("m_txtCustomScript")->setText(script);
            const char * const modes[] = {"m_optSchemaFull", "m_optSchemaEvolution",
                                          "m_optSchemaFullAndEvolution"};
            w->findChild<QAbstractButton *>(modes[schema])->click();
            w->findChild<QAbstractButton *>("m_chkRelationships")->setChecked(true);
            QTest::mouseClick(w->findChild<QWidget *>("m_btnOk"), Qt::LeftButton);
        }});
        m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
        if (!driver.isDone()) {
            qFatal("the settings were not stored: %s", qPrintable(driver.texts.join('\n')));
        }
    }
    void exportByKey() const { m_bench->press(Qt::Key_E, Qt::ControlModifier); }
    /// Clicks the tool button of the export with Shift held.
    void exportWithShift() const;
    [[nodiscard]] QStringList tabs() const
    {
        QStringList names;
        for (const QString & file : m_bench->scripts().scripts()) {
            names << QFileInfo(file).fileName();
        }
        return names;
    }
    /// What the script in front shows.
    [[nodiscard]] QString shownScript() const
    {
        auto * const text = m_bench->scripts().findChild<QPlainTextEdit *>();
        return text ? text->toPlainText() : QString();
    }
    void waitForLine(const QString & line) const
    {
        QTRY_VERIFY2(m_bench->told().contains(line), qPrintable(m_bench->told()));
    }

    std::unique_ptr<window_bench> m_bench;
};

void tst_window_export::exportWithShift() const
{
    auto * const bar = m_bench->find<QToolBar>("m_barTools");
    QWidget * const button = bar->widgetForAction(m_bench->action("m_actExport_KorvGenericDDLExport"));
    // Through the window system: only so does the key count as held.
    QWindow * const window = m_bench->window().windowHandle();
    const QPoint place = button->mapTo(&m_bench->window(), button->rect().center());
    QTest::mouseClick(window, Qt::LeftButton, Qt::ShiftModifier, place);
    QTest::mouseMove(window, place);
}

void tst_window_export::scriptsAreShown()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    exportByKey();
    QCOMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QVERIFY(m_bench->scripts().isVisible());
    QCOMPARE(shownScript().trimmed(),
             QString::fromUtf8(m_bench->content("sql/shop_sqlite_db_schema_full.sql")).trimmed());
    waitForLine("Export of 'shop' with KorvGenericDDLExport");
    waitForLine("Full database schema : create table DDL SQL script for entity 'person' (" +
                m_bench->path("sql/shop_sqlite_db_schema_full.sql") + ")");
    waitForLine("1 script written to " + m_bench->path("sql"));
    QCOMPARE(m_bench->messages().errorCount(), 0);
    auto * const bar = m_bench->messages().findChild<QProgressBar *>();
    QCOMPARE(bar->value(), bar->maximum());
    QVERIFY(bar->maximum() > 0);
}

void tst_window_export::sameFilesAsTheCommandLine()
{
    m_bench->open();
    window_bench::run({"tag", m_bench->file(), "-m", "one"});
    m_bench->import(QByteArray(ShopText).replace("\"country_id\"", "\"land_id\""));
    setUp(m_bench->path("sql"), 2);
    exportByKey();
    QCOMPARE(tabs(), (QStringList{"shop_sqlite_db_schema_full.sql", "shop_sqlite_db_schema_v1.sql",
                                  "shop_sqlite_db_schema_v1_to_v2.sql"}));
    QDir().mkpath(m_bench->path("cli"));
    window_bench::run({"export", m_bench->file(), "--KorvGenericDDLExport_path=" + m_bench->path("cli")});
    QCOMPARE(QDir(m_bench->path("cli")).entryList(QDir::Files), tabs());
    for (const QString & name : tabs()) {
        const QByteArray script = m_bench->content("sql/" + name);
        QVERIFY2(script.contains("person"), qPrintable(name));
        QCOMPARE(script, m_bench->content("cli/" + name));
    }
}

void tst_window_export::secondExport()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    exportByKey();
    m_bench->action("m_actGoDiagram")->trigger();
    exportByKey();
    QCOMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QVERIFY(m_bench->scripts().isVisible());
}

void tst_window_export::changesOnDiskAreExported()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"visitor\""));
    exportByKey();
    QVERIFY(m_bench->content("sql/shop_sqlite_db_schema_full.sql").contains("CREATE TABLE visitor"));
}

void tst_window_export::cancelledInTheQuestion()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    QVERIFY(QDir(m_bench->path("sql")).removeRecursively());
    // After No the settings are offered; a person who gives them up as well exports nothing.
    modal_driver driver({modal_driver::click(QMessageBox::No), modal_driver::key(Qt::Key_Escape)});
    exportByKey();
    QVERIFY(driver.isDone());
    QCOMPARE(driver.titles[0], "Korvane - KorvGenericDDLExport");
    QVERIFY(driver.texts[0].startsWith("Export directory '" + m_bench->path("sql") + "' doesn't exist."));
    QVERIFY(!QFile::exists(m_bench->path("sql")));
    QCOMPARE(tabs(), QStringList());
    QCOMPARE(m_bench->messages().errorCount(), 0);
    waitForLine("The export was cancelled; nothing was written");
    QVERIFY(m_bench->action("m_actTag")->isEnabled());
}

void tst_window_export::createdInTheQuestion()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    QVERIFY(QDir(m_bench->path("sql")).removeRecursively());
    modal_driver driver({modal_driver::click(QMessageBox::Yes)});
    exportByKey();
    QVERIFY(driver.isDone());
    QCOMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
}

void tst_window_export::evolutionWithoutVersions()
{
    m_bench->open();
    setUp(m_bench->path("sql"), 1);
    exportByKey();
    QCOMPARE(tabs(), QStringList());
    const char * const why =
        "Nothing was written: evolution scripts need a tagged version. Use \"Actions > Tag "
        "project state…\" first";
    waitForLine(why);
    m_bench->messages().clear();
    // A question that is answered is no cancelling.
    QVERIFY(QDir(m_bench->path("sql")).removeRecursively());
    modal_driver driver({modal_driver::click(QMessageBox::Yes)});
    exportByKey();
    QVERIFY(driver.isDone());
    waitForLine(why);
}

void tst_window_export::failingScript()
{
    m_bench->write("hook.js", "function exportStep(p, entity, q, e, parameters) {\n"
                              "    if (entity && entity.getName() === 'person') {\n"
                              "        throw new Error('no people here');\n"
                              "    }\n"
                              "}\n");
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    m_bench->find<QDockWidget>("m_pMessageDock")->hide();
    exportByKey();
    waitForLine(m_bench->path("hook.js"));
    waitForLine("no people here");
    waitForLine("The export failed");
    // The reason and the closing line: the reason is not told twice.
    QCOMPARE(m_bench->told().count("no people here"), 1);
    QCOMPARE(tabs(), QStringList());
    QVERIFY(m_bench->action("m_actExport_KorvGenericDDLExport")->isEnabled());
    QVERIFY(m_bench->find<QDockWidget>("m_pMessageDock")->isVisible());

    // The person mends the script and exports again.
    m_bench->write("hook.js", UpperScript);
    exportByKey();
    QCOMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QVERIFY(shownScript().contains("CREATE_TABLE person"));

    // A failure after that takes the scripts away: their files are no longer what they were.
    m_bench->write("hook.js", "function exportStep() { throw new Error('never'); }\n");
    exportByKey();
    QCOMPARE(tabs(), QStringList());
}

void tst_window_export::failureKeepsWhatIsComplete()
{
    m_bench->open();
    window_bench::run({"tag", m_bench->file()});
    QDir().mkpath(m_bench->path("sql/shop_sqlite_db_schema_v1.sql"));
    setUp(m_bench->path("sql"), 2);
    exportByKey();
    waitForLine("An error occurred opening SQL file : " + m_bench->path("sql/shop_sqlite_db_schema_v1.sql"));
    QCOMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QVERIFY(m_bench->messages().errorCount() > 0);
}

void tst_window_export::debuggerClosedInTheMiddle()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    debugger_driver driver(
        {debugger_driver::command("m_actStep"), [](debugger_driver &) { debuggerWindow()->close(); }});
    exportWithShift();
    QTRY_COMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QCOMPARE(driver.places.size(), 2);
    QVERIFY(!debuggerWindow());
    QCOMPARE(m_bench->content("sql/shop_sqlite_db_schema_full.sql"),
             QByteArray("DDL_EXPORT_BEGIN \nCREATE_TABLE country\nCREATE_TABLE person\nDDL_EXPORT_END \n"));
    QVERIFY(m_bench->window().isVisible());
    QVERIFY(m_bench->action("m_actExport_KorvGenericDDLExport")->isEnabled());
}

void tst_window_export::debuggerThatHoldsIsTold()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    auto * const notice = m_bench->find<QWidget>("m_wdgHeld");
    QVERIFY(!notice->isVisible());
    bool isTold = false;
    bool isBack = false;
    const debugger_driver driver({[&](debugger_driver & d) {
        isTold = notice->isVisible();
        debuggerWindow()->showMinimized();
        QTest::mouseClick(m_bench->find<QPushButton>("m_btnGoToDebugger"), Qt::LeftButton);
        isBack = !debuggerWindow()->isMinimized();
        d.find<QAction>("m_actDetach")->trigger();
    }});
    exportWithShift();
    QVERIFY(isTold);
    QVERIFY(isBack);
    QTRY_VERIFY(!notice->isVisible());
}

void tst_window_export::cancelEndsBetweenStatements()
{
    // Slow enough for the window to come to its events before the end.
    m_bench->write("hook.js",
                   "function exportStep() { const begin = Date.now(); while (Date.now() - begin < 60); }");
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    QTimer clicks;
    clicks.setInterval(5);
    auto * const cancel = m_bench->find<QPushButton>("m_btnCancel");
    const QString script = m_bench->path("sql/shop_sqlite_db_schema_full.sql");
    connect(&clicks, &QTimer::timeout, cancel, [cancel, script] {
        if (cancel->isVisible() && cancel->isEnabled() && QFile::exists(script)) {
            QTest::mouseClick(cancel, Qt::LeftButton);
        }
    });
    clicks.start();
    m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
    QVERIFY2(m_bench->told().contains("The SQL file is incomplete : " + script), qPrintable(m_bench->told()));
    QVERIFY2(m_bench->told().endsWith("The export was cancelled; 0 scripts are complete"),
             qPrintable(m_bench->told()));
    QVERIFY(!cancel->isVisible());
    // No statement is cut in the middle.
    const QByteArray written = m_bench->content("sql/shop_sqlite_db_schema_full.sql");
    QVERIFY(written.endsWith('\n'));
    QVERIFY2(!written.contains("END TRANSACTION"), written.constData());
    // The next one is whole.
    clicks.stop();
    m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
    QVERIFY(m_bench->content("sql/shop_sqlite_db_schema_full.sql").contains("END TRANSACTION"));
}

void tst_window_export::cancelKeepsWhatIsComplete_data()
{
    QTest::addColumn<QString>("begun");
    QTest::addColumn<QString>("told");
    QTest::newRow("one") << "shop_sqlite_db_schema_v1.sql"
                         << "The export was cancelled; 1 script is complete";
    QTest::newRow("two") << "shop_sqlite_db_schema_v1_to_v2.sql"
                         << "The export was cancelled; 2 scripts are complete";
}

void tst_window_export::cancelKeepsWhatIsComplete()
{
    QFETCH(const QString, begun);
    QFETCH(const QString, told);
    m_bench->write("hook.js",
                   "function exportStep() { const begin = Date.now(); while (Date.now() - begin < 60); }");
    window_bench::run({"tag", m_bench->file()});
    m_bench->open();
    setUp(m_bench->path("sql"), 2, m_bench->path("hook.js"));
    QTimer clicks;
    clicks.setInterval(5);
    auto * const cancel = m_bench->find<QPushButton>("m_btnCancel");
    connect(&clicks, &QTimer::timeout, cancel, [&] {
        if (QFile::exists(m_bench->path("sql/" + begun)) && cancel->isVisible() && cancel->isEnabled()) {
            QTest::mouseClick(cancel, Qt::LeftButton);
        }
    });
    clicks.start();
    m_bench->action("m_actExport_KorvGenericDDLExport")->trigger();
    QVERIFY2(m_bench->told().endsWith(told), qPrintable(m_bench->told()));
    QVERIFY2(m_bench->told().contains("The SQL file is incomplete : " + m_bench->path("sql/" + begun)),
             qPrintable(m_bench->told()));
}

void tst_window_export::shiftInTheMenu()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    const debugger_driver driver({debugger_driver::command("m_actDetach")});
    auto * const menu = m_bench->find<QMenu>("m_mnuExport");
    menu->popup(m_bench->window().mapToGlobal(QPoint(0, 0)));
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    QTest::keyClick(menu->windowHandle(), Qt::Key_Down);
    QTest::keyClick(menu->windowHandle(), Qt::Key_Return, Qt::ShiftModifier);
    QTRY_COMPARE(tabs().size(), 1);
    QCOMPARE(driver.places.size(), 1);
}

void tst_window_export::messagesComeWhileItRuns()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    // Each step stops before and after the script's answer: the first statement, the first table, the second.
    const QStringList expected{"0 of 1000, 0", "0 of 1000, 0", "300 of 1000, 0", "300 of 1000, 0",
                               "600 of 1000, 1"};
    QStringList seen;
    const auto shown = [&] {
        const auto * const bar = m_bench->messages().findChild<QProgressBar *>();
        return QStringLiteral("%1 of %2, %3")
            .arg(bar->value())
            .arg(bar->maximum())
            .arg(m_bench->told().count("create table DDL SQL script"));
    };
    const auto look = [&](debugger_driver & d) {
        QTest::qWait(100); // what comes too early is there by then
        (void)QTest::qWaitFor([&] { return shown() == expected.value(seen.size()); });
        seen << shown();
        d.find<QAction>("m_actStep")->trigger();
    };
    const debugger_driver driver({look, look, look, look, look, debugger_driver::command("m_actDetach")});
    exportWithShift();
    QTRY_COMPARE(tabs().size(), 1);
    QCOMPARE(seen, expected);
    QTRY_COMPARE(m_bench->told().count("create table DDL SQL script"), 2);
}

void tst_window_export::nothingElseBeginsMeanwhile()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    int looks = 0;
    const debugger_driver driver({[&](debugger_driver & d) {
        ++looks;
        for (const char * const name :
             {"m_actOpen", "m_actImport", "m_actImportDatabase", "m_actReload", "m_actClose", "m_actTag",
              "m_actVersions", "m_actExport_KorvGenericDDLExport", "m_actSettings_KorvGenericDDLExport"}) {
            QVERIFY2(!m_bench->action(name)->isEnabled(), name);
        }
        // The project stays what it is, whoever changes its file.
        m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"visitor\""));
        m_bench->window().openFile(m_bench->path("other.korv"));
        QTest::qWait(500);
        d.find<QAction>("m_actDetach")->trigger();
    }});
    exportWithShift();
    QTRY_COMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QCOMPARE(looks, 1);
    QVERIFY(m_bench->content("sql/shop_sqlite_db_schema_full.sql").contains("CREATE_TABLE person"));
    QVERIFY(m_bench->action("m_actTag")->isEnabled());
    // Afterwards the change shows.
    const auto * const model = m_bench->tree().findChild<QTreeView *>()->model();
    QTRY_COMPARE(model->index(1, 0).data().toString(), "visitor");
}

void tst_window_export::windowClosedMeanwhile()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    const debugger_driver driver({[&](debugger_driver &) {
        m_bench->window().close();
        QVERIFY(m_bench->window().isVisible());
    }});
    exportWithShift();
    QTRY_VERIFY(!m_bench->window().isVisible());
    QVERIFY(!debuggerWindow());
    QVERIFY(m_bench->content("sql/shop_sqlite_db_schema_full.sql").endsWith("DDL_EXPORT_END \n"));
}

void tst_window_export::debuggerOutlivesTheExport()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    debugger_driver driver({debugger_driver::command("m_actStep")});
    exportWithShift();
    QTRY_COMPARE(tabs(), QStringList{"shop_sqlite_db_schema_full.sql"});
    QVERIFY(debuggerWindow());
    const qsizetype stops = driver.places.size();
    exportByKey();
    QVERIFY(driver.places.size() > stops);
    // It goes with the window.
    m_bench->closeWindow();
    QVERIFY(!debuggerWindow());
}

void tst_window_export::storedScriptIsAskedFor()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"));
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "setting");
        database.setDatabaseName(m_bench->file());
        QVERIFY(database.open());
        QVERIFY(
            QSqlQuery(database).exec("UPDATE t_plugin_params SET param_value = 'hook.js' WHERE param_key = "
                                     "'DDL_EXPORT_CUSTOM_JAVASCRIPT'"));
    }
    QSqlDatabase::removeDatabase("setting");
    const QString script = "sql/shop_sqlite_db_schema_full.sql";
    modal_driver driver({modal_driver::key(Qt::Key_Escape), modal_driver::click(QMessageBox::No),
                         modal_driver::click(QMessageBox::Yes)});
    exportByKey();
    QCOMPARE(driver.texts.value(0), "The project names a custom script, which runs with your rights:\n" +
                                        m_bench->path("hook.js") +
                                        "\n\nDo you want to run it? With No the export leaves it out.");
    QVERIFY(!QFile::exists(m_bench->path(script)));
    waitForLine("The export was cancelled; nothing was written");
    exportByKey();
    QVERIFY(m_bench->content(script).contains("CREATE TABLE person"));
    exportByKey();
    QVERIFY(m_bench->content(script).contains("CREATE_TABLE person"));
    QVERIFY(driver.isDone());
    // It was allowed for this project.
    QVERIFY(QFile::remove(m_bench->path(script)));
    exportByKey();
    QVERIFY(m_bench->content(script).contains("CREATE_TABLE person"));
    QVERIFY(driver.isDone());
}

void tst_window_export::folderIsOpened()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    exportByKey();
    const support::browser files;
    QTest::mouseClick(m_bench->find<QAbstractButton>("m_btnOpenFolder"), Qt::LeftButton);
    QCOMPARE(files.opened, QList<QUrl>{QUrl::fromLocalFile(m_bench->path("sql"))});
}

void tst_window_export::folderThatNothingCanShow()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    exportByKey();
    modal_driver driver({modal_driver::click(QMessageBox::Ok)});
    QTest::mouseClick(m_bench->find<QAbstractButton>("m_btnOpenFolder"), Qt::LeftButton);
    QVERIFY(driver.isDone());
    QCOMPARE(driver.texts, QStringList{"The folder could not be opened: " + m_bench->path("sql")});
}

void tst_window_export::otherProjectTakesTheScriptsAway()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    exportByKey();
    QCOMPARE(tabs().size(), 1);
    const QString other = m_bench->path("other.korv");
    QVERIFY(QFile::copy(m_bench->file(), other));
    m_bench->window().openFile(other);
    QCOMPARE(tabs(), QStringList());
    QVERIFY(!m_bench->scripts().isVisible());
}

void tst_window_export::settingsAreThoseOfTheProject()
{
    const QString other = m_bench->path("other.korv");
    QVERIFY(QFile::copy(m_bench->file(), other));
    m_bench->open();
    setUp(m_bench->path("sql"), 2);
    exportByKey();
    m_bench->window().openFile(other);
    // Nothing is stored in this project: no setting of the other one is shown for it.
    QString folder = "not looked at";
    bool isFull = false;
    modal_driver settings({[&](QWidget * w) {
        folder = w->findChild<QLineEdit *>("m_txtFileLocation")->text();
        isFull = w->findChild<QAbstractButton *>("m_optSchemaFull")->isChecked();
        QTest::keyClick(w, Qt::Key_Escape);
    }});
    m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
    QVERIFY(settings.isDone());
    QCOMPARE(folder, "");
    QVERIFY(isFull);
    // Nor is it exported to the folder of the other one.
    QVERIFY(QDir(m_bench->path("sql")).removeRecursively() && QDir().mkpath(m_bench->path("sql")));
    m_bench->window().openFile(m_bench->file());
    exportByKey();
    QCOMPARE(tabs().size(), 1);
    QVERIFY(QDir(m_bench->path("sql")).removeRecursively() && QDir().mkpath(m_bench->path("sql")));
    m_bench->window().openFile(other);
    modal_driver driver({modal_driver::key(Qt::Key_Escape)});
    exportByKey();
    QVERIFY(driver.isDone());
    QCOMPARE(tabs(), QStringList());
    QCOMPARE(QDir(m_bench->path("sql")).entryList(QDir::Files), QStringList());
}

void tst_window_export::debuggerGoesWithItsProject()
{
    const QString other = m_bench->path("other.korv");
    QVERIFY(QFile::copy(m_bench->file(), other));
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    const debugger_driver driver({debugger_driver::command("m_actStep")});
    exportWithShift();
    QTRY_COMPARE(tabs().size(), 1);
    QVERIFY(debuggerWindow());
    m_bench->window().openFile(other);
    QVERIFY(!debuggerWindow());
    // Its script is none of the other project's.
    setUp(m_bench->path("sql"));
    exportByKey();
    QCOMPARE(tabs().size(), 1);
    QVERIFY2(shownScript().contains("CREATE TABLE person"), qPrintable(shownScript()));
}

void tst_window_export::settingsOfAFileThatIsRemovedMeanwhile()
{
    m_bench->open();
    setUp(m_bench->path("sql"));
    // The plug-in says that it cannot store them; the window, that the file is lost.
    modal_driver driver({[this](QWidget * w) {
                             QVERIFY(QFile::remove(m_bench->file()));
                             QTest::mouseClick(w->findChild<QWidget *>("m_btnOk"), Qt::LeftButton);
                             QTest::keyClick(w, Qt::Key_Escape);
                         },
                         modal_driver::click(QMessageBox::Ok), modal_driver::click(QMessageBox::Ok)});
    m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
    QTRY_VERIFY(driver.isDone());
    QCOMPARE(driver.titles.constLast(), "Korvane - Project file");
    QVERIFY2(driver.texts[1].contains("does not exist"), qPrintable(driver.texts[1]));
    QVERIFY(!QFile::exists(m_bench->file()));
}

void tst_window_export::changeWhileTheSettingsAreShown()
{
    m_bench->open();
    modal_driver driver({[this](QWidget * w) {
        m_bench->import(QByteArray(ShopText).replace("\"person\"", "\"visitor\""));
        w->findChild<QLineEdit *>("m_txtFileLocation")->setText(m_bench->path("sql"));
        QTest::mouseClick(w->findChild<QWidget *>("m_btnOk"), Qt::LeftButton);
    }});
    m_bench->action("m_actSettings_KorvGenericDDLExport")->trigger();
    QVERIFY(driver.isDone());
    const auto * const model = m_bench->tree().findChild<QTreeView *>()->model();
    QTRY_COMPARE(model->index(1, 0).data().toString(), "visitor");
}

void tst_window_export::nothingDroppedBeginsMeanwhile()
{
    m_bench->write("hook.js", UpperScript);
    m_bench->open();
    setUp(m_bench->path("sql"), 0, m_bench->path("hook.js"));
    modal_driver dialogs({});
    const debugger_driver driver({[](debugger_driver & d) {
        QTest::qWait(100);
        d.find<QAction>("m_actDetach")->trigger();
    }});
    // What is dropped begins when the drop is over; by then the export is under way.
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_bench->path("shop.json"))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_bench->window(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_bench->window(), &drop);
    exportWithShift();
    QTRY_COMPARE(tabs().size(), 1);
    QCOMPARE(dialogs.titles, QStringList());
}

void tst_window_export::toolTipsOfScripts()
{
    m_bench->open();
    const QString folder = m_bench->path("R&D");
    QVERIFY(QDir().mkpath(folder));
    setUp(folder);
    exportByKey();
    const QString file = folder + "/shop_sqlite_db_schema_full.sql";
    const auto * const names = m_bench->scripts().findChild<QComboBox *>();
    QStringList tips = {m_bench->scripts().findChild<QTabWidget *>()->tabToolTip(0),
                        names->itemData(0, Qt::ToolTipRole).toString()};
    for (const QLineEdit * const field : m_bench->scripts().findChildren<QLineEdit *>()) {
        if (field->accessibleDescription() == file) {
            tips << field->toolTip();
        }
    }
    QCOMPARE(tips.size(), 3);
    for (const QString & tip : std::as_const(tips)) {
        QTextDocument shown;
        Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
        QCOMPARE(shown.toPlainText(), file);
    }
}

QTEST_MAIN(tst_window_export)
#include "tst_window_export.moc"
