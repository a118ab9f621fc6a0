#pragma once

#include "database/server/readable_database.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace database::server {

/// A database that runs scripts and tells from its own catalogue what came of them.
class target_database : public readable_database
{
public:
    /// Begins anew with an empty database. False, with the reason, when that fails.
    virtual bool reset(QString & error) = 0;
    /// Runs one statement; false, with the database's own code and words, when it is refused. Throws
    /// server_failure when the database is there no more.
    virtual bool execute(const QString & statement, server_error & error) = 0;
    /// The rows of a query that has to succeed; this and all that reads throws server_failure.
    [[nodiscard]] virtual QList<QVariantList> rows(const QString & query) = 0;
    /// How the catalogue spells the SQL type `type`.
    virtual QString typeAsStored(const QString & type) = 0;
    /// A name as a statement of ours writes it, whatever it is made of.
    [[nodiscard]] virtual QString quoted(const QString & name) const = 0;
    /// The statement after which foreign keys do, or do not, have a say in what rows there are.
    [[nodiscard]] virtual QString foreignKeyChecks(bool on) const = 0;
    /// Leaves what it made among what is somebody's, a file or a database on a server, where it is when this
    /// goes. Gives its name; empty when nothing of this stays.
    [[nodiscard]] virtual QString keep() { return {}; }
    /// One more such database beside this one, for another thread: it belongs to the thread that resets it,
    /// and has to go before this. Null where there is room for one only.
    [[nodiscard]] virtual std::unique_ptr<target_database> another() const { return nullptr; }
    /// Whether foreign keys have a say when nobody says anything.
    [[nodiscard]] virtual bool enforcesForeignKeys() const { return true; }
};

/// Starts a database of that key, with nothing in it: SQLite in this program, MariaDB and PostgreSQL as
/// servers of their own, which end with the object. Null, with the reason on one line and what to do, for one
/// that is not installed or cannot be run here.
[[nodiscard]] std::unique_ptr<target_database> start(const QString & key, QString & why);

/// Why nothing of that key can be started on this machine, with what to do: it is not installed, or cannot be
/// run here at all. Empty where start() can try.
[[nodiscard]] QString whyMissing(const QString & key);

/// The keys that start() knows how to start, whether or not what it takes is installed.
[[nodiscard]] QStringList runnableKeys();

/// Opens a database of that URL that nobody else has: on a server one of a name of its own, which is dropped
/// when the object goes; of SQLite the file, which must not be there, and goes with the object. Null, with
/// the reason on one line, when that cannot be done.
[[nodiscard]] std::unique_ptr<target_database> open(const server_url & place, QString & why);

[[nodiscard]] std::unique_ptr<target_database> openSqlite(const server_url & place, QString & why);
[[nodiscard]] std::unique_ptr<target_database> openMySql(const server_url & place, QString & why);
[[nodiscard]] std::unique_ptr<target_database> openPostgreSql(const server_url & place, QString & why);

// What whyMissing() says of them.
[[nodiscard]] QString whyNoMariaDb();
[[nodiscard]] QString whyNoPostgreSql();

/// A SQLite database in memory.
[[nodiscard]] std::unique_ptr<target_database> startSqlite(QString & why);
/// A private MariaDB server of this process; null, with the reason, when none is installed or it does not
/// start.
[[nodiscard]] std::unique_ptr<target_database> startMariaDb(QString & why);
/// A private PostgreSQL server of this process; null, with the reason, when none is installed or it does not
/// start.
[[nodiscard]] std::unique_ptr<target_database> startPostgreSql(QString & why);

} // namespace database::server
