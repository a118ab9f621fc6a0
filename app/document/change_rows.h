#pragma once

#include "app/document/documented_model.h"
#include "app/document/page_data.h"

namespace app {

/// The heading of a step: what it is called, its date and its message.
void putStep(page_data & data, const history_step & step);
/// All that a step changed.
[[nodiscard]] page_list changeRows(const documented_model & of, const history_step & step);
/// What a step changed in `entity`, for its page.
[[nodiscard]] page_list changeRows(const model::entity & entity, const entity_step & step);

} // namespace app
