#include "app/document/neighbour_diagram.h"

#include "app/diagram/diagram_grid.h"
#include "app/document/diagram_svg.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace app {

namespace {

constexpr qsizetype MostNeighbours = 16;
constexpr qreal RowGap = 20;
constexpr qreal LeastGap = 70; // between two columns
constexpr qreal LineGap = 26;  // between lines at the box in the middle, and room for each at the others
constexpr qreal Corner = 8;    // of that box, where no line arrives
constexpr qreal LabelPart =
    0.4;                      // of a line, from the other box: where those in the middle come close, none is
constexpr qreal Slope = 0.15; // how much of the height of a side there is between it and the middle

/// A box at one side of the one in the middle.
struct side_box
{
    int index = 0;
    QList<qsizetype> lines; ///< from it to the middle

    /// The room that it takes with its lines.
    [[nodiscard]] qreal heightIn(const diagram_request & request) const
    {
        return request.boxes[index].height() + LineGap * static_cast<qreal>(lines.size() - 1);
    }
};

using side = QList<side_box>;

qreal heightOf(const side & boxes, const diagram_request & request)
{
    qreal height = -RowGap;
    for (const side_box & each : boxes) {
        height += each.heightIn(request) + RowGap;
    }
    return height;
}

/// Room for the widest label between the marks at both ends of its line, and for lines that lead far up and
/// down.
qreal gapOf(const side & boxes, const diagram_request & request)
{
    qreal widest = 0;
    for (const diagram_request::line & line : request.lines) {
        widest = std::max(widest, line.label.width());
    }
    return std::max(
        {LeastGap, (widest + 2.5 * DiagramMarkLength) / (2 * LabelPart), heightOf(boxes, request) * Slope});
}

/// Puts the boxes of a side below each other, with their centres at `x`.
void placeBoxes(const side & boxes, qreal x, const diagram_request & request, diagram_places & places)
{
    qreal top = -heightOf(boxes, request) / 2;
    for (const side_box & each : boxes) {
        QRectF & place = places.boxes[each.index];
        place = QRectF(QPointF(), request.boxes[each.index]);
        place.moveCenter({x, top + each.heightIn(request) / 2});
        top += each.heightIn(request) + RowGap;
    }
}

/// A line with straight pieces at both ends, where its marks stand.
QPainterPath pathBetween(const QPointF & start, const QPointF & end)
{
    const QPointF mark(end.x() > start.x() ? DiagramMarkLength : -DiagramMarkLength, 0);
    const QPointF bend((end.x() - start.x()) / 2, 0);
    QPainterPath path(start);
    path.lineTo(start + mark);
    path.cubicTo(start + bend, end - bend, end - mark);
    path.lineTo(end);
    return path;
}

/// Draws the lines of a side. They arrive at the middle in the order of their boxes, so none crosses another.
/// @param way 1 for a side whose lines go to the right, -1 for the other one
void drawLines(const side & boxes, int way, const diagram_request & request, diagram_places & places)
{
    qsizetype count = 0;
    for (const side_box & each : boxes) {
        count += each.lines.size();
    }
    const QRectF & middle = places.boxes[0];
    const qreal step = std::min(LineGap, (middle.height() - 2 * Corner) / static_cast<qreal>(count));
    qreal y = middle.center().y() - step * static_cast<qreal>(count - 1) / 2;
    for (const side_box & each : boxes) {
        const QRectF & own = places.boxes[each.index];
        const qreal ownStep = own.height() / static_cast<qreal>(each.lines.size() + 1);
        qreal ownY = own.top() + ownStep;
        for (const qsizetype line : each.lines) {
            const QPainterPath path = pathBetween({own.center().x() + way * own.width() / 2, ownY},
                                                  {middle.center().x() - way * middle.width() / 2, y});
            places.routes[line] = {request.lines[line].from == 0 ? path.toReversed() : path,
                                   path.pointAtPercent(LabelPart)};
            ownY += ownStep;
            y += step;
        }
    }
}

/// Where the centres of the boxes of a side are, as far from that of the middle.
qreal reachOf(const side & boxes, const diagram_request & request)
{
    qreal widest = 0;
    for (const side_box & each : boxes) {
        widest = std::max(widest, request.boxes[each.index].width());
    }
    return request.boxes[0].width() / 2 + gapOf(boxes, request) + widest / 2;
}

diagram_places placesOf(const side & left, const side & right, const diagram_request & request)
{
    diagram_places places;
    places.boxes.resize(request.boxes.size());
    places.routes.resize(request.lines.size());
    const QSizeF middle = request.boxes[0];
    places.boxes[0] = QRectF(QPointF(-middle.width() / 2, -middle.height() / 2), middle);
    placeBoxes(left, -reachOf(left, request), request, places);
    placeBoxes(right, reachOf(right, request), request, places);
    drawLines(left, 1, request, places);
    drawLines(right, -1, request, places);
    drawMissingLines(request, places); // of the entity with itself
    return places;
}

/// Adds `line` to its box, which comes last when it has no line yet.
void addLine(side & boxes, int box, qsizetype line)
{
    const auto same =
        std::find_if(boxes.begin(), boxes.end(), [box](const side_box & each) { return each.index == box; });
    if (same == boxes.end()) {
        boxes.append(side_box{box, {line}});
    } else {
        same->lines << line;
    }
}

/// The places of the first box in the middle and the others beside it, each at the side that its first line
/// says.
diagram_places besides(const diagram_contents & contents)
{
    side left;
    side right;
    QHash<int, bool> isLeft;
    for (qsizetype i = 0; i < contents.lines.size(); ++i) {
        const diagram_line & line = contents.lines[i];
        const int box = std::max(line.from, line.to);
        if (box == 0) {
            continue; // with itself
        }
        if (!isLeft.contains(box)) {
            isLeft.insert(box, line.to == 0);
        }
        addLine(isLeft.value(box) ? left : right, box, i);
    }
    return placesOf(left, right, requestOf(contents));
}

} // namespace

neighbour_diagram neighboursOf(const diagram_graph & graph, int entity)
{
    neighbour_diagram result;
    diagram_piece piece;
    piece.entities << entity;
    QSet<int> hidden;
    for (const int relation : graph.relationsOf(entity)) {
        const diagram_relation & r = graph.relations()[relation];
        const int other = r.from == entity ? r.to : r.from;
        const bool isKnown = piece.entities.contains(other);
        if (!isKnown && piece.entities.size() > MostNeighbours) {
            hidden << other;
            continue;
        }
        if (!isKnown) {
            piece.entities << other;
        }
        piece.relations << relation;
    }
    piece.hidden.fill(0, piece.entities.size());
    result.hidden = static_cast<int>(hidden.size());
    if (piece.relations.isEmpty()) {
        return result;
    }
    diagram_contents & contents = result.picture.contents;
    contents = contentsOf(graph, piece);
    for (diagram_box & box : contents.boxes) {
        if (box.id != contents.boxes.constFirst().id) {
            box.rows.clear(); // its own page tells them
        }
    }
    result.picture.places = besides(contents);
    return result;
}

} // namespace app
