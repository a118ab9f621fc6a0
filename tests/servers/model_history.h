#pragma once

#include <QByteArray>
#include <QStringList>

namespace servers {

/// Four versions of the model whose text is `text`, as texts, the oldest first: a column and an entity that
/// refers to the first one are added, a table is renamed, an index is added and, where `canRenameColumns`, a
/// column is renamed. Empty when `text` is.
[[nodiscard]] QStringList historyOf(const QByteArray & text, bool canRenameColumns);

} // namespace servers
