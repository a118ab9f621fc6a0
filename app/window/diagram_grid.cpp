#include "app/window/diagram_grid.h"

#include <QHash>
#include <QLineF>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace app {

namespace {

constexpr qreal HorizontalGap = 110; // room for a label between two boxes
constexpr qreal VerticalGap = 60;
constexpr qreal LonerGap = 30;
constexpr qreal ParallelGap = 26;
constexpr qreal LoopReach = 30;
constexpr qreal WidthToHeight = 1.6; // what a grid looks for, as a window has it

/// Where the straight line from the centre of `box` through `to`, both moved by `shift`, leaves the box.
QPointF borderPoint(const QRectF & box, const QPointF & shift, const QPointF & to)
{
    const QPointF from = box.center() + shift;
    const QPointF way = to + shift - from;
    const auto reach = [](qreal step, qreal back, qreal forth) {
        return step > 0 ? forth / step : step < 0 ? back / step : std::numeric_limits<qreal>::infinity();
    };
    const qreal part = std::min({reach(way.x(), box.left() - from.x(), box.right() - from.x()),
                                 reach(way.y(), box.top() - from.y(), box.bottom() - from.y()), qreal(1)});
    return from + way * part;
}

/// A loop over the upper right corner, the larger the more loops there are already.
diagram_route loopOf(const QRectF & box, const QSizeF & label, int former)
{
    const qreal reach = LoopReach + 14 * former;
    const qreal inset = std::min({reach, box.width() / 2, box.height() / 2});
    const QPointF start = box.topRight() - QPointF(inset, 0);
    const QPointF end = box.topRight() + QPointF(0, inset);
    const QPointF up = start - QPointF(0, DiagramMarkLength);
    const QPointF out = end + QPointF(DiagramMarkLength, 0);
    QPainterPath path(start);
    path.lineTo(up);
    path.cubicTo(up - QPointF(0, reach), out + QPointF(reach, 0), out);
    path.lineTo(end);
    return {path, path.pointAtPercent(0.5) + QPointF(label.width() / 2 + 6, 0)};
}

/// A place on the line where its label covers no box, as near to `wanted` (a part of the line) as there is
/// one.
QPointF labelPlace(const QLineF & line, qreal wanted, const QSizeF & label, const QList<QRectF> & boxes)
{
    for (const qreal away : {0.0, -0.1, 0.1, -0.2, 0.2, -0.3, 0.3}) {
        QRectF place(QPointF(), label);
        place.moveCenter(line.pointAt(std::clamp(wanted + away, 0.2, 0.8)));
        if (std::none_of(boxes.begin(), boxes.end(),
                         [&place](const QRectF & box) { return box.intersects(place); })) {
            return place.center();
        }
    }
    return line.pointAt(wanted);
}

/// The `index`-th of `count` straight lines between the same two boxes.
diagram_route straightLine(const diagram_request::line & line, int index, int count,
                           const QList<QRectF> & boxes)
{
    // The same way round for both directions, or lines there and back would be shifted onto each other.
    const QRectF & first = boxes[std::min(line.from, line.to)];
    const QRectF & second = boxes[std::max(line.from, line.to)];
    QLineF across = QLineF(first.center(), second.center()).normalVector();
    const qreal smallest = std::min({first.width(), first.height(), second.width(), second.height()});
    const qreal gap = std::min(ParallelGap, smallest / (count + 1));
    const qreal offset = index - (count - 1) / 2.0;
    across.setLength(gap);
    const QPointF shift = (across.p2() - across.p1()) * offset;
    const QRectF & from = boxes[line.from];
    const QRectF & to = boxes[line.to];
    const QLineF way(borderPoint(from, shift, to.center()), borderPoint(to, shift, from.center()));
    QPainterPath path(way.p1());
    path.lineTo(way.p2());
    // Labels of parallel lines stand apart along the lines, too: they are wider than the gap.
    const qreal place = std::clamp(0.5 + 0.16 * offset, 0.2, 0.8);
    return {path, labelPlace(way, line.from < line.to ? place : 1 - place, line.label, boxes)};
}

/// Puts the `chosen` boxes into rows of equal cells, from `corner` on.
void fillCells(const QList<int> & chosen, int columns, const QSizeF & gap, const QPointF & corner,
               const QList<QSizeF> & sizes, QList<QRectF> & places)
{
    QSizeF cell;
    for (const int box : chosen) {
        cell = cell.expandedTo(sizes[box]);
    }
    for (qsizetype i = 0; i < chosen.size(); ++i) {
        const QPointF place =
            corner + QPointF(static_cast<qreal>(i % columns) * (cell.width() + gap.width()),
                             static_cast<qreal>(i / columns) * (cell.height() + gap.height()));
        const QSizeF size = sizes[chosen[i]];
        places[chosen[i]] = QRectF(place + QPointF(std::floor((cell.width() - size.width()) / 2), 0), size);
    }
}

int columnsFor(const QList<int> & chosen, const QSizeF & gap, const QList<QSizeF> & sizes)
{
    QSizeF cell(1, 1);
    for (const int box : chosen) {
        cell = cell.expandedTo(sizes[box]);
    }
    const qreal shape = (cell.height() + gap.height()) / (cell.width() + gap.width());
    return std::max(1, qCeil(std::sqrt(static_cast<qreal>(chosen.size()) * shape * WidthToHeight)));
}

} // namespace

diagram_places gridLayout(const diagram_request & request)
{
    diagram_places places;
    places.boxes.resize(request.boxes.size());
    places.routes.resize(request.lines.size());
    QList<int> all(request.boxes.size());
    std::iota(all.begin(), all.end(), 0);
    const QSizeF gap(request.lines.isEmpty() ? QSizeF(LonerGap, LonerGap)
                                             : QSizeF(HorizontalGap, VerticalGap));
    fillCells(all, columnsFor(all, gap, request.boxes), gap, {}, request.boxes, places.boxes);
    drawMissingLines(request, places);
    return places;
}

void drawMissingLines(const diagram_request & request, diagram_places & places)
{
    const auto between = [](const diagram_request::line & line) {
        return std::pair(std::min(line.from, line.to), std::max(line.from, line.to));
    };
    QHash<std::pair<int, int>, int> counts;
    for (const diagram_request::line & line : request.lines) {
        ++counts[between(line)];
    }
    QHash<std::pair<int, int>, int> drawn;
    for (qsizetype i = 0; i < request.lines.size(); ++i) {
        const diagram_request::line & line = request.lines[i];
        const int index = drawn[between(line)]++;
        if (!places.routes[i].path.isEmpty()) {
            continue;
        }
        places.routes[i] = line.from == line.to
                               ? loopOf(places.boxes[line.from], line.label, index)
                               : straightLine(line, index, counts[between(line)], places.boxes);
    }
}

void placeLoners(const diagram_request & request, diagram_places & places)
{
    QList<int> loners;
    QRectF used;
    for (qsizetype i = 0; i < request.boxes.size(); ++i) {
        if (places.boxes[i].isEmpty()) {
            loners.append(static_cast<int>(i));
        }
        used |= places.boxes[i];
    }
    if (loners.isEmpty()) {
        return;
    }
    qreal widest = 1;
    for (const int box : loners) {
        widest = std::max(widest, request.boxes[box].width());
    }
    for (const diagram_route & route : places.routes) {
        used |= route.path.controlPointRect();
    }
    const QSizeF gap(LonerGap, LonerGap);
    // As wide as what is there, unless that is too narrow to hold them all in a handy shape.
    const int columns = std::max(columnsFor(loners, gap, request.boxes),
                                 static_cast<int>((used.width() + LonerGap) / (widest + LonerGap)));
    fillCells(loners, columns, gap, {used.left(), std::ceil(used.bottom()) + VerticalGap}, request.boxes,
              places.boxes);
}

} // namespace app
