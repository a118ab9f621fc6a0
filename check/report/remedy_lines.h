#pragma once

#include "check/finding/finding.h"

namespace check {

/// What people are shown of a remedy beside its text, under a heading each.
struct remedy_lines
{
    QString heading; ///< "Before the script"
    QStringList lines;
};

[[nodiscard]] std::vector<remedy_lines> linesOf(const remedy & of);

} // namespace check
