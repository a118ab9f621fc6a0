// The export command with the script debugger: when it is started, kept and left, and that it changes no
// script.

#include "plugin/ddl_export.h"

#include "plugin/builder/ddl_export_builder.h"

#include "support/debugger_driver.h"
#include "support/message_box_answerer.h"
#include "support/stored_project.h"

#include "tools/custom_javascript.h"
#include "view/ddl_export_settings.h"

#include <QPushButton>
#include <QTest>

using plugin::ddl_export;
using support::debugger_driver;
using support::debuggerWindow;

namespace {

const QByteArray ShopText = R"({
  "format": "korvane-project", "formatVersion": 1, "name": "shop",
  "entities": [
    { "id": 1, "name": "country", "properties": [
      { "id": 10, "name": "id", "type": "long", "identifier": true } ] },
    { "id": 2, "name": "person", "properties": [
      { "id": 20, "name": "id", "type": "long", "identifier": true } ] } ] })";

const QByteArray Script = "function exportStep(project, entity, property, enumeration, parameters) {\n"
                          "    const name = entity ? entity.getName() : '';\n"
                          "    return parameters.action + ' ' + name;\n"
                          "}\n";
const QString Scripted = QStringLiteral("DDL_EXPORT_BEGIN \nCREATE_TABLE country\nCREATE_TABLE person\n"
                                        "DDL_EXPORT_END \n");
const QString File = QStringLiteral("shop_sqlite_db_schema_full.sql");

/// Holds keys down: their events make them the keyboard's modifiers until they are let go.
class held_keys
{
public:
    explicit held_keys(Qt::KeyboardModifiers modifiers)
    {
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window)) {
            qFatal("no window to press keys in");
        }
        press(modifiers);
    }
    ~held_keys() { press(Qt::NoModifier); }
    held_keys(const held_keys &) = delete;
    held_keys & operator=(const held_keys &) = delete;

private:
    void press(Qt::KeyboardModifiers modifiers)
    {
        // Only an event of the window system, not one of a widget, changes the keyboard's state.
        QTest::keyPress(m_window.windowHandle(), Qt::Key_Shift, modifiers);
        if (QGuiApplication::keyboardModifiers() != modifiers) {
            qFatal("the keys are not held");
        }
    }
    QWidget m_window;
};

} // namespace

class tst_export_with_debugger : public QObject
{
    Q_OBJECT

private:
    void write(const QByteArray & script) const
    {
        QFile file(m_stored->path(QStringLiteral("hook.js")));
        if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size()) {
            qFatal("cannot write the script");
        }
    }
    [[nodiscard]] QString exported() const { return m_stored->content(File); }
    zk::ZkBool exportProject() { return m_plugin->exportProject(m_stored->project()); }

    std::unique_ptr<support::stored_project> m_stored;
    std::unique_ptr<ddl_export> m_plugin;

private slots:
    void init();
    void cleanup();
    void shiftStartsTheDebugger();
    void otherKeysDoNot_data();
    void otherKeysDoNot();
    void shiftWithoutScript();
    void debuggerThatCannotStart();
    void debuggingEngineIsKept();
    void otherEngineIsReleased();
    void engineThatWasDetachedIsReleased();
    void shiftWhileDebugging();
    void scriptsAreTheSame();
    void detachedExportGoesOn();
    void closedExportGoesOn();
    void failingScript();
    void debugButton();
    void debugButtonWithFailingScript();
    void terminateClosesTheWindow();
};

void tst_export_with_debugger::init()
{
    m_stored = std::make_unique<support::stored_project>(ShopText);
    write(Script);
    m_plugin = std::make_unique<ddl_export>();
    m_plugin->setDDLExportPath(m_stored->path());
    m_plugin->setCustomScriptFile(QStringLiteral("hook.js"));
    QVERIFY(!m_plugin->saveSettings().isValid());
}

void tst_export_with_debugger::cleanup()
{
    m_plugin.reset();
    m_stored.reset();
    QVERIFY(!debuggerWindow());
}

void tst_export_with_debugger::shiftStartsTheDebugger()
{
    const held_keys shift(Qt::ShiftModifier);
    QString untilThen;
    debugger_driver driver({[&](debugger_driver & d) {
        untilThen = exported();
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(exportProject());
    QCOMPARE(driver.places, QStringList{"Before the step DDL_EXPORT_BEGIN"});
    QCOMPARE(untilThen, QString()); // before generation: nothing is written yet
    QVERIFY(m_plugin->getCustomScript()->isDebugging());
    QVERIFY(debuggerWindow());
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::otherKeysDoNot_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::newRow("none") << int(Qt::NoModifier);
    QTest::newRow("Shift and Ctrl") << int(Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("Shift and Alt") << int(Qt::ShiftModifier | Qt::AltModifier);
    QTest::newRow("Ctrl") << int(Qt::ControlModifier);
}

void tst_export_with_debugger::otherKeysDoNot()
{
    QFETCH(int, modifiers);
    const held_keys keys(Qt::KeyboardModifiers::fromInt(modifiers));
    QVERIFY(exportProject());
    QVERIFY(!m_plugin->getCustomScript()->isDebugging());
    QVERIFY(!debuggerWindow());
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::shiftWithoutScript()
{
    m_plugin->setCustomScriptFile(QString());
    QVERIFY(!m_plugin->saveSettings().isValid());
    const held_keys shift(Qt::ShiftModifier);
    QVERIFY(exportProject());
    QVERIFY(!m_plugin->getCustomScript());
    QVERIFY(!debuggerWindow());
}

/// For the debugger the script is run anew. This one runs over its time then, because the host is busy with a
/// message of it, so initEngine() succeeds and runDebugger() does not.
void tst_export_with_debugger::debuggerThatCannotStart()
{
    write("console.log('loading');\nlet i = 0;\nwhile (i < 100) { ++i; }\nfunction exportStep() {}");
    int loads = 0;
    connect(m_plugin.get(), &ddl_export::onMessage, this, [&](const QString & text) {
        if (text == QStringLiteral("loading") && ++loads == 1) {
            m_plugin->getCustomScript()->setTimeLimit(20); // counts from the next load on
        } else if (loads == 2) {
            QTest::qSleep(200);
        }
    });
    const held_keys shift(Qt::ShiftModifier);
    const zk::ZkBool result = exportProject();
    QCOMPARE(loads, 2);
    QVERIFY(!result);
    QVERIFY2(result.getDesc().endsWith(QStringLiteral("loading the custom script did not end within 20 ms")),
             qPrintable(result.getDesc()));
    QVERIFY(!debuggerWindow());
    QCOMPARE(exported(), QStringLiteral("(no such file)"));
}

void tst_export_with_debugger::debuggingEngineIsKept()
{
    const auto engine = std::make_shared<tools::custom_javascript>();
    QVERIFY(engine->initEngine(QStringLiteral("hook.js"), m_plugin.get()));
    QVERIFY(engine->runDebugger());
    m_plugin->setCustomScript(engine);
    const QMainWindow * const window = debuggerWindow();
    // Were it initialised again, the file as it is now would be used.
    write("function exportStep() { return 'other'; }");
    debugger_driver driver({debugger_driver::command("m_actContinue")});
    for (int i = 0; i < 2; ++i) {
        QVERIFY(exportProject());
        QCOMPARE(m_plugin->getCustomScript(), engine);
        QVERIFY(engine->isDebugging());
        QCOMPARE(debuggerWindow(), window);
        QCOMPARE(exported(), Scripted);
    }
    // Even when the settings name no script any more.
    m_plugin->setCustomScriptFile(QString());
    QVERIFY(!m_plugin->saveSettings().isValid());
    QVERIFY(exportProject());
    QCOMPARE(m_plugin->getCustomScript(), engine);
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::otherEngineIsReleased()
{
    auto engine = std::make_shared<tools::custom_javascript>();
    QVERIFY(engine->initEngine(QStringLiteral("hook.js"), m_plugin.get()));
    m_plugin->setCustomScript(engine);
    const std::weak_ptr<tools::custom_javascript> former = engine;
    engine.reset();
    write("function exportStep() { return 'other'; }");
    QVERIFY(exportProject());
    QVERIFY(former.expired());
    QCOMPARE(exported(), QStringLiteral("other\nother\nother\nother\n"));
}

void tst_export_with_debugger::engineThatWasDetachedIsReleased()
{
    {
        const held_keys shift(Qt::ShiftModifier);
        debugger_driver driver({debugger_driver::command("m_actDetach")});
        QVERIFY(exportProject());
    }
    const std::weak_ptr<tools::custom_javascript> former = m_plugin->getCustomScript();
    QVERIFY(!former.expired());
    QVERIFY(exportProject());
    QVERIFY(former.expired());
    QVERIFY(!debuggerWindow());
}

void tst_export_with_debugger::shiftWhileDebugging()
{
    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver({debugger_driver::command("m_actContinue")});
    QVERIFY(exportProject());
    const QMainWindow * const window = debuggerWindow();
    const auto engine = m_plugin->getCustomScript();
    QVERIFY(exportProject());
    QCOMPARE(debuggerWindow(), window);
    QCOMPARE(m_plugin->getCustomScript(), engine);
}

void tst_export_with_debugger::scriptsAreTheSame()
{
    QFile sample(QStringLiteral(KORVANE_SOURCE_DIR "/samples/custom_script.js"));
    QVERIFY(sample.open(QIODevice::ReadOnly));
    write(sample.readAll());
    QVERIFY(exportProject());
    const QString without = exported();
    QVERIFY(without.contains(QStringLiteral("-- person")));
    QVERIFY(QFile::remove(m_stored->path(File)));

    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver({debugger_driver::command("m_actStepInto"),
                            debugger_driver::command("m_actStepInto"), debugger_driver::command("m_actStep"),
                            debugger_driver::command("m_actStep")});
    QVERIFY(exportProject());
    QVERIFY(driver.places.size() >= 8); // each of the four steps, before and after
    QCOMPARE(exported(), without);
}

void tst_export_with_debugger::detachedExportGoesOn()
{
    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver({debugger_driver::command("m_actStep"), debugger_driver::command("m_actStep"),
                            debugger_driver::command("m_actDetach")});
    QVERIFY(exportProject());
    QCOMPARE(driver.places, QStringList({"Before the step DDL_EXPORT_BEGIN",
                                         "After the step DDL_EXPORT_BEGIN", "Before the step CREATE_TABLE"}));
    QVERIFY(!m_plugin->getCustomScript()->isDebugging());
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::closedExportGoesOn()
{
    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver(
        {debugger_driver::command("m_actStep"), [](debugger_driver &) { debuggerWindow()->close(); }});
    QVERIFY(exportProject());
    QCOMPARE(driver.places.size(), 2);
    QVERIFY(!m_plugin->getCustomScript()->isDebugging());
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::failingScript()
{
    write("function exportStep(project, entity) {\n  if (entity) {\n    throw new Error('no ' + "
          "entity.getName());\n  }\n}");
    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver({debugger_driver::command("m_actContinue")});
    const zk::ZkBool result = exportProject();
    QVERIFY(!result);
    QVERIFY2(result.getDesc().endsWith(QStringLiteral("hook.js:3: Error: no country")),
             qPrintable(result.getDesc()));
    QCOMPARE(driver.places,
             QStringList({"Before the step DDL_EXPORT_BEGIN", "The step CREATE_TABLE failed"}));
}

void tst_export_with_debugger::debugButton()
{
    view::ddl_export_settings dialog;
    dialog.init(m_plugin.get());
    dialog.show();
    const support::message_box_answerer answerer;
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("m_btnDebugCustomScript")),
                      Qt::LeftButton);
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.title, QStringLiteral("KorvGenericDDLExport"));
    QCOMPARE(answerer.icon, QMessageBox::Information);
    QCOMPARE(answerer.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(
        answerer.text,
        QStringLiteral(
            "A new debugger window has been attached to the DDL SQL export process ('KorvGenericDDLExport' "
            "plugin) :\n"
            "  1- save your settings and close this settings window ;\n"
            "  2- execute the export process : you will be able to debug your custom javascript (putting a "
            "breakpoint for example).\n\n"
            "Note : debugger process is automatically detached from the DDL SQL export process when closing "
            "the "
            "debugger window."
            "\n\nOther note : another way to start the debugger is to press the SHIFT key on the keyboard "
            "when executing the export process."));
    QVERIFY(debuggerWindow());
    QVERIFY(m_plugin->getCustomScript());
    QVERIFY(m_plugin->getCustomScript()->isDebugging());
    dialog.close();
    QVERIFY(debuggerWindow());

    debugger_driver driver({debugger_driver::command("m_actContinue")});
    QVERIFY(exportProject());
    QCOMPARE(driver.places, QStringList{"Before the step DDL_EXPORT_BEGIN"});
    QCOMPARE(exported(), Scripted);
}

void tst_export_with_debugger::debugButtonWithFailingScript()
{
    write("function exportStep( {");
    view::ddl_export_settings dialog;
    dialog.init(m_plugin.get());
    m_plugin->setCustomScript(std::make_shared<tools::custom_javascript>());
    dialog.show();
    const support::message_box_answerer answerer;
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("m_btnDebugCustomScript")),
                      Qt::LeftButton);
    QCOMPARE(answerer.asked, 1);
    QCOMPARE(answerer.icon, QMessageBox::Warning);
    QVERIFY2(answerer.text.contains(QStringLiteral("hook.js:1: SyntaxError")), qPrintable(answerer.text));
    QVERIFY(!m_plugin->getCustomScript()); // cleared before, and none is set
    QVERIFY(!debuggerWindow());
}

void tst_export_with_debugger::terminateClosesTheWindow()
{
    const held_keys shift(Qt::ShiftModifier);
    debugger_driver driver({debugger_driver::command("m_actContinue")});
    QVERIFY(exportProject());
    QVERIFY(debuggerWindow());
    m_plugin->terminate();
    QVERIFY(!debuggerWindow());
    QVERIFY(!m_plugin->getCustomScript());
}

QTEST_MAIN(tst_export_with_debugger)
#include "tst_export_with_debugger.moc"
