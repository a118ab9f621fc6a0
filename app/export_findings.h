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
/// of them, the line says why.
[[nodiscard]] QString exportFindings(plugin::statement_source & statements, const exported_scripts & written);

} // namespace app
