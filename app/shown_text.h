#pragma once

#include <QString>

/// Texts as widgets want them. What is shown is often a name that somebody chose, and no mark-up.
namespace app {

/// `text` for a place where & marks the letter of a key: a menu, a tab, a button.
[[nodiscard]] QString withoutMnemonic(QString text);
/// `text` as a tool tip that shows it as it is; lines are broken where it has a line end, and where it is
/// long.
[[nodiscard]] QString plainToolTip(const QString & text);
/// The same in one paragraph, whatever is in the text: for the names of files.
[[nodiscard]] QString plainToolTipLine(const QString & text);
/// `text`, or its first `length` characters and an ellipsis.
[[nodiscard]] QString shortened(const QString & text, qsizetype length);

} // namespace app
