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

/// What is to be judged.
struct check_request
{
    QStringList databases; ///< keys; see whyNoDatabase()
    bool whole =
        false; ///< the full script, v1 and each step, in the place of the full script and the last step
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
