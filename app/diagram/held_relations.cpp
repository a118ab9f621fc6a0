// Properties with a relationship, and which two of them are both directions of one.

#include "app/diagram/held_relations.h"

namespace app {

namespace {

using model::relationship;

using property_index = QHash<std::pair<int, long>, int>;

/// Whether a property of type `b` can be the other direction of one of type `a`.
bool isOppositeType(relationship::type_relation a, relationship::type_relation b)
{
    switch (a) {
    case relationship::one_to_many:
        return b == relationship::many_to_one;
    case relationship::many_to_one:
        return b == relationship::one_to_many;
    default:
        return a == b;
    }
}

/// The position in `held` of the property that `one` names as its inverse; -1 when it cannot be that.
int inverseOf(const held_relation & one, const QList<held_relation> & held, const property_index & places)
{
    const int place = one.inverseId == 0 ? -1 : places.value({one.target, one.inverseId}, -1);
    if (place < 0) {
        return -1;
    }
    const held_relation & other = held[place];
    return &other != &one && other.target == one.holder && isOppositeType(one.type, other.type) ? place : -1;
}

/// For each relationship the position of its other direction, -1 without one. Where several properties name
/// the same inverse, the one that is named back has it.
QList<int> pairsOf(const QList<held_relation> & held)
{
    property_index places;
    places.reserve(held.size());
    for (qsizetype i = 0; i < held.size(); ++i) {
        places.insert({held[i].holder, held[i].propertyId}, static_cast<int>(i));
    }
    QList<int> pairs(held.size(), -1);
    for (const bool isMutual : {true, false}) {
        for (qsizetype i = 0; i < held.size(); ++i) {
            const int other = pairs[i] < 0 ? inverseOf(held[i], held, places) : -1;
            if (other < 0 || pairs[other] >= 0) {
                continue;
            }
            const held_relation & back = held[other];
            if (!isMutual || back.inverseId == held[i].propertyId) {
                pairs[i] = other;
                pairs[other] = static_cast<int>(i);
            }
        }
    }
    return pairs;
}

diagram_relation relationOf(const held_relation & held)
{
    diagram_relation result;
    result.holder = held.holder;
    result.name = held.name;
    result.linkTable = held.linkTable;
    result.change = held.change;
    const bool isOneAtTarget =
        held.type == relationship::many_to_one || held.type == relationship::one_to_one;
    result.from = isOneAtTarget ? held.target : held.holder;
    result.to = isOneAtTarget ? held.holder : held.target;
    if (held.type != relationship::many_to_many) {
        result.fromEnd = held.isMandatory ? diagram_end::exactly_one : diagram_end::zero_or_one;
    }
    if (held.type == relationship::one_to_one) {
        result.toEnd = diagram_end::zero_or_one;
    }
    return result;
}

} // namespace

QList<diagram_relation> joined(const QList<held_relation> & held)
{
    const QList<int> pairs = pairsOf(held);
    QList<diagram_relation> result;
    result.reserve(held.size());
    for (qsizetype i = 0; i < held.size(); ++i) {
        if (pairs[i] < 0) {
            result.append(relationOf(held[i]));
            continue;
        }
        const int other = pairs[i];
        if (other < i) {
            continue; // both were taken at the first of them
        }
        // The side with the columns knows whether the relationship is mandatory.
        const bool isOtherOwner = held[i].type == relationship::one_to_many;
        const held_relation & owner = held[isOtherOwner ? other : i];
        const held_relation & inverse = held[isOtherOwner ? i : other];
        diagram_relation relation = relationOf(owner);
        relation.inverseName = inverse.name;
        if (relation.linkTable.isEmpty()) {
            relation.linkTable = inverse.linkTable;
        }
        if (relation.change == diagram_change::none) {
            relation.change = inverse.change;
        }
        result.append(std::move(relation));
    }
    return result;
}

held_relation heldRelation(const model::property & property, int holder, int target)
{
    const std::shared_ptr<relationship> relation = property.getRelation();
    held_relation held;
    held.holder = holder;
    held.target = target;
    held.propertyId = property.getId();
    held.inverseId = relation->getInverseId();
    held.type = relation->getType();
    held.isMandatory = relation->hasColumns() && (property.isIdentifier() || !property.getAllowNull());
    held.name = property.getName();
    if (held.type == relationship::many_to_many) {
        held.linkTable = relation->getExtraTable();
    }
    return held;
}

} // namespace app
