#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

#include <functional>

namespace model {
class project;
}

/// Project files that do not exist yet.
namespace storage::new_project_file {

/// Writes `project` to the new project file `file`, which may exist as an empty one. The file appears under
/// its name when it is whole.
/// @param more what else to write into the new database in the same transaction, may be null
[[nodiscard]] QSqlError write(const QString & file, const model::project & project,
                              const std::function<QSqlError(const QSqlDatabase &)> & more = nullptr);

} // namespace storage::new_project_file
