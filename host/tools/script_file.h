#pragma once

#include <QString>

#include <optional>

namespace tools {

/// The whole script as text; an empty optional and `reason` when it cannot be had.
[[nodiscard]] std::optional<QString> readScript(const QString & fileName, QString & reason);

/// The line (from 1 on) where `exportStep` first stands as something that is defined; what has no better
/// place is reported there. 0 when there is none.
[[nodiscard]] int lineOfFunction(const QString & source);

/// The program that an engine runs for the script: it gives the function `exportStep` or undefined, with a
/// debugger an array of that and of a function that evaluates text.
[[nodiscard]] QString programOf(const QString & source, bool forDebugger);

} // namespace tools
