#include "app/window/diagram/diagram_items.h"

#include "app/window/diagram/diagram_marks.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr qreal SmallestWidth = 110;
constexpr qreal LargestWidth = 280;
constexpr qreal LargestLabel = 170;
constexpr qreal LabelMargin = 3; // between the text and the line beside it
constexpr qreal Padding = 9;
constexpr qreal MarkGap = 7;
constexpr qreal Radius = 5;
constexpr qreal RowsMargin = 4;
constexpr qreal Halo = 12; // what a box draws around itself: the focus, the number of hidden neighbours
constexpr qreal LegibleZoom = 0.3;

// Rising.
constexpr qreal LineLayer = 0;
constexpr qreal ChosenLineLayer = 1;
constexpr qreal LabelLayer = 2;
constexpr qreal BoxLayer = 3;

QColor markColor(diagram_mark mark, const diagram_style & style)
{
    return mark == diagram_mark::key         ? style.key
           : mark == diagram_mark::reference ? style.reference
                                             : style.collection;
}

qreal markWidth(const diagram_box & box, const diagram_style & style)
{
    const QFontMetricsF metrics(style.small);
    qreal width = 0;
    for (const diagram_row & row : box.rows) {
        width = std::max(width, metrics.horizontalAdvance(markText(row.mark)));
    }
    return width == 0 ? 0 : width + MarkGap;
}

QFont rowFont(const diagram_row & row, const diagram_style & style)
{
    QFont font = style.text;
    font.setItalic(row.isTransient);
    return font;
}

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

bool isLegible(const QPainter & painter)
{
    return QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform()) >= LegibleZoom;
}

/// Draws one line of text, cut where it does not fit, in the middle of the height of `place`.
void drawLine(QPainter & painter, const QRectF & place, const QFont & font, const QString & text,
              bool centred = false)
{
    const QFontMetricsF metrics(font);
    // Half a pixel more: a text that just fits must not lose its end to rounding.
    const QString shown = metrics.elidedText(text, Qt::ElideRight, place.width() + 0.5);
    const qreal left = centred ? place.center().x() - metrics.horizontalAdvance(shown) / 2 : place.left();
    const qreal top = place.top() + (place.height() - metrics.height()) / 2;
    painter.setFont(font);
    painter.drawText(QPointF(left, top + metrics.ascent()), shown);
}

} // namespace

QSizeF boxSize(const diagram_box & box, const diagram_style & style)
{
    qreal width = QFontMetricsF(style.heading).horizontalAdvance(box.name);
    const qreal gutter = markWidth(box, style);
    for (const diagram_row & row : box.rows) {
        width = std::max(width, gutter + QFontMetricsF(rowFont(row, style)).horizontalAdvance(row.text));
    }
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
    : m_box(box), m_place(place), m_style(style)
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
    paintRows(*painter);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(m_bChosen ? QPen(m_style.highlight, 2.5) : QPen(m_style.frame, 1));
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
    painter.setBrush(m_bChosen ? m_style.chosenHeader : m_style.header);
    painter.drawRoundedRect(header, Radius, Radius);
    if (!m_box.rows.isEmpty()) {
        // Only the upper corners are round.
        painter.drawRect(header.adjusted(0, Radius, 0, 0));
        painter.setPen(QPen(m_style.frame, 1));
        painter.drawLine(header.bottomLeft(), header.bottomRight());
    }
    painter.setPen(m_style.ink);
    const QRectF text(m_place.left() + Padding, header.top(), m_place.width() - 2 * Padding, header.height());
    drawLine(painter, text, m_style.heading, m_box.name, true);
}

void diagram_box_item::paintRows(QPainter & painter) const
{
    const qreal gutter = markWidth(m_box, m_style);
    const qreal height = m_style.rowHeight();
    QRectF place = m_place.adjusted(Padding, headerHeight(m_style) + RowsMargin, -Padding, 0);
    place.setHeight(height);
    for (const diagram_row & row : m_box.rows) {
        if (const QString mark = markText(row.mark); !mark.isEmpty()) {
            painter.setPen(markColor(row.mark, m_style));
            drawLine(painter, place, m_style.small, mark);
        }
        const QRectF text = place.adjusted(gutter, 0, 0, 0);
        if (!isLegible(painter)) {
            // From afar a box is to look as full as it is.
            QRectF bar = text.adjusted(0, height * 0.35, 0, -height * 0.35);
            bar.setWidth(std::min(bar.width(), QFontMetricsF(m_style.text).horizontalAdvance(row.text)));
            painter.fillRect(bar, m_style.frame);
            place.translate(0, height);
            continue;
        }
        painter.setPen(row.isTargetMissing             ? m_style.warning
                       : row.isRest || row.isTransient ? m_style.quietInk
                                                       : m_style.ink);
        drawLine(painter, text, rowFont(row, m_style), row.text);
        place.translate(0, height);
    }
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
    drawLine(painter, pill, m_style.small, text, true);
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
    painter->setPen(QPen(m_bChosen ? m_style.highlight : m_style.line, m_bChosen ? 2.2 : 1.3, Qt::SolidLine,
                         Qt::RoundCap, Qt::RoundJoin));
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
        painter->setPen(isLinkTable ? m_style.collection : m_bChosen ? m_style.ink : m_style.quietInk);
        font.setItalic(isLinkTable);
        drawLine(*painter, place, font, text, true);
        place.translate(0, place.height());
    }
}

} // namespace app
