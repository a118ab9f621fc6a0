#pragma once

#include "model/persistable.h"

#include <memory>
#include <optional>

namespace model {

class entity;
class property_type;
class relationship;

/// A member of an entity; it is stored in no, one or several columns.
class KORVANE_EXPORT property : public persistable, public std::enable_shared_from_this<property>
{
public:
    explicit property(long id = 0, const QString & name = QString()) : persistable(id), m_sName(name) {}

    /// The key given, else the entity's key + "." + name.
    [[nodiscard]] QString getKey() const;
    /// The key given in the model, empty when it is derived.
    [[nodiscard]] QString getExplicitKey() const { return m_sKey; }
    void setKey(const QString & key) { m_sKey = key; }
    [[nodiscard]] QString getName() const { return m_sName; }
    void setName(const QString & name) { m_sName = name; }

    /// Column names as given in the model: several are separated by "|", empty when the name is the column.
    [[nodiscard]] QString getColumnName() const { return m_sColumnName; }
    /// Name of column `index` (0-based), the whole text for -1, the empty text for a column that is not
    /// there.
    [[nodiscard]] QString getColumnName(int index) const;
    /// Number of SQL columns: 0 without a type and for the to-many relationships, else at least 1.
    [[nodiscard]] int getColumnNameCount() const;
    void setColumnName(const QString & columns) { m_sColumnName = columns; }

    /// Id of the owning entity, 0 while there is none.
    [[nodiscard]] long getEntityId() const;
    /// The owning entity, null while there is none.
    [[nodiscard]] std::shared_ptr<entity> getEntity() const { return m_pEntity.lock(); }

    /// The type; null when the model gives neither a type, an enumeration nor a relationship.
    [[nodiscard]] std::shared_ptr<property_type> getType() const { return m_pType; }
    void setType(const std::shared_ptr<property_type> & type) { m_pType = type; }
    /// Sets one C++ type for all columns.
    void setType(const QString & cppType);

    /// The SQL type forced by the user; a relationship without one answers for its target's identifier.
    [[nodiscard]] QString getForceSqlType() const;
    /// The SQL type forced on this very property, empty when there is none.
    [[nodiscard]] QString getExplicitForceSqlType() const { return m_sForceSqlType; }
    void setForceSqlType(const QString & sqlType) { m_sForceSqlType = sqlType; }

    [[nodiscard]] bool isIdentifier() const { return m_bIdentifier; }
    void setIdentifier(bool b) { m_bIdentifier = b; }
    [[nodiscard]] bool getAllowNull() const { return m_bAllowNull; }
    void setAllowNull(bool b) { m_bAllowNull = b; }
    [[nodiscard]] bool getUnique() const { return m_bUnique; }
    void setUnique(bool b) { m_bUnique = b; }
    [[nodiscard]] bool isIndex() const { return m_bIndex; }
    void setIndex(bool b) { m_bIndex = b; }
    [[nodiscard]] bool isTransient() const { return m_bTransient; }
    void setTransient(bool b) { m_bTransient = b; }
    /// Whether the database counts the key up; nothing when the model leaves it to the type.
    [[nodiscard]] std::optional<bool> getAutoIncrement() const { return m_bAutoIncrement; }
    void setAutoIncrement(std::optional<bool> b) { m_bAutoIncrement = b; }

    [[nodiscard]] bool hasRelationship() const { return m_pRelation != nullptr; }
    [[nodiscard]] std::shared_ptr<relationship> getRelation() const { return m_pRelation; }
    /// Makes this property hold `relation` and take its type from it; null takes the relationship away.
    /// The property must be owned by a shared pointer.
    void setRelation(const std::shared_ptr<relationship> & relation);

    /// Whether column `index` has an integer C++ type; for -1, whether the key is counted up by the database.
    /// False for enumerations and relationships. The first argument changes nothing.
    [[nodiscard]] bool isNumber(bool, int index) const;
    /// Whether column `index` holds text; for -1, whether every column does. A relationship answers for its
    /// target's identifier. The first argument changes nothing.
    [[nodiscard]] bool isString(bool, int index) const;

private:
    friend class entity;

    QString m_sKey;
    QString m_sName;
    QString m_sColumnName;
    QString m_sForceSqlType;
    std::weak_ptr<entity> m_pEntity;
    std::shared_ptr<property_type> m_pType;
    std::shared_ptr<relationship> m_pRelation;
    bool m_bIdentifier = false;
    bool m_bAllowNull = true;
    bool m_bUnique = false;
    bool m_bIndex = false;
    bool m_bTransient = false;
    std::optional<bool> m_bAutoIncrement;
};

} // namespace model
