#pragma once

#include "database/simulation/state.h"
#include "database/statement/change.h"

#include <span>

/// Columns of CREATE TABLE whose words a database reads as something else.
namespace database {

/// Those of `columns` that the table gets; a last one that is read as a constraint is told in `lost`.
[[nodiscard]] std::span<const column_definition> columnsOf(const facts & known, const QString & table,
                                                           std::span<const column_definition> columns,
                                                           losses & lost);
/// The missing table for CREATE TABLE (…, like other, …), where `other` would be the type of a column;
/// nothing for all else.
[[nodiscard]] refusal copiedTable(const facts & known, const column_definition & asked);
/// Whether the type has a quotation that reaches into the next column.
[[nodiscard]] bool hasOtherColumns(const QString & type);

} // namespace database
