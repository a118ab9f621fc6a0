#pragma once

#include "app/diagram/diagram_contents.h"

#include <QFont>

namespace app::diagram_image {

/// Writes `picture` as an SVG file, in dark colours on white. The file appears whole or not at all.
/// @param font the font with which the picture was laid out
/// @param title what the picture is called
/// @param description one line about what is to be seen
/// @param reason on a failure one line with file and reason
bool saveSvg(const diagram_picture & picture, const QFont & font, const QString & title,
             const QString & description, const QString & file, QString & reason);

/// Writes `picture` as a PNG file with twice as many pixels in a row as it has points, as long as that makes
/// a picture that programs can still open. The file appears whole or not at all.
/// @param reason on a failure one line with file and reason; else a note when the picture had to be made
/// smaller, and the empty text when not
bool savePng(const diagram_picture & picture, const QFont & font, const QString & file, QString & reason);

} // namespace app::diagram_image
