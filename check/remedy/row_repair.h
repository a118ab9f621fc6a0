#pragma once

#include "check/finding/finding.h"

#include "database/catalogue/catalogue.h"

namespace check {

class told_statement;

/// What to run because of what is in rows: in the place of a statement that they refuse, once they are
/// changed so that it runs, or before one that takes their values away, so that these are kept. Leaves the
/// remedy alone where nothing of the kind is possible.
/// @param before what the database held before the script
void addRowRepair(remedy & to, const told_statement & of);
/// What to run before the script because a schema is not there.
void addSchema(remedy & to, const told_statement & of);
void addRowCopy(remedy & to, const told_statement & of, const database::catalogue & before);

} // namespace check
