#pragma once

#include "check/import/entity_merge.h"

#include <memory>
#include <vector>

namespace check {

/// What may have been renamed: of the entities in `gone` and the new ones in `merged`, and of the properties
/// that each of the others lost and got, those that have most in common. Each object is in one pair at most.
[[nodiscard]] std::vector<possible_rename>
renamesIn(const database::facts & known, const std::vector<merged_entity> & merged,
          const std::vector<std::shared_ptr<model::entity>> & gone);

} // namespace check
