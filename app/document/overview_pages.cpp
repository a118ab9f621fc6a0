#include "app/document/overview_pages.h"

#include "app/document/change_rows.h"
#include "app/document/entity_page.h"
#include "app/document/page_names.h"

#include "check/view/model_names.h"
#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

QString countOf(qsizetype count, QLatin1String one, QLatin1String many)
{
    return QStringLiteral("%1 %2").arg(QString::number(count), count == 1 ? one : many);
}

/// "11 entities with 58 properties, 2 link tables, 1 enumeration."
QString summaryOf(const documented_model & of)
{
    qsizetype properties = 0;
    for (const auto & entity : of.entities()) {
        properties += propertiesOf(*entity).size();
    }
    QString text = QStringLiteral("%1 with %2")
                       .arg(countOf(of.entities().size(), QLatin1String("entity"), QLatin1String("entities")),
                            countOf(properties, QLatin1String("property"), QLatin1String("properties")));
    const auto add = [&text](qsizetype count, QLatin1String one, QLatin1String many) {
        text += count == 0 ? QString() : QStringLiteral(", ") + countOf(count, one, many);
    };
    add(of.sql().linkTables.size(), QLatin1String("link table"), QLatin1String("link tables"));
    add(of.enumerations().size(), QLatin1String("enumeration"), QLatin1String("enumerations"));
    return text + QLatin1Char('.');
}

/// "The newest version is v3, “gigs are called concerts”. The model has changed since then."
QString newestOf(const documented_model & of)
{
    const bool hasChanged = of.history().back().what.number == 0;
    const history_step & newest = of.history()[of.history().size() - (hasChanged ? 2 : 1)];
    QString text = QStringLiteral("The newest version is %1").arg(newest.word);
    text += newest.what.message.isEmpty() ? QString() : QStringLiteral(", “%1”").arg(newest.what.message);
    return text + (hasChanged ? QStringLiteral(". The model has changed since then.") : QStringLiteral("."));
}

/// The entities that `entity` refers to, each once, in the order of its properties.
page_list targetsOf(const model::entity & entity)
{
    QList<long> told;
    page_list targets;
    for (const auto & property : propertiesOf(entity)) {
        const auto target =
            property->hasRelationship() ? property->getRelation()->getEntityTarget() : nullptr;
        if (!target || told.contains(target->getId()) ||
            property->getRelation()->getType() == model::relationship::one_to_many) {
            continue;
        }
        told << target->getId();
        page_data data;
        put(data, "targetName", target->getName());
        put(data, "targetPage", entityPage(target->getId()));
        targets.push_back(data);
    }
    return targets;
}

page_list entityRows(const documented_model & of)
{
    page_list rows;
    for (const auto & entity : of.entities()) {
        page_data row;
        put(row, "entityName", entity->getName());
        put(row, "entityPage", entityPage(entity->getId()));
        put(row, "tableName", of.sql().tables.value(entity->getId()).name);
        put(row, "propertyCount", propertiesOf(*entity).size());
        put(row, "targets", targetsOf(*entity));
        rows.push_back(row);
    }
    return rows;
}

page_data endOf(const std::shared_ptr<model::entity> & entity)
{
    page_data data;
    put(data, "linkEndName", entity->getName());
    put(data, "linkEndPage", entityPage(entity->getId()));
    return data;
}

/// The many-to-many relationships of the model by id.
QHash<long, std::shared_ptr<model::relationship>> relationshipsOf(const documented_model & of)
{
    QHash<long, std::shared_ptr<model::relationship>> found;
    for (const auto & entity : of.entities()) {
        for (const auto & relationship : entity->getListOfRelation()->values()) {
            found.insert(relationship->getId(), relationship);
        }
    }
    return found;
}

page_list linkRows(const documented_model & of)
{
    const auto relationships = relationshipsOf(of);
    page_list rows;
    for (const auto & [id, table] : of.sql().linkTables) {
        page_list ends;
        if (const auto relationship = relationships.value(id)) {
            for (const auto & end :
                 {relationship->getProperty()->getEntity(), relationship->getEntityTarget()}) {
                if (end) {
                    ends.push_back(endOf(end));
                }
            }
        }
        page_data row;
        put(row, "linkTable", table.name);
        put(row, "linkAnchor", linkAnchor(id));
        put(row, "linkEnds", std::move(ends));
        putSqlTypes(row, of, table);
        rows.push_back(row);
    }
    return rows;
}

page_list valuesOf(const model::enumeration & of)
{
    page_list values;
    for (const model::enumeration::value & each : of.getValues()) {
        page_data value;
        put(value, "valueName", each.name);
        put(value, "valueNumber", each.number);
        values.push_back(value);
    }
    return values;
}

page_list usersOf(const documented_model & of, long enumeration)
{
    page_list users;
    for (const auto & property : of.usersOf(enumeration)) {
        page_data user;
        put(user, "userName", check::nameOf(*property));
        put(user, "userPage", propertyPage(property->getEntityId(), property->getId()));
        users.push_back(user);
    }
    return users;
}

} // namespace

page_data indexData(const documented_model & of, const QSize & diagram)
{
    page_data data;
    put(data, "projectName", of.project()->getName());
    put(data, "modelSummary", summaryOf(of));
    putFlag(data, "hasHistory", !of.history().empty());
    put(data, "historySummary", of.history().empty() ? QString() : newestOf(of));
    putFlag(data, "hasDiagram", !diagram.isEmpty());
    put(data, "diagramWidth", diagram.width());
    put(data, "diagramHeight", diagram.height());
    put(data, "entities", entityRows(of));
    put(data, "links", linkRows(of));
    return data;
}

page_data enumerationData(const documented_model & of)
{
    page_list rows;
    for (const auto & each : of.enumerations()) {
        page_data row;
        put(row, "enumerationName", each->getName());
        put(row, "enumerationAnchor", enumerationAnchor(each->getId()));
        put(row, "values", valuesOf(*each));
        put(row, "users", usersOf(of, each->getId()));
        rows.push_back(row);
    }
    page_data data;
    put(data, "enumerations", std::move(rows));
    return data;
}

page_data historyData(const documented_model & of)
{
    page_list steps;
    std::for_each(of.history().rbegin(), of.history().rend(), [&](const history_step & each) {
        page_data step;
        putStep(step, each);
        put(step, "changes", changeRows(of, each));
        steps.push_back(step);
    });
    page_data data;
    put(data, "steps", std::move(steps));
    return data;
}

} // namespace app
