#pragma once

#include "korvane_global.h"

#include <QString>

namespace tools {

/// Whether `c` turns the direction of the text that follows, or separates lines without being a line end: in
/// a name such a character makes a message or a list show something else than what is there.
[[nodiscard]] KORVANE_EXPORT bool isHiddenControl(QChar c);

/// `text` with each hidden control shown by its number, such as "<U+202E>".
[[nodiscard]] KORVANE_EXPORT QString visibleText(const QString & text);

} // namespace tools
