#pragma once

#include "plugin/statement_source.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace model {
class project;
}

namespace app {

/// What an export wrote, and with which options.
struct exported_scripts
{
    QString projectFile;                     ///< as it stands on the command line
    std::shared_ptr<model::project> project; ///< that was exported
    plugin::friendly_settings options;       ///< those that were given, by their friendly names
    QString database;                        ///< key to judge for; empty for that of the options
    QString plugin;                          ///< as it was asked for; empty for the only one
    bool noCustomScript = false;
    QStringList files; ///< absolute names of the scripts
};

/// Judges the scripts of an export as `korvane check` does: how many findings there are about them, and the
/// command that lists these, in one line. Empty when there are none. When they cannot be judged, or not all
/// of them, the line says why. Where memory runs out and nobody can be told, the program says that line and
/// ends with status 0, since the export is done: what was printed has to be written before.
[[nodiscard]] QString exportFindings(plugin::statement_source & statements, const exported_scripts & written);

} // namespace app
