#pragma once

#include "app/verification.h"

#include <QByteArray>

namespace app {

/// A table of the databases, then what was refused, differs or was lost.
[[nodiscard]] QByteArray verifyText(const verification & of);
/// The same as Markdown.
[[nodiscard]] QByteArray verifyMarkdown(const verification & of);
/// The form "korvane.verify", see resources/schema/verify.schema.json.
/// @param program version of the program
[[nodiscard]] QByteArray verifyJson(const verification & of, const QString & program);
/// JUnit's XML: a suite a database, with a case for each script and for what its runs left.
[[nodiscard]] QByteArray verifyJunit(const verification & of);

} // namespace app
