#pragma once

#include "plugin/builder/ddl_export_builder.h"
#include "plugin/ddl_export.h"

#include <memory>

namespace plugin {

/// A new builder of the dialect of `db`, reading its settings through `plugin` (not owned, may be null); the
/// generic builder for a number outside the enumeration.
[[nodiscard]] std::shared_ptr<ddl_export_builder> createBuilder(ddl_export::database_type db,
                                                                ddl_export * plugin);

} // namespace plugin
