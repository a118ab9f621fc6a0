#pragma once

#include <QByteArray>

namespace zk::sqlite {
class connection;
}

namespace storage {

/// Whether the open project `file` holds the model that the project file whose bytes are `other`
/// holds. Settings and history do not count. False as well when `other` cannot be read.
[[nodiscard]] bool holdsModelOf(const zk::sqlite::connection & file, const QByteArray & other);

} // namespace storage
