#include "model/model_difference.h"

#include "model/enumeration.h"
#include "model/model_fields.h"
#include "model/project.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace model {

namespace {

using property_list = std::vector<std::shared_ptr<property>>;

property_list propertiesOf(const entity & e)
{
    return e.getListOfProperty(true, true, false)->values();
}

std::vector<std::shared_ptr<entity>> entitiesOf(const project & p)
{
    const auto list = p.getListOfAllEntities();
    auto entities = list ? list->values() : std::vector<std::shared_ptr<entity>>();
    std::erase(entities, nullptr);
    return entities;
}

template <class Object>
bool hasSameFields(const Object & a, const Object & b, std::span<const object_field<Object>> fields)
{
    return std::all_of(fields.begin(), fields.end(),
                       [&](const object_field<Object> & f) { return f.isSame(a, b); });
}

bool isSameRelation(const std::shared_ptr<relationship> & a, const std::shared_ptr<relationship> & b)
{
    if (!a || !b) {
        return a == b;
    }
    return a->getId() == b->getId() && hasSameFields(*a, *b, relationshipFields());
}

bool isSameProperty(const property & a, const property & b)
{
    return a.getId() == b.getId() && hasSameFields(a, b, propertyFields()) &&
           isSameRelation(a.getRelation(), b.getRelation());
}

named_object told(const entity & e)
{
    return {object_kind::entity, e.getId(), e.getName()};
}

named_object told(const property & p)
{
    return {object_kind::property, p.getId(), p.getName()};
}

named_object told(const enumeration & e)
{
    return {object_kind::enumeration, e.getId(), e.getName()};
}

/// An object with what it belongs to.
struct placed_object
{
    named_object object;
    std::vector<named_object> owners;
};

placed_object placed(const entity & e)
{
    return {told(e), {}};
}

placed_object placed(const property & p)
{
    const std::shared_ptr<entity> owner = p.getEntity();
    return {told(p), owner ? std::vector{told(*owner)} : std::vector<named_object>()};
}

/// The relationship of `p`.
placed_object placedRelation(const property & p)
{
    placed_object result = placed(p);
    result.owners.insert(result.owners.begin(), result.object);
    result.object.kind = object_kind::relationship;
    result.object.id = p.getRelation()->getId();
    return result;
}

placed_object placed(const enumeration & e)
{
    return {told(e), {}};
}

/// The properties that hold the relationships of a project, by the ids of these.
using relations_by_id = QHash<long, std::shared_ptr<property>>;

relations_by_id relationsOf(const project & project)
{
    relations_by_id relations;
    for (const std::shared_ptr<entity> & e : entitiesOf(project)) {
        for (const std::shared_ptr<property> & p : propertiesOf(*e)) {
            if (p->hasRelationship()) {
                relations.insert(p->getRelation()->getId(), p);
            }
        }
    }
    return relations;
}

/// Whether the properties are the same ones in the same order, which needs no look-ups.
bool hasSameIds(const property_list & a, const property_list & b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto & p, const auto & q) { return p->getId() == q->getId(); });
}

class comparison
{
public:
    comparison(const project & before, const project & after) : m_before(before), m_after(after) {}

    std::vector<model_change> run()
    {
        const auto formerEntities = entitiesOf(m_before);
        const auto entities = entitiesOf(m_after);
        noteMoves(formerEntities, entities);
        for (const std::shared_ptr<entity> & e : entities) {
            compareEntity(m_before.getEntityById(e->getId()), *e);
        }
        for (const std::shared_ptr<enumeration> & e : m_after.getListOfEnumeration()->values()) {
            compareEnumeration(m_before.getEnumerationById(e->getId()), *e);
        }
        for (const std::shared_ptr<entity> & e : formerEntities) {
            if (!m_after.getEntityById(e->getId())) {
                add(change_kind::removed, placed(*e));
            }
        }
        for (const std::shared_ptr<enumeration> & e : m_before.getListOfEnumeration()->values()) {
            if (!m_after.getEnumerationById(e->getId())) {
                add(change_kind::removed, placed(*e));
            }
        }
        return std::move(m_changes);
    }

private:
    void add(change_kind change, const placed_object & what, const QString & field = {},
             const QVariant & before = {}, const QVariant & after = {})
    {
        m_changes.push_back({change, what.object, what.owners, field, before, after});
    }

    /// @param place gives what the fields are told of, asked for only when one differs
    template <class Object, class Place>
    void compareFields(const Object & former, const Object & now,
                       std::span<const object_field<Object>> fields, const Place & place)
    {
        for (const object_field<Object> & field : fields) {
            if (!field.isSame(former, now)) {
                add(field.change, place(), QString::fromLatin1(field.name), field.value(former),
                    field.value(now));
            }
        }
    }

    void noteMoves(const std::vector<std::shared_ptr<entity>> & formerEntities,
                   const std::vector<std::shared_ptr<entity>> & entities);
    void compareEntity(const std::shared_ptr<entity> & former, const entity & e);
    void compareProperties(const entity & former, const entity & e);
    void compareOrder(const entity & former, const entity & e);
    void compareProperty(const property & former, const property & p);
    void compareRelation(const property & former, const property & p);
    void addMovedOf(const property & p);
    bool addMovedRelation(const property & p);
    void compareEnumeration(const std::shared_ptr<enumeration> & former, const enumeration & e);
    const relations_by_id & formerRelations();
    const relations_by_id & relations();

    const project & m_before;
    const project & m_after;
    QHash<long, std::shared_ptr<property>> m_left; ///< former properties that are not in their entity now
    QSet<long> m_moved;                            ///< those of them that are in another one
    // Most models keep their relationships, and need no look at them all.
    std::optional<relations_by_id> m_formerRelations;
    std::optional<relations_by_id> m_relations;
    std::vector<model_change> m_changes;
};

void comparison::noteMoves(const std::vector<std::shared_ptr<entity>> & formerEntities,
                           const std::vector<std::shared_ptr<entity>> & entities)
{
    for (const std::shared_ptr<entity> & former : formerEntities) {
        const std::shared_ptr<entity> now = m_after.getEntityById(former->getId());
        const property_list properties = propertiesOf(*former);
        if (now && hasSameIds(properties, propertiesOf(*now))) {
            continue;
        }
        for (const std::shared_ptr<property> & p : properties) {
            if (!now || !now->getPropertyById(p->getId())) {
                m_left.insert(p->getId(), p);
            }
        }
    }
    if (m_left.isEmpty()) {
        return;
    }
    for (const std::shared_ptr<entity> & e : entities) {
        for (const std::shared_ptr<property> & p : propertiesOf(*e)) {
            if (m_left.contains(p->getId())) {
                m_moved.insert(p->getId());
            }
        }
    }
}

void comparison::compareEntity(const std::shared_ptr<entity> & former, const entity & e)
{
    if (!former) {
        add(change_kind::added, placed(e));
        for (const std::shared_ptr<property> & p : propertiesOf(e)) {
            addMovedOf(*p);
        }
        return;
    }
    const auto place = [&e] { return placed(e); };
    compareFields(*former, e, entityFields(), place);
    for (const QString & key : differentKeys(*former, e)) {
        add(change_kind::changed, place(), QStringLiteral("metaData.") + key, toldMetaData(*former, key),
            toldMetaData(e, key));
    }
    const property_list before = propertiesOf(*former);
    const property_list now = propertiesOf(e);
    if (!hasSameIds(before, now)) {
        compareOrder(*former, e);
        compareProperties(*former, e);
        return;
    }
    for (std::size_t i = 0; i < now.size(); ++i) {
        compareProperty(*before[i], *now[i]);
    }
}

void comparison::compareProperties(const entity & former, const entity & e)
{
    for (const std::shared_ptr<property> & p : propertiesOf(e)) {
        if (const std::shared_ptr<property> before = former.getPropertyById(p->getId())) {
            compareProperty(*before, *p);
        } else if (m_moved.contains(p->getId())) {
            addMovedOf(*p);
        } else {
            add(change_kind::added, placed(*p));
            addMovedRelation(*p);
        }
    }
    for (const std::shared_ptr<property> & p : propertiesOf(former)) {
        if (!e.getPropertyById(p->getId()) && !m_moved.contains(p->getId())) {
            add(change_kind::removed, placed(*p));
        }
    }
}

void comparison::compareOrder(const entity & former, const entity & e)
{
    QStringList namesBefore;
    QStringList namesAfter;
    bool isSameOrder = true;
    const property_list now = propertiesOf(e);
    auto next = now.cbegin();
    const auto toCommon = [&] {
        while (next != now.cend() && !former.getPropertyById((*next)->getId())) {
            ++next;
        }
    };
    for (const std::shared_ptr<property> & p : propertiesOf(former)) {
        if (!e.getPropertyById(p->getId())) {
            continue;
        }
        toCommon();
        isSameOrder = isSameOrder && (*next)->getId() == p->getId();
        namesBefore << p->getName();
        namesAfter << (*next)->getName();
        ++next;
    }
    if (!isSameOrder) {
        add(change_kind::changed, placed(e), QStringLiteral("order"), namesBefore, namesAfter);
    }
}

void comparison::compareProperty(const property & former, const property & p)
{
    compareFields(former, p, propertyFields(), [&p] { return placed(p); });
    if (former.hasRelationship() || p.hasRelationship()) {
        compareRelation(former, p);
    }
}

void comparison::compareRelation(const property & former, const property & p)
{
    const std::shared_ptr<relationship> before = former.getRelation();
    const std::shared_ptr<relationship> after = p.getRelation();
    if (before && after && before->getId() == after->getId()) {
        compareFields(*before, *after, relationshipFields(), [&p] { return placedRelation(p); });
        return;
    }
    if (before && !relations().contains(before->getId())) {
        add(change_kind::removed, placedRelation(former));
    }
    if (after && !addMovedRelation(p)) {
        add(change_kind::added, placedRelation(p));
    }
}

/// Tells of what `p`, which was not in its entity before, was in another one.
void comparison::addMovedOf(const property & p)
{
    const std::shared_ptr<property> former = m_left.value(p.getId());
    if (!former) {
        addMovedRelation(p);
        return;
    }
    add(change_kind::moved, placed(p), QStringLiteral("entity"), qlonglong(former->getEntityId()),
        qlonglong(p.getEntityId()));
    compareProperty(*former, p);
}

/// Whether another property had the relationship of `p` before.
bool comparison::addMovedRelation(const property & p)
{
    const std::shared_ptr<relationship> relation = p.getRelation();
    const std::shared_ptr<property> former = relation ? formerRelations().value(relation->getId()) : nullptr;
    if (!former) {
        return false;
    }
    const auto place = [&p] { return placedRelation(p); };
    add(change_kind::moved, place(), QStringLiteral("property"), qlonglong(former->getId()),
        qlonglong(p.getId()));
    compareFields(*former->getRelation(), *relation, relationshipFields(), place);
    return true;
}

void comparison::compareEnumeration(const std::shared_ptr<enumeration> & former, const enumeration & e)
{
    if (!former) {
        add(change_kind::added, placed(e));
        return;
    }
    compareFields(*former, e, enumerationFields(), [&e] { return placed(e); });
}

const relations_by_id & comparison::formerRelations()
{
    if (!m_formerRelations) {
        m_formerRelations = relationsOf(m_before);
    }
    return *m_formerRelations;
}

const relations_by_id & comparison::relations()
{
    if (!m_relations) {
        m_relations = relationsOf(m_after);
    }
    return *m_relations;
}

} // namespace

std::vector<model_change> difference(const project & before, const project & after)
{
    return comparison(before, after).run();
}

bool isSame(const entity & a, const entity & b)
{
    const property_list properties = propertiesOf(a);
    const property_list others = propertiesOf(b);
    return a.getId() == b.getId() && hasSameFields(a, b, entityFields()) && differentKeys(a, b).isEmpty() &&
           std::equal(properties.begin(), properties.end(), others.begin(), others.end(),
                      [](const auto & p, const auto & q) { return isSameProperty(*p, *q); });
}

} // namespace model
