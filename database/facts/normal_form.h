#pragma once

#include "database/catalogue/catalogue.h"

namespace database {

struct facts;

/// The catalogue as the database itself would show it: types in its own words, numbered indexes with their
/// numbers, targets of foreign keys by the names that their tables and columns have. What is compared with
/// another catalogue goes through this first, a catalogue read from a server included.
[[nodiscard]] catalogue normalForm(catalogue held, const facts & known);

} // namespace database
