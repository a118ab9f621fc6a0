#pragma once

#include "check/finding.h"
#include "check/script.h"
#include "check/step_changes.h"

#include <vector>

namespace check {

/// What there is to say of the changes of a step themselves, whatever statements follow from them.
[[nodiscard]] std::vector<finding> explainChanges(const script & step, const step_changes & changes);

} // namespace check
