#pragma once

#include <QString>

namespace app {

/// How wide `text` is at most in the fonts that browsers take for what has no serifs, in sizes of the font:
/// pages are read on other machines, with other fonts, and are to be the same wherever they are made.
[[nodiscard]] qreal textWidth(const QString & text);

/// `text`, or as much of its beginning as is no wider than `most`, and an ellipsis.
[[nodiscard]] QString fittingText(const QString & text, qreal most);

} // namespace app
