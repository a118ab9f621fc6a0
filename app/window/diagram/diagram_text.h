#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace app {

/// Draws one line of text with the painter's pen, cut where it does not fit, in the middle of the height of
/// `place`.
void drawTextLine(QPainter & painter, const QRectF & place, const QFont & font, const QString & text,
                  bool centred = false);

/// `font` with a line through its letters.
[[nodiscard]] QFont struckOut(const QFont & font);

/// Whether texts can be read at the zoom of the painter.
[[nodiscard]] bool isLegible(const QPainter & painter);

} // namespace app
