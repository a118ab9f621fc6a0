#pragma once

#include "plugin/statement_source.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace app {

/// The settings of the export that a project, or a version of it, has stored.
struct stored_settings
{
    QList<plugin::friendly_option> options;
    QList<plugin::statement_database> databases;
};

/// Reads those of `project`, which belongs to a file. A failure is one line.
[[nodiscard]] zk::ZkBool readSettings(plugin::statement_source & statements,
                                      const std::shared_ptr<model::project> & project,
                                      stored_settings & stored);

/// What of `then` is stored otherwise `now` and has a say in the scripts of one database, a text each. What
/// `asked` sets has none.
/// @param database its key
[[nodiscard]] QStringList otherSettings(const stored_settings & then, const stored_settings & now,
                                        const QString & database, const plugin::friendly_settings & asked);

} // namespace app
