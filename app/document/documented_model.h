#pragma once

#include "app/diagram/diagram_graph.h"
#include "app/document/model_history.h"
#include "app/document/sql_schema.h"

#include <QHash>
#include <QList>

#include <memory>

namespace model {
class entity;
class enumeration;
class project;
class property;
class relationship;
} // namespace model

namespace app {

class source;

/// All that the pages tell of a model, looked up once.
class documented_model
{
public:
    using property_list = QList<std::shared_ptr<model::property>>;

    /// Reads the state of `of`, its history, and the tables that scripts for the databases of `keys` make. A
    /// failure is one line.
    [[nodiscard]] zk::ZkBool read(source & of, plugin::statement_source & statements,
                                  const QStringList & keys);

    [[nodiscard]] const std::shared_ptr<model::project> & project() const { return m_project; }
    [[nodiscard]] const QList<std::shared_ptr<model::entity>> & entities() const { return m_entities; }
    [[nodiscard]] const QList<std::shared_ptr<model::enumeration>> & enumerations() const
    {
        return m_enumerations;
    }
    [[nodiscard]] const sql_schema & sql() const { return m_sql; }
    [[nodiscard]] const diagram_graph & graph() const { return m_graph; }
    /// Oldest first; empty without a tagged version.
    [[nodiscard]] const std::vector<history_step> & history() const { return m_history.steps; }
    [[nodiscard]] const former_names & formerNames() const { return m_history.names; }
    /// The steps that are about the entity of that id; null for none.
    [[nodiscard]] const std::vector<entity_step> * historyOf(long entity) const;

    /// The properties that refer to the entity of that id.
    [[nodiscard]] property_list referrersOf(long entity) const { return m_referrers.value(entity); }
    /// The properties whose type is the enumeration of that id.
    [[nodiscard]] property_list usersOf(long enumeration) const { return m_users.value(enumeration); }
    /// The columns of a property that the scripts make; none for one that is not stored in its table.
    [[nodiscard]] QStringList columnsOf(const model::property & property) const;
    /// The link table of a many-to-many relationship, with the id of the relationship under which it is
    /// told; null when scripts make none.
    [[nodiscard]] const std::pair<long, sql_table> *
    linkTableOf(const model::relationship & relationship) const;

private:
    void takeProperties(const model::entity & entity);

    std::shared_ptr<model::project> m_project;
    QList<std::shared_ptr<model::entity>> m_entities;
    QList<std::shared_ptr<model::enumeration>> m_enumerations;
    sql_schema m_sql;
    QHash<long, qsizetype> m_linkTables; ///< by the ids of the relationships of both sides
    diagram_graph m_graph;
    model_history m_history;
    QHash<long, std::vector<entity_step>> m_historyByEntity;
    QHash<long, property_list> m_referrers;
    QHash<long, property_list> m_users;
};

/// All properties of an entity, in model order.
[[nodiscard]] documented_model::property_list propertiesOf(const model::entity & entity);

} // namespace app
