#pragma once

#include <QString>
#include <QStringList>

namespace app {

/// The word that stands for every database but the generic one.
inline constexpr QLatin1String AllDatabases("all");

/// The keys that `list` names, separated by commas: "sqlite,postgresql", or AllDatabases. What no database
/// has stays as it is, for whyNoDatabase().
[[nodiscard]] QStringList databaseKeys(const QString & list);
/// Why one of `keys` cannot be judged, on one line; empty when all can.
[[nodiscard]] QString whyNoDatabase(const QStringList & keys);
/// Why `key` is no database that scripts are made for; empty when it is one.
[[nodiscard]] QString whyNotOneDatabase(const QString & key);

} // namespace app
