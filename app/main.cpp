#include "app/command_line.h"

#include <QApplication>

#include <csignal>
#include <memory>

namespace {

int run(const app::command_line & line)
{
    using app::command_line;
    switch (line.command) {
    case command_line::print:
        app::printLine(line.text);
        return 0;
    case command_line::wrong:
        if (!line.help.isEmpty()) {
            app::printLine(line.help);
        }
        app::printError(line.text);
        return 2;
    case command_line::import:
        return app::importModel(line.modelFile, line.projectFile);
    case command_line::dump:
        return app::dumpProject(line.projectFile);
    case command_line::tag:
        return app::tagProject(line.projectFile, line.message);
    case command_line::log:
        return app::logVersions(line.projectFile);
    case command_line::export_project:
        return app::exportProject(line.request);
    case command_line::plugins:
        return app::listPlugins();
    }
    return 2;
}

QtMessageHandler formerHandler = nullptr;

/// Drops what Qt says about the session and the display that a command does without: what a command writes to
/// standard error is for its own failures.
void withoutSessionComplaints(QtMsgType type, const QMessageLogContext & context, const QString & text)
{
    const bool isAboutSession = text.startsWith(QLatin1String("QStandardPaths: ")) ||
                                text == QLatin1String("This plugin does not support propagateSizeHints()");
    if (!isAboutSession) {
        formerHandler(type, context, text);
    }
}

/// Plug-ins use widgets, which need no display for a command: not even the one that the environment of the
/// person's desktop asks for, which may be out of reach.
std::unique_ptr<QCoreApplication> makeApplication(int & argc, char ** argv, bool withPlugins)
{
    if (!withPlugins) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    // Of the platforms without a display this one leaves the fonts alone until a window wants text.
    qputenv("QT_QPA_PLATFORM", "minimal");
    formerHandler = qInstallMessageHandler(withoutSessionComplaints);
    auto application = std::make_unique<QApplication>(argc, argv);
    // A question is the only window there is while it is shown: answering it must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

} // namespace

int main(int argc, char ** argv)
{
    // A reader that goes away ("korvane dump x.korv | head") is noticed at the next write.
    std::signal(SIGPIPE, SIG_IGN);
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    const app::command_line line = app::parseCommandLine(arguments);
    const bool withPlugins =
        line.command == app::command_line::export_project || line.command == app::command_line::plugins;
    int ownArguments = 1; // the rest is ours, Qt's own options are none of this program
    const std::unique_ptr<QCoreApplication> application = makeApplication(ownArguments, argv, withPlugins);
    return app::finishOutput(run(line));
}
