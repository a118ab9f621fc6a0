#pragma once

#include "korvane_global.h"

#include <QSqlDatabase>
#include <QSqlError>

namespace zk {

/// A transaction for a scope: committed when it ends without error, rolled back otherwise.
class KORVANE_EXPORT ZkSession
{
public:
    /// Begins a transaction on `database`; a connection that is not open makes the session invalid.
    explicit ZkSession(const QSqlDatabase & database);
    ~ZkSession();
    ZkSession(const ZkSession &) = delete;
    ZkSession & operator=(const ZkSession &) = delete;

    [[nodiscard]] QSqlDatabase & database() { return m_database; }
    /// True while no error was added.
    [[nodiscard]] bool isValid() const { return !m_firstError.isValid(); }
    /// Remembers the first valid error that it is given; an invalid one is ignored.
    void addError(const QSqlError & error);
    /// The first error; invalid when all went well.
    [[nodiscard]] QSqlError firstError() const { return m_firstError; }
    /// Ends the transaction now, by commit or rollback, and returns the first error, that of the commit
    /// included.
    QSqlError end();

private:
    QSqlDatabase m_database;
    QSqlError m_firstError;
    bool m_bActive = false;
};

} // namespace zk
