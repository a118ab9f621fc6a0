#pragma once

#include "plugin/builder/ddl_export_script.h"
#include "plugin/builder/message_frame.h"

#include "model/entity.h"
#include "model/project.h"

#include <QCoreApplication>

#include <array>
#include <memory>
#include <vector>

namespace plugin {

class ddl_export_builder;
class ddl_export_progress;

/// The walks over a model that write one script: what is visited in which order, and which statement it gets.
/// The texts come from the builder, which has to stay.
///
/// Every operation fails with the failure of the first statement that does.
class ddl_export_passes
{
    // Who translates knows the messages as the builder's.
    Q_DECLARE_TR_FUNCTIONS(plugin::ddl_export_builder)

public:
    using list_of_entity = model::project::list_of_entity;

    ddl_export_passes(ddl_export_builder & builder, ddl_export_script & script);

    /// Writes all that makes the schema of `entities`.
    zk::ZkBool writeSchema(const list_of_entity & entities);
    /// Writes all that leads from the builder's previous project to its current one.
    zk::ZkBool writeChanges();

private:
    using list_of_property = model::entity::list_of_property;
    using list_of_relation = model::entity::list_of_relation;
    using list_of_tables = std::vector<std::shared_ptr<model::entity>>;
    /// An entity in both versions; `previous` is null when it is new.
    struct entity_change
    {
        std::shared_ptr<model::entity> previous;
        std::shared_ptr<model::entity> current;
    };
    /// A property in both versions; `previous` is null when it is new.
    struct property_change
    {
        std::shared_ptr<model::property> previous;
        std::shared_ptr<model::property> current;
    };

    /// The entities that get a table, in order.
    [[nodiscard]] list_of_tables tablesOf(const list_of_entity & entities) const;
    /// What is told about statements of the kind `action`.
    [[nodiscard]] const message_frame & frame(statement_action action);
    /// Writes one statement, and tells that it is about the object of `key`.
    zk::ZkBool write(statement_action action, const QString & sql, const QString & key,
                     const ddl_export_script::subject & about);

    zk::ZkBool writeTables(const list_of_tables & tables);
    zk::ZkBool writeTable(const std::shared_ptr<model::entity> & entity);
    zk::ZkBool writeLinkTables();
    zk::ZkBool writeIndexes();
    zk::ZkBool writeIndex(const std::shared_ptr<model::property> & property, model::entity * entity);
    zk::ZkBool writeForeignKeys(const list_of_tables & tables);
    /// Writes nothing for a relationship that has no foreign key of its own.
    zk::ZkBool writeForeignKey(const std::shared_ptr<model::entity> & entity,
                               const std::shared_ptr<model::relationship> & relationship);

    /// The entities of the current version that are new or differ from the previous version, in order.
    [[nodiscard]] std::vector<entity_change> changedEntities() const;
    zk::ZkBool writeDroppedTables();
    zk::ZkBool writeChangedTables(const std::vector<entity_change> & changes);
    zk::ZkBool writeTableChanges(const entity_change & change);
    zk::ZkBool writeDroppedColumns(const std::shared_ptr<model::entity> & entity,
                                   const list_of_property & before, const list_of_property & after);
    zk::ZkBool writeColumnChanges(const std::shared_ptr<model::entity> & entity,
                                  const property_change & property);
    zk::ZkBool writeColumnStep(const std::shared_ptr<model::entity> & entity,
                               const property_change & property);
    zk::ZkBool writeChangedForeignKeys(const std::vector<entity_change> & changes);
    zk::ZkBool writeForeignKeyChanges(const entity_change & change);
    zk::ZkBool writeDroppedForeignKeys(const std::shared_ptr<model::entity> & entity,
                                       const list_of_relation & before, const list_of_relation & after);

    ddl_export_builder & m_builder;
    ddl_export_script & m_script;
    ddl_export_progress & m_progress;
    std::array<message_frame, static_cast<std::size_t>(statement_action::end) + 1> m_frames;
};

} // namespace plugin
