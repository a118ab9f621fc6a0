#include "app/document/neighbour_diagram.h"

#include "app/diagram/diagram_grid.h"
#include "app/document/diagram_svg.h"

#include <algorithm>

namespace app {

namespace {

constexpr qsizetype MostNeighbours = 24;
constexpr qreal RowGap = 34;
constexpr qreal LeastGap = 70; // between two columns

/// Which boxes stand in which column: those at the left, the one in the middle, those at the right.
using box_columns = QList<int>[3];

struct column_size
{
    qreal width = 0;
    qreal height = 0;
};

column_size sizeOf(const QList<int> & boxes, const diagram_request & request)
{
    column_size size;
    for (const int box : boxes) {
        size.width = std::max(size.width, request.boxes[box].width());
        size.height += request.boxes[box].height() + RowGap;
    }
    size.height -= RowGap;
    return size;
}

/// Room for the widest label and the marks at both ends of its line.
qreal gapOf(const diagram_request & request)
{
    qreal widest = 0;
    for (const diagram_request::line & line : request.lines) {
        widest = std::max(widest, line.label.width());
    }
    return std::max(LeastGap, widest + 3 * DiagramMarkLength);
}

diagram_places placesOf(const box_columns & columns, const diagram_request & request)
{
    diagram_places places;
    places.boxes.resize(request.boxes.size());
    places.routes.resize(request.lines.size());
    qreal left = 0;
    for (const QList<int> & column : columns) {
        if (column.isEmpty()) {
            continue;
        }
        const column_size size = sizeOf(column, request);
        qreal top = -size.height / 2;
        for (const int box : column) {
            const QSizeF own = request.boxes[box];
            places.boxes[box] = QRectF(QPointF(left + (size.width - own.width()) / 2, top), own);
            top += own.height() + RowGap;
        }
        left += size.width + gapOf(request);
    }
    drawMissingLines(request, places);
    return places;
}

} // namespace

neighbour_diagram neighboursOf(const diagram_graph & graph, int entity)
{
    neighbour_diagram result;
    diagram_piece piece;
    piece.entities << entity;
    box_columns columns;
    columns[1] << 0;
    QList<int> left; // out of sight
    for (const int relation : graph.relationsOf(entity)) {
        const diagram_relation & r = graph.relations()[relation];
        const bool isFromHere = r.from == entity;
        const int other = isFromHere ? r.to : r.from;
        if (!piece.entities.contains(other)) {
            if (piece.entities.size() > MostNeighbours) {
                left << (left.contains(other) ? QList<int>() : QList<int>{other});
                continue;
            }
            columns[isFromHere ? 2 : 0] << static_cast<int>(piece.entities.size());
            piece.entities << other;
        }
        piece.relations << relation;
    }
    piece.hidden.fill(0, piece.entities.size());
    result.hidden = static_cast<int>(left.size());
    if (piece.relations.isEmpty()) {
        return result;
    }
    result.picture.contents = contentsOf(graph, piece);
    for (diagram_box & box : result.picture.contents.boxes) {
        if (&box != &result.picture.contents.boxes.first()) {
            box.rows.clear(); // its own page tells them
        }
    }
    result.picture.places = placesOf(columns, requestOf(result.picture.contents));
    return result;
}

} // namespace app
