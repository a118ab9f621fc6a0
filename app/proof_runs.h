#pragma once

#include "app/verified_rows.h"
#include "app/version_scripts.h"

#include "check/view/schema_difference.h"
#include "database/catalogue/catalogue.h"
#include "database/server/sql_connection.h"

#include <functional>
#include <optional>
#include <vector>

namespace app {

/// A statement that a database was given.
struct statement_result
{
    const run_statement * asked = nullptr;
    std::size_t version = 0; ///< to which its script leads
    bool isDone = false;
    database::server::server_error error; ///< when it was refused
    /// Whether the simulation says that it is refused, told of what came of those before it.
    bool isExpectedRefused = false;
    int consequenceOf = -1; ///< that without whose refusal it would not be refused; -1 for none
};

/// What came of scripts on a database, and of the same ones in a simulation that was told what depends on
/// values.
struct proof_result
{
    std::vector<statement_result> statements; ///< in the order in which they were run
    bool isWhole = true;                      ///< whether none was refused
    /// What the database held after each version.
    std::vector<database::catalogue> held;
    /// What that has otherwise than the simulation.
    std::vector<std::vector<check::schema_difference>> differences;
    bool hasRows = false; ///< whether there was anything in rows that was looked for in the end
    verified_values rows;
};

/// What a run is watched by.
struct run_watch
{
    std::function<bool()> isEnded;     ///< asked before each statement; the run ends with server_failure
    std::function<void()> versionDone; ///< told of each version
};

/// Makes the version of that index as a whole in a new database. The scripts have to outlive what is
/// returned. Throws server_failure.
[[nodiscard]] proof_result runFullScript(database::server::target_database & target,
                                         const std::vector<version_scripts> & versions, std::size_t index,
                                         const run_watch & watch);

/// Runs the steps that lead to each version, one after the other, in a new database; else as above.
/// @param rows what tables are given before each step but the first; nothing for empty tables
[[nodiscard]] proof_result runHistory(database::server::target_database & target,
                                      const std::vector<version_scripts> & versions,
                                      std::optional<database::server::row_content> rows,
                                      const run_watch & watch);

} // namespace app
