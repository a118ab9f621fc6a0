#pragma once

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include <QHash> // std::hash of QString
#include <QString>

#include <functional>
#include <mutex>
#include <vector>

namespace zk {

/// Key/value collection that keeps insertion order: constant-time access by position and by key.
///
/// A key occurs at most once. The collection does not lock by itself: whoever shares one between threads, or
/// wants counting and access to belong together, holds `mutex()` meanwhile (it is recursive). Copying,
/// comparing and `values()` take the lock of the collection that they read.
template <typename K, typename V>
class ZkCollection
{
public:
    struct item
    {
        K first;
        V second;
    };

    ZkCollection() = default;
    ZkCollection(const ZkCollection & other)
    {
        const std::lock_guard lock(other.m_mutex);
        m_items = other.m_items;
    }
    ZkCollection & operator=(const ZkCollection & other)
    {
        if (this != &other) {
            const std::scoped_lock lock(m_mutex, other.m_mutex);
            m_items = other.m_items;
        }
        return *this;
    }
    ~ZkCollection() = default;

    /// The lock that guards this collection.
    [[nodiscard]] std::recursive_mutex & mutex() const { return m_mutex; }

    [[nodiscard]] long count() const { return static_cast<long>(m_items.size()); }
    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }
    [[nodiscard]] bool exist(const K & key) const { return byKey().find(key) != byKey().end(); }

    /// Value of `key`, or a default-constructed value when the key is absent.
    [[nodiscard]] V getByKey(const K & key) const
    {
        const auto it = byKey().find(key);
        return it == byKey().end() ? V() : it->second;
    }
    /// Key at position `index` (0-based); a default-constructed key outside the collection.
    [[nodiscard]] K getKeyByIndex(long index) const { return isInside(index) ? m_items[index].first : K(); }
    /// Value at position `index` (0-based); a default-constructed value outside the collection.
    [[nodiscard]] V getByIndex(long index) const { return isInside(index) ? m_items[index].second : V(); }

    /// Appends the pair; false, and nothing changes, when the key is already there.
    bool insert(const K & key, const V & value) { return m_items.push_back(item{key, value}).second; }
    /// Removes the pair of `key`, keeping the order of the others; false when there is none.
    bool removeByKey(const K & key) { return m_items.template get<1>().erase(key) > 0; }
    void clear() { m_items.clear(); }

    /// Copy of all values in order, made under the lock: what a loop over a shared list walks.
    [[nodiscard]] std::vector<V> values() const
    {
        const std::lock_guard lock(m_mutex);
        std::vector<V> result;
        result.reserve(m_items.size());
        for (const item & i : m_items) {
            result.push_back(i.second);
        }
        return result;
    }

    /// True when both hold equal pairs in the same order.
    friend bool operator==(const ZkCollection & a, const ZkCollection & b)
    {
        if (&a == &b) {
            return true;
        }
        const std::scoped_lock lock(a.m_mutex, b.m_mutex);
        return std::equal(
            a.m_items.begin(), a.m_items.end(), b.m_items.begin(), b.m_items.end(),
            [](const item & x, const item & y) { return x.first == y.first && x.second == y.second; });
    }

private:
    using container = boost::multi_index_container<
        item,
        boost::multi_index::indexed_by<boost::multi_index::random_access<>,
                                       boost::multi_index::hashed_unique<
                                           boost::multi_index::member<item, K, &item::first>, std::hash<K>>>>;

    [[nodiscard]] const auto & byKey() const { return m_items.template get<1>(); }
    [[nodiscard]] bool isInside(long index) const { return index >= 0 && index < count(); }

    container m_items;
    mutable std::recursive_mutex m_mutex;
};

} // namespace zk
