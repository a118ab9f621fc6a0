#pragma once

#include <QSqlError>

namespace zk::sqlite {
class connection;
}

namespace model {
class project;
}

namespace storage {

/// Reads name and model out of the tables of the open project `file` into the empty `project`.
/// The tables are treated as hostile: whatever they hold, a failure says which table and which row.
[[nodiscard]] QSqlError readModel(const zk::sqlite::connection & file, model::project & project);

} // namespace storage
