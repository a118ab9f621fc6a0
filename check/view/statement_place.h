#pragma once

#include "check/finding/finding.h"

namespace database {
struct statement;
}

namespace check {

/// Where a statement that was read in `record` stands in its script. What it is about is left open.
[[nodiscard]] statement_place placeOf(const plugin::statement_record & record,
                                      const database::statement & read);

} // namespace check
