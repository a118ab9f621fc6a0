#pragma once

#include "check/finding/finding.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

#include <QStringList>

#include <optional>

namespace app {

class source;

/// Which scripts are judged.
enum class judged_scripts
{
    usual,   ///< the full script and the step from the newest version to the state
    all,     ///< the full script, v1 and each step
    full,    ///< the full script alone
    history, ///< v1 and each step
};

/// What is to be judged.
struct check_request
{
    QStringList databases; ///< keys; see app/database_choice.h
    judged_scripts scripts = judged_scripts::usual;
    std::optional<int> from; ///< a version, or `Now`: the step between these two alone
    std::optional<int> to;
    plugin::friendly_settings options; ///< of the export, beside its database
};

/// Whether an export writes the script of this step; others are computed from the models at both ends.
[[nodiscard]] bool isNeighbour(int from, int to);
/// Puts into `records`, the statements of a step that begins with the version `from`, the names that its
/// scripts until then left in the database. A failure is one of making these.
/// @param options of the export, beside its database
/// @param now the model that the step leads to
[[nodiscard]] zk::ZkBool useKeptNames(plugin::statement_source & statements, source & of,
                                      const QString & database, const plugin::friendly_settings & options,
                                      int from, const model::project & now,
                                      std::vector<plugin::statement_record> & records);

/// Foretells what the scripts of `of` do. The current project is that of `of` meanwhile. After a failure
/// `found` has what was judged until then.
[[nodiscard]] zk::ZkBool checkSource(plugin::statement_source & statements, source & of,
                                     const check_request & asked, check::report & found);

} // namespace app
