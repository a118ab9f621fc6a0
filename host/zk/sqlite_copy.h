#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace zk::sqlite {

/// Appends all rows of the table `table` of `from` to the table of that name in `to`, in their order and as
/// they are. Both have the same columns. An error is the engine's.
[[nodiscard]] QSqlError copyRows(const QString & table, const QSqlDatabase & from, const QSqlDatabase & to);

} // namespace zk::sqlite
