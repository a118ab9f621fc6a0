#pragma once

#include "check/finding/rule.h"

#include <optional>

namespace check {

class difference_view;

/// Whether something that was told already explains the difference, so that it needs no words of its own.
[[nodiscard]] bool isExplained(const difference_view & of);

/// The change of the step that explains why the database that the history leaves is not like a new one; none
/// when the step did not cause the difference.
[[nodiscard]] std::optional<finding> explainDifference(const difference_view & of);

/// Says of a difference that no change of the step explains it.
[[nodiscard]] finding unexplained(const difference_view & of);

} // namespace check
