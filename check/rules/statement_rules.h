#pragma once

#include "check/finding/rule.h"

#include <vector>

namespace check {

class told_statement;

/// What there is to say of a statement that runs: what it costs, and who does not expect it.
[[nodiscard]] std::vector<finding> explainDone(const told_statement & of);

/// Says of a script that some of its statements are refused; {refused} and {done} are counts.
[[nodiscard]] finding halfApplied(const values & words);

} // namespace check
