#include "app/script_difference.h"

#include "app/output.h"

#include <QMap>
#include <QStringList>

#include <algorithm>

namespace app {

namespace {

constexpr int ShownLength = 70; ///< characters of a line that are shown

/// Takes away what two lists of words have in common at both ends.
void trimCommon(QStringList & a, QStringList & b)
{
    while (!a.isEmpty() && !b.isEmpty() && a.constFirst() == b.constFirst()) {
        a.removeFirst();
        b.removeFirst();
    }
    while (!a.isEmpty() && !b.isEmpty() && a.constLast() == b.constLast()) {
        a.removeLast();
        b.removeLast();
    }
}

/// `part` of a statement without what closes the list that it ends.
QString opened(QString part)
{
    while (part.endsWith(u';') || (part.endsWith(u')') && part.count(u')') > part.count(u'('))) {
        part.chop(1);
    }
    return part;
}

QString cut(const QString & line)
{
    const QString shown = oneLine(line);
    return shown.size() <= ShownLength ? shown : shown.left(ShownLength) + QStringLiteral("…");
}

/// SQL types that stand in the place of others, by the new one.
using exchanged_types = QMap<QString, QString>;

/// Adds what two lines have in each other's place, part by part; false when that is more than a type of
/// `known` each.
bool addExchanged(const QString & before, const QString & now, const QStringList & known,
                  exchanged_types & exchanged)
{
    const QStringList formerParts = before.split(QLatin1String(", "));
    const QStringList parts = now.split(QLatin1String(", "));
    if (formerParts.size() != parts.size()) {
        return false;
    }
    for (qsizetype i = 0; i < parts.size(); ++i) {
        QStringList former = opened(formerParts[i]).split(u' ');
        QStringList words = opened(parts[i]).split(u' ');
        trimCommon(former, words);
        const QString type = words.join(u' ');
        if (former.isEmpty() && words.isEmpty()) {
            continue;
        }
        if (former.isEmpty() || !known.contains(type)) {
            return false;
        }
        exchanged.insert(type, former.join(u' '));
    }
    return true;
}

/// The rows of the type mapping that explain all differences; empty when they do not.
QString exchangedRows(const QStringList & there, const QStringList & wanted,
                      const QList<std::pair<QString, QString>> & types)
{
    QStringList known;
    for (const auto & [cppType, sqlType] : types) {
        known << sqlType;
    }
    exchanged_types exchanged;
    for (qsizetype line = 0; line < wanted.size(); ++line) {
        if (there[line] != wanted[line] && !addExchanged(there[line], wanted[line], known, exchanged)) {
            return {};
        }
    }
    QStringList rows;
    for (auto each = exchanged.constBegin(); each != exchanged.constEnd(); ++each) {
        QStringList cppTypes;
        for (const auto & [cppType, sqlType] : types) {
            if (sqlType == each.key()) {
                cppTypes << cppType;
            }
        }
        rows << QStringLiteral("%1 is there, which the type mapping has no more: %2 is %3 now")
                    .arg(each.value(), cppTypes.join(QStringLiteral(", ")), each.key());
    }
    return rows.join(QStringLiteral("; "));
}

} // namespace

QString scriptDifference(const QByteArray & there, const QByteArray & wanted,
                         const QList<std::pair<QString, QString>> & types)
{
    const QStringList former = QString::fromUtf8(there).split(u'\n');
    const QStringList lines = QString::fromUtf8(wanted).split(u'\n');
    if (former.size() == lines.size()) {
        if (const QString rows = exchangedRows(former, lines, types); !rows.isEmpty()) {
            return rows;
        }
    }
    const auto [was, is] = std::mismatch(former.begin(), former.end(), lines.begin(), lines.end());
    const QString number = QString::number(is - lines.begin() + 1);
    if (was == former.end()) {
        return QStringLiteral("it ends before line %1, \"%2\"").arg(number, cut(*is));
    }
    if (is == lines.end()) {
        return QStringLiteral("an export ends before line %1, \"%2\"").arg(number, cut(*was));
    }
    return QStringLiteral("line %1 is \"%2\", an export writes \"%3\"").arg(number, cut(*was), cut(*is));
}

} // namespace app
