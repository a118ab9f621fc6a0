#pragma once

#include <QSqlDatabase>
#include <QSqlError>

namespace model {
class project;
}

namespace storage {

/// Fills the model's tables of `database`, which are empty, with `project`. An error is the engine's.
[[nodiscard]] QSqlError writeModel(const QSqlDatabase & database, const model::project & project);

} // namespace storage
