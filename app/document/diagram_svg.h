#pragma once

#include "app/diagram/diagram_contents.h"

#include <QByteArray>
#include <QString>

namespace app {

/// What is to be laid out for `contents`, in the sizes in which diagramSvg() draws.
[[nodiscard]] diagram_request requestOf(const diagram_contents & contents);

/// A diagram as it stands in a page.
struct drawn_diagram
{
    QByteArray svg;
    QSize size; ///< in points of CSS
};

/// Draws `picture` with a link from each box to the page of its entity. Colours are the reader's, light or
/// dark.
/// @param isAlone whether it is a file of its own; else the page brings the style
/// @param here id of the entity that is set off; 0 for none
[[nodiscard]] drawn_diagram diagramSvg(const diagram_picture & picture, const QString & title, bool isAlone,
                                       long here);

} // namespace app
