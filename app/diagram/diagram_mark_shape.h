#pragma once

#include "app/diagram/diagram_graph.h"

#include <QLineF>
#include <QList>
#include <QPainterPath>
#include <QRectF>

#include <optional>

namespace app {

/// The crow's foot notation for an end of a line.
struct diagram_mark_shape
{
    static constexpr qreal CircleRadius = 3.2;

    QList<QLineF> strokes;
    std::optional<QPointF> circle; ///< its centre; the line is not to be seen through it
};

/// The mark for `end`, where `path` begins at the border of `box`.
[[nodiscard]] diagram_mark_shape markShape(const QPainterPath & path, const QRectF & box, diagram_end end);

} // namespace app
