#pragma once

#include "model/persistable.h"

#include <QList>

namespace model {

/// A named list of values; a property of such a type is stored as a number.
class KORVANE_EXPORT enumeration : public persistable
{
public:
    struct value
    {
        QString name;
        long long number = 0;
    };

    explicit enumeration(long id = 0) : persistable(id) {}

    [[nodiscard]] QString getName() const { return m_sName; }
    void setName(const QString & name) { m_sName = name; }
    [[nodiscard]] const QList<value> & getValues() const { return m_lstValue; }
    void setValues(const QList<value> & values) { m_lstValue = values; }

private:
    QString m_sName;
    QList<value> m_lstValue;
};

} // namespace model
