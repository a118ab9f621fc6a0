#include "app/shown_text.h"

namespace app {

QString withoutMnemonic(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString plainToolTip(const QString & text)
{
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

QString plainToolTipLine(const QString & text)
{
    return QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

QString shortened(const QString & text, qsizetype length)
{
    return text.size() <= length ? text : text.left(length) + QChar(0x2026);
}

} // namespace app
