#pragma once

#include "app/diff_report.h"

#include <QString>

#include <vector>

namespace app {

/// A line of what changed, with what follows from it.
struct outline_line
{
    int depth = 0; ///< 0 for an entity or enumeration
    QString text;
    long entity = 0;   ///< that it is about; 0 for an enumeration, and for what is about none
    long property = 0; ///< likewise
    std::vector<const step_statement *> statements; ///< that follow from it, without the script's frame
    std::vector<const check::finding *> findings;   ///< that it explains, the worst first
};

/// Puts the changes of `report` below the objects that they belong to, and the statements and findings below
/// the changes: each below the first change that it follows from. What no change explains comes last.
/// `report` has to outlive the lines.
[[nodiscard]] std::vector<outline_line> outlineOf(const diff_report & report);

} // namespace app
