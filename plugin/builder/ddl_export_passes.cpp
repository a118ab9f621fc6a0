// The walks over a whole model, and those that a step has in common with them.

#include "plugin/builder/ddl_export_passes.h"

#include "plugin/builder/ddl_export_builder.h"
#include "plugin/builder/ddl_export_script.h"
#include "plugin/ddl_export.h"

#include "model/entity.h"
#include "model/project.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace plugin {

namespace {

// Of the units of a script.
constexpr int TableShare = 600;
constexpr int LinkTableShare = 100;
constexpr int IndexShare = 100;
constexpr int ForeignKeyShare = 200;

/// What a person is told about a statement: the script's title, what the statement is about, the script's
/// file.
struct action_message
{
    statement_action action;
    const char * text;
};

// clang-format off
constexpr action_message Messages[] = {
    {statement_action::create_table, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : create table DDL SQL script for entity '%2' (%3)")},
    {statement_action::create_extra_table, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : create extra-table DDL SQL script for relationship n-n '%2' (%3)")},
    {statement_action::create_index, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : create index DDL SQL script for property '%2' (%3)")},
    {statement_action::add_foreign_key, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : add foreign key DDL SQL script for entity '%2' : property '%3', target entity '%4' (%5)")},
    {statement_action::drop_table, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : drop table DDL SQL script for entity '%2' (%3)")},
    {statement_action::rename_table, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : rename table DDL SQL script for entity '%2' (%3)")},
    {statement_action::drop_column, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : drop column DDL SQL script for property '%2' (%3)")},
    {statement_action::add_column, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : add column DDL SQL script for property '%2' (%3)")},
    {statement_action::rename_column, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : rename column DDL SQL script for property '%2' (%3)")},
    {statement_action::drop_index, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : drop index DDL SQL script for property '%2' (%3)")},
    {statement_action::drop_foreign_key, QT_TRANSLATE_NOOP("plugin::ddl_export_builder", "%1 : drop foreign key DDL SQL script for relationship '%2' (%3)")},
};
// clang-format on

} // namespace

ddl_export_passes::ddl_export_passes(ddl_export_builder & builder, ddl_export_script & script)
    : m_builder(builder), m_script(script), m_progress(builder.m_progress)
{
}

zk::ZkBool ddl_export_passes::writeSchema(const list_of_entity & entities)
{
    const list_of_tables tables = tablesOf(entities);
    zk::ZkBool result = writeTables(tables);
    if (result) {
        result = writeLinkTables();
    }
    if (result) {
        result = writeIndexes();
    }
    if (result && m_builder.m_pPlugin->getExportRelationships() && m_builder.m_bAlterTableForeignKey) {
        result = writeForeignKeys(tables);
    }
    return result;
}

const message_frame & ddl_export_passes::frame(statement_action action)
{
    message_frame & known = m_frames[static_cast<std::size_t>(action)];
    if (known.isEmpty()) {
        const auto * const row = std::find_if(std::begin(Messages), std::end(Messages),
                                              [action](const auto & m) { return m.action == action; });
        known = message_frame(tr(row->text));
    }
    return known;
}

zk::ZkBool ddl_export_passes::write(statement_action action, const QString & sql, const QString & key,
                                    const ddl_export_script::subject & about)
{
    return m_script.write(action, sql, frame(action).filled({m_script.title(), key, m_script.fileName()}),
                          about);
}

zk::ZkBool ddl_export_passes::writeTables(const list_of_tables & tables)
{
    m_progress.pass(static_cast<int>(tables.size()), TableShare);
    for (const std::shared_ptr<model::entity> & entity : tables) {
        m_progress.step();
        if (const zk::ZkBool result = writeTable(entity); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeForeignKeys(const list_of_tables & tables)
{
    m_progress.pass(static_cast<int>(tables.size()), ForeignKeyShare);
    for (const std::shared_ptr<model::entity> & entity : tables) {
        m_progress.step();
        const std::shared_ptr<model::entity::list_of_relation> relationships = entity->getListOfRelation();
        if (!relationships) {
            continue;
        }
        for (const std::shared_ptr<model::relationship> & relationship : relationships->values()) {
            if (const zk::ZkBool result = writeForeignKey(entity, relationship); !result) {
                return result;
            }
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeTable(const std::shared_ptr<model::entity> & entity)
{
    return write(statement_action::create_table, m_builder.createTable(entity), entity->getKey(),
                 {entity.get()});
}

zk::ZkBool ddl_export_passes::writeIndex(const std::shared_ptr<model::property> & property,
                                         model::entity * entity)
{
    return write(statement_action::create_index, m_builder.createIndex(property), property->getKey(),
                 {entity, property.get()});
}

zk::ZkBool ddl_export_passes::writeLinkTables()
{
    m_progress.pass(static_cast<int>(m_builder.m_lstExtraTable.count()), LinkTableShare);
    for (const std::shared_ptr<model::relationship> & relationship : m_builder.m_lstExtraTable.values()) {
        m_progress.step();
        if (!relationship) {
            continue;
        }
        const std::shared_ptr<model::property> property = relationship->getProperty();
        const std::shared_ptr<model::entity> owner =
            property ? m_builder.m_pCurrentProject->getEntityById(property->getEntityId()) : nullptr;
        const zk::ZkBool result =
            write(statement_action::create_extra_table, m_builder.createExtraTable(relationship),
                  relationship->getExtraTable(), {owner.get(), property.get(), relationship.get()});
        if (!result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeIndexes()
{
    m_progress.pass(static_cast<int>(m_builder.m_lstIndex.count()), IndexShare);
    for (const std::shared_ptr<model::property> & property : m_builder.m_lstIndex.values()) {
        m_progress.step();
        if (!property) {
            continue;
        }
        const std::shared_ptr<model::entity> owner =
            m_builder.m_pCurrentProject->getEntityById(property->getEntityId());
        if (const zk::ZkBool result = writeIndex(property, owner.get()); !result) {
            return result;
        }
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export_passes::writeForeignKey(const std::shared_ptr<model::entity> & entity,
                                              const std::shared_ptr<model::relationship> & relationship)
{
    if (!relationship || relationship->getType() == model::relationship::one_to_many) {
        return zk::ZkBool::success();
    }
    const std::shared_ptr<model::property> property = relationship->getProperty();
    const std::shared_ptr<model::entity> target = relationship->getEntityTarget();
    if (!property || !target || target->getId() == entity->getId()) {
        return zk::ZkBool::success();
    }
    return m_script.write(statement_action::add_foreign_key, m_builder.addForeignKey(relationship),
                          frame(statement_action::add_foreign_key)
                              .filled({m_script.title(), entity->getKey(), property->getName(),
                                       target->getKey(), m_script.fileName()}),
                          {entity.get(), property.get(), relationship.get()});
}

ddl_export_passes::list_of_tables ddl_export_passes::tablesOf(const list_of_entity & entities) const
{
    list_of_tables tables = entities.values();
    std::erase_if(tables, [this](const std::shared_ptr<model::entity> & e) {
        return !e || e->getId() == 0 || !m_builder.canCreateTable(e);
    });
    return tables;
}

} // namespace plugin
