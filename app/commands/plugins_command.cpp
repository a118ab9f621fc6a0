#include "app/command.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/plugin_choice.h"

#include "plugin/export_interface.h"

namespace app {

namespace {

void printPlugin(const plugin::loaded_plugin & loaded)
{
    const plugin::export_interface & p = *loaded.getInterface();
    printLine(oneLine(p.getName() + QLatin1Char(' ') + p.getVersion()));
    printLine(QStringLiteral("  ") + oneLine(p.getShortDesc()));
    printLine(QStringLiteral("  ") + oneLine(p.getDescription()));
    printLine(QStringLiteral("  File: ") + oneLine(loaded.getFileName()));
    const QStringList help = p.getCommandLineInfos().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (!help.isEmpty()) {
        printLine(QStringLiteral("  Command line of 'korvane export':"));
    }
    for (const QString & line : help) {
        printLine(QStringLiteral("    ") + oneLine(line));
    }
}

/// Lists the plug-ins found, with their description and command-line help.
class plugins_command : public command
{
public:
    plugins_command()
        : command("plugins", "List the plugins found, with their command-line help", surroundings::plugins)
    {
    }

    void declare(command_options &) override {}

    [[nodiscard]] int run() override
    {
        const found_plugins found = found_plugins::inFolders();
        for (const auto & loaded : found.plugins) {
            printPlugin(*loaded);
        }
        if (found.plugins.empty()) {
            printLine(noPluginText());
        }
        for (const QString & problem : found.problems) {
            printError(problem);
        }
        return Done;
    }
};

} // namespace

std::unique_ptr<command> makePluginsCommand()
{
    return std::make_unique<plugins_command>();
}

} // namespace app
