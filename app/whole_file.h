#pragma once

#include "zk/zk_bool.h"

#include <QByteArray>
#include <QString>

namespace app {

/// Puts `bytes` into the file `file`, in place of what it holds. On failure the file is as it was, and the
/// text is the mere reason, for the caller to say what was to be written where.
[[nodiscard]] zk::ZkBool writeWholeFile(const QString & file, const QByteArray & bytes);

} // namespace app
