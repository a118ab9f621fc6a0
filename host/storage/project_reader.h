#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace model {
class project;
}

namespace storage {

/// Reads name and model out of the tables of `database`, opened from `file`, into the empty `project`.
/// The tables are treated as hostile: whatever they hold, a failure says which table and which row.
[[nodiscard]] QSqlError readModel(const QString & file, const QSqlDatabase & database,
                                  model::project & project);

} // namespace storage
