#pragma once

#include "check/remedy/mending.h"

namespace check {

/// The statements with which a new database makes a table and its indexes. None when its full script has no
/// such table.
[[nodiscard]] QStringList makingStatements(const mending_place & at, const QString & table);

/// Makes a table anew as a new database has it, and copies its rows, for a database that has no statement to
/// change it. None when it does not go.
[[nodiscard]] QStringList rebuildingStatements(const mending_place & at, const QString & table);

} // namespace check
