#pragma once

#include "zk/zk_bool.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace app {

struct site_file
{
    QString name; ///< without a folder; small letters, digits and "-", and its suffix
    /// Makes what it holds, when it is written: all pages of a large model would need much memory.
    std::function<QByteArray()> make;
};

/// Puts `files` into `folder`, which is made when it is not there, and takes those away that were written
/// before and belong to the pages no more. What is whose is told by a list of what was written, which is kept
/// in the folder: whatever is not on it stays, and when a file would have to take the place of such a one
/// nothing is written. A failure is one line with file and reason.
[[nodiscard]] zk::ZkBool writeSite(const QString & folder, const std::vector<site_file> & files);

/// The name of that list.
inline constexpr QLatin1String SiteList("korvane-pages.txt");

} // namespace app
