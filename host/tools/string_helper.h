#pragma once

#include "korvane_global.h"

class QTextStream;

namespace tools::string_helper {

/// Sets the host's text encoding on a stream that writes a file: UTF-8 without byte-order mark.
KORVANE_EXPORT void initTextStream(QTextStream * stream);

} // namespace tools::string_helper
