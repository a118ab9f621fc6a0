#pragma once

#include "korvane_global.h"

namespace model {
class project;
}

namespace storage {

/// The largest id that a text can give or an import hands out: custom scripts see ids as JavaScript's
/// numbers, which tell larger ones no longer apart.
constexpr long LargestId = 9007199254740991;

/// The largest ids that a project has had so far, those of objects that are gone included. An id is an
/// object's identity in all versions of the project, so a new object must not get the id of an old one.
struct id_marks
{
    long enumeration = 0;
    long entity = 0;
    long property = 0;
    long relationship = 0;
};

/// The marks of `project`: what was remembered and what is in use.
[[nodiscard]] KORVANE_EXPORT id_marks marksOf(const model::project & project);

/// Keeps `marks` with `project`, to be stored with it.
void remember(model::project & project, const id_marks & marks);

} // namespace storage
