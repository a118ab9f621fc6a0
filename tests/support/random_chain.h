#pragma once

#include "support/model_draft.h"
#include "support/random_names.h"

#include <QList>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace support {

/// Versions of a model made by chance, and how they are to be exported. The same seed gives the same chain
/// everywhere. Most are as a careful person would make them, with few changes from one version to the next;
/// the others have names, types and changes that databases trip over.
class random_chain
{
public:
    explicit random_chain(unsigned seed);

    /// The models, oldest first.
    [[nodiscard]] const std::vector<std::shared_ptr<model::project>> & versions() const { return m_versions; }
    [[nodiscard]] bool hasRelationships() const { return m_hasRelationships; }
    /// C++ type and SQL type, of a list of types that the project has in place of the database's; mostly
    /// empty.
    [[nodiscard]] const QList<std::pair<QString, QString>> & mapping() const { return m_mapping; }

private:
    using change = void (random_chain::*)();

    // Names, types, ids.
    [[nodiscard]] long newId() { return ++m_lastId; }
    [[nodiscard]] QString tableName();
    [[nodiscard]] QString columnName(const draft_entity & of);
    [[nodiscard]] QString sqlType();
    [[nodiscard]] QString tableOf(const draft_entity & entity) const;
    [[nodiscard]] QString columnsOf(const draft_property & property) const;
    void setTable(draft_entity & entity, const QString & name);
    void setColumns(draft_entity & entity, draft_property & property, const QString & names);

    // What the changes are about; `touch` counts the entity's version up, as the export asks for.
    [[nodiscard]] draft_entity & anyEntity();
    [[nodiscard]] draft_entity * anyOtherThan(const draft_entity & entity);
    [[nodiscard]] draft_property * anyPlain(draft_entity & entity);
    [[nodiscard]] draft_property * anyRelation(draft_entity & entity);
    [[nodiscard]] static draft_property * keyOf(draft_entity & entity);
    void touch(draft_entity & entity);

    // Parts of a model.
    [[nodiscard]] draft_property newKey(const draft_entity & of);
    [[nodiscard]] draft_property newColumn(const draft_entity & of);
    void addEntity();
    void addToOne(draft_entity & owner, draft_entity & target, model::relationship::type_relation type);
    void addManyToMany(draft_entity & owner, draft_entity & target);
    void makeMapping();

    // Changes from one version to the next.
    void step();
    void addTable() { addEntity(); }
    void dropTable();
    void replaceTable();
    void renameTable();
    void renameTableInCase();
    void swapTables();
    void passTablesOn();
    void takeFreedTable();
    void switchExport();
    void reorder();
    void changeSoftDelete();
    void addColumn();
    void dropColumn();
    void replaceColumn();
    void renameColumn();
    void renameColumnInCase();
    void swapColumns();
    void passColumnsOn();
    void moveColumn();
    void retype();
    void force();
    void toggleIndex();
    void toggleUnique();
    void toggleNull();
    void toggleTransient();
    void moveKey();
    void dropKey();
    void replaceKey();
    void widenKey();
    void retypeKey();
    void recount();
    void addRelation();
    void dropRelation();
    void retarget();
    void changeRelationType();
    void makePlain();
    void makeRelation();
    void changeLinkTable();

    dice m_chance;
    bool m_isWild = false;
    bool m_hasRelationships = true;
    QList<std::pair<QString, QString>> m_mapping;
    long m_lastId = 0;
    std::vector<draft_entity> m_entities;
    std::vector<std::shared_ptr<model::project>> m_versions;
};

} // namespace support
