#pragma once

#include "database/simulation/verdict.h"

namespace database {

/// Why a statement is refused, or may be; false when it is not. Functions named `check…` give one and change
/// nothing.
struct refusal
{
    refusal_cause cause = refusal_cause::none;
    QString object;
    bool dependsOnValues = false;

    explicit operator bool() const { return cause != refusal_cause::none; }
};

/// What a statement did, as far as it was not refused.
using losses = std::vector<loss>;

} // namespace database
