#pragma once

#include "korvane_global.h"

#include <QHash>
#include <QString>
#include <QVariant>

namespace model {

/// What every model object has: a persistent id and free-form meta-data.
class KORVANE_EXPORT persistable
{
public:
    /// Identity of the object across all versions of its project; 0 marks an invalid object.
    [[nodiscard]] long getId() const { return m_id; }
    void setId(long id) { m_id = id; }

    /// Value stored under `key` (case-sensitive); an invalid QVariant when there is none.
    [[nodiscard]] QVariant getMetaData(const QString & key) const { return m_metaData.value(key); }
    [[nodiscard]] const QHash<QString, QVariant> & getAllMetaData() const { return m_metaData; }
    void setMetaData(const QString & key, const QVariant & value) { m_metaData.insert(key, value); }

protected:
    explicit persistable(long id = 0) : m_id(id) {}
    ~persistable() = default;

private:
    long m_id = 0;
    QHash<QString, QVariant> m_metaData;
};

} // namespace model
