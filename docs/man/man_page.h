#pragma once

#include "app/described_command.h"

#include <QList>
#include <QString>

namespace manual {

/// The page of `command`, which is one of `commands`, for man(1), in Markdown whose headings are those of
/// such a page: from what the help says of it, and from `text`, the manual. There it is the row of the table
/// of commands, and the section whose anchor has its name.
[[nodiscard]] QString manPage(const app::described_command & command,
                              const QList<app::described_command> & commands, const QString & text);

} // namespace manual
