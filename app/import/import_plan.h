#pragma once

#include "app/diff_report.h"

#include "zk/zk_bool.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace model {
class project;
}

namespace app {

/// The project of `projectFile` as an import finds it; null when there is none yet.
[[nodiscard]] zk::ZkBool existingProject(const QString & projectFile,
                                         std::shared_ptr<model::project> & project);

/// What an import would change.
/// @param existing null for a project that is not there yet
/// @param source name of what is imported
[[nodiscard]] diff_report plannedChanges(const QString & projectFile,
                                         const std::shared_ptr<model::project> & existing,
                                         const QString & source,
                                         const std::shared_ptr<model::project> & next);

/// What an import of a text would change.
struct text_plan
{
    zk::ZkBool result;
    QByteArray text;
    QStringList warnings; ///< those that the import would give
};
/// Reads the text in `modelFile` as an import into `projectFile` would, and stores nothing.
[[nodiscard]] text_plan planOfText(const QString & modelFile, const QString & projectFile);

} // namespace app
