#include "check/report/markdown.h"

namespace check {

QString codeSpan(const QString & line)
{
    QString fence = QStringLiteral("`");
    while (line.contains(fence)) {
        fence += u'`';
    }
    const QString space = fence.size() > 1 ? QStringLiteral(" ") : QString();
    return fence + space + line + space + fence;
}

} // namespace check
