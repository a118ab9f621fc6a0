#include "app/program/command_table.h"

#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/window/window_command.h"

#include <CLI/CLI.hpp>

namespace app {

namespace {

described_command describe(command & what, bool hasName)
{
    CLI::App unused;
    command_options options(unused);
    what.declare(options);
    bool isQuiet = false;
    if (hasName) {
        options.addQuiet(isQuiet);
    }
    return {QString::fromLatin1(what.name()), QString::fromLatin1(what.description()), options.footer(),
            options.described()};
}

} // namespace

std::vector<std::unique_ptr<command>> makeCommands()
{
    std::vector<std::unique_ptr<command>> commands;
#define KORVANE_MAKE_COMMAND(MAKE) commands.push_back(MAKE());
    KORVANE_COMMANDS(KORVANE_MAKE_COMMAND)
#undef KORVANE_MAKE_COMMAND
    return commands;
}

std::unique_ptr<command> makeDefaultCommand()
{
    return makeWindowCommand();
}

QList<described_command> describeCommands()
{
    QList<described_command> commands{describe(*makeDefaultCommand(), false)};
    for (const std::unique_ptr<command> & each : makeCommands()) {
        commands << describe(*each, true);
    }
    return commands;
}

} // namespace app
