#include "app/unknown_types.h"

#include "app/export_options.h"
#include "app/nearest_word.h"
#include "app/project_work.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "model/property_type.h"
#include "plugin/statement_source.h"

#include <QMap>

#include <algorithm>

namespace app {

namespace {

/// The row of a type mapping for all types that it does not name.
constexpr QLatin1String DefaultRow("<default type>");

/// Where a type is first, and how often it is there.
struct occurrence
{
    QString first; ///< "customer.age"
    int count = 0;
};

/// The C++ types of columns whose SQL type the mapping says.
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

} // namespace

QStringList unknownTypes(const model::project & project, const QStringList & known, const QString & fallback)
{
    QMap<QString, occurrence> unknown;
    QStringList order;
    for (const auto & entity : project.getListOfAllEntities()->values()) {
        for (const auto & property : entity->getListOfProperty(true, false, false)->values()) {
            for (const QString & type : mappedTypesOf(*property)) {
                if (known.contains(type)) {
                    continue;
                }
                occurrence & here = unknown[type];
                if (++here.count == 1) {
                    here.first = entity->getName() + u'.' + property->getName();
                    order << type;
                }
            }
        }
    }
    QStringList lines;
    for (const QString & type : std::as_const(order)) {
        const occurrence & here = unknown[type];
        const QString nearest = nearestWord(type, known);
        lines << QStringLiteral("type '%1' of %2%3 is not in the type mapping, so its column becomes %4%5")
                     .arg(type, here.first,
                          here.count == 1 ? QString() : QStringLiteral(" and of %1 more").arg(here.count - 1),
                          fallback,
                          nearest.isEmpty() ? QString()
                                            : QStringLiteral("; did you mean '%1'?").arg(nearest));
    }
    return lines;
}

QStringList unknownTypes(plugin::statement_source & statements, const QString & file)
{
    std::shared_ptr<model::project> project;
    if (!openProject(file, project)) {
        return {};
    }
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
    return unknownTypes(*project, known, fallback);
}

} // namespace app
