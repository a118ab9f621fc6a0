#pragma once

#include <QColor>

namespace tools {

/// The colour that lies `part` of the way (from 0 to 1) from `a` to `b`.
[[nodiscard]] inline QColor between(const QColor & a, const QColor & b, qreal part)
{
    return QColor::fromRgbF(static_cast<float>(a.redF() * (1 - part) + b.redF() * part),
                            static_cast<float>(a.greenF() * (1 - part) + b.greenF() * part),
                            static_cast<float>(a.blueF() * (1 - part) + b.blueF() * part));
}

} // namespace tools
