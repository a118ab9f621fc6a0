#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace app {

/// What differs between the script that is there and the one that an export writes, in one sentence without
/// its full stop: rows of the type mapping when they alone explain it, else the first line that differs.
/// @param types C++ type to SQL type, as an export takes them now
[[nodiscard]] QString scriptDifference(const QByteArray & there, const QByteArray & wanted,
                                       const QList<std::pair<QString, QString>> & types);

} // namespace app
