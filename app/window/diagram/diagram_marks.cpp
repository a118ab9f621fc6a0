#include "app/window/diagram/diagram_marks.h"

#include "app/diagram/diagram_mark_shape.h"

#include <QPainter>

namespace app {

void drawMark(QPainter & painter, const QPainterPath & path, const QRectF & box, diagram_end end,
              const QColor & ground)
{
    const diagram_mark_shape shape = markShape(path, box, end);
    painter.drawLines(shape.strokes);
    if (shape.circle) {
        painter.setBrush(ground);
        painter.drawEllipse(*shape.circle, diagram_mark_shape::CircleRadius,
                            diagram_mark_shape::CircleRadius);
        painter.setBrush(Qt::NoBrush);
    }
}

} // namespace app
