#include "zk/visible_text.h"

#include <algorithm>

namespace zk {

namespace {

/// Whether `c` ends a line or moves a terminal's cursor.
bool breaksLine(QChar c)
{
    const char16_t u = c.unicode();
    return u < 0x20 || (u >= 0x7f && u < 0xa0);
}

/// Whether every character of `text` is one of ASCII that is seen. An export tells tens of thousands of
/// lines, nearly all of them such: the loop has no early end so that the compiler looks at many characters at
/// once.
bool isPlain(const QString & text)
{
    bool plain = true;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        plain = plain & (u >= 0x20) & (u < 0x7f);
    }
    return plain;
}

} // namespace

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

QString visibleLine(const QString & text)
{
    if (isPlain(text)) {
        return text;
    }
    QString line = visibleText(text);
    if (std::none_of(line.cbegin(), line.cend(), breaksLine)) {
        return line;
    }
    line.replace(QLatin1String("\r\n"), QLatin1String(" "));
    std::replace_if(line.begin(), line.end(), breaksLine, QLatin1Char(' '));
    return line;
}

} // namespace zk
