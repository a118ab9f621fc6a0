#pragma once

#include <memory>

/// The commands that are called by a name, in the order in which help lists them: a row a command. It names
/// the function that makes the command, in a file of its own: makeImportCommand is in import_command.cpp.
#define KORVANE_COMMANDS(ROW)                                                                                \
    ROW(makeImportCommand)                                                                                   \
    ROW(makeDumpCommand)                                                                                     \
    ROW(makeTagCommand)                                                                                      \
    ROW(makeLogCommand)                                                                                      \
    ROW(makeStatusCommand)                                                                                   \
    ROW(makeDiffCommand)                                                                                     \
    ROW(makeExportCommand)                                                                                   \
    ROW(makeExplainCommand)                                                                                  \
    ROW(makeCheckCommand)                                                                                    \
    ROW(makeVerifyCommand)                                                                                   \
    ROW(makeDocumentCommand)                                                                                 \
    ROW(makeSettingsCommand)                                                                                 \
    ROW(makeSchemaCommand)                                                                                   \
    ROW(makePluginsCommand)

namespace app {

class command;

#define KORVANE_DECLARE_COMMAND(MAKE) [[nodiscard]] std::unique_ptr<command> MAKE();
KORVANE_COMMANDS(KORVANE_DECLARE_COMMAND)
#undef KORVANE_DECLARE_COMMAND

} // namespace app
