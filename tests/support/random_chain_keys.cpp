// How keys and relationships of a chain change from one version to the next.

#include "support/random_chain.h"

#include <algorithm>

namespace support {

using model::relationship;

void random_chain::moveKey()
{
    draft_entity & entity = anyEntity();
    draft_property * const property = anyPlain(entity);
    if (draft_property * const key = keyOf(entity); key != nullptr && property != nullptr) {
        key->isKey = false;
        property->isKey = true;
        touch(entity);
    }
}

void random_chain::dropKey()
{
    draft_entity & entity = anyEntity();
    draft_property * const key = keyOf(entity);
    draft_property * const property = anyPlain(entity);
    if (key != nullptr) {
        key->isKey = false;
    } else if (property != nullptr) {
        property->isKey = true;
    }
    touch(entity);
}

void random_chain::replaceKey()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const key = keyOf(entity)) {
        *key = newKey(entity);
        touch(entity);
    }
}

void random_chain::widenKey()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const key = keyOf(entity)) {
        const int columns = 1 + m_chance.below(3);
        key->columns =
            columns == 1 ? columnName(entity) : numbered(columnName(entity), columns).join(QLatin1Char('|'));
        touch(entity);
    }
}

void random_chain::retypeKey()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const key = keyOf(entity)) {
        key->types = {cppType(m_chance)};
        key->forced = m_chance.oneIn(4) ? sqlType() : QString();
        touch(entity);
    }
}

void random_chain::recount()
{
    draft_entity & entity = anyEntity();
    if (draft_property * const key = keyOf(entity)) {
        key->isCounted = m_chance.oneIn(3) ? std::nullopt : std::optional(m_chance.oneIn(2));
        touch(entity);
    }
}

void random_chain::addRelation()
{
    draft_entity & owner = anyEntity();
    draft_entity * const other = anyOtherThan(owner);
    draft_entity & target = other == nullptr || m_chance.oneIn(8) ? owner : *other;
    const int kind = m_chance.below(10);
    if (kind < 6) {
        addToOne(owner, target, relationship::many_to_one);
    } else if (kind < 8) {
        addToOne(owner, target, relationship::one_to_one);
    } else if (kind < 9 || &owner != &target) {
        addManyToMany(owner, target);
    }
}

void random_chain::dropRelation()
{
    draft_entity & entity = anyEntity();
    const draft_property * const gone = anyRelation(entity);
    if (gone == nullptr) {
        return;
    }
    const long inverse = gone->inverse;
    std::erase_if(entity.properties, [id = gone->id](const draft_property & p) { return p.id == id; });
    touch(entity);
    if (entity.properties.empty()) {
        entity.properties.push_back(newKey(entity));
    }
    for (draft_entity & other : m_entities) {
        const auto isInverse = [inverse](const draft_property & p) {
            return inverse != 0 && p.id == inverse;
        };
        if (std::erase_if(other.properties, isInverse) > 0) {
            touch(other);
        }
        if (other.properties.empty()) {
            other.properties.push_back(newKey(other));
        }
    }
}

void random_chain::retarget()
{
    draft_entity & entity = anyEntity();
    draft_property * const relation = anyRelation(entity);
    if (relation != nullptr && relation->inverse == 0) {
        relation->target = anyEntity().id;
        relation->relationId = m_chance.oneIn(2) ? newId() : relation->relationId;
        touch(entity);
    }
}

void random_chain::changeRelationType()
{
    draft_entity & entity = anyEntity();
    draft_property * const relation = anyRelation(entity);
    if (relation != nullptr && relation->inverse == 0) {
        relation->relation = relation->relation == relationship::many_to_one ? relationship::one_to_one
                                                                             : relationship::many_to_one;
        touch(entity);
    }
}

void random_chain::makePlain()
{
    draft_entity & entity = anyEntity();
    draft_property * const relation = anyRelation(entity);
    if (relation != nullptr && relation->inverse == 0) {
        relation->relationId = 0;
        relation->types = {cppType(m_chance)};
        relation->columns = relation->columns.section(QLatin1Char('|'), 0, 0);
        touch(entity);
    }
}

void random_chain::makeRelation()
{
    draft_entity & entity = anyEntity();
    draft_property * const property = anyPlain(entity);
    if (property != nullptr) {
        property->relationId = newId();
        property->relation = m_chance.oneIn(4) ? relationship::one_to_one : relationship::many_to_one;
        property->target = anyEntity().id;
        touch(entity);
    }
}

void random_chain::changeLinkTable()
{
    draft_entity & entity = anyEntity();
    draft_property * const relation = anyRelation(entity);
    if (relation == nullptr || relation->inverse == 0) {
        return;
    }
    const bool isTable = m_chance.oneIn(2);
    for (draft_entity & other : m_entities) {
        for (draft_property & each : other.properties) {
            const bool isEnd = each.id == relation->id || each.id == relation->inverse;
            if (isEnd && isTable) {
                each.linkTable += QStringLiteral("_2");
                touch(other);
            } else if (isEnd) {
                (each.id == relation->id ? each.linkColumns : each.inverseColumns) += QStringLiteral("_2");
                touch(other);
            }
        }
    }
}

} // namespace support
