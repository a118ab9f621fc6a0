#pragma once

#include "korvane_global.h"
#include "model/object_kind.h"

#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <vector>

namespace model {

class entity;
class project;

/// How an object changed from one state of a project to another.
enum class change_kind
{
    added,
    removed,
    renamed, ///< a field that names it, or something of it, in the model or in the database
    changed, ///< any other field
    moved    ///< to another owner
};

/// "added", "removed" …
[[nodiscard]] KORVANE_EXPORT QLatin1String changeName(change_kind change);
/// "entity", "property" …
[[nodiscard]] KORVANE_EXPORT QLatin1String kindName(object_kind kind);

/// An object as it is told of. A relationship goes by the name of its property.
struct named_object
{
    object_kind kind = object_kind::entity;
    long id = 0;
    QString name;

    friend bool operator==(const named_object &, const named_object &) = default;
};

/// What `object` is and how it is called: "property 14 'length'".
[[nodiscard]] KORVANE_EXPORT QString idName(const named_object & object);

/// One thing that is not as it was.
struct model_change
{
    change_kind change = change_kind::changed;
    named_object object; ///< with the newer name; with the last one when it was removed
    /// What it belongs to, with the names of the same state, the nearest first: the entity of a property, the
    /// property and the entity of a relationship.
    std::vector<named_object> owners;
    /// The field of the text form that differs: "tableName". Meta-data is told by key ("metaData.KEY"), the
    /// order of an entity's properties as "order", and what was moved by "entity" or "property". Empty for
    /// what was added or removed.
    QString field;
    /// What the text form says there: text, boolean, number or list, an id for a reference. Invalid for a
    /// field that is left out, but a flag is always there. "order" lists the names of the properties that
    /// both states have, "values" is a list of maps with "name" and "value".
    QVariant before;
    QVariant after;
};

/// What changed from `before` to `after`, matched by id. The versions of entities count changes and are none;
/// neither are the order of entities and that of enumerations, which no object has, nor the project's name.
///
/// An object that was added or removed is one change; what it holds goes with it, unless it was moved. The
/// order is that of `after`: entity by entity with its properties and what they lost, then enumerations, then
/// entities and enumerations that are gone, in the order of `before`.
[[nodiscard]] KORVANE_EXPORT std::vector<model_change> difference(const project & before,
                                                                  const project & after);

/// Whether two entities say the same, properties and relationships with their ids and order included; the
/// version does not count.
[[nodiscard]] KORVANE_EXPORT bool isSame(const entity & a, const entity & b);

} // namespace model
