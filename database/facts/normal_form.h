#pragma once

#include "database/catalogue/catalogue.h"
#include "database/facts/known_types.h"

namespace database {

/// The catalogue as the database itself would show it: types in its own words, numbered indexes with their
/// numbers, targets of foreign keys by the names that their tables and columns have. What is compared with
/// another catalogue goes through this first, a catalogue read from a server included.
[[nodiscard]] catalogue normalForm(catalogue held, const known_types & types);

/// Parts of two catalogues.
struct catalogue_parts
{
    catalogue first;
    catalogue second;
};

/// What of two catalogues may differ in normal form, in that form: tables that both hold alike are left out.
[[nodiscard]] catalogue_parts differingParts(const catalogue & first, const catalogue & second,
                                             const known_types & types);

} // namespace database
