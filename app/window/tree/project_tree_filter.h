#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace model {
class entity;
}

namespace app {

/// An entity that is shown, and which of its properties.
struct shown_entity
{
    int entity = 0; ///< its place in the model
    int first = -1; ///< where its properties begin in filter_result::properties; -1 when all are shown
    int count = 0;  ///< the number of properties shown
};

/// What a filter leaves, in model order.
struct filter_result
{
    std::vector<shown_entity> entities;
    std::vector<int> properties; ///< places of properties in their entities, one run an entity
    std::vector<bool> opened;    ///< for each of `properties`: what matches lies below it

    bool operator==(const filter_result & other) const = default;
};

inline bool operator==(const shown_entity & a, const shown_entity & b)
{
    return a.entity == b.entity && a.first == b.first && a.count == b.count;
}

/// The texts of a model in one piece, so that they can be searched while somebody types.
///
/// A row matches when each word is part of one of its texts, or of those of its entity; case does not count.
/// The names of an enumeration's values are texts of the properties of that type.
class project_tree_filter
{
public:
    using entities = std::vector<std::shared_ptr<model::entity>>;
    static constexpr int MostWords = 32; ///< that are looked for; what follows has no say

    /// The words that `text` has found, in a form in which texts that people take for equal are equal.
    [[nodiscard]] static QStringList wordsOf(const QString & text);

    /// Forgets all texts; those of `list` are collected by collectSome() or, at the latest, by search().
    void reset(const entities & list);
    /// Collects the texts of the next `count` entities; false when all are there.
    bool collectSome(int count);

    /// Whether `text` has a word to look for.
    [[nodiscard]] static bool isFilter(const QString & text);
    /// What matches `text`, which has at least one word.
    [[nodiscard]] filter_result search(const QString & text);

private:
    void collect(const model::entity & entity);
    void append(const QString & texts);
    /// For each row which of the words it holds, one bit each.
    [[nodiscard]] std::vector<quint32> wordsInRows(const QString & text) const;

    entities m_lstEntity;
    std::size_t m_iCollected = 0;
    /// The rows of each entity follow each other: its own, then two for every property, of which the second
    /// is its relationship's and else empty.
    QByteArray m_texts;
    std::vector<qsizetype> m_lstRowEnd;
    std::vector<std::size_t> m_lstFirstRow;
};

} // namespace app
