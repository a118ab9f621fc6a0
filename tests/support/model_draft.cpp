#include "support/model_draft.h"

namespace support {

namespace {

void addRelation(entity_builder & entity, const draft_property & property)
{
    property_builder built =
        entity.relation(property.id, property.name, property.relationId, property.relation, property.target);
    built.indexed(property.isIndex).transient(property.isTransient).columns(property.columns);
    built.get()->setIdentifier(property.isKey);
    built.get()->setUnique(property.isUnique);
    built.get()->setAllowNull(property.isNullable);
    if (!property.linkTable.isEmpty()) {
        built.linkTable(property.linkTable, property.linkColumns, property.inverseColumns, property.inverse);
    }
}

void addTo(entity_builder & entity, const draft_property & property)
{
    if (property.relationId != 0) {
        addRelation(entity, property);
        return;
    }
    property_builder built = entity.property(property.id, property.name, QString());
    built.types(property.types).columns(property.columns).forced(property.forced);
    built.indexed(property.isIndex).transient(property.isTransient);
    built.get()->setIdentifier(property.isKey);
    built.get()->setUnique(property.isUnique);
    built.get()->setAllowNull(property.isNullable);
    built.get()->setAutoIncrement(property.isCounted);
}

} // namespace

QStringList numbered(const QString & name, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names.append(name + QString::number(i));
    }
    return names;
}

std::shared_ptr<model::project> projectOf(const std::vector<draft_entity> & draft)
{
    model_builder model;
    for (const draft_entity & each : draft) {
        entity_builder entity = model.entity(each.id, each.name);
        entity.table(each.table).version(each.version).softDelete(each.softDelete);
        if (!each.hasTable) {
            entity.createTable(QStringLiteral("0"));
        }
        for (const draft_property & property : each.properties) {
            addTo(entity, property);
        }
    }
    return model.get();
}

} // namespace support
