#include "app/diagram/diagram_graph.h"

#include "app/diagram/diagram_changes.h"
#include "app/diagram/held_relations.h"

#include "model/project.h"
#include "model/property_type.h"

#include <algorithm>

namespace app {

namespace {

using model::relationship;

diagram_mark markOf(const model::property & property)
{
    const std::shared_ptr<relationship> relation = property.getRelation();
    const bool isReference = relation && relation->hasColumns();
    if (property.isIdentifier()) {
        return isReference ? diagram_mark::key_reference : diagram_mark::key;
    }
    if (!relation) {
        return diagram_mark::none;
    }
    if (isReference) {
        return diagram_mark::reference;
    }
    return relation->getType() == relationship::one_to_many ? diagram_mark::one_to_many
                                                            : diagram_mark::many_to_many;
}

/// What is told of columns; nothing of a property without any.
void describeColumns(const model::property & property, diagram_property & copy)
{
    const std::shared_ptr<relationship> relation = property.getRelation();
    if (relation && !relation->hasColumns()) {
        return;
    }
    const std::shared_ptr<model::property_type> type = property.getType();
    copy.type = type ? type->getPrimitiveType(-1) : QString();
    if (!property.isTransient()) {
        copy.traits = {!property.isIdentifier() && !property.getAllowNull(), property.getUnique(),
                       property.isIndex()};
    }
}

/// Copies entities and what they hold into the lists of a graph.
class graph_copy
{
public:
    graph_copy(const QHash<long, int> & indexes, const diagram_changes & changes)
        : m_indexes(indexes), m_changes(changes)
    {
    }

    /// The relationships of the properties that were copied.
    [[nodiscard]] const QList<held_relation> & held() const { return m_held; }

    void copyProperties(const model::entity & from, int index, diagram_entity & to)
    {
        const auto properties = from.getListOfProperty(true, true, false)->values();
        to.properties.reserve(static_cast<qsizetype>(properties.size()));
        const bool isGone = to.change == diagram_change::dropped;
        for (const std::shared_ptr<model::property> & property : properties) {
            if (property) {
                const object_changes * const changed =
                    isGone ? nullptr : m_changes.ofProperty(property->getId());
                copyProperty(*property, index, changed ? *changed : object_changes(), to);
            }
        }
        for (const std::shared_ptr<model::property> & property : m_changes.droppedOf(from.getId())) {
            copyProperty(*property, index, {diagram_change::dropped, {}, {}}, to);
        }
    }

private:
    void copyProperty(const model::property & property, int index, const object_changes & changed,
                      diagram_entity & to)
    {
        diagram_property copy;
        copy.name = property.getName();
        copy.mark = markOf(property);
        copy.isTransient = property.isTransient();
        describeColumns(property, copy);
        copy.change = changed.change;
        copy.former = changed.former;
        copy.later = changed.later;
        if (const std::shared_ptr<relationship> relation = property.getRelation()) {
            const int target = m_indexes.value(relation->getEntityTargetId(), -1);
            copy.isTargetMissing = target < 0;
            if (target >= 0 && !property.isTransient()) {
                m_held.append(heldRelation(property, index, target));
                // With an entity goes what it refers to.
                const bool isWhole =
                    to.change == diagram_change::added || to.change == diagram_change::dropped;
                m_held.last().change = isWhole ? to.change : copy.change;
            }
        }
        to.properties.append(std::move(copy));
    }

    const QHash<long, int> & m_indexes;
    const diagram_changes & m_changes;
    QList<held_relation> m_held;
};

std::vector<std::shared_ptr<model::entity>> entitiesOf(const model::project & project)
{
    const std::shared_ptr<model::project::list_of_entity> list = project.getListOfAllEntities();
    std::vector<std::shared_ptr<model::entity>> entities;
    if (list) {
        entities = list->values();
    }
    std::erase(entities, nullptr);
    return entities;
}

} // namespace

diagram_graph::diagram_graph(const model::project & project) : diagram_graph(project, diagram_changes()) {}

diagram_graph::diagram_graph(const model::project & project, const diagram_changes & changes)
{
    std::vector<std::shared_ptr<model::entity>> entities = entitiesOf(project);
    entities.insert(entities.end(), changes.droppedEntities().begin(), changes.droppedEntities().end());
    m_indexes.reserve(static_cast<qsizetype>(entities.size()));
    m_entities.reserve(static_cast<qsizetype>(entities.size()));
    for (const std::shared_ptr<model::entity> & entity : entities) {
        const object_changes * const found = changes.ofEntity(entity->getId());
        const object_changes changed = found ? *found : object_changes();
        m_indexes.insert(entity->getId(), count());
        m_entities.append({entity->getId(),
                           entity->getName(),
                           entity->getTableName(),
                           entity->getVersion(),
                           {},
                           changed.change,
                           changed.former,
                           changed.later,
                           changes.linesOf(entity->getId())});
    }
    graph_copy copy(m_indexes, changes);
    for (int i = 0; i < count(); ++i) {
        copy.copyProperties(*entities[static_cast<std::size_t>(i)], i, m_entities[i]);
    }
    m_relations = joined(copy.held());
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

diagram_piece diagram_graph::changed(int most) const
{
    diagram_piece piece;
    for (int i = 0; i < count(); ++i) {
        if (m_entities[i].change == diagram_change::none) {
            continue;
        }
        if (static_cast<int>(piece.entities.size()) < most) {
            piece.entities.append(i);
        } else {
            ++piece.leftOut;
        }
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
