#pragma once

#include "app/document/documented_model.h"
#include "app/document/page_data.h"

namespace app {

/// What the page of `entity` tells.
[[nodiscard]] page_data entityData(const documented_model & of, const model::entity & entity);

/// What the columns of `table` are in each database.
void putSqlTypes(page_data & data, const documented_model & of, const sql_table & table);

} // namespace app
