// A program that starts the script debugger, for tst_script_debugger: "core" without a display, "widgets"
// with one, leaving the debugger's window open at its end.

#include "tools/custom_javascript.h"

#include <QApplication>

#include <cstring>
#include <iostream>

int main(int argc, char ** argv)
{
    if (argc < 3) {
        return 2;
    }
    const bool withWidgets = std::strcmp(argv[1], "widgets") == 0;
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
    }
    if (withWidgets) {
        std::cout << (script.isDebugging() ? "still debugging" : "not debugging") << '\n';
    }
    return 0;
}
