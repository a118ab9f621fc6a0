#include "app/document/diagram_svg.h"

#include "app/diagram/diagram_mark_shape.h"
#include "app/document/page_data.h"
#include "app/document/page_names.h"
#include "app/document/text_width.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

// Sizes of text are those of diagram.css.
constexpr qreal TextSize = 13;
constexpr qreal SmallSize = 10.5;
constexpr qreal BoldFactor = 1.08; // letters of a heading are as much wider
constexpr qreal RowHeight = 19;
constexpr qreal HeaderHeight = 27;
constexpr qreal RowsMargin = 4;
constexpr qreal SmallRowHeight = 14;
constexpr qreal Padding = 9;
constexpr qreal MarkGap = 7;
constexpr qreal TypeGap = 12;
constexpr qreal LargestType = 110;
constexpr qreal SmallestWidth = 110;
constexpr qreal LargestWidth = 320;
constexpr qreal LargestLabel = 170;
constexpr qreal LabelMargin = 3;
constexpr qreal Radius = 5;
constexpr qreal Margin = 12;
constexpr qreal Rise = 0.35; // of the size of a text: from its middle to the line that it stands on

QByteArray numberText(qreal number)
{
    const QByteArray text = QByteArray::number(std::round(number * 10) / 10, 'f', 1);
    return text == "-0.0" ? "0" : text.endsWith(".0") ? text.chopped(2) : text;
}

void putNumber(page_data & data, const std::string & name, qreal number)
{
    putRaw(data, name, numberText(number));
}

QByteArray pointText(const QPointF & point)
{
    return numberText(point.x()) + ' ' + numberText(point.y());
}

/// Widths of what stands in the rows of a box, from left to right, with the gaps between.
struct row_widths
{
    qreal marks = 0;
    qreal names = 0;
    qreal types = 0;

    explicit row_widths(const diagram_box & box)
    {
        for (const diagram_row & row : box.rows) {
            marks = std::max(marks, withGap(textWidth(markText(row.mark)) * SmallSize, MarkGap));
            names = std::max(names, textWidth(row.text) * TextSize);
            types = std::max(types, withGap(std::min(textWidth(row.type) * SmallSize, LargestType), TypeGap));
        }
        names = std::min(names, LargestWidth - 2 * Padding - marks - types);
    }

    [[nodiscard]] qreal whole() const { return marks + names + types; }

private:
    static qreal withGap(qreal width, qreal gap) { return width == 0 ? 0 : width + gap; }
};

QSizeF sizeOf(const diagram_box & box)
{
    const qreal heading = textWidth(box.name) * TextSize * BoldFactor;
    const qreal width = std::max(heading, row_widths(box).whole());
    const qreal rows = static_cast<qreal>(box.rows.size()) * RowHeight;
    return {std::ceil(std::clamp(width + 2 * Padding, SmallestWidth, LargestWidth)),
            HeaderHeight + (box.rows.isEmpty() ? 0 : rows + 2 * RowsMargin)};
}

QSizeF labelSizeOf(const diagram_line & line)
{
    const QStringList texts = line.labelTexts();
    qreal width = 0;
    for (const QString & text : texts) {
        width = std::max(width, textWidth(text) * SmallSize);
    }
    return texts.isEmpty() ? QSizeF()
                           : QSizeF(std::ceil(std::min(width, LargestLabel)) + 2 * LabelMargin,
                                    static_cast<qreal>(texts.size()) * SmallRowHeight + 2 * LabelMargin);
}

/// All that is drawn, and a margin.
QRectF groundOf(const diagram_picture & picture)
{
    QRectF ground;
    for (const QRectF & box : picture.places.boxes) {
        ground |= box;
    }
    for (qsizetype i = 0; i < picture.places.routes.size(); ++i) {
        const diagram_route & route = picture.places.routes[i];
        QRectF label(QPointF(), labelSizeOf(picture.contents.lines[i]));
        label.moveCenter(route.label);
        ground |= label.isEmpty() ? route.path.boundingRect() : route.path.boundingRect() | label;
    }
    return QRectF(ground.adjusted(-Margin, -Margin, Margin, Margin).toAlignedRect());
}

QByteArray pathText(const QPainterPath & path)
{
    QByteArray text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement:
            text += 'M';
            break;
        case QPainterPath::LineToElement:
            text += 'L';
            break;
        case QPainterPath::CurveToElement:
            text += 'C';
            break;
        case QPainterPath::CurveToDataElement:
            text += ' ';
            break;
        }
        text += pointText(element);
    }
    return text;
}

/// Adds the mark of one end to a line.
void addMark(const diagram_mark_shape & shape, QByteArray & path, page_list & circles)
{
    for (const QLineF & stroke : shape.strokes) {
        path += 'M' + pointText(stroke.p1()) + 'L' + pointText(stroke.p2());
    }
    if (shape.circle) {
        page_data circle;
        putNumber(circle, "circleX", shape.circle->x());
        putNumber(circle, "circleY", shape.circle->y());
        putNumber(circle, "circleRadius", diagram_mark_shape::CircleRadius);
        circles.push_back(circle);
    }
}

page_list linesOf(const diagram_picture & picture)
{
    page_list lines;
    for (qsizetype i = 0; i < picture.contents.lines.size(); ++i) {
        const diagram_line & line = picture.contents.lines[i];
        const QPainterPath & path = picture.places.routes[i].path;
        QByteArray text = pathText(path);
        page_list circles;
        addMark(markShape(path, picture.places.boxes[line.from], line.fromEnd), text, circles);
        addMark(markShape(path.toReversed(), picture.places.boxes[line.to], line.toEnd), text, circles);
        page_data data;
        putRaw(data, "linePath", text);
        put(data, "circles", std::move(circles));
        lines.push_back(data);
    }
    return lines;
}

page_list labelTextsOf(const diagram_line & line, const QRectF & place)
{
    page_list texts;
    qreal y = place.top() + LabelMargin + SmallRowHeight / 2 + SmallSize * Rise;
    for (const QString & text : line.labelTexts()) {
        page_data data;
        put(data, "labelText", fittingText(text, LargestLabel / SmallSize));
        putRaw(data, "labelClass", text == line.linkTable ? "table" : "relation");
        putNumber(data, "labelTextX", place.center().x());
        putNumber(data, "labelTextY", y);
        texts.push_back(data);
        y += SmallRowHeight;
    }
    return texts;
}

page_list labelsOf(const diagram_picture & picture)
{
    page_list labels;
    for (qsizetype i = 0; i < picture.contents.lines.size(); ++i) {
        const diagram_line & line = picture.contents.lines[i];
        QRectF place(QPointF(), labelSizeOf(line));
        if (place.isEmpty()) {
            continue;
        }
        place.moveCenter(picture.places.routes[i].label);
        page_data data;
        putNumber(data, "labelX", place.left());
        putNumber(data, "labelY", place.top());
        putNumber(data, "labelWidth", place.width());
        putNumber(data, "labelHeight", place.height());
        put(data, "labelTexts", labelTextsOf(line, place));
        labels.push_back(data);
    }
    return labels;
}

QByteArray markClassOf(diagram_mark mark)
{
    switch (mark) {
    case diagram_mark::key:
    case diagram_mark::key_reference:
        return "key";
    case diagram_mark::reference:
        return "reference";
    case diagram_mark::none:
    case diagram_mark::one_to_many:
    case diagram_mark::many_to_many:
        break;
    }
    return "collection";
}

QByteArray rowClassOf(const diagram_row & row)
{
    return row.isTargetMissing ? "missing" : row.isTransient ? "transient" : row.isRest ? "rest" : "row";
}

page_list rowsOf(const diagram_box & box, const QRectF & place)
{
    page_list rows;
    const row_widths widths(box);
    const qreal left = place.left() + Padding;
    qreal y = place.top() + HeaderHeight + RowsMargin + RowHeight / 2 + TextSize * Rise;
    for (const diagram_row & row : box.rows) {
        page_data data;
        put(data, "mark", markText(row.mark));
        putRaw(data, "markClass", markClassOf(row.mark));
        putNumber(data, "markX", left);
        putRaw(data, "rowClass", rowClassOf(row));
        putNumber(data, "rowX", left + widths.marks);
        putNumber(data, "rowY", y);
        put(data, "rowText", fittingText(row.text, widths.names / TextSize));
        putNumber(data, "typeX", place.right() - Padding);
        put(data, "typeText", fittingText(row.type, LargestType / SmallSize));
        rows.push_back(data);
        y += RowHeight;
    }
    return rows;
}

/// The ground of a heading: its upper corners are round, and the lower ones as well when nothing follows.
QByteArray headPathOf(const diagram_box & box, const QRectF & place)
{
    QRectF head = place;
    head.setHeight(HeaderHeight);
    const QByteArray height = numberText(HeaderHeight - (box.rows.isEmpty() ? 2 : 1) * Radius);
    const QByteArray inner = numberText(head.width() - 2 * Radius);
    const QByteArray upper = "M" + pointText(head.topLeft() + QPointF(0, Radius)) + "a5 5 0 0 1 5 -5h" +
                             inner + "a5 5 0 0 1 5 5v" + height;
    return box.rows.isEmpty() ? upper + "a5 5 0 0 1 -5 5h-" + inner + "a5 5 0 0 1 -5 -5z"
                              : upper + "h-" + numberText(head.width()) + "z";
}

page_list boxesOf(const diagram_picture & picture, long here)
{
    page_list boxes;
    for (qsizetype i = 0; i < picture.contents.boxes.size(); ++i) {
        const diagram_box & box = picture.contents.boxes[i];
        const QRectF & place = picture.places.boxes[i];
        page_data data;
        putRaw(data, "boxClass", box.id == here ? "box here" : "box");
        put(data, "boxPage", entityPage(box.id));
        put(data, "boxName", box.name);
        putNumber(data, "boxX", place.left());
        putNumber(data, "boxY", place.top());
        putNumber(data, "boxWidth", place.width());
        putNumber(data, "boxHeight", place.height());
        putRaw(data, "headPath", headPathOf(box, place));
        putNumber(data, "nameX", place.center().x());
        putNumber(data, "nameY", place.top() + HeaderHeight / 2 + TextSize * Rise);
        put(data, "shownName",
            fittingText(box.name, (place.width() - 2 * Padding) / (TextSize * BoldFactor)));
        put(data, "rows", rowsOf(box, place));
        boxes.push_back(data);
    }
    return boxes;
}

} // namespace

diagram_request requestOf(const diagram_contents & contents)
{
    diagram_request request;
    for (const diagram_box & box : contents.boxes) {
        request.boxes.append(sizeOf(box));
    }
    for (const diagram_line & line : contents.lines) {
        request.lines.append({line.from, line.to, labelSizeOf(line)});
    }
    return request;
}

drawn_diagram diagramSvg(const diagram_picture & picture, const QString & title, bool isAlone, long here)
{
    static page_template drawing(QStringLiteral("diagram"));
    const QRectF ground = groundOf(picture);
    page_data data;
    put(data, "pictureTitle", title);
    putRaw(data, "viewBox",
           pointText(ground.topLeft()) + ' ' + numberText(ground.width()) + ' ' +
               numberText(ground.height()));
    putNumber(data, "groundX", ground.left());
    putNumber(data, "groundY", ground.top());
    putNumber(data, "pictureWidth", ground.width());
    putNumber(data, "pictureHeight", ground.height());
    putFlag(data, "isAlone", isAlone);
    putRaw(data, "pictureStyle", isAlone ? pageResource(QStringLiteral("diagram.css")) : QByteArray());
    put(data, "lines", linesOf(picture));
    put(data, "labels", labelsOf(picture));
    put(data, "boxes", boxesOf(picture, here));
    return {drawing.fill(data), ground.size().toSize()};
}

} // namespace app
