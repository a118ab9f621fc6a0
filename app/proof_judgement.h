#pragma once

#include "app/proof_runs.h"
#include "app/verification.h"

#include <optional>
#include <vector>

namespace app {

class foretold_statements;

/// All runs of the scripts of a project on one database.
struct proof_results
{
    std::vector<proof_result> full; ///< of each version
    // The histories; none for a project without versions.
    std::optional<proof_result> values;
    std::optional<proof_result> nulls;
    std::optional<proof_result> empty; ///< without rows, if these had a say in what was refused
};

/// Says in `proof` what of `of` was refused, differs or was lost, and who foretold it.
/// @param from number of the version before which nothing is told
void judge(const proof_results & of, const std::vector<version_scripts> & versions,
           const foretold_statements & foretold, int from, database_proof & proof);

} // namespace app
