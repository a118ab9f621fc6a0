#include "zk/sqlite_statement.h"

#include "zk/sqlite_connection.h"
#include "zk/sqlite_locks.h"

#include <sqlite3.h>

namespace zk::sqlite {

cell::kind cell::kindOf() const
{
    switch (sqlite3_value_type(m_pValue)) {
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

qint64 cell::number() const
{
    return sqlite3_value_int64(m_pValue);
}

std::string_view cell::bytes() const
{
    // In this order: the text first, which may have to be converted, then its size.
    const unsigned char * const text = sqlite3_value_text(m_pValue);
    const int size = sqlite3_value_bytes(m_pValue);
    return {reinterpret_cast<const char *>(text), static_cast<std::size_t>(text ? size : 0)};
}

QString cell::text() const
{
    const std::string_view utf8 = bytes();
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool operator==(const cell & a, const cell & b)
{
    const int type = sqlite3_value_type(a.m_pValue);
    if (type != sqlite3_value_type(b.m_pValue)) {
        return false;
    }
    return type == SQLITE_INTEGER ? a.number() == b.number() : a.bytes() == b.bytes();
}

statement::statement(const connection & file, const QString & sql)
    : m_connection(file), m_statement(nullptr, sqlite3_finalize)
{
    sqlite3_stmt * prepared = nullptr;
    check(sqlite3_prepare_v2(handleOf(file.database()), sql.toUtf8().constData(), -1, &prepared, nullptr));
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

void statement::bind(int index, const cell & value)
{
    check(sqlite3_bind_value(m_statement.get(), index + 1, value.m_pValue));
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

cell statement::at(int column) const
{
    return cell(sqlite3_column_value(m_statement.get(), column));
}

void statement::check(int result)
{
    if (result == SQLITE_OK || m_error.isValid()) {
        return;
    }
    sqlite3 * const handle = handleOf(m_connection.database());
    m_error =
        m_connection.describe({QString(), QString::fromUtf8(sqlite3_errmsg(handle)),
                               QSqlError::StatementError, QString::number(sqlite3_extended_errcode(handle))});
}

} // namespace zk::sqlite
