// The script debugger, used by its keys and buttons while it holds a script.

#include "support/debugger_driver.h"
#include "support/plugin_double.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "tools/custom_javascript.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

using support::debugger_driver;
using support::debuggerWindow;

namespace {

const QByteArray Script = "const prefix = '-- ';\n"                                                     // 1
                          "function comment(text) {\n"                                                  // 2
                          "    const trimmed = text.trim();\n"                                          // 3
                          "    return prefix + trimmed;\n"                                              // 4
                          "}\n"                                                                         // 5
                          "function exportStep(project, entity, property, enumeration, parameters) {\n" // 6
                          "    let action = parameters.action;\n"                                       // 7
                          "    const text = comment(' ' + action + ' ');\n"                             // 8
                          "    return text;\n"                                                          // 9
                          "}\n";

} // namespace

class tst_script_debugger : public QObject
{
    Q_OBJECT

private:
    QString write(const QByteArray & content) const
    {
        QFile file(m_dir->filePath(QStringLiteral("hook.js")));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write the script");
        }
        return file.fileName();
    }
    void attach(const QByteArray & content = Script)
    {
        m_script = std::make_unique<tools::custom_javascript>();
        QVERIFY(m_script->initEngine(write(content), &m_plugin));
        const zk::ZkBool started = m_script->runDebugger();
        QVERIFY2(started, qPrintable(started.getDesc()));
        QVERIFY(m_script->isDebugging());
        QVERIFY(debuggerWindow());
        QVERIFY(QTest::qWaitForWindowActive(debuggerWindow()));
    }
    zk::ZkBool step(const char * action = "CREATE_TABLE", const char * text = "CREATE TABLE t;")
    {
        const std::shared_ptr<model::entity> person = m_pProject->getEntityById(10);
        return m_script->executeScript(m_pProject.get(), person.get(), person->getPropertyById(100).get(),
                                       nullptr,
                                       {{QStringLiteral("plugin_name"), QStringLiteral("PluginDouble")},
                                        {QStringLiteral("current_file"), QStringLiteral("/out/shop.sql")},
                                        {QStringLiteral("output_location"), QStringLiteral("/out")},
                                        {QStringLiteral("default_value"), QString::fromLatin1(text)},
                                        {QStringLiteral("action"), QString::fromLatin1(action)}});
    }
    void breakAt(int line) const
    {
        auto * const source = debuggerWindow()->findChild<QPlainTextEdit *>(QStringLiteral("m_txtSource"));
        source->setTextCursor(QTextCursor(source->document()->findBlockByNumber(line - 1)));
        QTest::keyClick(source, Qt::Key_F9);
    }
    static bool stopsAtLines()
    {
        return debuggerWindow()->findChild<QAction *>(QStringLiteral("m_actToggleBreakpoint"))->isEnabled();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::shared_ptr<model::project> m_pProject;
    std::unique_ptr<tools::custom_javascript> m_script;
    support::plugin_double m_plugin;

private slots:
    void init();
    void cleanup();
    void lineStopsAreAsBuilt();
    void withoutItsModuleItStopsAtSteps_data();
    void withoutItsModuleItStopsAtSteps();
    void needsAScript();
    void isDebuggingUntilDetached();
    void isDebuggingUntilClosed();
    void secondRunShowsTheSameWindow();
    void showsTheStep();
    void showsWhatTurnsTheDirectionOfNames();
    void parametersAreInOrder();
    void stepShowsTheAnswer();
    void emptyAnswer();
    void continueRunsToTheEnd();
    void stopsAtActions();
    void runsToAction();
    void evaluatesInTheStep();
    void objectThatAnEvaluationDestroys();
    void evaluationCanChangeTheStep();
    void endlessEvaluationIsStopped();
    void detachInTheMiddle();
    void closeInTheMiddle();
    void quitInTheMiddle();
    void mainWindowClosesInTheMiddle();
    void engineGoesWhileHeld();
    void engineGoesWhileOpen();
    void failingScript();
    void timeHeldDoesNotCount();
    void timeLimitStillCounts();
    void otherWindowsTakeNoInput();
    void eventsAreHandledWhileHeld();
    void usualCursorWhileHeld();
    void stopsAtLine();
    void clickInTheMarginSetsABreakpoint();
    void stepsThroughLines();
    void stepsOverFunctionsThatThrow();
    void stepsIntoFunctions();
    void evaluatesInTheLine();
    void evaluatesTheInnerOfTwoNames();
    void breakpointInALoop();
    void timeHeldInALineDoesNotCount();
    void detachInALine();
    void everythingHasAName();
    void needsADisplay();
    void survivesTheApplication();
};

void tst_script_debugger::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_pProject = std::make_shared<model::project>(1);
    m_pProject->setName(QStringLiteral("shop"));
    const auto person = std::make_shared<model::entity>(10, QStringLiteral("person"));
    person->setKey(QStringLiteral("p1"));
    m_pProject->addEntity(person);
    person->addProperty(std::make_shared<model::property>(100, QStringLiteral("email")));
}

void tst_script_debugger::cleanup()
{
    m_script.reset();
    QVERIFY(!debuggerWindow());
}

/// The build says whether lines can be stopped at; the tests about lines are skipped where they cannot.
void tst_script_debugger::lineStopsAreAsBuilt()
{
    attach();
    QCOMPARE(stopsAtLines(), bool(KORVANE_TESTED_LINE_BREAKPOINTS));
    const QString label = debuggerWindow()->findChild<QLabel *>(QStringLiteral("m_lblSource"))->text();
    QCOMPARE(label.contains(QStringLiteral("only at steps and actions")), !stopsAtLines());
}

void tst_script_debugger::withoutItsModuleItStopsAtSteps_data()
{
    QTest::addColumn<QString>("module");
    QTest::addColumn<QString>("reason"); // %1 the module's file, %2 its folder
    const QString plugins = QStringLiteral(KORVANE_BUILD_DIR "/tests/plugins/");
    QTest::newRow("missing") << QString()
                             << "KorvaneLineDebugger was not found in %2; install it to stop at lines";
    QTest::newRow("of another Qt") << plugins + "another_qt/KorvaneLineDebugger.so"
                                   << "%1 was built for Qt 6.0.9, but this is Qt " + QString(qVersion()) +
                                          "; install the one for this Qt";
    QTest::newRow("another plug-in")
        << plugins + "other/other_interface.so"
        << "%1 cannot be loaded (it was built for another interface); install it again";
    QTest::newRow("no library") << QStringLiteral(KORVANE_SOURCE_DIR "/README.md")
                                << "%1 cannot be loaded (it is not a plugin); install it again";
}

/// In a program of its own, which lies where there is no module, or one that is of no use.
void tst_script_debugger::withoutItsModuleItStopsAtSteps()
{
    QFETCH(QString, module);
    QFETCH(QString, reason);
    const QDir dir(QDir(m_dir->path()).canonicalPath());
    const QString folder = dir.filePath(QStringLiteral("lib/korvane/plugins"));
    const QString file = folder + QStringLiteral("/KorvaneLineDebugger.so");
    const QString copy = dir.filePath(QStringLiteral("bin/debugger_program"));
    QVERIFY(dir.mkpath(QStringLiteral("bin")) && dir.mkpath(folder));
    QVERIFY(QFile::copy(QStringLiteral(KORVANE_DEBUGGER_PROGRAM), copy));
    QVERIFY(module.isEmpty() || QFile::copy(module, file));
    QProcess program;
    program.start(copy, {QStringLiteral("step"), write(Script)});
    QVERIFY(program.waitForFinished());
    QVERIFY2(program.exitStatus() == QProcess::NormalExit, program.readAllStandardError().constData());
    QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()),
             "debugging\n"
             "stops at steps\n"
             "Script (this build cannot stop at lines, only at steps and actions)\n" +
                 reason.replace(QStringLiteral("%1"), file).replace(QStringLiteral("%2"), folder) +
                 "\nBefore the step CREATE_TABLE|After the step CREATE_TABLE\n"
                 "-- CREATE_TABLE\n"
                 "not debugging\n");
}

void tst_script_debugger::needsAScript()
{
    tools::custom_javascript script;
    const zk::ZkBool result = script.runDebugger();
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), QStringLiteral("No custom script is loaded"));
    QVERIFY(!script.isDebugging());
    QVERIFY(!debuggerWindow());
}

void tst_script_debugger::isDebuggingUntilDetached()
{
    attach();
    debuggerWindow()->findChild<QAction *>(QStringLiteral("m_actDetach"))->trigger();
    QVERIFY(!m_script->isDebugging());
    QVERIFY(!debuggerWindow());
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
}

void tst_script_debugger::isDebuggingUntilClosed()
{
    attach();
    debuggerWindow()->close();
    QVERIFY(!m_script->isDebugging());
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QVERIFY(m_script->runDebugger());
    QVERIFY(m_script->isDebugging());
    QVERIFY(debuggerWindow());
}

void tst_script_debugger::secondRunShowsTheSameWindow()
{
    attach();
    const QMainWindow * const window = debuggerWindow();
    QVERIFY(m_script->runDebugger());
    QCOMPARE(debuggerWindow(), window);
}

void tst_script_debugger::showsWhatTurnsTheDirectionOfNames()
{
    m_pProject->getEntityById(10)->setName(QStringLiteral("per%1son").arg(QChar(0x202e)));
    attach();
    QString seen;
    debugger_driver driver({[&](debugger_driver & d) {
        seen = d.row("m_lstStep", QStringLiteral("Entity"));
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(step());
    QCOMPARE(seen, QStringLiteral("p1 / per<U+202E>son"));
}

void tst_script_debugger::showsTheStep()
{
    attach();
    QStringList seen;
    QString source;
    debugger_driver driver({[&](debugger_driver & d) {
        for (const char * const row : {"Action", "Project", "Entity", "Property", "Enumeration",
                                       "plugin_name", "current_file", "output_location"}) {
            seen.append(d.row("m_lstStep", QString::fromLatin1(row)));
        }
        seen.append(d.text("m_txtDefault"));
        seen.append(d.text("m_txtAnswer"));
        source = d.text("m_txtSource");
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(step());
    QCOMPARE(seen, QStringList({"CREATE_TABLE", "shop", "p1 / person", "p1.email / email", "none",
                                "PluginDouble", "/out/shop.sql", "/out", "CREATE TABLE t;", ""}));
    QCOMPARE(source, QString::fromLatin1(Script));
}

void tst_script_debugger::parametersAreInOrder()
{
    attach();
    QStringList labels;
    debugger_driver driver({[&](debugger_driver & d) {
        const auto * const step = d.find<QTreeWidget>("m_lstStep");
        for (int i = 0; i < step->topLevelItemCount(); ++i) {
            labels.append(step->topLevelItem(i)->text(0));
        }
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QHash<QString, QVariant> parameters = {{QStringLiteral("action"), QStringLiteral("CREATE_TABLE")},
                                           {QStringLiteral("default_value"), QString()}};
    for (const char * const name : {"g", "c", "a", "h", "e", "b", "f", "d"}) {
        parameters.insert(QString::fromLatin1(name), QString());
    }
    QVERIFY(m_script->executeScript(m_pProject.get(), nullptr, nullptr, nullptr, parameters));
    QCOMPARE(labels, QStringList({"Action", "Project", "Entity", "Property", "Enumeration", "a", "b", "c",
                                  "d", "e", "f", "g", "h"}));
}

void tst_script_debugger::stepShowsTheAnswer()
{
    attach();
    QString answer;
    debugger_driver driver({debugger_driver::key(Qt::Key_F10),
                            [&](debugger_driver & d) {
                                answer = d.text("m_txtAnswer");
                                d.find<QAction>("m_actStep")->trigger();
                            },
                            debugger_driver::key(Qt::Key_F5)});
    QCOMPARE(step("CREATE_TABLE").getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(step("CREATE_INDEX").getDesc(), QStringLiteral("-- CREATE_INDEX"));
    QCOMPARE(answer, QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "After the step CREATE_TABLE",
                                         "Before the step CREATE_INDEX"}));
}

void tst_script_debugger::emptyAnswer()
{
    attach("function exportStep() { return ''; }");
    QString hint;
    debugger_driver driver({debugger_driver::command("m_actStep"), [&](debugger_driver & d) {
                                hint = d.find<QPlainTextEdit>("m_txtAnswer")->placeholderText();
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QCOMPARE(step().getDesc(), QString());
    QCOMPARE(hint, QStringLiteral("An empty text"));
}

void tst_script_debugger::continueRunsToTheEnd()
{
    attach();
    debugger_driver driver({debugger_driver::key(Qt::Key_F5)});
    for (int i = 0; i < 5; ++i) {
        QVERIFY(step());
    }
    QCOMPARE(driver.places, QStringList{"Before the step CREATE_TABLE"});
    QVERIFY(m_script->isDebugging());
    const auto * const place = debuggerWindow()->findChild<QLabel *>(QStringLiteral("m_lblPlace"));
    QTRY_COMPARE(place->text(), QStringLiteral("Attached: the next export stops at the breakpoints"));
    QVERIFY(!debuggerWindow()->findChild<QAction *>(QStringLiteral("m_actStep"))->isEnabled());
}

void tst_script_debugger::stopsAtActions()
{
    attach();
    auto * const actions = debuggerWindow()->findChild<QListWidget *>(QStringLiteral("m_lstActions"));
    QCOMPARE(actions->count(), 13);
    actions->findItems(QStringLiteral("CREATE_INDEX"), Qt::MatchExactly)
        .constFirst()
        ->setCheckState(Qt::Checked);
    debugger_driver driver({debugger_driver::key(Qt::Key_F5)});
    for (const char * const action : {"CREATE_TABLE", "CREATE_INDEX", "OWN_ACTION", "CREATE_INDEX"}) {
        QVERIFY(step(action));
    }
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "Before the step CREATE_INDEX",
                                         "Before the step CREATE_INDEX"}));
    actions->findItems(QStringLiteral("CREATE_INDEX"), Qt::MatchExactly)
        .constFirst()
        ->setCheckState(Qt::Unchecked);
    QVERIFY(step("CREATE_INDEX"));
    QCOMPARE(driver.places.size(), 3);
}

void tst_script_debugger::runsToAction()
{
    attach();
    debugger_driver driver({[](debugger_driver & d) {
                                for (QAction * const action :
                                     d.find<QAction>("m_actRunToAction")->menu()->actions()) {
                                    if (action->text() == QStringLiteral("DDL_EXPORT_END")) {
                                        action->trigger();
                                    }
                                }
                            },
                            debugger_driver::key(Qt::Key_F5)});
    for (const char * const action : {"CREATE_TABLE", "CREATE_INDEX", "DDL_EXPORT_END", "DDL_EXPORT_END"}) {
        QVERIFY(step(action));
    }
    // Once only: this is no breakpoint.
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "Before the step DDL_EXPORT_END"}));
}

void tst_script_debugger::evaluatesInTheStep()
{
    attach();
    QStringList results;
    debugger_driver driver({[&](debugger_driver & d) {
        for (const char * const expression : {"1 + 2",
                                              "project.getName()",
                                              "entity.getName() + '.' + property.getName()",
                                              "enumeration",
                                              "parameters.default_value",
                                              "prefix",
                                              "comment('x')",
                                              "entity",
                                              "[1, 'a', null]",
                                              "({a: 1, b: {c: {d: 1}}})",
                                              "comment",
                                              "'a\\\\b\\\"c'",
                                              "new Date(0)",
                                              "/x/g",
                                              "new Error('e')",
                                              "Array.from({length: 20}, (v, i) => i)",
                                              "Array.from({length: 21}, (v, i) => i)",
                                              "[{a: {}}]",
                                              "({length: 3})",
                                              "'\\n\\r\\t'",
                                              "'x'.repeat(2000)",
                                              "nothing.at.all",
                                              "let"}) {
            results.append(d.evaluate(QString::fromLatin1(expression)));
        }
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(step());
    QCOMPARE(results.mid(0, 11),
             QStringList({"3", "\"shop\"", "\"person.email\"", "null", "\"CREATE TABLE t;\"", "\"-- \"",
                          "\"-- x\"", "entity person", "[1, \"a\", null]", "{a: 1, b: {c: {…}}}",
                          "function comment"}));
    const QString twenty = "[0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19";
    QCOMPARE(results.mid(11, 10),
             QStringList({R"("a\\b\"c")", QDateTime::fromMSecsSinceEpoch(0).toString(Qt::ISODateWithMs),
                          "/x/g", "Error: e", twenty + "]", twenty + ", …]", "[{a: {…}}]", "{length: 3}",
                          R"("\n\r\t")", "\"" + QString(1999, QLatin1Char('x')) + "…"}));
    results.remove(11, 10);
    QCOMPARE(results[11], QStringLiteral("failed: ReferenceError: nothing is not defined"));
    QVERIFY2(results[12].startsWith(QStringLiteral("failed: SyntaxError")), qPrintable(results[12]));
}

void tst_script_debugger::objectThatAnEvaluationDestroys()
{
    attach();
    QString shown;
    debugger_driver driver({[](debugger_driver & d) { d.evaluate(QStringLiteral("entity.destroy()")); },
                            [&](debugger_driver & d) {
                                shown = d.evaluate(QStringLiteral("entity"));
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QVERIFY(step());
    QCOMPARE(shown, QStringLiteral("(destroyed)"));
}

void tst_script_debugger::evaluationCanChangeTheStep()
{
    attach();
    debugger_driver driver({[](debugger_driver & d) {
        d.evaluate(QStringLiteral("parameters.action = 'CHANGED'"));
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CHANGED"));
}

void tst_script_debugger::endlessEvaluationIsStopped()
{
    attach();
    m_script->setTimeLimit(150);
    QString result;
    debugger_driver driver({[&](debugger_driver & d) {
        result = d.evaluate(QStringLiteral("while (true) {}"));
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(result, QStringLiteral("failed: it did not end within 150 ms"));
}

void tst_script_debugger::detachInTheMiddle()
{
    attach();
    debugger_driver driver(
        {debugger_driver::key(Qt::Key_F10), debugger_driver::key(Qt::Key_F5, Qt::ShiftModifier)});
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    }
    QCOMPARE(driver.places.size(), 2);
    QVERIFY(!m_script->isDebugging());
}

void tst_script_debugger::closeInTheMiddle()
{
    attach();
    debugger_driver driver({[](debugger_driver &) { debuggerWindow()->close(); }});
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    }
    QCOMPARE(driver.places.size(), 1);
    QVERIFY(!m_script->isDebugging());
}

void tst_script_debugger::quitInTheMiddle()
{
    attach();
    debugger_driver driver({[](debugger_driver &) { QCoreApplication::quit(); }});
    QString answer;
    QTimer::singleShot(0, this, [&] { answer = step().getDesc(); });
    QCoreApplication::exec();
    QCOMPARE(answer, QStringLiteral("-- CREATE_TABLE"));
    QVERIFY(!m_script->isDebugging());
}

/// The debugger's window does not keep a program alive whose main window was closed.
void tst_script_debugger::mainWindowClosesInTheMiddle()
{
    QMainWindow host;
    host.show();
    attach();
    debugger_driver driver({[&](debugger_driver &) { host.close(); }});
    QString answer;
    QTimer::singleShot(0, this, [&] { answer = step().getDesc(); });
    QCoreApplication::exec();
    QCOMPARE(answer, QStringLiteral("-- CREATE_TABLE"));
    QVERIFY(!m_script->isDebugging());
}

void tst_script_debugger::engineGoesWhileHeld()
{
    attach();
    debugger_driver driver({[this](debugger_driver &) { m_script.reset(); }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QVERIFY(!debuggerWindow());
}

void tst_script_debugger::engineGoesWhileOpen()
{
    attach();
    {
        debugger_driver driver({debugger_driver::command("m_actContinue")});
        QVERIFY(step());
    }
    const QPointer<QMainWindow> window = debuggerWindow();
    m_script.reset();
    QVERIFY(!window);
    QCoreApplication::processEvents();
}

void tst_script_debugger::failingScript()
{
    const QByteArray script = "function exportStep() {\n  throw new Error('not this one');\n}";
    m_script = std::make_unique<tools::custom_javascript>();
    QVERIFY(m_script->initEngine(write(script), &m_plugin));
    const QString without = step().getDesc();
    attach(script);
    QString shown;
    debugger_driver driver({debugger_driver::command("m_actContinue"), [&](debugger_driver & d) {
                                shown = d.text("m_txtAnswer");
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    const zk::ZkBool result = step();
    QVERIFY(!result);
    QCOMPARE(result.getDesc(), without);
    QVERIFY2(without.endsWith(QStringLiteral("hook.js:2: Error: not this one")), qPrintable(without));
    QCOMPARE(shown, without);
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "The step CREATE_TABLE failed"}));
}

void tst_script_debugger::timeHeldDoesNotCount()
{
    attach();
    m_script->setTimeLimit(200);
    debugger_driver driver({[](debugger_driver & d) {
        QTest::qWait(400);
        d.find<QAction>("m_actStep")->trigger();
    }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
}

void tst_script_debugger::timeLimitStillCounts()
{
    attach("function exportStep() { while (true) {} }");
    m_script->setTimeLimit(200);
    debugger_driver driver({debugger_driver::command("m_actContinue")});
    const zk::ZkBool result = step();
    QVERIFY(!result);
    QVERIFY2(result.getDesc().endsWith(QStringLiteral("exportStep did not end within 200 ms")),
             qPrintable(result.getDesc()));
}

/// While it is held the export must not be started again, nor its project be changed.
void tst_script_debugger::otherWindowsTakeNoInput()
{
    QWidget other;
    auto * const button = new QPushButton(&other);
    button->setShortcut(QKeySequence(Qt::Key_F6));
    QSignalSpy clicks(button, &QPushButton::clicked);
    other.show();
    attach();
    qsizetype whileHeld = -1;
    bool closed = false;
    debugger_driver driver({[&](debugger_driver & d) {
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(&other, Qt::Key_F6);
        QTest::keyClick(button, Qt::Key_Space);
        whileHeld = clicks.size();
        closed = other.close();
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(step());
    QCOMPARE(whileHeld, 0);
    QVERIFY(closed);
    other.show();
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(clicks.size(), 1);
}

void tst_script_debugger::eventsAreHandledWhileHeld()
{
    attach();
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (++ticks == 20) {
            debuggerWindow()->findChild<QAction *>(QStringLiteral("m_actContinue"))->trigger();
        }
    });
    timer.start(1);
    QVERIFY(step());
    QCOMPARE(ticks, 20);
}

void tst_script_debugger::usualCursorWhileHeld()
{
    attach();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    bool busy = true;
    debugger_driver driver({[&](debugger_driver & d) {
        busy = QGuiApplication::overrideCursor() != nullptr;
        d.find<QAction>("m_actContinue")->trigger();
    }});
    QVERIFY(step());
    QVERIFY(!busy);
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

#define ONLY_WITH_LINES()                                                                                    \
    if (!stopsAtLines()) {                                                                                   \
        QSKIP("built without line breakpoints (KORVANE_LINE_BREAKPOINTS)");                                  \
    }

void tst_script_debugger::stopsAtLine()
{
    attach();
    ONLY_WITH_LINES();
    breakAt(4);
    QStringList stack;
    QStringList variables;
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), [&](debugger_driver & d) {
                                const auto * const tree = d.find<QTreeWidget>("m_lstStack");
                                for (int i = 0; i < tree->topLevelItemCount(); ++i) {
                                    stack.append(tree->topLevelItem(i)->text(0) + QLatin1Char(':') +
                                                 tree->topLevelItem(i)->text(1));
                                }
                                variables = {d.row("m_lstVariables", QStringLiteral("text")),
                                             d.row("m_lstVariables", QStringLiteral("trimmed"))};
                                d.find<QTreeWidget>("m_lstStack")->setCurrentItem(tree->topLevelItem(1));
                                variables.append(d.row("m_lstVariables", QStringLiteral("action")));
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "comment in line 4"}));
    QCOMPARE(stack, QStringList({"comment:4", "exportStep:8"}));
    QCOMPARE(variables, QStringList({"\" CREATE_TABLE \"", "\"CREATE_TABLE\"", "\"CREATE_TABLE\""}));
    // The same place stops in the next step, and no longer when the breakpoint is gone.
    QVERIFY(step());
    QCOMPARE(driver.places.size(), 3);
    breakAt(4);
    QVERIFY(step());
    QCOMPARE(driver.places.size(), 3);
}

void tst_script_debugger::clickInTheMarginSetsABreakpoint()
{
    attach();
    ONLY_WITH_LINES();
    auto * const source = debuggerWindow()->findChild<QPlainTextEdit *>(QStringLiteral("m_txtSource"));
    auto * const margin = source->findChild<QWidget *>(QStringLiteral("m_margin"));
    source->setTextCursor(QTextCursor(source->document()->findBlockByNumber(7 - 1)));
    QTest::mouseClick(margin, Qt::LeftButton, Qt::NoModifier, QPoint(3, source->cursorRect().center().y()));
    debugger_driver driver({debugger_driver::key(Qt::Key_F5)});
    QVERIFY(step());
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "exportStep in line 7"}));
}

void tst_script_debugger::stepsThroughLines()
{
    attach();
    ONLY_WITH_LINES();
    breakAt(7);
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), debugger_driver::key(Qt::Key_F10),
                            debugger_driver::key(Qt::Key_F10), debugger_driver::key(Qt::Key_F10),
                            debugger_driver::key(Qt::Key_F5)});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(driver.places,
             QStringList({"Before the step CREATE_TABLE", "exportStep in line 7", "exportStep in line 8",
                          "exportStep in line 9", "After the step CREATE_TABLE"}));
}

void tst_script_debugger::stepsOverFunctionsThatThrow()
{
    attach(
        "function bad() {\n  throw 1;\n}\n"
        "function exportStep() {\n  try {\n    bad();\n  } catch (e) {\n    e = 2;\n  }\n  return 'x';\n}\n");
    ONLY_WITH_LINES();
    breakAt(6);
    const auto over = debugger_driver::key(Qt::Key_F10);
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), over, over, over, over});
    QCOMPARE(step().getDesc(), QStringLiteral("x"));
    QVERIFY2(driver.places.contains(QStringLiteral("exportStep in line 8")),
             qPrintable(driver.places.join(u'|')));
    QVERIFY2(driver.places.contains(QStringLiteral("exportStep in line 10")),
             qPrintable(driver.places.join(u'|')));
    QVERIFY(driver.places.filter(QStringLiteral("bad")).isEmpty());
}

void tst_script_debugger::stepsIntoFunctions()
{
    attach();
    ONLY_WITH_LINES();
    const auto into = debugger_driver::key(Qt::Key_F11);
    debugger_driver driver({into, into, into, into, into, into, debugger_driver::key(Qt::Key_F10),
                            debugger_driver::key(Qt::Key_F5)});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "exportStep in line 6",
                                         "exportStep in line 7", "exportStep in line 8", "comment in line 2",
                                         "comment in line 3", "comment in line 4", "exportStep in line 9"}));
}

void tst_script_debugger::evaluatesInTheLine()
{
    attach();
    ONLY_WITH_LINES();
    breakAt(4);
    QStringList results;
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), [&](debugger_driver & d) {
                                for (const char * const expression :
                                     {"trimmed.length", "text === ' CREATE_TABLE '", "prefix",
                                      "entity.getName()", "comment(' y ')", "trimmed.nothing.at"}) {
                                    results.append(d.evaluate(QString::fromLatin1(expression)));
                                }
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(results.mid(0, 5), QStringList({"12", "true", "\"-- \"", "\"person\"", "\"-- y\""}));
    QVERIFY2(results[5].startsWith(QStringLiteral("failed: TypeError")), qPrintable(results[5]));
    QCOMPARE(driver.places.size(), 2); // the evaluated call of comment() does not stop
}

void tst_script_debugger::evaluatesTheInnerOfTwoNames()
{
    attach("function exportStep() {\n"
           "    let name = 'outer';\n"
           "    const other = () => name;\n"
           "    function inner() {\n"
           "        let name = 'inner';\n"
           "        const own = () => name;\n"
           "        return own() + other();\n"
           "    }\n"
           "    return inner();\n"
           "}\n");
    ONLY_WITH_LINES();
    breakAt(7);
    QStringList results;
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), [&](debugger_driver & d) {
                                results.append(d.evaluate(QStringLiteral("name")));
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QCOMPARE(step().getDesc(), QStringLiteral("innerouter"));
    QCOMPARE(results, QStringList("\"inner\""));
}

void tst_script_debugger::breakpointInALoop()
{
    attach("function exportStep() {\n"
           "  let sum = 0;\n"
           "  for (let i = 0; i < 3; ++i) {\n"
           "    sum += i;\n"
           "  }\n"
           "  return String(sum);\n"
           "}\n");
    ONLY_WITH_LINES();
    breakAt(4);
    QStringList values;
    auto driver = std::make_unique<debugger_driver>(QList<debugger_driver::turn>{
        debugger_driver::key(Qt::Key_F5), [&](debugger_driver & d) {
            values.append(d.row("m_lstVariables", QStringLiteral("i")) + QLatin1Char('/') +
                          d.row("m_lstVariables", QStringLiteral("sum")));
            d.find<QAction>("m_actContinue")->trigger();
        }});
    QCOMPARE(step().getDesc(), QStringLiteral("3"));
    driver.reset();
    QCOMPARE(values, QStringList({"0/0", "1/0", "2/1"}));

    // A loop all of whose code is in one line stops there each time round.
    attach("function exportStep() {\n  let n = 0;\n  for (;;) {\n    if (++n === 3) { return String(n); }\n  "
           "}\n}\n");
    breakAt(4);
    values.clear();
    debugger_driver again({debugger_driver::key(Qt::Key_F5), [&](debugger_driver & d) {
                               values.append(d.row("m_lstVariables", QStringLiteral("n")));
                               d.find<QAction>("m_actContinue")->trigger();
                           }});
    QCOMPARE(step().getDesc(), QStringLiteral("3"));
    QCOMPARE(values, QStringList({"0", "1", "2"}));
}

void tst_script_debugger::timeHeldInALineDoesNotCount()
{
    attach();
    ONLY_WITH_LINES();
    breakAt(8);
    m_script->setTimeLimit(200);
    debugger_driver driver({debugger_driver::command("m_actContinue"), [](debugger_driver & d) {
                                QTest::qWait(400);
                                d.evaluate(QStringLiteral("1"));
                                QTest::qWait(100);
                                d.find<QAction>("m_actContinue")->trigger();
                            }});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));

    // After the stop the limit counts again.
    attach("function exportStep() {\n  let a = 1;\n  while (a) {}\n}");
    breakAt(2);
    m_script->setTimeLimit(200);
    const zk::ZkBool result = step();
    QVERIFY(!result);
    QVERIFY2(result.getDesc().endsWith(QStringLiteral("exportStep did not end within 200 ms")),
             qPrintable(result.getDesc()));
}

void tst_script_debugger::detachInALine()
{
    attach();
    ONLY_WITH_LINES();
    breakAt(3);
    breakAt(8);
    debugger_driver driver({debugger_driver::key(Qt::Key_F5), debugger_driver::command("m_actDetach")});
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(step().getDesc(), QStringLiteral("-- CREATE_TABLE"));
    QCOMPARE(driver.places, QStringList({"Before the step CREATE_TABLE", "exportStep in line 8"}));
    QVERIFY(!m_script->isDebugging());
}

void tst_script_debugger::everythingHasAName()
{
    attach();
    int fields = 0;
    for (const QWidget * const w : debuggerWindow()->findChildren<QWidget *>()) {
        if (w->objectName().startsWith(QStringLiteral("m_")) && w->focusPolicy() != Qt::NoFocus) {
            QVERIFY2(!w->accessibleName().isEmpty(), qPrintable(w->objectName()));
            ++fields;
        }
    }
    QVERIFY(fields >= 8);
}

/// In programs of their own: without a display, and with a debugger that is left open at the end.
void tst_script_debugger::needsADisplay()
{
    QProcess program;
    program.start(QStringLiteral(KORVANE_DEBUGGER_PROGRAM), {QStringLiteral("core"), write(Script)});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()),
             QStringLiteral("The script debugger needs a display, and the program has none\n"));
}

void tst_script_debugger::survivesTheApplication()
{
    QProcess program;
    program.start(QStringLiteral(KORVANE_DEBUGGER_PROGRAM), {QStringLiteral("widgets"), write(Script)});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()),
             QStringLiteral("debugging\nnot debugging\n"));
}

QTEST_MAIN(tst_script_debugger)
#include "tst_script_debugger.moc"
