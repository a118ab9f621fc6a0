#include "app/window/diagram/diagram_style.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <cmath>

namespace app {

namespace {

QFont scaled(const QFont & font, qreal factor)
{
    QFont result = font;
    // By its real name: a picture goes to others, who do not know what this machine means by "Sans Serif".
    result.setFamily(QFontInfo(font).family());
    result.setPixelSize(qMax(1, qRound(QFontInfo(font).pixelSize() * factor)));
    result.setHintingPreference(QFont::PreferNoHinting);
    result.setStyleStrategy(QFont::PreferAntialias);
    return result;
}

/// Colours that mean something, for a light or a dark ground.
void setAccents(diagram_style & style, bool isDark)
{
    style.key = isDark ? QColor(0xe3, 0xb4, 0x5c) : QColor(0x8f, 0x5f, 0x00);
    style.reference = isDark ? QColor(0x86, 0xb6, 0xf0) : QColor(0x24, 0x5c, 0xa3);
    style.collection = isDark ? QColor(0x6c, 0xcb, 0xbb) : QColor(0x17, 0x6f, 0x63);
    style.warning = isDark ? QColor(0xf0, 0x8c, 0x80) : QColor(0xb3, 0x2d, 0x1e);
    style.trait = isDark ? QColor(0xc4, 0xa9, 0xe0) : QColor(0x6b, 0x4a, 0x96);
    style.added = isDark ? QColor(0x7f, 0xd4, 0x8a) : QColor(0x1a, 0x6e, 0x2e);
    style.dropped = isDark ? QColor(0xff, 0x9c, 0x94) : QColor(0xb4, 0x23, 0x18);
    style.changed = isDark ? QColor(0xf5, 0xad, 0x6b) : QColor(0x96, 0x48, 0x0a);
    style.renamed = isDark ? QColor(0xdd, 0x9c, 0xee) : QColor(0x85, 0x2f, 0xa0);
}

} // namespace

QColor mixed(const QColor & a, const QColor & b, qreal part)
{
    const auto between = [part](float x, float y) { return static_cast<float>(x * (1 - part) + y * part); };
    return QColor::fromRgbF(between(a.redF(), b.redF()), between(a.greenF(), b.greenF()),
                            between(a.blueF(), b.blueF()));
}

diagram_style diagram_style::of(const QFont & font, const QPalette & palette)
{
    diagram_style style;
    style.text = scaled(font, 1);
    style.heading = style.text;
    style.heading.setBold(true);
    style.small = scaled(font, 0.8);
    // Not the current group: nothing changes its colours when another window becomes active.
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor ink = palette.color(QPalette::Active, QPalette::Text);
    const bool isDark = base.lightnessF() < ink.lightnessF();
    const QColor tint = isDark ? QColor(0x6f, 0x9b, 0xd8) : QColor(0x3d, 0x70, 0xb2);
    style.canvas = isDark ? mixed(base, Qt::black, 0.15) : mixed(base, ink, 0.025);
    style.body = isDark ? mixed(base, ink, 0.05) : base;
    style.header = mixed(style.body, tint, isDark ? 0.3 : 0.2);
    style.highlight = palette.color(QPalette::Active, QPalette::Highlight);
    style.chosenHeader = mixed(style.body, style.highlight, isDark ? 0.55 : 0.45);
    style.frame = mixed(style.body, mixed(ink, tint, 0.5), isDark ? 0.5 : 0.45);
    style.ink = ink;
    style.quietInk = mixed(base, ink, isDark ? 0.68 : 0.64);
    style.line = mixed(base, mixed(ink, tint, 0.25), isDark ? 0.55 : 0.6);
    setAccents(style, isDark);
    return style;
}

diagram_style diagram_style::printed(const QFont & font)
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, QColor(0x1b, 0x1f, 0x24));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x7c, 0xc4));
    diagram_style style = of(font, palette);
    style.canvas = Qt::white;
    return style;
}

QColor diagram_style::colorOf(diagram_change change) const
{
    switch (change) {
    case diagram_change::added:
        return added;
    case diagram_change::dropped:
        return dropped;
    case diagram_change::changed:
        return changed;
    case diagram_change::renamed:
        return renamed;
    case diagram_change::none:
        break;
    }
    return ink;
}

QColor diagram_style::headerOf(diagram_change change) const
{
    constexpr qreal tint = 0.22;
    return change == diagram_change::none ? header : mixed(body, colorOf(change), tint);
}

qreal diagram_style::rowHeight() const
{
    return std::ceil(QFontMetricsF(text).height()) + 2;
}

} // namespace app
