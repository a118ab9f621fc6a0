#pragma once

#include "korvane_global.h"

#include <QString>

namespace zk {

/// Whether `c` turns the direction of the text that follows, or separates lines without being a line end: in
/// a name such a character makes a message or a list show something else than what is there.
[[nodiscard]] KORVANE_EXPORT bool isHiddenControl(QChar c);

/// `text` with each hidden control shown by its number, such as "<U+202E>".
[[nodiscard]] KORVANE_EXPORT QString visibleText(const QString & text);

/// The same as one line that moves no terminal's cursor: a blank for each line end and control character.
[[nodiscard]] KORVANE_EXPORT QString visibleLine(const QString & text);

} // namespace zk
