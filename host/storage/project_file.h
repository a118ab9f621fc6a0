#pragma once

#include "korvane_global.h"

#include <QByteArray>
#include <QSqlError>
#include <QString>

namespace model {
class project;
}

/// The project file: a SQLite database that holds the model, the plug-ins' parameters and the tagged
/// versions.
///
/// Every error is one line that names the file, the place and the reason.
namespace storage::project_file {

/// Replaces the contents of `project` by those of `file`. On an error the contents of `project` are
/// undefined; model::project::load() reads into a fresh one.
KORVANE_EXPORT QSqlError read(const QString & file, model::project & project);

/// Writes name and model of `project` to `file` in one transaction: parameters and history of an existing
/// file stay, a file that is not there appears whole or not at all. An empty file counts as not there.
KORVANE_EXPORT QSqlError write(const QString & file, const model::project & project);

} // namespace storage::project_file
