#pragma once

#include <QSqlError>

namespace zk::sqlite {
class connection;
}

namespace model {
class project;
}

namespace storage {

/// Fills the model's tables of the open project `file`, which are empty, with `project`.
[[nodiscard]] QSqlError writeModel(const zk::sqlite::connection & file, const model::project & project);

} // namespace storage
