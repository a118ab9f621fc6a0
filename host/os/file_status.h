#pragma once

#include "korvane_global.h"

#include <QString>

namespace os {

/// What a name stands for, and why that cannot be told.
struct file_status
{
    enum kind_type
    {
        regular,
        missing,
        folder,
        link,    ///< only where links are not followed
        special, ///< a device, a named pipe or a socket
        unknown  ///< the system does not tell; `error` says why
    };
    kind_type kind = unknown;
    int error = 0;      ///< errno of `missing` and `unknown`
    qint64 size = 0;    ///< of a regular file, in bytes
    QString kindName;   ///< "a folder", "a named pipe" …, for messages
    quint64 device = 0; ///< with `inode` the identity of what is there
    quint64 inode = 0;
    quint32 owner = 0; ///< user id
};

enum class links
{
    followed,
    seen
};

/// Looks at `name` without opening it.
[[nodiscard]] KORVANE_EXPORT file_status fileStatus(const QString & name, links treatment = links::followed);

/// The folder for temporary files. When TMPDIR names one that is not there, that name: nothing can be made in
/// it, and messages say which one it is.
[[nodiscard]] QString temporaryFolder();

/// The system's words for `error`, an errno.
[[nodiscard]] KORVANE_EXPORT QString systemReason(int error);

} // namespace os
