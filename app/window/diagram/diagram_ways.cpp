#include "app/window/diagram/diagram_ways.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace app {

namespace {

/// How far apart two intervals are; 0 when they overlap.
qreal gapBetween(qreal a1, qreal a2, qreal b1, qreal b2)
{
    return std::max({qreal(0), b1 - a2, a1 - b2});
}

} // namespace

int boxTowards(const QList<QRectF> & boxes, int from, Qt::Key arrow)
{
    const bool isAcross = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
    const qreal sign = arrow == Qt::Key_Right || arrow == Qt::Key_Down ? 1 : -1;
    const QRectF & start = boxes[from];
    int best = -1;
    qreal least = std::numeric_limits<qreal>::infinity();
    for (int i = 0; i < boxes.size(); ++i) {
        const QRectF & box = boxes[i];
        const QPointF step = box.center() - start.center();
        const qreal ahead = sign * (isAcross ? step.x() : step.y());
        const qreal aside = isAcross ? gapBetween(start.top(), start.bottom(), box.top(), box.bottom())
                                     : gapBetween(start.left(), start.right(), box.left(), box.right());
        if (i == from || ahead <= 0 || aside > ahead) {
            continue; // not that way, or rather in another direction
        }
        // Straight ahead counts more than near: a little of what lies aside decides between equals.
        const qreal cost = ahead + 2 * aside + std::abs(isAcross ? step.y() : step.x()) / 100;
        if (cost < least) {
            least = cost;
            best = i;
        }
    }
    return best;
}

QList<int> readingOrder(const QList<QRectF> & boxes)
{
    QList<int> order(boxes.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&boxes](int a, int b) {
        // A column of a layout has one centre line, give or take the rounding to pixels.
        const auto key = [&boxes](int i) {
            return std::pair(std::lround(boxes[i].center().x() / 4), boxes[i].center().y());
        };
        return key(a) < key(b);
    });
    return order;
}

} // namespace app
