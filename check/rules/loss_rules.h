#pragma once

#include "check/finding/rule.h"

#include "database/simulation/verdict.h"

#include <optional>

namespace check {

class told_statement;

/// What there is to say of something that goes, or becomes something else, though the statement runs; none
/// when it is nothing that a person has to know.
[[nodiscard]] std::optional<finding> explainLoss(const told_statement & of, const database::loss & lost);

/// Says of a statement that its form is not known.
[[nodiscard]] finding notJudged(const told_statement & of);

} // namespace check
