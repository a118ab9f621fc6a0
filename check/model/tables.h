#pragma once

#include <QString>

namespace model {
class entity;
} // namespace model

namespace check {

/// The meta-data of an entity that leaves its table out of the scripts.
inline constexpr char CreateTableData[] = "DDL_EXPORT_CREATE_TABLE";
/// The same as a changed field is called.
inline constexpr char CreateTableField[] = "metaData.DDL_EXPORT_CREATE_TABLE";

/// The name of the entity's table, as scripts have it without quotes.
[[nodiscard]] QString tableNameOf(const model::entity & of);
/// Whether scripts make the entity's table: not where its meta-data says "0" or "false".
[[nodiscard]] bool isTableMade(const model::entity & of);

} // namespace check
