#pragma once

#include <QByteArray>
#include <QSqlDatabase>

namespace storage {

/// Whether the open project file `database` holds the model that the project file whose bytes are `other`
/// holds. Settings and history do not count. False as well when `other` cannot be read.
[[nodiscard]] bool holdsModelOf(const QSqlDatabase & database, const QByteArray & other);

} // namespace storage
