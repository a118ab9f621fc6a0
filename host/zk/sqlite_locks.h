#pragma once

#include "korvane_global.h"

#include <QSqlDatabase>
#include <QString>

#include <chrono>
#include <functional>

struct sqlite3;

/// What happens when another process holds the lock on a SQLite file: this one waits, and may say so.
namespace zk::sqlite {

/// How long somebody waits for a lock, 30 s unless it was set.
[[nodiscard]] KORVANE_EXPORT std::chrono::milliseconds lockPatience();
/// Connections that are opened from now on wait as long as that.
KORVANE_EXPORT void setLockPatience(std::chrono::milliseconds patience);

/// `listener` is called with the name of a file when one has waited for it for about a second; null for none.
/// To be set before other threads open files.
KORVANE_EXPORT void setWaitListener(std::function<void(const QString & file)> listener);

/// The engine's own handle of `database`; null when the database is not open, or when its driver uses another
/// copy of the engine than the one that this library is linked with.
[[nodiscard]] sqlite3 * handleOf(const QSqlDatabase & database);

/// Makes the open `database` wait for locks of others.
void waitForLocks(const QSqlDatabase & database);

/// The errno of the last failure of a file operation of `database`; 0 when none is known.
[[nodiscard]] int systemError(const QSqlDatabase & database);

} // namespace zk::sqlite
