#pragma once

#include "model/persistable.h"
#include "model/property.h"
#include "model/relationship.h"
#include "zk/zk_collection.h"

#include <memory>

namespace model {

class project;

/// A persistent class of the model: one table.
class KORVANE_EXPORT entity : public persistable, public std::enable_shared_from_this<entity>
{
public:
    using list_of_property = zk::ZkCollection<long, std::shared_ptr<property>>;
    using list_of_relation = zk::ZkCollection<long, std::shared_ptr<relationship>>;

    explicit entity(long id = 0, const QString & name = QString());

    /// The key given, else the name.
    [[nodiscard]] QString getKey() const { return m_sKey.isEmpty() ? m_sName : m_sKey; }
    /// The key given in the model, empty when it is derived.
    [[nodiscard]] QString getExplicitKey() const { return m_sKey; }
    void setKey(const QString & key) { m_sKey = key; }
    [[nodiscard]] QString getName() const { return m_sName; }
    void setName(const QString & name) { m_sName = name; }
    [[nodiscard]] QString getTableName() const { return m_sTableName; }
    void setTableName(const QString & name) { m_sTableName = name; }
    /// Revision counter of this entity: equal numbers mean that nothing about it changed.
    [[nodiscard]] long getVersion() const { return m_iVersion; }
    void setVersion(long version) { m_iVersion = version; }
    /// Name of the column that marks soft-deleted rows, empty for none.
    [[nodiscard]] QString getSoftDeleteColumn() const { return m_sSoftDeleteColumn; }
    void setSoftDeleteColumn(const QString & name) { m_sSoftDeleteColumn = name; }

    /// The identifier (primary-key) property; null without one. The argument changes nothing here.
    [[nodiscard]] std::shared_ptr<property> getPropertyId(bool) const;
    /// The property of that id; null when this entity has none.
    [[nodiscard]] std::shared_ptr<property> getPropertyById(long id) const;

    /// The properties in model order.
    /// @param withIdentifier whether the identifier belongs to the result
    /// @param withTransient whether transient properties belong to the result
    [[nodiscard]] std::shared_ptr<list_of_property> getListOfProperty(bool withIdentifier, bool withTransient,
                                                                      bool) const;
    /// The relationships of the properties that are not transient, in property order.
    [[nodiscard]] std::shared_ptr<list_of_relation> getListOfRelation() const;

    /// Appends a property and makes this entity its owner. The entity must be owned by a shared pointer.
    /// False, and nothing changes, when a property of that id is already there.
    bool addProperty(const std::shared_ptr<property> & p);

    /// The project that holds this entity; null while none does.
    [[nodiscard]] project * getProject() const { return m_pProject; }

private:
    friend class project;

    QString m_sKey;
    QString m_sName;
    QString m_sTableName;
    QString m_sSoftDeleteColumn;
    long m_iVersion = 1;
    project * m_pProject = nullptr;
    std::shared_ptr<list_of_property> m_pProperties;
};

} // namespace model
