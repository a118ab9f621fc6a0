#pragma once

#include "check/view/statement_place.h"
#include "database/statement/reader.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

#include <QString>

#include <memory>
#include <vector>

namespace model {
class project;
}

namespace app {

class source;

/// A statement as a server runs it.
struct run_statement
{
    check::statement_place place;
    database::statement read;
};

/// The scripts that belong to one version.
struct version_scripts
{
    QString word; ///< "v2", "now"
    std::shared_ptr<model::project> model;
    std::vector<run_statement> full; ///< makes it as a whole
    std::vector<run_statement> step; ///< leads to it from the version before; empty without a history
};

/// Makes the scripts of each version of `of`, oldest first, and last those of its state `now`.
/// @param options of the export, its database included
/// @param versions receives them; after a failure, which is one line, those that came before it
[[nodiscard]] zk::ZkBool loadScripts(plugin::statement_source & statements, source & of,
                                     const plugin::friendly_settings & options,
                                     const std::shared_ptr<model::project> & now,
                                     std::vector<version_scripts> & versions);

} // namespace app
