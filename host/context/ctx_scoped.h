#pragma once

#include "context/ctx_project.h"

namespace context {

/// Guards database work on one project: whatever happens inside the scope, the project that was current when
/// it began is current again when it ends, and `database()` stays the connection of that project.
class KORVANE_EXPORT ctx_scoped
{
public:
    explicit ctx_scoped(ctx_project & context)
        : m_context(context), m_pProject(context.getProject()), m_database(context.getDatabase())
    {
    }
    ~ctx_scoped() { m_context.setProject(m_pProject); }
    ctx_scoped(const ctx_scoped &) = delete;
    ctx_scoped & operator=(const ctx_scoped &) = delete;

    [[nodiscard]] const QSqlDatabase & database() const { return m_database; }

private:
    ctx_project & m_context;
    std::shared_ptr<model::project> m_pProject;
    QSqlDatabase m_database;
};

} // namespace context
