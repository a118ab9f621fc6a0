#include "app/diagram/diagram_grid.h"

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
constexpr qreal VerticalGap = 80;
constexpr qreal LonerGap = 30;
constexpr qreal Stagger = 36;
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

/// Finds places for labels, one after the other, where they cover neither a box nor a label before them.
class label_places
{
public:
    explicit label_places(const QList<QRectF> & boxes) : m_taken(boxes) {}

    /// The centre of a label at `path`, as near to `wanted` (a part of the path) as there is a place, and
    /// moved by `aside`.
    QPointF find(const QPainterPath & path, qreal wanted, const QSizeF & label, const QPointF & aside = {})
    {
        const auto at = [&](qreal part) {
            QRectF place(QPointF(), label);
            place.moveCenter(path.pointAtPercent(std::clamp(part, 0.15, 0.85)) + aside);
            return place;
        };
        for (const qreal away : {0.0, -0.1, 0.1, -0.2, 0.2, -0.3, 0.3}) {
            const QRectF place = at(wanted + away);
            if (std::none_of(m_taken.begin(), m_taken.end(),
                             [&place](const QRectF & other) { return other.intersects(place); })) {
                m_taken.append(place);
                return place.center();
            }
        }
        m_taken.append(at(wanted));
        return m_taken.constLast().center();
    }

private:
    QList<QRectF> m_taken;
};

/// A loop over the upper right corner, the larger the more loops there are already.
QPainterPath loopOf(const QRectF & box, int former)
{
    const qreal most = std::max(qreal(8), std::min(box.width(), box.height()) - 8);
    const qreal inset = std::min(qreal(14) * (former + 1), most);
    const qreal reach = LoopReach + 12 * former;
    const QPointF start = box.topRight() - QPointF(inset, 0);
    const QPointF end = box.topRight() + QPointF(0, inset);
    const QPointF up = start - QPointF(0, DiagramMarkLength);
    const QPointF out = end + QPointF(DiagramMarkLength, 0);
    QPainterPath path(start);
    path.lineTo(up);
    path.cubicTo(up - QPointF(0, reach), out + QPointF(reach, 0), out);
    path.lineTo(end);
    return path;
}

/// The `index`-th of `count` straight lines between the same two boxes.
QPainterPath straightLine(const diagram_request::line & line, int index, int count,
                          const QList<QRectF> & boxes)
{
    // The same way round for both directions, or lines there and back would be shifted onto each other.
    const QRectF & first = boxes[std::min(line.from, line.to)];
    const QRectF & second = boxes[std::max(line.from, line.to)];
    QLineF across = QLineF(first.center(), second.center()).normalVector();
    const qreal smallest = std::min({first.width(), first.height(), second.width(), second.height()});
    across.setLength(std::min(ParallelGap, smallest / (count + 1)));
    const QPointF shift = (across.p2() - across.p1()) * (index - (count - 1) / 2.0);
    const QRectF & from = boxes[line.from];
    const QRectF & to = boxes[line.to];
    QPainterPath path(borderPoint(from, shift, to.center()));
    path.lineTo(borderPoint(to, shift, from.center()));
    return path;
}

/// The gap between boxes in a row that leaves room for the labels between them.
QSizeF gapFor(const diagram_request & request)
{
    qreal widest = 0;
    for (const diagram_request::line & line : request.lines) {
        widest = std::max(widest, line.label.width());
    }
    return request.lines.isEmpty()
               ? QSizeF(LonerGap, LonerGap)
               : QSizeF(std::max(HorizontalGap, widest + 2 * DiagramMarkLength), VerticalGap);
}

/// Equal cells in rows.
struct cells
{
    int columns = 1;
    QSizeF gap;
    QPointF corner;
    qreal stagger = 0; ///< how far every other row and column is shifted
};

/// Puts the `chosen` boxes into cells, one after the other.
void fillCells(const QList<int> & chosen, const cells & into, const QList<QSizeF> & sizes,
               QList<QRectF> & places)
{
    QSizeF cell;
    for (const int box : chosen) {
        cell = cell.expandedTo(sizes[box]);
    }
    const QSizeF step = cell + into.gap;
    for (qsizetype i = 0; i < chosen.size(); ++i) {
        const auto column = static_cast<int>(i % into.columns);
        const auto row = static_cast<int>(i / into.columns);
        const QSizeF size = sizes[chosen[i]];
        const QPointF place(column * step.width() + (row % 2) * into.stagger +
                                std::floor((cell.width() - size.width()) / 2),
                            row * step.height() + (column % 2) * into.stagger);
        places[chosen[i]] = QRectF(into.corner + place, size);
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
    const QSizeF gap = gapFor(request);
    // Staggered, fewer lines run behind other boxes or along each other.
    const qreal stagger = request.lines.isEmpty() ? 0 : Stagger;
    fillCells(all, {columnsFor(all, gap, request.boxes), gap, {}, stagger}, request.boxes, places.boxes);
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
    label_places labels(places.boxes);
    for (qsizetype i = 0; i < request.lines.size(); ++i) {
        const diagram_request::line & line = request.lines[i];
        const int index = drawn[between(line)]++;
        diagram_route & route = places.routes[i];
        if (!route.path.isEmpty()) {
            continue;
        }
        if (line.from == line.to) {
            route.path = loopOf(places.boxes[line.from], index);
            route.label = labels.find(route.path, 0.5, line.label, {line.label.width() / 2 + 6, 0});
        } else {
            route.path = straightLine(line, index, counts[between(line)], places.boxes);
            route.label = labels.find(route.path, 0.5, line.label);
        }
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
    const QPointF corner(used.left(), std::ceil(used.bottom()) + 2 * LonerGap);
    fillCells(loners, {columns, gap, corner, 0}, request.boxes, places.boxes);
}

} // namespace app
