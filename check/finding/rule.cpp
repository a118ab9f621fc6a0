#include "check/finding/rule.h"

#include <QFile>

namespace check {

QString filled(const char * text, const values & with)
{
    const QString pattern = QString::fromUtf8(text);
    QString result;
    result.reserve(2 * pattern.size());
    qsizetype at = 0;
    while (at < pattern.size()) {
        const qsizetype open = pattern.indexOf(QLatin1Char('{'), at);
        const qsizetype close = open < 0 ? -1 : pattern.indexOf(QLatin1Char('}'), open);
        if (close < 0) {
            break;
        }
        result += QStringView(pattern).mid(at, open - at);
        const QString * const value = with.find(QStringView(pattern).mid(open + 1, close - open - 1));
        result += value == nullptr ? QStringView(pattern).mid(open, close - open + 1) : *value;
        at = close + 1;
    }
    if (at == 0) {
        return pattern;
    }
    result += QStringView(pattern).mid(at);
    result.squeeze();
    return result;
}

QByteArray rulePage(const QString & code)
{
    QFile page(QStringLiteral(":/korvane/rules/%1.md").arg(code));
    return page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
}

finding findingOf(const rule_text & of, const values & with)
{
    finding told;
    const rule * const known = ruleOf(of.code);
    told.code = of.code;
    told.name = known == nullptr ? QLatin1String() : known->name;
    told.weight = known == nullptr ? severity::error : known->weight;
    told.what = of.what;
    told.message = filled(of.message, with);
    told.why = filled(of.why, with);
    told.way.text = filled(of.remedy, with);
    told.words = with;
    told.fields = QLatin1String(of.fields);
    return told;
}

} // namespace check
