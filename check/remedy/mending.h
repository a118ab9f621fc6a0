#pragma once

#include "check/remedy/repair.h"

namespace check {

/// What repairs differences of tables know while they look for statements.
struct mending_place
{
    const repair_ground & from;
    const sql_writer & sql;
    const database::catalogue & state;    ///< what is there, in normal form
    const database::catalogue & expected; ///< what is to be there, in normal form
};

/// The statements that take differences away, in an order in which they can run. Differences for which the
/// database has no statement are left alone, unless a table can be made anew for them.
[[nodiscard]] QStringList mendingStatements(const mending_place & at,
                                            const std::vector<schema_difference> & differences);

} // namespace check
