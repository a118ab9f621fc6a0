#pragma once

#include "korvane_global.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace model {

class enumeration;
class relationship;

/// Type of a property: C++ type names, an enumeration, or what the target of a relationship has as its key.
///
/// Objects are immutable and may be shared by many properties.
class KORVANE_EXPORT property_type
{
public:
    /// One C++ type for every column, or a list with one type a column.
    explicit property_type(const QStringList & cppTypes);
    explicit property_type(const std::shared_ptr<enumeration> & type);
    /// A type that follows the identifier of the relationship's target.
    explicit property_type(const std::weak_ptr<relationship> & relation);

    /// C++ type name of column `index` (0-based), -1 for the property as a whole.
    ///
    /// A single type answers for every index; a list answers its entry, all entries joined by "|" for -1, and
    /// the empty text past its end. An enumeration answers its name. A relationship's type answers what the
    /// identifier of the target answers, or the empty text without one.
    [[nodiscard]] QString getPrimitiveType(int index) const;

    /// The enumeration, or null when the type is none. A relationship's type answers for the target's
    /// identifier.
    [[nodiscard]] std::shared_ptr<enumeration> getEnumeration() const;

    /// The C++ type names as given; empty for an enumeration or a relationship.
    [[nodiscard]] const QStringList & getCppTypes() const { return m_lstCppType; }

private:
    QStringList m_lstCppType;
    std::shared_ptr<enumeration> m_pEnumeration;
    std::weak_ptr<relationship> m_pRelation;
};

} // namespace model
