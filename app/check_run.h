#pragma once

#include "check/finding/finding.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

#include <QStringList>

#include <optional>

namespace app {

class source;

/// The word that stands for every database but the generic one.
inline constexpr QLatin1String AllDatabases("all");

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
    QStringList databases; ///< keys; see whyNoDatabase()
    judged_scripts scripts = judged_scripts::usual;
    std::optional<int> from; ///< a version, or `Now`: the step between these two alone
    std::optional<int> to;
    plugin::friendly_settings options; ///< of the export, beside its database
};

/// The keys that `list` names, separated by commas: "sqlite,postgresql", or AllDatabases. What no database
/// has stays as it is, for whyNoDatabase().
[[nodiscard]] QStringList databaseKeys(const QString & list);
/// Why one of `keys` cannot be judged, on one line; empty when all can.
[[nodiscard]] QString whyNoDatabase(const QStringList & keys);
/// Why `key` is no database that scripts are made for; empty when it is one.
[[nodiscard]] QString whyNotOneDatabase(const QString & key);

/// Foretells what the scripts of `of` do. The current project is that of `of` meanwhile. After a failure
/// `found` has what was judged until then.
[[nodiscard]] zk::ZkBool checkSource(plugin::statement_source & statements, source & of,
                                     const check_request & asked, check::report & found);

} // namespace app
