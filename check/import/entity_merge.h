#pragma once

#include "check/import/model_merge.h"
#include "check/import/property_merge.h"
#include "check/import/table_draft.h"

#include <QHash>
#include <QSet>

#include <memory>
#include <vector>

namespace model {
class entity;
class property;
} // namespace model

namespace check {

/// An entity that becomes that of a table, or stays as it is.
struct merged_entity
{
    std::shared_ptr<model::entity> former; ///< null for a new one
    std::shared_ptr<model::entity> made;   ///< without properties until all are known
    const table_draft * draft = nullptr;   ///< null when no table has a say in it
    std::vector<std::shared_ptr<model::property>> properties;
    std::vector<std::shared_ptr<model::property>> gone; ///< whose columns the table has not
    std::vector<std::shared_ptr<model::property>> added;
};

/// The ids of the entities that relationships can lead to.
struct entity_ids
{
    QHash<QString, long> byTable; ///< by the key of the table that they are made from
    QSet<long> all;
};

/// Properties that got a new relationship.
using related_properties = QSet<std::shared_ptr<model::property>>;

/// Makes the properties of one entity.
class entity_merge
{
public:
    /// @param tables ids of the entities of all tables that can be referred to
    /// @param related receives the properties whose relationships are new
    entity_merge(schema_import & import, merged_entity & work, const entity_ids & ids,
                 related_properties & related);

    /// Keeps, changes and adds properties until they are those of the table.
    void run();

private:
    [[nodiscard]] const property_draft * relationOf(const QStringList & columns) const;
    void keep(const std::shared_ptr<model::property> & property);
    void keepRelation(const std::shared_ptr<model::property> & property, const QStringList & columns);
    void keepPlain(const std::shared_ptr<model::property> & property, const QStringList & columns);
    void relate(model::property & property, const relation_draft & to);
    void add(const property_draft & draft);
    void take(const property_draft & draft) { m_taken += &draft; }
    [[nodiscard]] bool hasColumnOf(const QStringList & columns) const;
    /// Whether another property of the former entity has a relationship over the columns.
    /// @param target that it leads to; 0 for any
    [[nodiscard]] bool isRelatedElsewhere(const model::property & property, const QStringList & columns,
                                          long target = 0) const;
    [[nodiscard]] bool isKey(const model::property & property, const QStringList & columns) const;

    schema_import & m_import;
    merged_entity & m_work;
    const entity_ids & m_ids;
    related_properties & m_related;
    property_merge m_columns;
    QSet<const property_draft *> m_taken;
    QSet<QString> m_covered; ///< columns that properties have
};

/// `wanted`, with a number at its end when a property of the entity is called so already.
[[nodiscard]] QString freeName(const merged_entity & in, const QString & wanted);

} // namespace check
