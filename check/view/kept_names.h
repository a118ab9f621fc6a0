#pragma once

#include "plugin/statement_source.h"

#include <vector>

namespace model {
class project;
}

namespace check {

class made_objects;

/// Puts the names that tables, columns, indexes and foreign keys really have into the statements about them.
/// A step that jumps over versions knows only the models at its ends, but a rename that was refused leaves a
/// table or a column as it was called, and a rename of a table leaves the names of its indexes and foreign
/// keys. What a custom script wrote stays as it is, and so does a statement whose object no script made.
/// @param made by the scripts up to the version that the step begins with
/// @param now the model that the step leads to
void useKeptNames(const made_objects & made, const model::project & now,
                  std::vector<plugin::statement_record> & records);

} // namespace check
