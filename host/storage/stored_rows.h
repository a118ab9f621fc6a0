#pragma once

#include "zk/sqlite_statement.h"

#include <QSqlError>
#include <QString>

namespace zk::sqlite {
class connection;
}

namespace storage {

class text_cache;

/// The rows of one table of a project file, in order, with every value looked at before it is believed. The
/// first of a wrong kind ends the reading; what is asked for until then gets a value of the right one.
/// Columns count from 0.
class stored_rows
{
public:
    /// @param file what the table is in; it and `cache` have to outlive the rows
    /// @param columns their names, with commas between
    stored_rows(const zk::sqlite::connection & file, text_cache & cache, const char * table,
                const char * columns);

    /// Whether there is another row, which is the one that is asked then.
    bool next();
    /// @param min the least that the number may be, which is also given in the place of a wrong one
    qlonglong number(int column, qlonglong min, qlonglong max);
    long id(int column);
    /// 0 where none is stored.
    long optionalId(int column);
    QString text(int column);
    /// A null text where none is stored.
    QString optionalText(int column);

    /// Ends the reading for another reason.
    void fail(const QString & reason);
    /// What ended the reading; invalid at the end of the table.
    [[nodiscard]] QSqlError error() const;

private:
    using cell = zk::sqlite::cell;

    qlonglong number(const cell & value, int column, qlonglong min, qlonglong max);
    QString text(const cell & value, int column);

    const zk::sqlite::connection & m_file;
    zk::sqlite::statement m_rows;
    text_cache & m_texts;
    const char * m_sTable;
    QString m_sProblem;
    qlonglong m_iRow = 0;
};

} // namespace storage
