#pragma once

#include "zk/zk_bool.h"

#include <QLatin1String>
#include <QString>

#include <vector>

namespace plugin {
class statement_source;
}

namespace app {

class source;

/// How a script in the export folder stands to the one that an export would write now.
enum class script_state
{
    same,
    differs,
    missing, ///< there is none of that name
    unknown  ///< what an export would write, or what is there, could not be found out
};

/// "same", "differs" …
[[nodiscard]] QLatin1String wordOf(script_state state);

struct written_script
{
    QString script; ///< by the name that an export gives it
    script_state state = script_state::unknown;
    QString why; ///< what differs, or why it is not known; empty otherwise
};

/// The scripts of a project's stored settings.
struct written_scripts
{
    QString folder;                      ///< absolute; empty when no folder is stored
    QString database;                    ///< key of the one that is stored
    QString label;                       ///< of the database, for people
    std::vector<written_script> scripts; ///< in the order in which an export writes them
};

/// Compares the scripts in the export folder of the project `of` with those that an export would write now,
/// with the stored settings. Nothing is written. A text form has no settings, so no scripts.
/// @param noCustomScript whether the host runs no custom script; if the project has one, nothing is known
/// A failure is one line, and `found` has what was found out until then.
[[nodiscard]] zk::ZkBool compareScripts(plugin::statement_source & statements, source & of,
                                        bool noCustomScript, written_scripts & found);

} // namespace app
