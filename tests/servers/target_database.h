#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace servers {

/// A database that runs scripts and tells from its own catalogue what came of them.
class target_database
{
public:
    virtual ~target_database() = default;

    /// Begins anew with an empty database. False, with the reason, when that fails.
    virtual bool reset(QString & error) = 0;
    /// Runs one statement; false, with the database's own words, when it is refused.
    virtual bool execute(const QString & statement, QString & error) = 0;
    /// What is in the database, a sorted list of lines:
    ///   "table T", "column T.C TYPE [NOT NULL]", "key T (C, …)", "unique T (C)", "index NAME T (C)",
    ///   "foreign NAME T (C, …) -> T2 (C2, …)"; a foreign key without a name of its own has the name "-".
    virtual QStringList catalogue() = 0;
    /// How the catalogue spells the SQL type `type`.
    virtual QString typeAsStored(const QString & type) = 0;
};

/// A SQLite database in memory.
[[nodiscard]] std::unique_ptr<target_database> startSqlite(QString & why);
/// A private MariaDB server of this process; null, with the reason, when none is installed or it does not
/// start.
[[nodiscard]] std::unique_ptr<target_database> startMariaDb(QString & why);
/// A private PostgreSQL server of this process; null, with the reason, when none is installed or it does not
/// start.
[[nodiscard]] std::unique_ptr<target_database> startPostgreSql(QString & why);

} // namespace servers
