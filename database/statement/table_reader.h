#pragma once

#include "database/statement/change.h"
#include "database/statement/token_cursor.h"

namespace database {

/// Columns and keys, as CREATE TABLE and ALTER TABLE have them. Each gives none when something else stands
/// there; the cursor is anywhere then.
[[nodiscard]] std::optional<column_definition> readColumn(token_cursor & at);
/// Names in brackets; there may be none between them.
[[nodiscard]] std::optional<std::vector<identifier>> readNames(token_cursor & at);
/// The same with how much of each column counts.
[[nodiscard]] std::optional<std::vector<named_part>> readParts(token_cursor & at);
/// From FOREIGN KEY on.
[[nodiscard]] std::optional<reference_definition> readReference(token_cursor & at);
/// What stands in the brackets after CREATE TABLE and a name, and these. False when it is something else:
/// `into` has what stands before that.
[[nodiscard]] bool readTable(token_cursor & at, create_table & into);

} // namespace database
