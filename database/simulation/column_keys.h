#pragma once

#include "database/simulation/state.h"

/// Which keys a column is part of, or is referred to by.
namespace database {

/// A foreign key of the table that the column is part of; none when there is no such key.
[[nodiscard]] const foreign_key * keyFrom(const table & owner, const QString & column);
/// A foreign key, of any table, that refers to the column; none when there is no such key.
[[nodiscard]] const foreign_key * keyTo(const state & at, const table & owner, const QString & column);
/// The part of the primary key that the column is; none when it is not in the key.
[[nodiscard]] const key_part * partOfKey(const table & owner, const QString & column);
[[nodiscard]] bool isInKey(const table & owner, const QString & column);

} // namespace database
