#pragma once

#include "support/model_draft.h"

#include <QSqlError>
#include <QString>

#include <memory>
#include <random>
#include <vector>

namespace support {

/// A model made by chance, and how it goes on from version to version. The same seed gives the same models
/// everywhere. It has what the export treats differently: keys of one and of several columns, counted or not,
/// all kinds of relationships, indexes, transient and forced columns, soft delete, entities without a table;
/// and it changes by adding, dropping, renaming and moving.
class random_model
{
public:
    explicit random_model(unsigned seed);

    /// The model as it is now, as objects of its own.
    [[nodiscard]] std::shared_ptr<model::project> project() const;
    /// Goes on to a next version: some entities change and count up, some come and go.
    void change();

private:
    [[nodiscard]] int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    [[nodiscard]] bool oneIn(int n) { return below(n) == 0; }
    [[nodiscard]] QString newName();
    [[nodiscard]] long newId() { return ++m_iLastId; }
    [[nodiscard]] draft_property newKey();
    [[nodiscard]] draft_property newColumn();
    void addEntity();
    void addRelationship();
    void dropEntity(std::size_t index);
    void changeEntity(draft_entity & entity);
    void changeProperty(draft_property & property);
    [[nodiscard]] static int keyColumns(const draft_entity & entity);

    std::mt19937 m_random;
    long m_iLastId = 0;
    std::vector<draft_entity> m_entities;
};

/// Writes a project with three versions and a state that differs from the last of them. An error of a file.
[[nodiscard]] QSqlError writeHistory(const QString & file, unsigned seed);

} // namespace support
