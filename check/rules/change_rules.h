#pragma once

#include "check/finding/finding.h"
#include "check/view/script.h"
#include "check/view/step_changes.h"

#include <vector>

namespace check {

/// What there is to say of the changes of a step themselves, whatever statements follow from them.
[[nodiscard]] std::vector<finding> explainChanges(const script & step, const step_changes & changes);

} // namespace check
