#pragma once

#include <QSqlError>
#include <QString>

namespace zk::sqlite {

class connection;

/// Appends all rows of the table `table` of `from` to the table of that name in `to`, in their order and as
/// they are. Both have the same columns.
[[nodiscard]] QSqlError copyRows(const QString & table, const connection & from, const connection & to);

} // namespace zk::sqlite
