#include "app/unknown_types.h"

#include "app/export_options.h"
#include "app/nearest_word.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "model/property_type.h"
#include "plugin/statement_source.h"

#include <QHash>

#include <algorithm>

namespace app {

namespace {

/// The row of a type mapping for all types that it does not name.
constexpr QLatin1String DefaultRow("<default type>");

/// The C++ types of the columns of a property whose SQL type the mapping says.
QStringList mappedTypesOf(const model::property & property)
{
    const bool isMapped = !property.isTransient() && !property.hasRelationship() &&
                          property.getForceSqlType().isEmpty() && property.getType() &&
                          !property.getType()->getEnumeration();
    QStringList types;
    for (int i = 0; isMapped && i < property.getType()->getCppTypes().size(); ++i) {
        types << property.getType()->getPrimitiveType(i);
    }
    return types;
}

QString lineOf(const column_type & type, const QStringList & known, const QString & fallback)
{
    const QString nearest = nearestWord(type.name, known);
    return QStringLiteral("type '%1' of %2%3 is not in the type mapping, so its column becomes %4%5")
        .arg(type.name, type.first,
             type.count == 1 ? QString() : QStringLiteral(" and of %1 more").arg(type.count - 1), fallback,
             nearest.isEmpty() ? QString() : QStringLiteral("; did you mean '%1'?").arg(nearest));
}

} // namespace

QList<column_type> columnTypes(const model::project & project)
{
    QList<column_type> types;
    QHash<QString, qsizetype> places;
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        for (const auto & property : entity->getListOfProperty(true, false, false)->values()) {
            for (const QString & type : mappedTypesOf(*property)) {
                const auto place = places.constFind(type);
                if (place != places.constEnd()) {
                    ++types[*place].count;
                    continue;
                }
                places.insert(type, types.size());
                types.append({type, entity->getName() + u'.' + property->getName(), 1});
            }
        }
    }
    return types;
}

QStringList unknownTypes(plugin::statement_source & statements, const QString & file,
                         const QList<column_type> & types)
{
    // Only its settings are read.
    const auto project = std::make_shared<model::project>(1);
    project->setFileName(file);
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    QList<plugin::friendly_option> options;
    QList<plugin::statement_database> databases;
    if (!statements.listOptions(options) || !statements.listDatabases(databases)) {
        return {};
    }
    const auto option = std::find_if(options.cbegin(), options.cend(),
                                     [](const auto & each) { return each.name == DatabaseOption; });
    const auto database = std::find_if(databases.cbegin(), databases.cend(), [&](const auto & each) {
        return option != options.cend() && each.key == option->stored;
    });
    if (database == databases.cend()) {
        return {};
    }
    QStringList known;
    QString fallback;
    for (const auto & [cppType, sqlType] : database->types) {
        if (cppType == DefaultRow) {
            fallback = sqlType;
        } else {
            known << cppType;
        }
    }
    QStringList lines;
    for (const column_type & type : types) {
        if (!known.contains(type.name)) {
            lines << lineOf(type, known, fallback);
        }
    }
    return lines;
}

} // namespace app
