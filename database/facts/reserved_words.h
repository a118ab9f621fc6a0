#pragma once

#include <QStringView>

namespace database {

struct facts;

/// Where a name stands.
enum class name_place
{
    table,
    other
};

/// Whether the database refuses the word as an unquoted name at that place, in any case.
[[nodiscard]] bool isReserved(const facts & known, QStringView word, name_place place);

} // namespace database
