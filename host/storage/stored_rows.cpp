#include "storage/stored_rows.h"

#include "storage/id_marks.h"
#include "storage/text_cache.h"
#include "storage/texts.h"
#include "zk/sqlite_connection.h"

#include <string_view>

namespace storage {

stored_rows::stored_rows(const zk::sqlite::connection & file, text_cache & cache, const char * table,
                         const char * columns)
    : m_file(file), m_rows(file, QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid")
                                     .arg(QString::fromLatin1(columns), QString::fromLatin1(table))),
      m_texts(cache), m_sTable(table)
{
}

bool stored_rows::next()
{
    ++m_iRow;
    return m_sProblem.isEmpty() && m_rows.next();
}

qlonglong stored_rows::number(int column, qlonglong min, qlonglong max)
{
    return number(m_rows.at(column), column, min, max);
}

long stored_rows::id(int column)
{
    return static_cast<long>(number(column, 1, LargestId));
}

long stored_rows::optionalId(int column)
{
    const cell value = m_rows.at(column);
    return value.isNull() ? 0 : static_cast<long>(number(value, column, 1, LargestId));
}

QString stored_rows::text(int column)
{
    return text(m_rows.at(column), column);
}

QString stored_rows::optionalText(int column)
{
    const cell value = m_rows.at(column);
    return value.isNull() ? QString() : text(value, column);
}

void stored_rows::fail(const QString & reason)
{
    if (m_sProblem.isEmpty()) {
        m_sProblem = texts::tr("is damaged (table %1, row %2: %3); restore it from a copy")
                         .arg(QString::fromLatin1(m_sTable), QString::number(m_iRow), reason);
    }
}

QSqlError stored_rows::error() const
{
    return m_sProblem.isEmpty() ? m_rows.error() : m_file.failure(m_sProblem);
}

qlonglong stored_rows::number(const cell & value, int column, qlonglong min, qlonglong max)
{
    const bool isNumber = value.kindOf() == cell::kind::integer;
    const qlonglong n = value.number();
    if (!isNumber || n < min || n > max) {
        fail(texts::tr("column %1 is not a number of the expected range").arg(column + 1));
        return min;
    }
    return n;
}

QString stored_rows::text(const cell & value, int column)
{
    const bool isText = value.kindOf() == cell::kind::text;
    const std::string_view utf8 = value.bytes();
    if (!isText || !utf8.data()) {
        fail(texts::tr("column %1 is not a text").arg(column + 1));
    }
    return m_texts.shared(utf8);
}

} // namespace storage
