#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <span>

namespace model {
class project;
}

namespace app {

class diagram_changes;

/// What happened to an object from one version to another.
enum class diagram_change
{
    none,
    added,
    dropped,
    changed,
    renamed
};

/// How many objects at this end of a relationship belong to one at the other end.
enum class diagram_end
{
    zero_or_one,
    exactly_one,
    many
};

/// What a property is to its table.
enum class diagram_mark
{
    none,
    key,
    key_reference, ///< both: a key whose columns refer to another table
    reference,     ///< a relationship whose columns lie in the table
    one_to_many,   ///< a relationship without columns, seen from its "one" side
    many_to_many
};

/// What holds for each value of a property's columns.
struct diagram_traits
{
    bool isNotNull = false; ///< not told of keys, which never are null
    bool isUnique = false;
    bool isIndexed = false;
};

struct diagram_property
{
    QString name;
    diagram_mark mark = diagram_mark::none;
    bool isTransient = false;
    bool isTargetMissing = false; ///< a relationship to an entity that the project does not have
    QString type;                 ///< C++ type or enumeration; empty for a property without columns
    diagram_traits traits;
    diagram_change change = diagram_change::none;
    QString former; ///< of what was renamed: the name that it had
    QString later;  ///< the name that it has, when that is the one in the database
};

struct diagram_entity
{
    long id = 0;
    QString name;
    QString tableName; ///< as given in the model, empty when the name is the table's
    long version = 0;
    QList<diagram_property> properties; ///< in model order, then those that were dropped
    diagram_change change = diagram_change::none;
    QString former;      ///< of what was renamed: the name that it had
    QString later;       ///< the name that it has, when that is the one in the database
    QStringList changes; ///< one line each
};

/// A relationship; both directions of an inverse pair are one.
struct diagram_relation
{
    int from = 0; ///< index of the entity on the side of the one, as far as there is such a side
    int to = 0;
    diagram_end fromEnd = diagram_end::many;
    diagram_end toEnd = diagram_end::many;
    int holder = 0; ///< `from` or `to`: the entity whose property gives the name
    QString name;
    QString inverseName; ///< the property on the other side, empty without one
    QString linkTable;   ///< of a many-to-many relationship
    diagram_change change = diagram_change::none;
};

/// What of a graph is to be seen: indexes into its lists.
struct diagram_piece
{
    QList<int> entities;  ///< the centre of a neighbourhood first
    QList<int> hidden;    ///< for each of `entities`, how many of its neighbours are not among them
    QList<int> relations; ///< those between `entities`, in the graph's order
    int leftOut = 0;      ///< entities of the neighbourhood beyond the largest number
};

/// The entities of a project and the relationships between them, copied: the project may go away.
class diagram_graph
{
public:
    diagram_graph() = default;
    /// Takes time in proportion to the number of properties. Transient relationships, and those whose target
    /// is missing, connect nothing.
    explicit diagram_graph(const model::project & project);
    /// The same with what changed: what was dropped comes last.
    diagram_graph(const model::project & project, const diagram_changes & changes);

    [[nodiscard]] const QList<diagram_entity> & entities() const { return m_entities; }
    [[nodiscard]] const QList<diagram_relation> & relations() const { return m_relations; }
    [[nodiscard]] int count() const { return static_cast<int>(m_entities.size()); }
    /// Index of the entity with that id, -1 when there is none.
    [[nodiscard]] int indexOf(long id) const { return m_indexes.value(id, -1); }
    /// Indexes of the relationships at either end of which `entity` (an index) stands; one with itself occurs
    /// once.
    [[nodiscard]] std::span<const int> relationsOf(int entity) const;

    [[nodiscard]] diagram_piece everything() const;
    /// The entities that can be reached from `centre` (an index) over at most `distance` relationships in
    /// either direction, nearest first, `most` at the most.
    [[nodiscard]] diagram_piece neighbourhood(int centre, int distance, int most) const;

    /// The entities that changed, in the graph's order, `most` at the most.
    [[nodiscard]] diagram_piece changed(int most) const;

private:
    void connectRelations();
    [[nodiscard]] int otherEnd(int relation, int entity) const;
    void completePiece(diagram_piece & piece) const;

    QList<diagram_entity> m_entities;
    QList<diagram_relation> m_relations;
    QHash<long, int> m_indexes;
    QList<int> m_firstIncidence; // of each entity in m_incidences, and one past the last
    QList<int> m_incidences;
};

} // namespace app
