#include "servers/catalogue_lines.h"

#include <algorithm>

namespace servers {

namespace {

QStringList columnsOf(const std::vector<database::key_part> & parts)
{
    QStringList names;
    for (const database::key_part & part : parts) {
        names += part.column;
    }
    return names;
}

// A server may make an index of its own for a foreign key that has none; it bears the key's name.
bool isOfForeignKey(const database::table & owner, const database::index & asked)
{
    return std::any_of(owner.foreignKeys.begin(), owner.foreignKeys.end(),
                       [&](const database::foreign_key & each) { return each.name == asked.name; });
}

void addIndexes(const database::table & owner, QStringList & lines)
{
    for (const database::index & each : owner.indexes) {
        if (each.unique) {
            lines += withColumns(QStringLiteral("unique ") + owner.name, columnsOf(each.parts));
        } else if (!isOfForeignKey(owner, each)) {
            lines +=
                withColumns(QStringLiteral("index %1 %2").arg(each.name, owner.name), columnsOf(each.parts));
        }
    }
}

} // namespace

QStringList modelLinesOf(const database::catalogue & held)
{
    QStringList lines;
    for (const auto & [key, owner] : held.tables) {
        lines += QStringLiteral("table ") + owner.name;
        for (const database::column & each : owner.columns) {
            lines +=
                QStringLiteral("column %1.%2 %3%4")
                    .arg(owner.name, each.name, each.type, QLatin1String(each.notNull ? " NOT NULL" : ""));
        }
        if (owner.key) {
            lines += withColumns(QStringLiteral("key ") + owner.name, columnsOf(owner.key->parts));
        }
        addIndexes(owner, lines);
        for (const database::foreign_key & each : owner.foreignKeys) {
            const QString name = each.name.isEmpty() ? QStringLiteral("-") : each.name;
            lines += withColumns(QStringLiteral("foreign %1 %2").arg(name, owner.name), each.columns) +
                     withColumns(QStringLiteral(" -> ") + each.target, each.targetColumns);
        }
    }
    lines.sort();
    return lines;
}

QString withColumns(const QString & subject, const QStringList & columns)
{
    return subject + QStringLiteral(" (") + columns.join(QStringLiteral(", ")) + QLatin1Char(')');
}

} // namespace servers
