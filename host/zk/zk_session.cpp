#include "zk/zk_session.h"

#include "zk/sqlite_connection.h"
#include "zk/zk_sql_database.h"

namespace zk {

ZkSession::ZkSession(const QSqlDatabase & database) : m_database(database)
{
    addError(ZkSqlDatabase::openError(m_database));
    if (isValid()) {
        // A deferred transaction would meet another writer only in its middle, where waiting no longer helps.
        addError(sqlite::execute(m_database, QStringLiteral("BEGIN IMMEDIATE")));
        m_bActive = isValid();
    }
}

ZkSession::~ZkSession()
{
    end();
}

void ZkSession::addError(const QSqlError & error)
{
    if (!m_firstError.isValid()) {
        m_firstError = error;
    }
}

QSqlError ZkSession::end()
{
    if (!m_bActive) {
        return m_firstError;
    }
    m_bActive = false;
    if (isValid()) {
        // Not through QSqlDatabase::commit(), whose error has lost the engine's code.
        addError(sqlite::execute(m_database, QStringLiteral("COMMIT")));
    }
    if (!isValid()) {
        m_database.rollback();
    }
    return m_firstError;
}

} // namespace zk
