#pragma once

#include <QString>

#include <memory>

class QCoreApplication;

namespace app {

enum class surroundings;

/// Makes the application object with what a command needs around it. `argc` and `argv` have to outlive it.
/// Ends the program with a line on standard error when a window is needed and the display cannot be reached.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int & argc, char ** argv,
                                                                surroundings needed);

/// Whether the environment names a display.
[[nodiscard]] bool hasDisplay();
/// Says that a window cannot be shown, and what to do.
[[nodiscard]] QString noDisplayText();

} // namespace app
