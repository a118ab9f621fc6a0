// A program that starts the script debugger, for tst_script_debugger: "core" without a display, "widgets"
// with one, leaving the debugger's window open at its end, "step" to use it for one step.

#include "support/debugger_driver.h"

#include "tools/custom_javascript.h"

#include <QApplication>

#include <cstring>
#include <iostream>

namespace {

/// Lets one step stop wherever it does, and prints what the window says.
void useForOneStep(tools::custom_javascript & script)
{
    support::debugger_driver driver(
        {support::debugger_driver::command("m_actStep"), support::debugger_driver::command("m_actContinue")});
    const bool atLines = driver.find<QAction>("m_actToggleBreakpoint")->isEnabled();
    std::cout << (atLines ? "stops at lines" : "stops at steps") << '\n'
              << qPrintable(driver.find<QLabel>("m_lblSource")->text()) << '\n'
              << qPrintable(driver.text("m_txtOutput")) << '\n';
    const zk::ZkBool done = script.executeScript(
        nullptr, nullptr, nullptr, nullptr, {{QStringLiteral("action"), QStringLiteral("CREATE_TABLE")}});
    std::cout << qPrintable(driver.places.join(QLatin1Char('|'))) << '\n'
              << qPrintable(done.getDesc()) << '\n';
}

} // namespace

int main(int argc, char ** argv)
{
    if (argc < 3) {
        return 2;
    }
    const bool withWidgets = std::strcmp(argv[1], "core") != 0;
    tools::custom_javascript script; // outlives the application object
    {
        const std::unique_ptr<QCoreApplication> application =
            withWidgets ? std::make_unique<QApplication>(argc, argv)
                        : std::make_unique<QCoreApplication>(argc, argv);
        if (!script.initEngine(QString::fromLocal8Bit(argv[2]), nullptr)) {
            return 2;
        }
        const zk::ZkBool started = script.runDebugger();
        std::cout << (started ? "debugging" : qPrintable(started.getDesc())) << '\n';
        if (started && std::strcmp(argv[1], "step") == 0) {
            useForOneStep(script);
        }
    }
    if (withWidgets) {
        std::cout << (script.isDebugging() ? "still debugging" : "not debugging") << '\n';
    }
    return 0;
}
