#pragma once

#include <QColor>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace test {

/// How far two colours are apart in light, from 1 (not at all) to 21; ordinary text needs 4.5.
inline double contrast(const QColor & a, const QColor & b)
{
    const auto light = [](const QColor & color) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    const auto [darker, lighter] = std::minmax({light(a), light(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

inline QPalette paletteOn(const QColor & base)
{
    const bool isDark = base.lightness() < 128;
    QPalette palette(isDark ? QColor(0x33, 0x33, 0x36) : QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, isDark ? Qt::white : Qt::black);
    return palette;
}

} // namespace test
