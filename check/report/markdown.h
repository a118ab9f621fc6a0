#pragma once

#include <QString>

namespace check {

/// The line as code of Markdown, between more grave accents than it has in a row itself.
[[nodiscard]] QString codeSpan(const QString & line);

} // namespace check
