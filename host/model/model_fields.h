#pragma once

#include "model/model_difference.h"

#include <QStringList>
#include <QVariant>

#include <span>

namespace model {

class enumeration;
class property;
class relationship;

/// A field of an object as the text form writes it, for who compares two states of the object.
template <class Object>
struct object_field
{
    const char * name;  ///< in the text form
    change_kind change; ///< that another value is
    bool (*isSame)(const Object & a, const Object & b);
    /// As in model_change.
    QVariant (*value)(const Object & object);
};

// All fields but ids, versions, meta-data, and the lists of other objects.
[[nodiscard]] std::span<const object_field<entity>> entityFields();
[[nodiscard]] std::span<const object_field<property>> propertyFields();
[[nodiscard]] std::span<const object_field<relationship>> relationshipFields();
[[nodiscard]] std::span<const object_field<enumeration>> enumerationFields();

/// The keys under which the meta-data of `a` and `b` differ, sorted.
[[nodiscard]] QStringList differentKeys(const entity & a, const entity & b);
/// The value of meta-data as in model_change.
[[nodiscard]] QVariant toldMetaData(const entity & e, const QString & key);

} // namespace model
