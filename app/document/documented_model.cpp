#include "app/document/documented_model.h"

#include "app/source.h"

#include "model/column_list.h"
#include "model/project.h"
#include "model/property_type.h"

namespace app {

using zk::ZkBool;

ZkBool documented_model::read(source & of, plugin::statement_source & statements, const QStringList & keys)
{
    ZkBool result = of.load(Now, m_project);
    if (result) {
        result = readSqlSchema(statements, m_project, keys, m_sql);
    }
    if (result) {
        result = readHistory(of, m_history);
    }
    if (!result) {
        return result;
    }
    m_graph = diagram_graph(*m_project);
    m_historyByEntity = stepsByEntity(m_history.steps);
    for (const auto & entity : m_project->getListOfAllEntities()->values()) {
        m_entities << entity;
        takeProperties(*entity);
    }
    for (const auto & enumeration : m_project->getListOfEnumeration()->values()) {
        m_enumerations << enumeration;
    }
    for (qsizetype i = 0; i < m_sql.linkTables.size(); ++i) {
        m_linkTables.insert(m_sql.linkTables[i].first, i);
    }
    return result;
}

void documented_model::takeProperties(const model::entity & entity)
{
    for (const auto & property : propertiesOf(entity)) {
        if (property->hasRelationship()) {
            m_referrers[property->getRelation()->getEntityTargetId()] << property;
        } else if (property->getType() && property->getType()->getEnumeration()) {
            m_users[property->getType()->getEnumeration()->getId()] << property;
        }
    }
}

const std::vector<entity_step> * documented_model::historyOf(long entity) const
{
    const auto found = m_historyByEntity.constFind(entity);
    return found == m_historyByEntity.constEnd() ? nullptr : &*found;
}

QStringList documented_model::columnsOf(const model::property & property) const
{
    const auto table = m_sql.tables.constFind(property.getEntityId());
    if (table == m_sql.tables.constEnd() || property.isTransient() || property.getColumnNameCount() == 0) {
        return {};
    }
    const QString given = property.getColumnName();
    QStringList columns =
        given.isEmpty() ? QStringList(property.getName()) : given.split(model::ColumnSeparator);
    if (property.hasRelationship() && property.getRelation()->getType() == model::relationship::one_to_one) {
        // It has no columns of its own, but may name those of another property.
        columns.removeIf([&](const QString & column) { return !table->hasColumn(column); });
    }
    return columns;
}

const std::pair<long, sql_table> *
documented_model::linkTableOf(const model::relationship & relationship) const
{
    const std::shared_ptr<model::property> inverse = relationship.getInverse();
    const bool hasOther = inverse && inverse->hasRelationship();
    for (const long id : {relationship.getId(), hasOther ? inverse->getRelation()->getId() : 0L}) {
        if (const auto place = m_linkTables.constFind(id); place != m_linkTables.constEnd()) {
            return &m_sql.linkTables[*place];
        }
    }
    return nullptr;
}

documented_model::property_list propertiesOf(const model::entity & entity)
{
    const auto properties = entity.getListOfProperty(true, true, false)->values();
    return {properties.begin(), properties.end()};
}

} // namespace app
