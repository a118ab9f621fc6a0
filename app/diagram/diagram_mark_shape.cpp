#include "app/diagram/diagram_mark_shape.h"

#include "app/diagram/diagram_geometry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace app {

namespace {

constexpr qreal FootLength = 10;
constexpr qreal HalfWidth = 5;
constexpr qreal SlantedMost = 0.4; // a foot is not spread any further for a line that almost grazes the box
constexpr qreal Corner = 4;        // the foot keeps off the round corners of a box

/// Along the side of `box` on which `tip` lies.
QPointF alongSide(const QRectF & box, const QPointF & tip)
{
    const qreal across = std::min(std::abs(tip.x() - box.left()), std::abs(tip.x() - box.right()));
    const qreal down = std::min(std::abs(tip.y() - box.top()), std::abs(tip.y() - box.bottom()));
    return across < down ? QPointF(0, 1) : QPointF(1, 0);
}

/// The toes stand on the border of the box, however askew the line arrives.
std::array<QPointF, 2> toesOf(const QRectF & box, const QPointF & tip, const QPointF & way)
{
    const QPointF along = alongSide(box, tip);
    const qreal upright = std::abs(along.x() != 0 ? way.y() : way.x());
    const qreal half = HalfWidth / std::max(upright, SlantedMost);
    const QRectF inner = box.adjusted(Corner, Corner, -Corner, -Corner);
    const auto within = [&](const QPointF & point) {
        return along.x() != 0 ? QPointF(std::clamp(point.x(), inner.left(), inner.right()), point.y())
                              : QPointF(point.x(), std::clamp(point.y(), inner.top(), inner.bottom()));
    };
    return {within(tip - along * half), within(tip + along * half)};
}

} // namespace

diagram_mark_shape markShape(const QPainterPath & path, const QRectF & box, diagram_end end)
{
    const QPointF tip = path.pointAtPercent(0);
    const QPointF inside =
        path.pointAtPercent(path.percentAtLength(std::min(DiagramMarkLength, path.length() / 2)));
    const QLineF out = QLineF(tip, inside).unitVector();
    const QPointF way = out.p2() - out.p1();
    const QPointF across(-way.y(), way.x());
    diagram_mark_shape shape;
    const auto addBar = [&](qreal distance) {
        shape.strokes.append(
            QLineF(tip + way * distance - across * HalfWidth, tip + way * distance + across * HalfWidth));
    };
    const QPointF circle = tip + way * (FootLength + diagram_mark_shape::CircleRadius);
    switch (end) {
    case diagram_end::many:
        for (const QPointF & toe : toesOf(box, tip, way)) {
            shape.strokes.append(QLineF(tip + way * FootLength, toe));
        }
        shape.circle = circle;
        break;
    case diagram_end::zero_or_one:
        addBar(FootLength / 2);
        shape.circle = circle;
        break;
    case diagram_end::exactly_one:
        addBar(FootLength / 2);
        addBar(FootLength);
        break;
    }
    return shape;
}

} // namespace app
