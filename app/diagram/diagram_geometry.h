#pragma once

#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace app {

/// Length of the straight piece at both ends of a line, where its marks stand; in points.
inline constexpr qreal DiagramMarkLength = 18;

/// What is to be laid out: the sizes of boxes and of the labels of lines between them, in points, which are
/// the units of the scene as well.
struct diagram_request
{
    struct line
    {
        int from = 0; ///< index of a box
        int to = 0;
        QSizeF label; ///< empty without a label
    };

    QList<QSizeF> boxes;
    QList<line> lines;
};

/// The way of a line, from the border of the one box to that of the other.
struct diagram_route
{
    QPainterPath path;
    QPointF label; ///< centre of the label
};

/// Where everything of a request stands, in its order; y grows downwards.
struct diagram_places
{
    QList<QRectF> boxes;
    QList<diagram_route> routes;
    QString note; ///< one line about why it does not look as it should, empty when it does
};

} // namespace app
