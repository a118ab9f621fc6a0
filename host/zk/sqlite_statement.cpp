#include "zk/sqlite_statement.h"

#include "zk/sqlite_connection.h"
#include "zk/sqlite_locks.h"

#include <sqlite3.h>

namespace zk::sqlite {

statement::statement(const QSqlDatabase & database, const QString & sql)
    : m_database(database), m_statement(nullptr, sqlite3_finalize)
{
    sqlite3_stmt * prepared = nullptr;
    check(sqlite3_prepare_v2(handleOf(database), sql.toUtf8().constData(), -1, &prepared, nullptr));
    m_statement.reset(prepared);
    m_lstText.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(prepared)));
}

statement::~statement() = default;

void statement::bind(int index, qint64 number)
{
    check(sqlite3_bind_int64(m_statement.get(), index + 1, number));
}

void statement::bind(int index, const QString & text)
{
    if (m_error.isValid()) {
        return;
    }
    QByteArray & bytes = m_lstText.at(static_cast<std::size_t>(index));
    bytes = text.toUtf8();
    check(sqlite3_bind_text(m_statement.get(), index + 1, bytes.constData(), static_cast<int>(bytes.size()),
                            SQLITE_STATIC));
}

void statement::bindNull(int index)
{
    check(sqlite3_bind_null(m_statement.get(), index + 1));
}

void statement::bindColumnOf(int index, const statement & row, int column)
{
    check(sqlite3_bind_value(m_statement.get(), index + 1,
                             sqlite3_column_value(row.m_statement.get(), column)));
}

bool statement::run()
{
    if (m_error.isValid()) {
        return false;
    }
    const int result = sqlite3_step(m_statement.get());
    check(result == SQLITE_DONE ? sqlite3_reset(m_statement.get()) : result);
    return !m_error.isValid();
}

bool statement::next()
{
    if (m_error.isValid()) {
        return false;
    }
    const int result = sqlite3_step(m_statement.get());
    if (result == SQLITE_ROW) {
        return true;
    }
    check(result == SQLITE_DONE ? SQLITE_OK : result);
    return false;
}

int statement::columnCount() const
{
    return sqlite3_column_count(m_statement.get());
}

statement::kind statement::kindOf(int column) const
{
    switch (sqlite3_column_type(m_statement.get(), column)) {
    case SQLITE_INTEGER:
        return kind::integer;
    case SQLITE_TEXT:
        return kind::text;
    case SQLITE_NULL:
        return kind::null;
    default:
        return kind::other;
    }
}

qint64 statement::number(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string_view statement::bytes(int column) const
{
    // In this order: the text first, which may have to be converted, then its size.
    const unsigned char * const text = sqlite3_column_text(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return {reinterpret_cast<const char *>(text), static_cast<std::size_t>(text ? size : 0)};
}

QString statement::text(int column) const
{
    const std::string_view utf8 = bytes(column);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool statement::hasSameValue(const statement & other, int column) const
{
    const int type = sqlite3_column_type(m_statement.get(), column);
    if (type != sqlite3_column_type(other.m_statement.get(), column)) {
        return false;
    }
    return type == SQLITE_INTEGER ? number(column) == other.number(column)
                                  : bytes(column) == other.bytes(column);
}

void statement::check(int result)
{
    if (result == SQLITE_OK || m_error.isValid()) {
        return;
    }
    sqlite3 * const handle = handleOf(m_database);
    m_error = describe(fileOf(m_database),
                       {QString(), QString::fromUtf8(sqlite3_errmsg(handle)), QSqlError::StatementError,
                        QString::number(sqlite3_extended_errcode(handle))},
                       m_database);
}

} // namespace zk::sqlite
