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
[[nodiscard]] QString textReport(const report & of, const text_style & style);

/// The form "korvane.check".
[[nodiscard]] QByteArray jsonReport(const report & of, const QString & program);

} // namespace check
