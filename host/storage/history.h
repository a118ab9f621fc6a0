#pragma once

#include "korvane_global.h"
#include "tools/bounded_uncompress.h"

#include <QDateTime>
#include <QList>
#include <QSqlError>
#include <QString>

#include <functional>
#include <memory>

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

/// When tag() stores a version.
enum class tag_when
{
    always,
    if_changed ///< only when the model is another one than that of the newest version
};

struct tag_result
{
    int number = 0;    ///< of the new version; 0 when none was stored
    int unchanged = 0; ///< number of the newest version before, when the model is still the same; else 0
};

/// Stores the state of the project file `file` as a new version. A state that could not be restored from the
/// version is not stored.
/// @param limit how many bytes a version may have before it is compressed
KORVANE_EXPORT QSqlError tag(const QString & file, const QString & message, tag_when when,
                             tag_result & result, qsizetype limit = tools::LargestUncompressed);
/// Stores the state in any case; `number` receives the number of the version.
KORVANE_EXPORT QSqlError tag(const QString & file, const QString & message, int & number);

/// The newest version of a project.
struct newest_version
{
    version what;         ///< number 0 without any
    bool isState = false; ///< whether the model is still that of the version, so that nothing goes with it
};

/// Reads the newest version of the project file `file`.
KORVANE_EXPORT QSqlError readNewest(const QString & file, newest_version & newest);

/// Takes the version `newest`, as readNewest() has given it, out of the project file `file`, with its
/// message. Fails and changes nothing when it is not the newest one any more.
KORVANE_EXPORT QSqlError removeNewest(const QString & file, const version & newest);

/// The versions of the project file `file`, oldest first.
KORVANE_EXPORT QSqlError list(const QString & file, QList<version> & versions);

/// Loads the version `number` of the project file `file`, under the name that the project had then. What is
/// loaded belongs to no file, and the current project stays the one that it is. A version that the file does
/// not have, or that cannot be restored into the folder for temporary files, is a failure that leaves
/// `project` as it is; no file is left behind.
/// @param look is called while what is loaded still belongs to its restored file, which has the settings that
/// were tagged with it
KORVANE_EXPORT QSqlError load(const QString & file, int number, std::shared_ptr<model::project> & project,
                              const std::function<void(const std::shared_ptr<model::project> &)> & look = {});

} // namespace storage::history
