#include "tools/visible_text.h"

#include <algorithm>

namespace tools {

bool isHiddenControl(QChar c)
{
    const char16_t u = c.unicode();
    return u == 0x061c || u == 0x200e || u == 0x200f || (u >= 0x2028 && u <= 0x202e) ||
           (u >= 0x2066 && u <= 0x2069);
}

QString visibleText(const QString & text)
{
    if (std::none_of(text.cbegin(), text.cend(), isHiddenControl)) {
        return text;
    }
    QString result;
    for (const QChar c : text) {
        result += isHiddenControl(c) ? QStringLiteral("<U+%1>").arg(
                                           QString::number(c.unicode(), 16).toUpper(), 4, QLatin1Char('0'))
                                     : QString(c);
    }
    return result;
}

} // namespace tools
