// Start-up: what every command needs, and the way to the one that was asked for.

#include "app/output.h"
#include "app/program/application.h"
#include "app/program/command_line.h"
#include "app/translation.h"
#include "app/wait_notice.h"

#include "database/server/server_url.h"
#include "os/program_end.h"
#include "os/unfinished_files.h"
#include "zk/sqlite_connection.h"

#include <QCoreApplication>

#include <csignal>
#include <new>

namespace {

app::command_line readArguments(int argc, char ** argv)
{
    QStringList arguments;
    app::command_line undecoded;
    const bool isDecoded = app::decodeArguments(argc, argv, arguments, undecoded.text);
    for (int i = 1; i < argc; ++i) {
        // Lists of processes show them to everybody.
        app::leaveOutOfErrors(QString::fromLocal8Bit(database::server::hidePassword(argv[i])));
    }
    return isDecoded ? app::parseCommandLine(arguments) : std::move(undecoded);
}

/// What cannot be run for want of a display is a wrong command line: help tells what works without one.
void refuseWithoutDisplay(app::command_line & line)
{
    if (line.type != app::command_line::run || line.asked->needs() != app::surroundings::window ||
        app::hasDisplay()) {
        return;
    }
    line.type = app::command_line::wrong;
    line.text = app::noDisplayText();
    if (!line.files.isEmpty()) {
        line.help.clear();
    }
}

int runCommand(app::command & command, char ** argv)
{
    int ownArguments = 1; // the rest is ours, Qt's own options are none of this program
    const auto application = app::makeApplication(ownArguments, argv, command.needs());
    if (command.needs() == app::surroundings::window) {
        // What commands say is read by scripts and searched for: it stays in one language.
        app::speakLanguageOfUser();
    } else if (!app::areResultsPrintedAlone()) {
        app::tellWaiting();
    }
    return app::finishOutput(command.run());
}

/// Prints the help of a command, `text`, and what it says besides.
int tellHelp(app::command & command, const QString & text, char ** argv)
{
    int ownArguments = 1;
    const auto application = app::makeApplication(ownArguments, argv, command.needs());
    app::printLine(text);
    if (const QString more = command.moreHelp(); !more.isEmpty()) {
        app::printLine(QLatin1Char('\n') + more.trimmed());
    }
    return app::finishOutput(app::Done);
}

int runProgram(int argc, char ** argv)
{
    app::command_line line = readArguments(argc, argv);
    refuseWithoutDisplay(line);
    if (const QString problem = app::workingFolderProblem(line); !problem.isEmpty()) {
        return app::failed(problem);
    }
    switch (line.type) {
    case app::command_line::run:
        if (line.isQuiet) {
            app::printResultsOnly();
        }
        return runCommand(*line.asked, argv);
    case app::command_line::tell:
        return tellHelp(*line.asked, line.text, argv);
    case app::command_line::print:
        app::printLine(line.text);
        return app::finishOutput(app::Done);
    case app::command_line::wrong:
        break;
    }
    if (!line.help.isEmpty()) {
        app::printLine(line.help);
    }
    app::printError(line.text);
    return app::finishOutput(app::WrongUsage);
}

} // namespace

int main(int argc, char ** argv)
{
    app::holdStandardStreams();
    // A reader that goes away ("korvane dump x.korv | head") is noticed at the next write.
    std::signal(SIGPIPE, SIG_IGN);
    os::removeUnfinishedOnSignals();
    os::endOrderlyWithoutMemory();
    zk::sqlite::countNoMemory();
    try {
        return runProgram(argc, argv);
    } catch (const std::bad_alloc &) {
        os::endWithoutMemory();
    }
}
