#include "app/command_line.h"
#include "app/translation.h"
#include "app/wait_notice.h"

#include "tools/program_end.h"
#include "tools/unfinished_files.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <new>

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
        return app::tagProject(line.projectFile, line.message, line.ifChanged);
    case command_line::log:
        return app::logVersions(line.projectFile);
    case command_line::export_project:
        return app::exportProject(line.request);
    case command_line::plugins:
        return app::listPlugins();
    case command_line::window:
        return app::showWindow(line.projectFile);
    }
    return 2;
}

const char NoDisplay[] = "The window needs a display and none was found; 'korvane --help' lists the commands "
                         "that work without one";

QtMessageHandler formerHandler = nullptr;

/// Drops what Qt says about the session and the display that a command does without: what a command writes to
/// standard error is for its own failures.
void withoutSessionComplaints(QtMsgType type, const QMessageLogContext & context, const QString & text)
{
    const bool isAboutSession = text.startsWith(QLatin1String("QStandardPaths: ")) ||
                                text.startsWith(QLatin1String("This plugin does not support "));
    if (!isAboutSession) {
        formerHandler(type, context, text);
    }
}

/// A display that cannot be reached ends the program inside Qt; the reason is told as all others are.
void displayComplaints(QtMsgType type, const QMessageLogContext & context, const QString & text)
{
    if (type == QtFatalMsg) {
        app::printError(QString::fromLatin1(NoDisplay));
        std::_Exit(1);
    }
    // Before that Qt tells the same in words of its own.
    if (!QByteArray(context.category).startsWith("qt.qpa")) {
        formerHandler(type, context, text);
    }
}

bool hasDisplay()
{
#ifdef Q_OS_LINUX
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

std::unique_ptr<QCoreApplication> makeWindowApplication(int & argc, char ** argv)
{
    formerHandler = qInstallMessageHandler(displayComplaints);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(formerHandler);
    // Under these names the window's layout and the recent files are kept.
    QCoreApplication::setOrganizationName(QStringLiteral("korvane"));
    QCoreApplication::setApplicationName(QStringLiteral("korvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KORVANE_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("korvane"));
    return application;
}

/// Plug-ins use widgets, which need no display for a command: not even the one that the environment of the
/// person's desktop asks for, which may be out of reach.
std::unique_ptr<QCoreApplication> makeApplicationWithPlugins(int & argc, char ** argv)
{
    // Of the platforms without a display this one leaves the fonts alone until a window wants text.
    qputenv("QT_QPA_PLATFORM", "minimal");
    formerHandler = qInstallMessageHandler(withoutSessionComplaints);
    auto application = std::make_unique<QApplication>(argc, argv);
    // A question is the only window there is while it is shown: answering it must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

std::unique_ptr<QCoreApplication> makeApplication(int & argc, char ** argv,
                                                  app::command_line::command_type command)
{
    switch (command) {
    case app::command_line::window:
        return makeWindowApplication(argc, argv);
    case app::command_line::export_project:
    case app::command_line::plugins:
        return makeApplicationWithPlugins(argc, argv);
    default:
        return std::make_unique<QCoreApplication>(argc, argv);
    }
}

/// What a command line without a command comes to where no window can be shown.
app::command_line withoutWindow(app::command_line line)
{
    line.command = app::command_line::wrong;
    if (!line.projectFile.isEmpty()) {
        line.help.clear();
    }
    line.text = QString::fromLatin1(NoDisplay);
    return line;
}

} // namespace

namespace {

int runProgram(int argc, char ** argv)
{
    QStringList arguments;
    app::command_line line;
    if (app::decodeArguments(argc, argv, arguments, line.text)) {
        line = app::parseCommandLine(arguments);
    }
    if (line.command == app::command_line::window && !hasDisplay()) {
        line = withoutWindow(line);
    }
    if (const QString problem = app::workingFolderProblem(line); !problem.isEmpty()) {
        app::printError(problem);
        return 1;
    }
    int ownArguments = 1; // the rest is ours, Qt's own options are none of this program
    const std::unique_ptr<QCoreApplication> application = makeApplication(ownArguments, argv, line.command);
    if (line.command == app::command_line::window) {
        // What commands say is read by scripts and searched for: it stays in one language.
        app::speakLanguageOfUser();
    } else {
        app::tellWaiting();
    }
    return app::finishOutput(run(line));
}

} // namespace

int main(int argc, char ** argv)
{
    app::holdStandardStreams();
    // A reader that goes away ("korvane dump x.korv | head") is noticed at the next write.
    std::signal(SIGPIPE, SIG_IGN);
    tools::removeUnfinishedOnSignals();
    tools::endOrderlyWithoutMemory();
    try {
        return runProgram(argc, argv);
    } catch (const std::bad_alloc &) {
        tools::endProgram(tools::OutOfMemory);
    }
}
