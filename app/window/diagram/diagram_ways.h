#pragma once

#include <QList>
#include <QRectF>
#include <Qt>

namespace app {

/// The index of the box that an arrow key leads to from the box `from`; -1 when there is none that way.
[[nodiscard]] int boxTowards(const QList<QRectF> & boxes, int from, Qt::Key arrow);

/// The indexes of the boxes in the order of reading: column by column, each from the top.
[[nodiscard]] QList<int> readingOrder(const QList<QRectF> & boxes);

} // namespace app
