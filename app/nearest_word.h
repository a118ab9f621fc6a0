#pragma once

#include <QString>
#include <QStringList>

namespace app {

/// The one of `words` that `typed` was most likely meant to be; empty when none is near. Upper and lower case
/// do not matter.
[[nodiscard]] QString nearestWord(const QString & typed, const QStringList & words);

} // namespace app
