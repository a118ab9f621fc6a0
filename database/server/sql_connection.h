#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <functional>
#include <stdexcept>

namespace database::server {

/// What a database says to a statement that it refuses.
struct server_error
{
    QString code; ///< as the driver tells it: SQLSTATE, or a number
    QString words;
};

/// A server or a connection that is there no more, or does not do what every one does.
class server_failure : public std::runtime_error
{
public:
    explicit server_failure(const QString & reason) : std::runtime_error(reason.toStdString()) {}
    [[nodiscard]] QString reason() const { return QString::fromUtf8(what()); }
};

/// A connection to a database. One that is made here has a name of its own, and is removed with this object.
class sql_connection
{
public:
    sql_connection(const QString & driver, const std::function<void(QSqlDatabase &)> & prepare);
    /// Speaks through `open`, which is somebody's and has to outlive this.
    explicit sql_connection(const QSqlDatabase & open);
    ~sql_connection();
    sql_connection(const sql_connection &) = delete;
    sql_connection & operator=(const sql_connection &) = delete;

    [[nodiscard]] bool isOpen() const { return m_bOpen; }
    [[nodiscard]] QString openError() const { return m_sOpenError; }
    /// Whether the statement that ended with `error` found, or made, that nobody listens any more.
    [[nodiscard]] bool isLost(const server_error & error) const;
    bool execute(const QString & statement, server_error & error) const;
    bool execute(const QString & statement, QString & error) const;
    /// The rows of a query that has to succeed; throws server_failure.
    [[nodiscard]] QList<QVariantList> rows(const QString & query, const QVariantList & values = {}) const;
    /// The first column of rows().
    [[nodiscard]] QStringList firstColumn(const QString & query, const QVariantList & values = {}) const;

private:
    QString m_sName;
    bool m_bOwn = true; ///< it goes with this
    bool m_bOpen = false;
    QString m_sOpenError;
};

} // namespace database::server
