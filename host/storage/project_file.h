#pragma once

#include "korvane_global.h"

#include <QByteArray>
#include <QSqlError>
#include <QString>

#include <functional>

namespace model {
class project;
}

/// The project file: a SQLite database that holds the model, the plug-ins' parameters and the tagged
/// versions.
///
/// Every error is one line that names the file, the place and the reason. Who finds the file in use by
/// another process waits; see zk/sqlite_locks.h.
namespace storage::project_file {

/// Replaces the contents of `project` by those of `file`. On an error the contents of `project` are
/// undefined; model::project::load() reads into a fresh one.
KORVANE_EXPORT QSqlError read(const QString & file, model::project & project);

/// Writes name and model of `project` to `file` in one transaction: parameters and history of an existing
/// file stay, a file that is not there appears whole or not at all. An empty file counts as not there.
KORVANE_EXPORT QSqlError write(const QString & file, const model::project & project);

/// Makes `next`, an empty project, the one to be stored. `existing` is what is stored now, null when there is
/// no project. An error, whose text is told as it is, leaves all as it was. It must not open the file itself.
using change = std::function<QSqlError(const model::project * existing, model::project & next)>;

/// The same as write() for a project that depends on the stored one: what is read, what `decide` makes of it
/// and what is written belong to one transaction, so that nothing of what others store in between is lost.
/// A file that another process makes meanwhile is the existing one; then `decide` is called once more.
KORVANE_EXPORT QSqlError replace(const QString & file, const change & decide);

} // namespace storage::project_file
