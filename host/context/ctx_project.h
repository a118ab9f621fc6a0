#pragma once

#include "korvane_global.h"

#include <QSqlDatabase>
#include <QString>

#include <memory>

namespace model {
class project;
}

namespace context {

/// The current project, and what follows from it: its database and the resolution of relative paths.
class KORVANE_EXPORT ctx_project
{
public:
    [[nodiscard]] static ctx_project & getSingleton();

    /// The current project; null when none is open.
    [[nodiscard]] std::shared_ptr<model::project> getProject() const { return m_pProject; }
    void setProject(const std::shared_ptr<model::project> & project) { m_pProject = project; }

    /// `path` taken relative to the folder of the current project file. An absolute path, an empty one, and
    /// any path while there is no current project with a location, stay as they are.
    [[nodiscard]] QString getPathFromProjectFile(const QString & path) const;

    /// Connection to the database of the current project (its project file); not open when there is none.
    [[nodiscard]] QSqlDatabase getDatabase() const;

private:
    ctx_project() = default;
    std::shared_ptr<model::project> m_pProject;
};

} // namespace context
