#include "app/stored_settings.h"

#include "app/export_options.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"

#include <algorithm>

namespace app {

namespace {

constexpr qsizetype MostTypes = 3; // that are named

using type_rows = QList<std::pair<QString, QString>>;

/// What where scripts go, which, and for which database says nothing about their statements.
bool hasSay(const QString & option)
{
    return option != QLatin1String("path") && option != QLatin1String("schema") && option != DatabaseOption;
}

QString shown(const QString & value)
{
    return value.isEmpty() ? QStringLiteral("nothing") : QStringLiteral("'%1'").arg(value);
}

QString otherValue(const QString & what, const QString & then, const QString & now)
{
    return QStringLiteral("%1 was %2 and is %3").arg(what, shown(then), shown(now));
}

type_rows typesOf(const stored_settings & of, const QString & database)
{
    const auto found =
        std::find_if(of.databases.begin(), of.databases.end(),
                     [&](const plugin::statement_database & each) { return each.key == database; });
    return found == of.databases.end() ? type_rows() : found->types;
}

QStringList otherTypes(const type_rows & then, const type_rows & now)
{
    // Of two rows of one type the upper one counts.
    QMap<QString, std::pair<QString, QString>> types;
    for (auto row = then.rbegin(); row != then.rend(); ++row) {
        types[row->first].first = row->second;
    }
    for (auto row = now.rbegin(); row != now.rend(); ++row) {
        types[row->first].second = row->second;
    }
    QStringList other;
    for (auto each = types.begin(); each != types.end(); ++each) {
        if (each->first != each->second) {
            other +=
                otherValue(QStringLiteral("the SQL type of '%1'").arg(each.key()), each->first, each->second);
        }
    }
    const qsizetype more = other.size() - MostTypes;
    if (more > 0) {
        other = other.mid(0, MostTypes) << QStringLiteral("the SQL types of %1 more").arg(more);
    }
    return other;
}

} // namespace

zk::ZkBool readSettings(plugin::statement_source & statements,
                        const std::shared_ptr<model::project> & project, stored_settings & stored)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    const zk::ZkBool listed = statements.listOptions(stored.options);
    return listed ? statements.listDatabases(stored.databases) : listed;
}

QStringList otherSettings(const stored_settings & then, const stored_settings & now, const QString & database,
                          const plugin::friendly_settings & asked)
{
    QStringList other;
    for (const plugin::friendly_option & each : then.options) {
        const auto same = std::find_if(
            now.options.begin(), now.options.end(),
            [&each](const plugin::friendly_option & option) { return option.name == each.name; });
        if (hasSay(each.name) && !asked.contains(each.name) && same != now.options.end() &&
            same->stored != each.stored) {
            other += otherValue(each.name, each.stored, same->stored);
        }
    }
    return other + otherTypes(typesOf(then, database), typesOf(now, database));
}

} // namespace app
