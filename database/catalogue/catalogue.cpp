#include "database/catalogue/catalogue.h"

#include <QStringBuilder>

#include <algorithm>
#include <iterator>

namespace database {

namespace {

QString textOf(const std::vector<key_part> & parts)
{
    QStringList texts;
    for (const key_part & part : parts) {
        texts +=
            part.prefix > 0 ? QString(part.column % u'(' % QString::number(part.prefix) % u')') : part.column;
    }
    return u'(' % texts.join(u',') % u')';
}

QString withName(const QString & line, const QString & name)
{
    return name.isEmpty() ? line : QString(line % u' ' % name);
}

void addColumns(const table & owner, QStringList & lines)
{
    for (const column & held : owner.columns) {
        lines += u"column " % owner.name % u'.' % held.name % u' ' % held.type %
                 QLatin1String(held.notNull ? " NOT NULL" : "") %
                 QLatin1String(held.counted ? " counted" : "");
    }
}

void addKeys(const table & owner, QStringList & lines)
{
    if (owner.key) {
        lines += withName(u"key " % owner.name % u' ' % textOf(owner.key->parts), owner.key->name);
    }
    for (const index & held : owner.indexes) {
        const QLatin1String kind(held.unique ? "unique " : "index ");
        lines += withName(kind % owner.name % u' ' % textOf(held.parts), held.name);
    }
    for (const foreign_key & held : owner.foreignKeys) {
        lines += withName(u"foreign " % owner.name % u" (" % held.columns.join(u',') % u") -> " %
                              held.target % u" (" % held.targetColumns.join(u',') % u')',
                          held.name);
    }
}

} // namespace

QStringList linesOf(const catalogue & held)
{
    QStringList lines;
    for (const auto & [key, owner] : held.tables) {
        lines += u"table " % owner.name;
        addColumns(owner, lines);
        addKeys(owner, lines);
        for (const sequence & own : owner.sequences) {
            lines += u"sequence " % own.name;
        }
        for (const trigger & own : owner.triggers) {
            lines += u"trigger " % own.name;
        }
    }
    for (const sequence & own : held.sequences) {
        lines += u"sequence " % own.name;
    }
    lines.sort();
    return lines;
}

catalogue_difference difference(const catalogue & first, const catalogue & second)
{
    const QStringList left = linesOf(first);
    const QStringList right = linesOf(second);
    catalogue_difference found;
    std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                        std::back_inserter(found.onlyFirst));
    std::set_difference(right.begin(), right.end(), left.begin(), left.end(),
                        std::back_inserter(found.onlySecond));
    return found;
}

} // namespace database
