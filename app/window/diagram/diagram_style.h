#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

namespace app {

/// Fonts and colours of a diagram. The fonts have sizes in pixels and no hinting: texts keep their
/// proportions at every zoom and on every device.
struct diagram_style
{
    /// What goes with `font` and `palette`, be the palette light or dark.
    [[nodiscard]] static diagram_style of(const QFont & font, const QPalette & palette);
    /// For pictures: dark on white, whatever the palette.
    [[nodiscard]] static diagram_style printed(const QFont & font);

    /// Height of a line of text in a box.
    [[nodiscard]] qreal rowHeight() const;

    QFont text;
    QFont heading;
    QFont small;

    QColor canvas;
    QColor body;
    QColor header;
    QColor chosenHeader;
    QColor frame;
    QColor ink;
    QColor quietInk;
    QColor line;
    QColor highlight;
    QColor key;
    QColor reference;
    QColor collection;
    QColor warning;
};

/// `part` of `b` (0 to 1), the rest of `a`.
[[nodiscard]] QColor mixed(const QColor & a, const QColor & b, qreal part);

} // namespace app
