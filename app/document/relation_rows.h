#pragma once

#include "app/document/documented_model.h"
#include "app/document/page_data.h"

namespace app {

/// The relationships that the properties of `entity` hold, for its page.
[[nodiscard]] page_list outgoingRows(const documented_model & of, const model::entity & entity);
/// The relationships of all properties that refer to `entity`.
[[nodiscard]] page_list incomingRows(const documented_model & of, const model::entity & entity);

} // namespace app
