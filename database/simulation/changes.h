#pragma once

#include "database/simulation/state.h"
#include "database/statement/change.h"

namespace database {

/// What each change does to a state. A refused change leaves the state as it was; of one that depends on
/// values in rows the state is as if it was done. What is lost is added to `lost`.
refusal apply(state & at, const create_table & asked, losses & lost);
refusal apply(state & at, const drop_table & asked, losses & lost);
refusal apply(state & at, const rename_table & asked, losses & lost);
refusal apply(state & at, const add_column & asked, losses & lost);
refusal apply(state & at, const drop_column & asked, losses & lost);
refusal apply(state & at, const rename_column & asked, losses & lost);
refusal apply(state & at, const change_column & asked, losses & lost);
refusal apply(state & at, const create_index & asked, losses & lost);
refusal apply(state & at, const drop_index & asked, losses & lost);
refusal apply(state & at, const add_foreign_key & asked, losses & lost);
refusal apply(state & at, const drop_constraint & asked, losses & lost);
refusal apply(state & at, const alter_column & asked, losses & lost);
refusal apply(state & at, const rename_index & asked, losses & lost);
refusal apply(state & at, const add_key & asked, losses & lost);
refusal apply(state & at, const drop_key & asked, losses & lost);
refusal apply(state & at, const drop_unique & asked, losses & lost);
refusal apply(state & at, const create_sequence & asked, losses & lost);
refusal apply(state & at, const create_trigger & asked, losses & lost);

} // namespace database
