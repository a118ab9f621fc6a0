#pragma once

#include "app/commands.h"

#include <QStringList>

namespace app {

/// What a command line asks for.
struct command_line
{
    enum command_type
    {
        print, ///< only `text` is to be printed: help or version
        wrong, ///< `text` is the reason on one line
        import,
        dump,
        tag,
        log,
        export_project,
        plugins,
        window ///< the main window, with `projectFile` open if it is not empty
    };

    command_type command = wrong;
    QString text;
    QString help; ///< the help text to show in addition to a reason, empty for none
    QString modelFile;
    QString projectFile;
    QString message;
    bool ifChanged = false; ///< of tag
    export_request request;
};

/// The `count` arguments of main() as text; false with the reason when one is not UTF-8: its text would name
/// another file.
[[nodiscard]] bool decodeArguments(int count, const char * const * arguments, QStringList & decoded,
                                   QString & reason);

/// Why the files that `line` names cannot be found by their names: one is relative to a folder whose own name
/// is not UTF-8. Empty when they can.
[[nodiscard]] QString workingFolderProblem(const command_line & line);

/// Reads the arguments that follow the program's name.
[[nodiscard]] command_line parseCommandLine(const QStringList & arguments);

} // namespace app
