#pragma once

#include "model/persistable.h"

#include <QLatin1String>

#include <memory>

namespace model {

class entity;
class property;

/// A relationship between two entities, held by a property of the owning one.
class KORVANE_EXPORT relationship : public persistable
{
public:
    enum type_relation
    {
        one_to_one = 0,
        one_to_many = 1,
        many_to_one = 2,
        many_to_many = 3
    };

    explicit relationship(long id = 0, type_relation type = many_to_one) : persistable(id), m_eType(type) {}

    [[nodiscard]] type_relation getType() const { return m_eType; }
    void setType(type_relation type) { m_eType = type; }

    /// The property that holds this relationship; null while none does.
    [[nodiscard]] std::shared_ptr<property> getProperty() const { return m_pProperty.lock(); }

    /// The property on the other side, a property of the target; null when absent.
    [[nodiscard]] std::shared_ptr<property> getInverse() const;
    [[nodiscard]] long getInverseId() const { return m_iInverseId; }
    void setInverseId(long id) { m_iInverseId = id; }

    /// The entity referred to, looked up in the project; null when absent.
    [[nodiscard]] std::shared_ptr<entity> getEntityTarget() const;
    [[nodiscard]] long getEntityTargetId() const { return m_iEntityTargetId; }
    void setEntityTargetId(long id) { m_iEntityTargetId = id; }

    /// Name of the link table of a many-to-many relationship, as it stands in the model.
    [[nodiscard]] QString getExtraTable() const { return m_sExtraTable; }
    void setExtraTable(const QString & name) { m_sExtraTable = name; }
    /// Link-table columns that refer to the holding entity's key, separated by "|".
    [[nodiscard]] QString getForeignKey() const { return m_sForeignKey; }
    void setForeignKey(const QString & columns) { m_sForeignKey = columns; }
    /// Link-table columns that refer to the target's key, separated by "|".
    [[nodiscard]] QString getForeignKeyOwner() const { return m_sForeignKeyOwner; }
    void setForeignKeyOwner(const QString & columns) { m_sForeignKeyOwner = columns; }

    /// Number of foreign-key columns in the holding table: none for one-to-many and many-to-many.
    [[nodiscard]] int getColumnNameCount() const;
    /// Name of foreign-key column `index` (0-based); the property's name when it has no column name of its
    /// own.
    [[nodiscard]] QString getColumnName(int index) const;

    /// True when the foreign-key columns lie in the holding entity's table (one-to-one and many-to-one).
    [[nodiscard]] bool hasColumns() const { return m_eType == one_to_one || m_eType == many_to_one; }

    /// The property whose type the columns of this relationship take: the target's identifier or, where that
    /// is a relationship as well, the identifier at the end of the chain. Null when the chain ends or is a
    /// circle.
    [[nodiscard]] std::shared_ptr<property> getKeyProperty() const;

private:
    friend class property;

    type_relation m_eType;
    std::weak_ptr<property> m_pProperty;
    long m_iInverseId = 0;
    long m_iEntityTargetId = 0;
    QString m_sExtraTable;
    QString m_sForeignKey;
    QString m_sForeignKeyOwner;
};

/// The word for a type of relationship in the text form, such as "many-to-one".
[[nodiscard]] KORVANE_EXPORT QLatin1String typeName(relationship::type_relation type);

} // namespace model
