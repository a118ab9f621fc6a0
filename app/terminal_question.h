#pragma once

#include <QString>

#include <optional>

namespace app {

/// Whether a person can be asked: standard input is a terminal.
[[nodiscard]] bool hasTerminal();

/// Asks `question` on standard error until the person says yes or no; the answer, which is `defaultIsYes` for
/// an empty line. Nothing when standard input ends.
[[nodiscard]] std::optional<bool> askAtTerminal(const QString & question, bool defaultIsYes);

/// Asks for a password on standard error, which the terminal does not show while it is typed. Nothing when
/// standard input ends.
[[nodiscard]] std::optional<QString> askPasswordAtTerminal(const QString & question);

} // namespace app
