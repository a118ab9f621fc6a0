#pragma once

#include "app/diff_report.h"

#include <QString>

namespace app {

class export_controller;
struct found_plugins;
class project_session;

/// Compares states of the open project, as `korvane diff` does it.
class version_comparison
{
public:
    /// All outlive it.
    version_comparison(project_session & session, const export_controller & exports,
                       const found_plugins & found);

    /// What changed between two versions, or the state for `Now`, with statements and findings when a plug-in
    /// tells statements. The project must not be in use.
    /// @param database key; empty for the stored one
    /// @param note gets what there is to know of the statements, for people
    /// A failure is one line.
    [[nodiscard]] zk::ZkBool compare(int from, int to, const QString & database, diff_report & report,
                                     QString & note);
    /// The same without statements and findings.
    [[nodiscard]] zk::ZkBool compareModels(int from, int to, diff_report & report) const;
    /// What an import of the text file `text` would change.
    [[nodiscard]] zk::ZkBool compareWithText(const QString & text, diff_report & report) const;

private:
    project_session & m_session;
    const export_controller & m_exports;
    const found_plugins & m_found;
};

} // namespace app
