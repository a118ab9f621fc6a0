#pragma once

#include "app/described_command.h"

#include <QList>
#include <QStringList>

#include <memory>

namespace app {
class command;
}

namespace app::shell {

/// What a shell calls the program with to hear what can be typed, followed by the words up to the cursor.
inline constexpr char CompleteOption[] = "--complete";

/// The command that tells what can stand in the place of the last of `words`, at least one, which follow the
/// name of the program, where `commands` are understood. It belongs to no person, so no help lists it.
[[nodiscard]] std::unique_ptr<command> makeCompletionCommand(const QList<described_command> & commands,
                                                             const QStringList & words);

} // namespace app::shell
