#include "app/commands.h"
#include "app/plugin_choice.h"

#include "plugin/export_interface.h"

namespace app {

int listPlugins()
{
    const found_plugins found = found_plugins::inFolders();
    for (const auto & loaded : found.plugins) {
        const plugin::export_interface & p = *loaded->getInterface();
        printLine(oneLine(p.getName() + QLatin1Char(' ') + p.getVersion()));
        printLine(QStringLiteral("  ") + oneLine(p.getShortDesc()));
        printLine(QStringLiteral("  ") + oneLine(p.getDescription()));
        printLine(QStringLiteral("  File: ") + oneLine(loaded->getFileName()));
        const QStringList help = p.getCommandLineInfos().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        if (!help.isEmpty()) {
            printLine(QStringLiteral("  Command line of 'korvane export':"));
        }
        for (const QString & line : help) {
            printLine(QStringLiteral("    ") + oneLine(line));
        }
    }
    if (found.plugins.empty()) {
        printLine(noPluginText());
    }
    for (const QString & problem : found.problems) {
        printError(problem);
    }
    return 0;
}

} // namespace app
