#pragma once

#include "database/facts/names.h"
#include "database/statement/change.h"

#include <vector>

namespace check {

struct written_name
{
    database::identifier name;
    database::name_place place = database::name_place::other;
};

/// All names that the statement writes, in its order.
[[nodiscard]] std::vector<written_name> writtenNames(const database::change & of);

} // namespace check
