#include "app/window/diagram/diagram_items.h"

#include "app/window/diagram/diagram_marks.h"
#include "app/window/diagram/diagram_text.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr qreal SmallestWidth = 110;
constexpr qreal LargestWidth = 340;
constexpr qreal LargestLabel = 170;
constexpr qreal LabelMargin = 3; // between the text and the line beside it
constexpr qreal Padding = 9;
constexpr qreal TitleGap = 7;
constexpr qreal Radius = 5;
constexpr qreal RowsMargin = 4;
constexpr qreal Halo = 12; // what a box draws around itself: the focus, the number of hidden neighbours

// Rising.
constexpr qreal LineLayer = 0;
constexpr qreal ChosenLineLayer = 1;
constexpr qreal LabelLayer = 2;
constexpr qreal BoxLayer = 3;

qreal headerHeight(const diagram_style & style)
{
    return style.rowHeight() + 8;
}

QString hiddenText(int hidden)
{
    return hidden > 0 ? QLatin1Char('+') + grouped(hidden) : QString();
}

qreal labelRowHeight(const diagram_style & style)
{
    return std::ceil(QFontMetricsF(style.small).height());
}

/// A piece of the line above the rows of a box.
struct title_part
{
    QString text;
    bool isStruckOut = false;
};

/// The sign of a change, the former name, the name.
QList<title_part> titleOf(const diagram_box & box)
{
    QList<title_part> parts{{changeSign(box.change), false},
                            {box.former, true},
                            {box.name, box.change == diagram_change::dropped}};
    parts.removeIf([](const title_part & part) { return part.text.isEmpty(); });
    return parts;
}

qreal titleWidth(const diagram_box & box, const diagram_style & style)
{
    const QFontMetricsF metrics(style.heading);
    qreal width = -TitleGap;
    for (const title_part & part : titleOf(box)) {
        width += TitleGap + metrics.horizontalAdvance(part.text);
    }
    return width;
}

} // namespace

QSizeF boxSize(const diagram_box & box, const diagram_style & style)
{
    const qreal width = std::max(titleWidth(box, style), diagram_rows(box.rows, style).width());
    const qreal rows = static_cast<qreal>(box.rows.size()) * style.rowHeight();
    return {std::ceil(std::clamp(width + 2 * Padding, SmallestWidth, LargestWidth)),
            std::ceil(headerHeight(style) + (box.rows.isEmpty() ? 0 : rows + 2 * RowsMargin))};
}

QSizeF labelSize(const diagram_line & line, const diagram_style & style)
{
    const QStringList lines = line.labelTexts();
    if (lines.isEmpty()) {
        return {};
    }
    qreal width = 0;
    for (const QString & text : lines) {
        width = std::max(width, QFontMetricsF(style.small).horizontalAdvance(text));
    }
    return {std::ceil(std::min(width, LargestLabel)) + 2 * LabelMargin,
            static_cast<qreal>(lines.size()) * labelRowHeight(style) + 2 * LabelMargin};
}

diagram_box_item::diagram_box_item(const diagram_box & box, const QRectF & place, const diagram_style & style)
    : m_box(box), m_place(place), m_style(style), m_rows(m_box.rows, m_style)
{
    setZValue(BoxLayer);
    setToolTip(box.tip);
}

void diagram_box_item::setChosen(bool chosen)
{
    m_bChosen = chosen;
    update();
}

void diagram_box_item::setCursorHere(bool here)
{
    m_bCursorHere = here;
    update();
}

QRectF diagram_box_item::boundingRect() const
{
    return m_place.adjusted(-Halo, -Halo, Halo, Halo);
}

QPainterPath diagram_box_item::shape() const
{
    QPainterPath path;
    path.addRect(m_place);
    return path;
}

void diagram_box_item::paint(QPainter * painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QRectF inner = m_place.adjusted(0.5, 0.5, -0.5, -0.5); // a border of one pixel lies on the pixels
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_style.body);
    painter->drawRoundedRect(inner, Radius, Radius);
    paintHeader(*painter);
    m_rows.draw(*painter, rowsPlace());
    painter->setBrush(Qt::NoBrush);
    painter->setPen(framePen());
    painter->drawRoundedRect(inner, Radius, Radius);
    paintHidden(*painter);
    if (m_bCursorHere) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(m_style.ink, 1.5, Qt::DashLine));
        painter->drawRoundedRect(m_place.adjusted(-4, -4, 4, 4), Radius + 3, Radius + 3);
    }
}

void diagram_box_item::paintHeader(QPainter & painter) const
{
    const QRectF inner = m_place.adjusted(0.5, 0.5, -0.5, -0.5);
    QRectF header = inner;
    header.setHeight(headerHeight(m_style) - 0.5);
    painter.setBrush(m_bChosen ? m_style.chosenHeader : m_style.headerOf(m_box.change));
    painter.drawRoundedRect(header, Radius, Radius);
    if (!m_box.rows.isEmpty()) {
        // Only the upper corners are round.
        painter.drawRect(header.adjusted(0, Radius, 0, 0));
        painter.setPen(QPen(m_style.frame, 1));
        painter.drawLine(header.bottomLeft(), header.bottomRight());
    }
    paintTitle(painter, QRectF(m_place.left() + Padding, header.top(), m_place.width() - 2 * Padding,
                               header.height()));
}

QPen diagram_box_item::framePen() const
{
    if (m_bChosen) {
        return {m_style.highlight, 2.5};
    }
    const bool isGone = m_box.change == diagram_change::dropped;
    return m_box.change == diagram_change::none
               ? QPen(m_style.frame, 1)
               : QPen(m_style.colorOf(m_box.change), 1.6, isGone ? Qt::DashLine : Qt::SolidLine);
}

void diagram_box_item::paintTitle(QPainter & painter, QRectF place) const
{
    const QFontMetricsF metrics(m_style.heading);
    painter.setPen(m_style.ink);
    place.adjust(std::max(qreal(0), place.width() - titleWidth(m_box, m_style)) / 2, 0, 0, 0);
    for (const title_part & part : titleOf(m_box)) {
        drawTextLine(painter, place, part.isStruckOut ? struckOut(m_style.heading) : m_style.heading,
                     part.text);
        const qreal next = place.left() + metrics.horizontalAdvance(part.text) + TitleGap;
        place.setLeft(std::min(next, place.right()));
    }
}

QRectF diagram_box_item::rowsPlace() const
{
    return m_place.adjusted(Padding, headerHeight(m_style) + RowsMargin, -Padding, -RowsMargin);
}

QRectF diagram_box_item::restPlace() const
{
    if (m_box.rows.isEmpty() || !m_box.rows.constLast().isRest) {
        return {};
    }
    QRectF place = rowsPlace();
    place.setTop(place.bottom() - m_style.rowHeight());
    return place;
}

void diagram_box_item::paintHidden(QPainter & painter) const
{
    const QString text = hiddenText(m_box.hidden);
    if (text.isEmpty()) {
        return;
    }
    const QFontMetricsF metrics(m_style.small);
    const QSizeF size(std::ceil(metrics.horizontalAdvance(text)) + 10, std::ceil(metrics.height()));
    const QRectF pill(m_place.topRight() - QPointF(size.width() - Halo / 2, size.height() / 2 + 1), size);
    painter.setPen(QPen(m_style.frame, 1));
    painter.setBrush(m_style.canvas);
    painter.drawRoundedRect(pill, size.height() / 2, size.height() / 2);
    painter.setPen(m_style.ink);
    drawTextLine(painter, pill, m_style.small, text, true);
}

diagram_line_item::diagram_line_item(const diagram_line & line, const diagram_route & route,
                                     const QRectF & from, const QRectF & to, const diagram_style & style)
    : m_line(line), m_path(route.path), m_from(from), m_to(to), m_style(style)
{
    setZValue(LineLayer);
    setToolTip(line.tip);
}

void diagram_line_item::setChosen(bool chosen)
{
    m_bChosen = chosen;
    setZValue(chosen ? ChosenLineLayer : LineLayer);
    update();
}

QRectF diagram_line_item::boundingRect() const
{
    return m_path.controlPointRect().adjusted(-8, -8, 8, 8); // the marks are wider than the line
}

QPainterPath diagram_line_item::shape() const
{
    QPainterPathStroker stroker;
    stroker.setWidth(8); // what a hand can hit
    return stroker.createStroke(m_path);
}

void diagram_line_item::paint(QPainter * painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setBrush(Qt::NoBrush);
    const bool isChange = m_line.change != diagram_change::none;
    const bool isGone = m_line.change == diagram_change::dropped;
    painter->setPen(QPen(m_bChosen  ? m_style.highlight
                         : isChange ? m_style.colorOf(m_line.change)
                                    : m_style.line,
                         m_bChosen ? 2.2 : 1.3, isGone ? Qt::DashLine : Qt::SolidLine, Qt::RoundCap,
                         Qt::RoundJoin));
    painter->drawPath(m_path);
    drawMark(*painter, m_path, m_from, m_line.fromEnd, m_style.canvas);
    drawMark(*painter, m_path.toReversed(), m_to, m_line.toEnd, m_style.canvas);
}

diagram_label_item::diagram_label_item(const diagram_line & line, const QPointF & centre,
                                       const diagram_style & style)
    : m_line(line), m_place(QPointF(), labelSize(line, style)), m_style(style)
{
    m_place.moveCenter(centre);
    setZValue(LabelLayer);
    setToolTip(line.tip);
}

void diagram_label_item::setChosen(bool chosen)
{
    m_bChosen = chosen;
    update();
}

void diagram_label_item::paint(QPainter * painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    if (m_place.isEmpty() || !isLegible(*painter)) {
        return;
    }
    // Lines that cross the label must not make it illegible.
    QColor ground = m_style.canvas;
    ground.setAlphaF(0.85F);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ground);
    QRectF place = m_place.adjusted(LabelMargin, LabelMargin, -LabelMargin, -LabelMargin);
    painter->drawRoundedRect(place, 3, 3);
    place.setHeight(labelRowHeight(m_style));
    for (const QString & text : m_line.labelTexts()) {
        QFont font = m_style.small;
        const bool isLinkTable = text == m_line.linkTable;
        painter->setPen(isLinkTable                             ? m_style.collection
                        : m_line.change != diagram_change::none ? m_style.colorOf(m_line.change)
                        : m_bChosen                             ? m_style.ink
                                                                : m_style.quietInk);
        font.setItalic(isLinkTable);
        drawTextLine(*painter, place, font, text, true);
        place.translate(0, place.height());
    }
}

} // namespace app
