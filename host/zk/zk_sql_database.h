#pragma once

#include "korvane_global.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace zk {

/// The ORM's cached connections to SQLite database files, one a file and thread.
class KORVANE_EXPORT ZkSqlDatabase
{
public:
    /// Cached connection to the existing SQLite file `file`, opened with the settings that protect against
    /// hostile files. An empty name, a missing file or a failure to open gives a connection that is not open;
    /// its lastError() tells why.
    static QSqlDatabase getDatabase(const QString & file);

    /// Closes every cached connection of the calling thread. Handles that somebody still holds become
    /// invalid.
    static void clearAllDatabases();

    /// Why `database` is not open; invalid when it is.
    [[nodiscard]] static QSqlError openError(const QSqlDatabase & database);

    /// `error` of the open `database` with the name of its file, the reason and what to do; an invalid one
    /// stays so.
    [[nodiscard]] static QSqlError describe(const QSqlDatabase & database, const QSqlError & error);
};

} // namespace zk
