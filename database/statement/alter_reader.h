#pragma once

#include "database/statement/change.h"
#include "database/statement/token_cursor.h"

namespace database {

/// A change, or none where something else stands than what is known.
using reading = std::optional<change>;

/// What follows ALTER.
[[nodiscard]] reading readAlter(token_cursor & at);

} // namespace database
