#pragma once

#include "check/finding/finding.h"

#include <QByteArray>
#include <QString>

namespace check {

/// How a report is written for people.
struct text_style
{
    bool colours = false;
};

/// For people: by script and statement, the worst first, what follows from something below it, and the counts
/// in the last line.
[[nodiscard]] QByteArray textReport(const report & of, const text_style & style);

/// SARIF 2.1.0: a rule object for each code, accepted findings as suppressed.
[[nodiscard]] QByteArray sarifReport(const report & of, const QString & program);

/// Annotations of GitHub's workflows; of each severity the first, and how many more there are.
[[nodiscard]] QByteArray githubReport(const report & of);
/// GitLab's code quality list.
[[nodiscard]] QByteArray gitlabReport(const report & of);
/// A table for comments and summaries.
[[nodiscard]] QByteArray markdownReport(const report & of);

/// The form "korvane.check".
[[nodiscard]] QByteArray jsonReport(const report & of, const QString & program);

} // namespace check
