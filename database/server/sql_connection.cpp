#include "database/server/sql_connection.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <atomic>

namespace database::server {

namespace {

/// What the database says. One driver adds the code, which is told beside the words already.
QString wordsOf(const QSqlError & error)
{
    const QString words = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    const QString code = QStringLiteral("(%1)").arg(error.nativeErrorCode());
    return words.endsWith(code) ? words.chopped(code.size()).trimmed() : words;
}

} // namespace

sql_connection::sql_connection(const QString & driver, const std::function<void(QSqlDatabase &)> & prepare)
{
    static std::atomic<int> number = 0; // threads have connections of their own
    m_sName = QStringLiteral("target_%1").arg(++number);
    QSqlDatabase db = QSqlDatabase::addDatabase(driver, m_sName);
    prepare(db);
    m_bOpen = db.open();
    m_sOpenError = wordsOf(db.lastError());
}

sql_connection::sql_connection(const QSqlDatabase & open)
    : m_sName(open.connectionName()), m_bOwn(false), m_bOpen(open.isOpen())
{
}

sql_connection::~sql_connection()
{
    if (m_bOwn) {
        QSqlDatabase::database(m_sName, false).close();
        QSqlDatabase::removeDatabase(m_sName);
    }
}

bool sql_connection::execute(const QString & statement, server_error & error) const
{
    QSqlQuery q(QSqlDatabase::database(m_sName, false));
    const bool done = q.exec(statement);
    error = done ? server_error() : server_error{q.lastError().nativeErrorCode(), wordsOf(q.lastError())};
    return done;
}

bool sql_connection::isLost(const server_error & error) const
{
    // The driver of PostgreSQL closes a connection that is lost; that of MySQL has numbers for it only: gone
    // away, lost during a query, killed.
    static const QStringList numbers = {QStringLiteral("2006"), QStringLiteral("2013"),
                                        QStringLiteral("1927")};
    const QSqlDatabase db = QSqlDatabase::database(m_sName, false);
    return !db.isOpen() || (db.driverName() == QLatin1String("QMYSQL") && numbers.contains(error.code));
}

bool sql_connection::execute(const QString & statement, QString & error) const
{
    server_error why;
    const bool done = execute(statement, why);
    error = why.words;
    return done;
}

QList<QVariantList> sql_connection::rows(const QString & query, const QVariantList & values) const
{
    QSqlQuery q(QSqlDatabase::database(m_sName, false));
    bool isFine = q.prepare(query);
    for (const QVariant & value : values) {
        q.addBindValue(value);
    }
    isFine = isFine && q.exec();
    QList<QVariantList> result;
    const int columns = isFine ? q.record().count() : 0;
    while (isFine && q.next()) {
        QVariantList row;
        row.reserve(columns);
        for (int i = 0; i < columns; ++i) {
            // Some drivers give texts of a server's catalogue as bytes.
            const QVariant value = q.value(i);
            row.append(value.metaType() == QMetaType::fromType<QByteArray>() && !value.isNull()
                           ? QVariant(QString::fromUtf8(value.toByteArray()))
                           : value);
        }
        result.append(row);
    }
    // What breaks off in the middle looks like an end.
    isFine = isFine && q.lastError().type() == QSqlError::NoError;
    if (!isFine) {
        throw server_failure(wordsOf(q.lastError()));
    }
    return result;
}

QStringList sql_connection::firstColumn(const QString & query, const QVariantList & values) const
{
    QStringList result;
    for (const QVariantList & row : rows(query, values)) {
        result.append(row.constFirst().toString());
    }
    return result;
}

} // namespace database::server
