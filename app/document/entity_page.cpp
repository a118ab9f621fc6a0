#include "app/document/entity_page.h"

#include "app/document/change_rows.h"
#include "app/document/diagram_svg.h"
#include "app/document/neighbour_diagram.h"
#include "app/document/page_names.h"
#include "app/document/relation_rows.h"

#include "model/project.h"
#include "model/property_type.h"

#include <algorithm>

namespace app {

namespace {

using model::property;

/// What the cell of a question says that most properties answer with no.
QString onlyYes(bool isSo)
{
    return isSo ? QStringLiteral("yes") : QString();
}

page_data typeOf(const QString & name, const QString & page)
{
    page_data type;
    put(type, "typeName", name);
    put(type, "typePage", page);
    return type;
}

page_list typesOf(const property & of)
{
    if (of.hasRelationship()) {
        const std::shared_ptr<model::entity> target = of.getRelation()->getEntityTarget();
        return target ? page_list{typeOf(target->getName(), entityPage(target->getId()))} : page_list();
    }
    page_list types;
    const std::shared_ptr<model::property_type> type = of.getType();
    if (type && type->getEnumeration()) {
        types.push_back(typeOf(type->getEnumeration()->getName(),
                               placeIn(EnumerationPage, enumerationAnchor(type->getEnumeration()->getId()))));
    } else if (type) {
        for (const QString & name : type->getCppTypes()) {
            types.push_back(typeOf(name, {}));
        }
    }
    return types;
}

QString keyMarkOf(const property & of)
{
    QStringList marks;
    if (of.isIdentifier()) {
        marks << QStringLiteral("primary");
    }
    if (of.isIdentifier() && of.isNumber(true, -1)) {
        marks << QStringLiteral("auto-increment");
    }
    if (of.hasRelationship() && of.getRelation()->hasColumns()) {
        marks << QStringLiteral("foreign");
    }
    return marks.join(QStringLiteral(", "));
}

page_data propertyRow(const documented_model & model, const property & of)
{
    page_list columns;
    for (const QString & name : model.columnsOf(of)) {
        page_data column;
        put(column, "columnName", name);
        columns.push_back(column);
    }
    const bool isStored = !columns.empty();
    page_data row;
    put(row, "propertyAnchor", propertyAnchor(of.getId()));
    put(row, "propertyName", of.getName());
    put(row, "formerNames",
        model.formerNames().ofProperty(of.getId(), of.getName()).join(QStringLiteral(", ")));
    put(row, "columns", std::move(columns));
    putFlag(row, "isTransient", of.isTransient());
    put(row, "types", typesOf(of));
    const bool isNullable = of.getAllowNull() && !of.isIdentifier();
    put(row, "nullText", !isStored ? QString() : isNullable ? QStringLiteral("yes") : QStringLiteral("no"));
    put(row, "keyMark", isStored ? keyMarkOf(of) : QString());
    put(row, "uniqueText", onlyYes(isStored && of.getUnique()));
    put(row, "indexText", onlyYes(isStored && of.isIndex()));
    return row;
}

page_list propertyRows(const documented_model & of, const model::entity & entity)
{
    page_list rows;
    for (const auto & property : propertiesOf(entity)) {
        rows.push_back(propertyRow(of, *property));
    }
    return rows;
}

void putNeighbours(page_data & data, const documented_model & of, const model::entity & entity)
{
    const neighbour_diagram neighbours = neighboursOf(of.graph(), of.graph().indexOf(entity.getId()));
    const bool isEmpty = neighbours.picture.contents.boxes.isEmpty();
    const QString title = QStringLiteral("%1 and what it is related to").arg(drawable(entity.getName()));
    putRaw(data, "neighbourDiagram",
           isEmpty ? QByteArray() : diagramSvg(neighbours.picture, title, false, entity.getId()).svg);
    put(data, "hiddenNeighbours", neighbours.hidden == 0 ? QString() : QString::number(neighbours.hidden));
}

void putHistory(page_data & data, const documented_model & of, const model::entity & entity)
{
    putFlag(data, "hasHistory", !of.history().empty());
    const std::vector<entity_step> * const history = of.historyOf(entity.getId());
    page_list steps;
    for (std::size_t i = history ? history->size() : 0; i > 0; --i) {
        page_data step;
        putStep(step, *(*history)[i - 1].step);
        put(step, "changes", changeRows(entity, (*history)[i - 1]));
        steps.push_back(step);
    }
    const bool isTagged = history && history->front().step->what.number != 0;
    put(data, "since", isTagged ? history->front().step->word : QString());
    put(data, "steps", std::move(steps));
}

} // namespace

void putSqlTypes(page_data & data, const documented_model & of, const sql_table & table)
{
    page_list databases;
    for (const QString & name : of.sql().databases) {
        page_data database;
        put(database, "databaseName", name);
        databases.push_back(database);
    }
    page_list columns;
    for (const sql_column & each : table.columns) {
        page_list types;
        for (qsizetype i = 0; i < each.types.size(); ++i) {
            page_data type;
            put(type, "typeDatabase", of.sql().databases[i]);
            put(type, "sqlType", each.types[i]);
            types.push_back(type);
        }
        page_data column;
        put(column, "sqlColumnName", each.name);
        put(column, "sqlTypes", std::move(types));
        columns.push_back(column);
    }
    put(data, "databases", std::move(databases));
    put(data, "sqlColumns", std::move(columns));
}

page_data entityData(const documented_model & of, const model::entity & entity)
{
    const sql_table table = of.sql().tables.value(entity.getId());
    page_data data;
    put(data, "entityName", entity.getName());
    put(data, "tableName", table.name);
    put(data, "softDeleteColumn", entity.getSoftDeleteColumn());
    put(data, "keyText", entity.getExplicitKey());
    put(data, "entityId", entity.getId());
    put(data, "formerNames",
        of.formerNames().ofEntity(entity.getId(), entity.getName()).join(QStringLiteral(", ")));
    putNeighbours(data, of, entity);
    put(data, "properties", propertyRows(of, entity));
    putSqlTypes(data, of, table);
    put(data, "outgoing", outgoingRows(of, entity));
    put(data, "incoming", incomingRows(of, entity));
    putHistory(data, of, entity);
    return data;
}

} // namespace app
