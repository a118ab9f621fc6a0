#pragma once

#include <QRegularExpression>
#include <QString>

namespace zk {

/// `text` on one line: line ends, tabs and runs of blanks are one blank each, and none is left at the ends.
/// Blanks that must not break, which languages put beside their marks, stay.
inline QString oneLine(QString text)
{
    static const QRegularExpression blanks(QStringLiteral("[ \\t\\n\\v\\f\\r]+"));
    text.replace(blanks, QStringLiteral(" "));
    if (text.startsWith(QLatin1Char(' '))) {
        text.remove(0, 1);
    }
    if (text.endsWith(QLatin1Char(' '))) {
        text.chop(1);
    }
    return text;
}

} // namespace zk
