#include "app/diagram/diagram_graph.h"

#include "model/project.h"

#include <algorithm>

namespace app {

namespace {

using model::relationship;

/// A property with a relationship, as it stands in the model.
struct held_relation
{
    int holder = 0;
    int target = 0;
    long propertyId = 0;
    long inverseId = 0;
    relationship::type_relation type = relationship::many_to_one;
    bool isMandatory = false;
    QString name;
    QString linkTable;
};

using property_index = QHash<std::pair<int, long>, int>;

diagram_mark markOf(const model::property & property)
{
    if (property.isIdentifier()) {
        return diagram_mark::key;
    }
    const std::shared_ptr<relationship> relation = property.getRelation();
    if (!relation) {
        return diagram_mark::none;
    }
    if (relation->hasColumns()) {
        return diagram_mark::reference;
    }
    return relation->getType() == relationship::one_to_many ? diagram_mark::one_to_many
                                                            : diagram_mark::many_to_many;
}

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

QList<diagram_relation> relationsOf(const QList<held_relation> & held)
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

/// Copies the properties of `from` and appends its relationships to `held`.
void copyProperties(const model::entity & from, int index, const QHash<long, int> & indexes,
                    diagram_entity & to, QList<held_relation> & held)
{
    const auto properties = from.getListOfProperty(true, true, false)->values();
    to.properties.reserve(static_cast<qsizetype>(properties.size()));
    for (const std::shared_ptr<model::property> & property : properties) {
        if (!property) {
            continue;
        }
        diagram_property copy{property->getName(), markOf(*property), property->isTransient(), false};
        if (const std::shared_ptr<relationship> relation = property->getRelation()) {
            const int target = indexes.value(relation->getEntityTargetId(), -1);
            copy.isTargetMissing = target < 0;
            if (target >= 0 && !property->isTransient()) {
                held.append(heldRelation(*property, index, target));
            }
        }
        to.properties.append(std::move(copy));
    }
}

} // namespace

diagram_graph::diagram_graph(const model::project & project)
{
    const std::shared_ptr<model::project::list_of_entity> list = project.getListOfAllEntities();
    if (!list) {
        return;
    }
    std::vector<std::shared_ptr<model::entity>> entities = list->values();
    std::erase(entities, nullptr);
    m_indexes.reserve(static_cast<qsizetype>(entities.size()));
    m_entities.reserve(static_cast<qsizetype>(entities.size()));
    for (const std::shared_ptr<model::entity> & entity : entities) {
        m_indexes.insert(entity->getId(), count());
        m_entities.append(
            {entity->getId(), entity->getName(), entity->getTableName(), entity->getVersion(), {}});
    }
    QList<held_relation> held;
    for (int i = 0; i < count(); ++i) {
        copyProperties(*entities[static_cast<std::size_t>(i)], i, m_indexes, m_entities[i], held);
    }
    m_relations = app::relationsOf(held);
    connectRelations();
}

void diagram_graph::connectRelations()
{
    m_firstIncidence.fill(0, m_entities.size() + 1);
    for (const diagram_relation & relation : m_relations) {
        ++m_firstIncidence[relation.from + 1];
        m_firstIncidence[relation.to + 1] += relation.to != relation.from;
    }
    for (qsizetype i = 1; i < m_firstIncidence.size(); ++i) {
        m_firstIncidence[i] += m_firstIncidence[i - 1];
    }
    m_incidences.resize(m_firstIncidence.constLast());
    QList<int> next = m_firstIncidence;
    for (qsizetype i = 0; i < m_relations.size(); ++i) {
        const int from = m_relations[i].from;
        const int to = m_relations[i].to;
        m_incidences[next[from]++] = static_cast<int>(i);
        if (to != from) {
            m_incidences[next[to]++] = static_cast<int>(i);
        }
    }
}

std::span<const int> diagram_graph::relationsOf(int entity) const
{
    const int first = m_firstIncidence[entity];
    return std::span(m_incidences.constData(), static_cast<std::size_t>(m_incidences.size()))
        .subspan(static_cast<std::size_t>(first),
                 static_cast<std::size_t>(m_firstIncidence[entity + 1] - first));
}

int diagram_graph::otherEnd(int relation, int entity) const
{
    const diagram_relation & r = m_relations[relation];
    return r.from == entity ? r.to : r.from;
}

diagram_piece diagram_graph::everything() const
{
    diagram_piece piece;
    piece.entities.resize(m_entities.size());
    for (qsizetype i = 0; i < m_entities.size(); ++i) {
        piece.entities[i] = static_cast<int>(i);
    }
    completePiece(piece);
    return piece;
}

diagram_piece diagram_graph::neighbourhood(int centre, int distance, int most) const
{
    diagram_piece piece;
    QList<bool> isFound(m_entities.size(), false);
    QList<int> ring{centre};
    isFound[centre] = true;
    for (int far = 0; far <= distance && !ring.empty(); ++far) {
        // In the order of the model, so that the same question always gets the same answer.
        std::sort(ring.begin(), ring.end());
        QList<int> next;
        for (const int entity : ring) {
            if (static_cast<int>(piece.entities.size()) < most) {
                piece.entities.append(entity);
            } else {
                ++piece.leftOut;
            }
            for (const int relation : relationsOf(entity)) {
                const int other = otherEnd(relation, entity);
                if (!isFound[other]) {
                    isFound[other] = true;
                    next.append(other);
                }
            }
        }
        ring = std::move(next);
    }
    completePiece(piece);
    return piece;
}

void diagram_graph::completePiece(diagram_piece & piece) const
{
    QList<bool> isShown(m_entities.size(), false);
    for (const int entity : piece.entities) {
        isShown[entity] = true;
    }
    for (const int entity : piece.entities) {
        QList<int> beyond;
        for (const int relation : relationsOf(entity)) {
            const int other = otherEnd(relation, entity);
            if (!isShown[other]) {
                beyond.append(other);
            } else if (m_relations[relation].from == entity) {
                piece.relations.append(relation);
            }
        }
        std::sort(beyond.begin(), beyond.end());
        const auto end = std::unique(beyond.begin(), beyond.end());
        piece.hidden.append(static_cast<int>(end - beyond.begin()));
    }
    std::sort(piece.relations.begin(), piece.relations.end());
}

} // namespace app
