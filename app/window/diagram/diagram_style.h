#pragma once

#include "app/diagram/diagram_graph.h"

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

    /// What a change is told in; the ink without one.
    [[nodiscard]] QColor colorOf(diagram_change change) const;
    /// The ground of the name of a box.
    [[nodiscard]] QColor headerOf(diagram_change change) const;

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
    QColor trait; ///< of what holds for the values of a column
    QColor added;
    QColor dropped;
    QColor changed;
    QColor renamed;
};

/// `part` of `b` (0 to 1), the rest of `a`.
[[nodiscard]] QColor mixed(const QColor & a, const QColor & b, qreal part);

} // namespace app
