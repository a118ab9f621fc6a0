#pragma once

#include "app/diagram/diagram_graph.h"

#include <QColor>
#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace app {

/// Draws the crow's foot notation for `end`, where `path` begins at the border of `box`. The pen is the
/// painter's; `ground` fills what must not show the line.
void drawMark(QPainter & painter, const QPainterPath & path, const QRectF & box, diagram_end end,
              const QColor & ground);

} // namespace app
