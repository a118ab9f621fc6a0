#pragma once

#include <QString>

namespace app {

struct diagram_style;

/// What the signs of a diagram mean, as rich text in their colours.
/// @param withChanges tells the signs of changes as well
[[nodiscard]] QString diagramLegend(const diagram_style & style, bool withChanges);
/// The same as plain text.
[[nodiscard]] QString toldLegend(bool withChanges);

} // namespace app
