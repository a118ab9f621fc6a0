#pragma once

#include "app/diagram/diagram_geometry.h"

namespace app {

/// The layout for where nothing better is at hand: boxes in rows and columns, straight lines.
[[nodiscard]] diagram_places gridLayout(const diagram_request & request);

/// Gives every line of `request` that has no way in `places` a straight one between its boxes. Parallel lines
/// run side by side; a line of a box with itself is a loop at its corner.
void drawMissingLines(const diagram_request & request, diagram_places & places);

/// Puts the boxes of `request` that have no place in `places` in rows below the others.
void placeLoners(const diagram_request & request, diagram_places & places);

} // namespace app
