#pragma once

#include "korvane_global.h"

#include <QDateTime>
#include <QList>
#include <QSqlError>
#include <QString>

namespace model {
class project;
}

/// The tagged versions of a project, kept in its project file.
namespace storage::history {

struct version
{
    int number = 0; ///< 1 for the oldest
    QDateTime created;
    QString message;
};

/// Stores the state of the project file `file` as a new version; `number` receives its number.
KORVANE_EXPORT QSqlError tag(const QString & file, const QString & message, int & number);

/// The versions of the project file `file`, oldest first.
KORVANE_EXPORT QSqlError list(const QString & file, QList<version> & versions);

} // namespace storage::history
