#include "context/versions.h"

#include <sqlite3.h>

namespace context {

library_versions libraryVersions()
{
    return {QStringLiteral(KORVANE_CORE_VERSION), QString::fromLatin1(qVersion()),
            QString::fromLatin1(sqlite3_libversion())};
}

} // namespace context
