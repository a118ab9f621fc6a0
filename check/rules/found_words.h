#pragma once

#include "check/finding/rule.h"

#include <optional>

/// What rules have in common when they say what their texts need.
namespace check {

/// The words for a rule that applies; none when it does not.
using found = std::optional<values>;

/// A single word.
[[nodiscard]] inline values with(const char * name, const QString & text)
{
    return {{QString::fromLatin1(name), text}};
}

/// No words beside those of the statement, if the rule applies.
[[nodiscard]] inline found only(bool applies)
{
    return applies ? found(values()) : std::nullopt;
}

[[nodiscard]] inline bool differOnlyInCase(const QString & a, const QString & b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace check
