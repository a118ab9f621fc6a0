#pragma once

#include "korvane_global.h"

#include <QByteArray>

namespace tools {

/// How many bytes boundedUncompress() gives at most unless it is told otherwise.
constexpr qsizetype LargestUncompressed = qsizetype(512) * 1024 * 1024;

/// What qUncompress() gives for `compressed`, but with bounded memory.
///
/// Empty when the data is damaged, when its header claims more than `limit` bytes (refused before memory is
/// taken), or when it holds more than the header claims.
[[nodiscard]] KORVANE_EXPORT QByteArray boundedUncompress(const QByteArray & compressed,
                                                          qsizetype limit = LargestUncompressed);

} // namespace tools
