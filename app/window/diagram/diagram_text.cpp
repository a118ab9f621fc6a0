#include "app/window/diagram/diagram_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace app {

namespace {

constexpr qreal LegibleZoom = 0.3;

} // namespace

void drawTextLine(QPainter & painter, const QRectF & place, const QFont & font, const QString & text,
                  bool centred)
{
    const QFontMetricsF metrics(font);
    // Half a pixel more: a text that just fits must not lose its end to rounding.
    const QString shown = metrics.elidedText(text, Qt::ElideRight, place.width() + 0.5);
    const qreal left = centred ? place.center().x() - metrics.horizontalAdvance(shown) / 2 : place.left();
    const qreal top = place.top() + (place.height() - metrics.height()) / 2;
    painter.setFont(font);
    painter.drawText(QPointF(left, top + metrics.ascent()), shown);
}

QFont struckOut(const QFont & font)
{
    QFont result = font;
    result.setStrikeOut(true);
    return result;
}

bool isLegible(const QPainter & painter)
{
    return QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform()) >= LegibleZoom;
}

} // namespace app
