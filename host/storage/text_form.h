#pragma once

#include "korvane_global.h"
#include "zk/zk_bool.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace model {
class project;
}

/// The text form of a project: JSON that people write by hand and keep under version control.
namespace storage::text_form {

/// Reads `text` into the empty `project`.
///
/// @param sourceName name of the text in messages, its file name
/// @param existing the stored project that the text replaces, or null: absent ids and entity versions follow
/// it A failure is one line "source: place: reason".
KORVANE_EXPORT zk::ZkBool read(const QByteArray & text, const QString & sourceName,
                               const model::project * existing, model::project & project);

/// Makes `project`, whose objects have their ids already, the state that follows `existing`, the stored one
/// (null for none): no id is given a second time, and versions count what changed. A failure, with what
/// every model has to hold to, is one line "source: place: reason".
KORVANE_EXPORT zk::ZkBool follow(model::project & project, const QString & sourceName,
                                 const model::project * existing);

/// One line for each entity that differs from the one of its id in `existing` and bears the same version all
/// the same: a text can give a version that it does not raise, and then a comparison misses the change.
[[nodiscard]] KORVANE_EXPORT QStringList versionWarnings(const model::project & project,
                                                         const model::project & existing);

/// Makes the versions of the entities of `current` tell what changed since `previous`, as a stored project's
/// do: an entity that is the same has its former version, one that differs has another. For two projects that
/// do not follow each other in one history, such as two texts, whose versions need not tell anything.
KORVANE_EXPORT void settleVersions(const model::project & previous, model::project & current);

/// The text form of `project` with every id and version, ending with a line end.
[[nodiscard]] KORVANE_EXPORT QByteArray write(const model::project & project);

} // namespace storage::text_form
