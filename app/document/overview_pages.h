#pragma once

#include "app/document/documented_model.h"
#include "app/document/page_data.h"

#include <QSize>

namespace app {

/// What the first page tells.
/// @param diagram size of the picture of the diagram; empty without one
[[nodiscard]] page_data indexData(const documented_model & of, const QSize & diagram);
/// What the page of all enumerations tells.
[[nodiscard]] page_data enumerationData(const documented_model & of);
/// What the page of the history tells.
[[nodiscard]] page_data historyData(const documented_model & of);

} // namespace app
