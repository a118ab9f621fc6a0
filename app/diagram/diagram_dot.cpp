#include "app/diagram/diagram_dot.h"

#include "app/diagram/diagram_grid.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMultiMap>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace app {

namespace {

constexpr qreal PointsPerInch = 72;
constexpr qreal DotArrowLength = 10; // of an arrow of size 1
constexpr qreal FirstLoop = 11;      // from the middle of a loop to its legs
constexpr qreal NextLoop = 14;       // from the leg of a loop to that of the next one

QByteArray inches(qreal points)
{
    return QByteArray::number(points / PointsPerInch, 'f', 4);
}

/// An empty table keeps the place free; the label itself is drawn here.
QByteArray labelPlace(const QSizeF & size)
{
    if (size.isEmpty()) {
        return {};
    }
    return ", label=<<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLPADDING=\"0\" CELLSPACING=\"0\" "
           "FIXEDSIZE=\"TRUE\" WIDTH=\"" +
           QByteArray::number(std::lround(std::ceil(size.width()))) + "\" HEIGHT=\"" +
           QByteArray::number(std::lround(std::ceil(size.height()))) + "\"><TR><TD></TD></TR></TABLE>>";
}

QList<bool> connectedBoxes(const diagram_request & request)
{
    QList<bool> isConnected(request.boxes.size(), false);
    for (const diagram_request::line & line : request.lines) {
        isConnected[line.from] = true;
        isConnected[line.to] = true;
    }
    return isConnected;
}

/// The index in a name such as "n12"; -1 for any other text.
int indexOf(const QJsonValue & name, QLatin1Char letter, qsizetype count)
{
    const QString text = name.toString();
    bool ok = false;
    const int index = text.startsWith(letter) ? text.mid(1).toInt(&ok) : -1;
    return ok && index < count ? index : -1;
}

std::optional<QPointF> pointOf(QStringView text)
{
    const QList<QStringView> parts = text.split(QLatin1Char(','));
    bool isX = false;
    bool isY = false;
    const double x = parts.constFirst().toDouble(&isX);
    const double y = parts.size() == 2 ? parts.constLast().toDouble(&isY) : 0;
    // dot counts upwards.
    return isX && isY && std::isfinite(x) && std::isfinite(y) ? std::optional(QPointF(x, -y)) : std::nullopt;
}

/// dot's "s,x,y e,x,y x,y x,y …": where an arrow begins and ends, then the points of Bézier curves.
std::optional<QPainterPath> pathOf(const QString & text)
{
    std::optional<QPointF> start;
    std::optional<QPointF> end;
    QList<QPointF> points;
    // Only a line between clusters has several pieces; there are no clusters.
    for (const QStringView part : QStringView(text).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const bool isStart = part.startsWith(QLatin1String("s,"));
        const bool isEnd = part.startsWith(QLatin1String("e,"));
        const std::optional<QPointF> point = pointOf(isStart || isEnd ? part.mid(2) : part);
        if (!point) {
            return {};
        }
        if (isStart) {
            start = point;
        } else if (isEnd) {
            end = point;
        } else {
            points.append(*point);
        }
    }
    if (points.size() < 4 || points.size() % 3 != 1) {
        return {};
    }
    QPainterPath path(start.value_or(points.constFirst()));
    path.lineTo(points.constFirst());
    for (qsizetype i = 1; i + 2 < points.size(); i += 3) {
        path.cubicTo(points[i], points[i + 1], points[i + 2]);
    }
    path.lineTo(end.value_or(points.constLast()));
    return path;
}

/// Out of the side of `box` on which `point` lies.
QPointF outOf(const QRectF & box, const QPointF & point)
{
    const QPointF ways[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    const qreal distances[] = {std::abs(point.x() - box.left()), std::abs(point.x() - box.right()),
                               std::abs(point.y() - box.top()), std::abs(point.y() - box.bottom())};
    return ways[std::min_element(std::begin(distances), std::end(distances)) - std::begin(distances)];
}

/// dot's loops leave a box askew and close to each other, and the marks need more room than it knows. The
/// `index`-th loop of a box, from the inside, leaves it straight, beside the loops within, and reaches as far
/// as dot's.
QPainterPath straightLoop(const QPainterPath & loop, int index, const QRectF & box)
{
    const QPointF out = outOf(box, loop.pointAtPercent(0));
    if (out != outOf(box, loop.pointAtPercent(1))) {
        return loop;
    }
    QPointF along = loop.pointAtPercent(1) - loop.pointAtPercent(0);
    const QPointF middle = loop.pointAtPercent(0) + along / 2;
    const qreal length = std::hypot(along.x(), along.y());
    const qreal side = out.x() != 0 ? box.height() : box.width();
    const qreal half = std::min(std::max(length / 2, FirstLoop + NextLoop * index), side / 2 - NextLoop / 2);
    along *= length > 0 ? half / length : 0;
    const QPointF start = middle - along;
    const QPointF end = middle + along;
    const qreal reach = QPointF::dotProduct(loop.pointAtPercent(0.5) - start, out) - DiagramMarkLength;
    const QPointF bend =
        out * std::max(reach, NextLoop / 2) / 0.75; // a curve reaches so much of its controls
    const QPointF up = out * DiagramMarkLength;
    QPainterPath path(start);
    path.lineTo(start + up);
    path.cubicTo(start + up + bend, end + up + bend, end + up);
    path.lineTo(end);
    return path;
}

/// The loops of each box, the smallest first, drawn straight.
void straightenLoops(const diagram_request & request, diagram_places & places)
{
    QMultiMap<std::pair<int, qreal>, qsizetype> loops;
    for (qsizetype i = 0; i < request.lines.size(); ++i) {
        const int box = request.lines[i].from;
        if (box == request.lines[i].to && !places.routes[i].path.isEmpty()) {
            loops.insert({box, places.routes[i].path.length()}, i);
        }
    }
    int former = -1;
    int index = 0;
    for (auto loop = loops.cbegin(); loop != loops.cend(); ++loop) {
        const int box = loop.key().first;
        index = box == former ? index + 1 : 0;
        former = box;
        places.routes[*loop].path = straightLoop(places.routes[*loop].path, index, places.boxes[box]);
    }
}

/// False when a box that dot was told of has no place in its answer.
bool readBoxes(const QJsonArray & objects, const diagram_request & request, diagram_places & places)
{
    QList<bool> isMissing = connectedBoxes(request);
    for (const auto & object : objects) {
        const int box = indexOf(object[QLatin1String("name")], QLatin1Char('n'), request.boxes.size());
        const std::optional<QPointF> centre = pointOf(object[QLatin1String("pos")].toString());
        if (box < 0 || !centre) {
            return false;
        }
        const QSizeF size = request.boxes[box];
        const QPointF corner = *centre - QPointF(size.width() / 2, size.height() / 2);
        places.boxes[box] = QRectF(QPointF(corner.toPoint()), size); // borders on whole pixels are crisp
        isMissing[box] = false;
    }
    return !isMissing.contains(true);
}

void readLines(const QJsonArray & edges, diagram_places & places)
{
    for (const auto & edge : edges) {
        const int line = indexOf(edge[QLatin1String("id")], QLatin1Char('e'), places.routes.size());
        if (line < 0) {
            continue;
        }
        if (const auto path = pathOf(edge[QLatin1String("pos")].toString())) {
            const std::optional<QPointF> label = pointOf(edge[QLatin1String("lp")].toString());
            places.routes[line] = {*path, label.value_or(path->pointAtPercent(0.5))};
        }
    }
}

} // namespace

QByteArray dotText(const diagram_request & request)
{
    QByteArray text = "digraph {\n"
                      "graph [rankdir=LR, splines=true, nodesep=0.5, ranksep=0.6];\n"
                      "node [shape=box, fixedsize=true, label=\"\"];\n"
                      "edge [dir=both, arrowsize=" +
                      QByteArray::number(DiagramMarkLength / DotArrowLength) + "];\n";
    const QList<bool> isConnected = connectedBoxes(request);
    for (qsizetype i = 0; i < request.boxes.size(); ++i) {
        if (isConnected[i]) {
            text += 'n' + QByteArray::number(i) + " [width=" + inches(request.boxes[i].width()) +
                    ", height=" + inches(request.boxes[i].height()) + "];\n";
        }
    }
    for (qsizetype i = 0; i < request.lines.size(); ++i) {
        const diagram_request::line & line = request.lines[i];
        text += 'n' + QByteArray::number(line.from) + " -> n" + QByteArray::number(line.to) + " [id=e" +
                QByteArray::number(i) + labelPlace(line.label) + "];\n";
    }
    return text + "}\n";
}

std::optional<diagram_places> readDotAnswer(const diagram_request & request, const QByteArray & json)
{
    const QJsonDocument answer = QJsonDocument::fromJson(json);
    diagram_places places;
    places.boxes.resize(request.boxes.size());
    places.routes.resize(request.lines.size());
    if (!readBoxes(answer[QLatin1String("objects")].toArray(), request, places)) {
        return {};
    }
    readLines(answer[QLatin1String("edges")].toArray(), places);
    straightenLoops(request, places);
    // dot gives up on single lines now and then, and goes on.
    drawMissingLines(request, places);
    placeLoners(request, places);
    return places;
}

} // namespace app
