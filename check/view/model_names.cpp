#include "check/view/model_names.h"

#include "database/facts/names.h"
#include "model/column_list.h"
#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

namespace check {

QStringList columnNamesOf(const model::property & of)
{
    const bool isNone =
        of.isTransient() || of.getColumnNameCount() == 0 ||
        (of.hasRelationship() && of.getRelation()->getType() == model::relationship::one_to_one);
    if (isNone) {
        return {};
    }
    const QString columns = of.getColumnName();
    if (!columns.contains(model::ColumnSeparator)) {
        return {columns.isEmpty() ? of.getName() : columns};
    }
    return columns.split(model::ColumnSeparator);
}

QString nameOf(const model::property & of)
{
    const std::shared_ptr<model::entity> owner = of.getEntity();
    return owner ? owner->getName() + QLatin1Char('.') + of.getName() : of.getName();
}

std::shared_ptr<model::property> findProperty(const model::project & in, long entity, long id)
{
    const auto entities = in.getListOfAllEntities();
    if (id == 0 || !entities) {
        return nullptr;
    }
    const std::shared_ptr<model::entity> owner = in.getEntityById(entity);
    if (std::shared_ptr<model::property> found = owner ? owner->getPropertyById(id) : nullptr) {
        return found;
    }
    for (const auto & each : entities->values()) {
        if (std::shared_ptr<model::property> found = each ? each->getPropertyById(id) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

model_names::model_names(const database::facts & known, const model::project & of) : m_known(known)
{
    const auto entities = of.getListOfAllEntities();
    if (!entities) {
        return;
    }
    for (const std::shared_ptr<model::entity> & each : entities->values()) {
        if (!each) {
            continue;
        }
        m_entities.insert(keyOf(tableNameOf(*each)), each);
        for (const std::shared_ptr<model::relationship> & relation : each->getListOfRelation()->values()) {
            if (relation->getType() == model::relationship::many_to_many) {
                m_links.insert(keyOf(relation->getExtraTable()), relation);
            }
        }
    }
}

std::vector<std::shared_ptr<model::entity>> model_names::entitiesOf(const QString & table) const
{
    const auto found = m_entities.values(keyOf(table));
    return {found.begin(), found.end()};
}

std::vector<std::shared_ptr<model::relationship>> model_names::linksOf(const QString & table) const
{
    const auto found = m_links.values(keyOf(table));
    return {found.begin(), found.end()};
}

QString model_names::keyOf(const QString & name) const
{
    return database::nameKey(m_known, name, database::name_place::table);
}

} // namespace check
