#pragma once

#include "app/command.h"

#include <QStringList>

#include <memory>

namespace app {

/// What a command line asks for.
struct command_line
{
    enum line_type
    {
        wrong, ///< `text` is the reason on one line
        print, ///< only `text` is to be printed
        tell,  ///< `text` is the help of `asked`, which may say more
        run    ///< `asked` is to be run
    };

    line_type type = wrong;
    QString text;
    std::unique_ptr<command> asked;
    QString help;         ///< of the program, to show in addition where `asked` cannot be run; empty for none
    QStringList files;    ///< those that `asked` was given
    bool isQuiet = false; ///< only results are to be printed
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
