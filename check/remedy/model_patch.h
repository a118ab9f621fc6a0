#pragma once

#include "check/finding/finding.h"
#include "check/remedy/patch_writer.h"

namespace database {
struct facts;
}

namespace check {

/// The change of the model after which a finding is not told any more, as a JSON Patch of the model's text
/// form; null when there is none.
/// @param at positions in `now`, which is the model that the patch is for
[[nodiscard]] std::vector<patch_operation> modelPatch(const finding & of, const model::project & now,
                                                      const text_positions & at,
                                                      const database::facts & known);

} // namespace check
