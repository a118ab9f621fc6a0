#include "app/window/diagram/diagram_rows.h"

#include "app/window/diagram/diagram_text.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace app {

namespace {

constexpr qreal Gap = 7;
constexpr qreal TypeGap = 12;
constexpr qreal TraitGap = 5;

QColor markColor(diagram_mark mark, const diagram_style & style)
{
    switch (mark) {
    case diagram_mark::key:
    case diagram_mark::key_reference:
        return style.key;
    case diagram_mark::reference:
        return style.reference;
    default:
        return style.collection;
    }
}

/// A width with the gap before what follows.
qreal withGap(qreal width, qreal gap)
{
    return width == 0 ? 0 : width + gap;
}

} // namespace

diagram_rows::diagram_rows(const QList<diagram_row> & rows, const diagram_style & style)
    : m_rows(rows), m_style(style)
{
    const QFontMetricsF text(style.text);
    const QFontMetricsF small(style.small);
    for (const diagram_row & row : rows) {
        m_signs = std::max(m_signs, text.horizontalAdvance(changeSign(row.change)));
        m_marks = std::max(m_marks, small.horizontalAdvance(markText(row.mark)));
        m_names = std::max(m_names, nameWidth(row));
        m_types = std::max(m_types, small.horizontalAdvance(row.type));
        const auto traits = traitSigns(row.traits);
        for (std::size_t i = 0; i < traits.size(); ++i) {
            m_traits[i] = std::max(m_traits[i], small.horizontalAdvance(traits[i]));
        }
    }
}

qreal diagram_rows::width() const
{
    const qreal traits = std::accumulate(m_traits.begin(), m_traits.end(), qreal(0),
                                         [](qreal sum, qreal each) { return sum + withGap(each, TraitGap); });
    return withGap(m_signs, Gap) + withGap(m_marks, Gap) + m_names + withGap(m_types, TypeGap) + traits;
}

QFont diagram_rows::fontOf(const diagram_row & row) const
{
    QFont font = m_style.text;
    font.setItalic(row.isTransient);
    font.setUnderline(row.isRest);
    font.setStrikeOut(row.change == diagram_change::dropped);
    return font;
}

QColor diagram_rows::colorOf(const diagram_row & row) const
{
    if (row.change != diagram_change::none) {
        return m_style.colorOf(row.change);
    }
    return row.isTargetMissing             ? m_style.warning
           : row.isRest || row.isTransient ? m_style.quietInk
                                           : m_style.ink;
}

qreal diagram_rows::nameWidth(const diagram_row & row) const
{
    const qreal former = QFontMetricsF(m_style.text).horizontalAdvance(row.former);
    return withGap(former, Gap) + QFontMetricsF(fontOf(row)).horizontalAdvance(row.text);
}

void diagram_rows::draw(QPainter & painter, const QRectF & place) const
{
    QRectF line = place;
    line.setHeight(m_style.rowHeight());
    for (const diagram_row & row : m_rows) {
        drawRow(painter, row, line);
        line.translate(0, line.height());
    }
}

void diagram_rows::drawRow(QPainter & painter, const diagram_row & row, QRectF place) const
{
    painter.setPen(m_style.colorOf(row.change));
    drawTextLine(painter, place, m_style.text, changeSign(row.change));
    place.setLeft(place.left() + withGap(m_signs, Gap));
    painter.setPen(markColor(row.mark, m_style));
    drawTextLine(painter, place, m_style.small, markText(row.mark));
    place.setLeft(place.left() + withGap(m_marks, Gap));
    if (!isLegible(painter)) {
        // From afar a box is to look as full as it is.
        QRectF bar = place.adjusted(0, place.height() * 0.35, 0, -place.height() * 0.35);
        bar.setWidth(std::min(bar.width(), nameWidth(row)));
        painter.fillRect(bar, row.change == diagram_change::none ? m_style.frame : colorOf(row));
        return;
    }
    drawTraits(painter, row, place);
    for (const qreal trait : m_traits) {
        place.setRight(place.right() - withGap(trait, TraitGap));
    }
    if (row.isRest) {
        drawName(painter, row, place);
        return;
    }
    QRectF name = place;
    name.setWidth(std::min(m_names, place.width()));
    drawName(painter, row, name);
    place.setLeft(name.right() + TypeGap);
    if (place.width() > 0) {
        painter.setPen(m_style.quietInk);
        drawTextLine(painter, place, m_style.small, row.type);
    }
}

void diagram_rows::drawName(QPainter & painter, const diagram_row & row, QRectF place) const
{
    if (!row.former.isEmpty()) {
        painter.setPen(m_style.quietInk);
        drawTextLine(painter, place, struckOut(m_style.text), row.former);
        const qreal former = QFontMetricsF(m_style.text).horizontalAdvance(row.former) + Gap;
        place.setLeft(std::min(place.left() + former, place.right()));
    }
    painter.setPen(colorOf(row));
    drawTextLine(painter, place, fontOf(row), row.text);
}

void diagram_rows::drawTraits(QPainter & painter, const diagram_row & row, const QRectF & place) const
{
    const auto traits = traitSigns(row.traits);
    QRectF slot = place;
    slot.setLeft(place.right() + TraitGap);
    painter.setPen(m_style.trait);
    for (std::size_t i = traits.size(); i-- > 0;) { // from the right, where the last one stands
        if (m_traits[i] == 0) {
            continue;
        }
        slot.setRight(slot.left() - TraitGap);
        slot.setLeft(slot.right() - m_traits[i]);
        drawTextLine(painter, slot, m_style.small, traits[i]);
    }
}

} // namespace app
