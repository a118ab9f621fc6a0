#pragma once

#include "context/ctx_project.h"

namespace context {

/// Whatever happens inside the scope, the project that was current when it began is current again when it
/// ends.
class KORVANE_EXPORT ctx_kept
{
public:
    explicit ctx_kept(ctx_project & context) : m_context(context), m_pProject(context.getProject()) {}
    ~ctx_kept() { m_context.setProject(m_pProject); }
    ctx_kept(const ctx_kept &) = delete;
    ctx_kept & operator=(const ctx_kept &) = delete;

private:
    ctx_project & m_context;
    std::shared_ptr<model::project> m_pProject;
};

/// Guards database work on one project: that project is kept, and `database()` stays its connection.
class KORVANE_EXPORT ctx_scoped
{
public:
    explicit ctx_scoped(ctx_project & context) : m_kept(context), m_database(context.getDatabase()) {}

    [[nodiscard]] const QSqlDatabase & database() const { return m_database; }

private:
    ctx_kept m_kept;
    QSqlDatabase m_database;
};

} // namespace context
