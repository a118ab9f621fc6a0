#pragma once

#include "database/catalogue/catalogue.h"
#include "database/facts/known_types.h"
#include "database/facts/names.h"
#include "database/simulation/refusal.h"

#include <QHash>
#include <QSet>

#include <functional>
#include <set>

namespace database {

[[nodiscard]] QString tableObject(const QString & table);
[[nodiscard]] QString columnObject(const QString & table, const QString & column);
[[nodiscard]] QString indexObject(const QString & name);
[[nodiscard]] QString foreignKeyObject(const QString & name);

/// A catalogue whose tables are found without a walk down its tree. They stay where they are until they are
/// removed.
class held_catalogue
{
public:
    explicit held_catalogue(catalogue begin);
    held_catalogue(const held_catalogue & other) : held_catalogue(other.m_held) {}
    held_catalogue & operator=(const held_catalogue &) = delete;
    ~held_catalogue() = default;

    [[nodiscard]] const catalogue & all() const { return m_held; }
    /// The same, for the last time.
    [[nodiscard]] catalogue takeAll() { return std::move(m_held); }
    /// Null when there is no such table. So it is below.
    [[nodiscard]] const table * find(const QString & key) const { return m_tables.value(key); }
    [[nodiscard]] table * find(const QString & key) { return m_tables.value(key); }
    table & put(const QString & key, table made);
    void remove(const QString & key);
    /// Gives the table another key, which is free.
    void rename(const QString & from, const QString & to);
    void addSequence(const sequence & made) { m_held.sequences.push_back(made); }

private:
    catalogue m_held;
    QHash<QString, table *> m_tables;
};

/// A catalogue under the rules of one database, with what finds things in it without a walk over all tables.
class state
{
public:
    state(const facts & rules, catalogue begin);

    const facts & known;     ///< what the database is
    const known_types types; ///< those that it met

    [[nodiscard]] const catalogue & held() const { return m_held.all(); }
    /// The same, for the last time: nothing is asked of this object afterwards.
    [[nodiscard]] catalogue takeHeld() { return m_held.takeAll(); }

    /// The table of that name, as stored; none when there is no such table.
    [[nodiscard]] const table * find(const QString & name) const;
    /// The table for a statement that needs it. What is refused when it is missing is told in `why`.
    [[nodiscard]] const table * need(const QString & name, refusal_cause ifMissing, refusal & why) const;
    [[nodiscard]] const column * findColumn(const table & owner, const QString & name) const;
    [[nodiscard]] const index * findIndex(const table & owner, const QString & name) const;
    /// The table that an index belongs to, of a database where its name is enough.
    [[nodiscard]] const table * ownerOfIndex(const QString & name) const;
    /// The table that a trigger belongs to, of a database where its name is enough.
    [[nodiscard]] const table * ownerOfTrigger(const QString & name) const;
    /// Those that have a foreign key to the table, the table itself included.
    [[nodiscard]] std::vector<const table *> referrersOf(const table & target) const;
    [[nodiscard]] bool refersTo(const foreign_key & key, const table & target) const;
    [[nodiscard]] bool hasForeignKey(const QString & name) const;

    /// Whether a table, or what shares the space of its names, has the name.
    [[nodiscard]] bool isTaken(const QString & name) const;
    /// What has the name, as "table a", "index i", "sequence s", "key k"; "table" and the name when nothing
    /// has it.
    [[nodiscard]] QString holderOf(const QString & name) const;
    [[nodiscard]] bool isIndexNameTaken(const table & owner, const QString & name) const;
    /// The name that the database makes up, with a number after it while it is taken, here or in `also`.
    [[nodiscard]] QString freeName(const QString & table, const QString & column, QLatin1String label,
                                   const QSet<QString> & also = {}) const;
    /// A table with an index that is kept as a hash is copied by every change.
    [[nodiscard]] bool isCopied(const table & owner) const;

    /// The same text, shared by all columns that are named so.
    [[nodiscard]] QString shared(const QString & columnName);

    [[nodiscard]] int rowsOf(const table & owner) const;
    void setRows(const QString & name, int count);

    void add(table made, int rows);
    /// Whether the statement that made the table just now makes the same one wherever none of its names is
    /// taken: no name was numbered since another has it.
    [[nodiscard]] bool isMadeByItself(const table & made) const;
    /// Whether none of the names of a table that is not there is taken.
    [[nodiscard]] bool hasRoomFor(const table & made) const;
    void remove(const table & gone);
    /// Changes a table, its name included; what finds things follows.
    void change(const table & owner, const std::function<void(table &)> & how);
    /// Adds what a table had not, which is less work than any change.
    void addIndex(const table & owner, index made);
    void addForeignKey(const table & owner, foreign_key made);
    void addSequence(const sequence & made);
    /// Renames what is no table but shares the space of names. False when there is no such thing.
    bool renameRelation(const QString & from, const QString & to);

    /// Remembers that no row has a value in the column, until rows may have been put in or changed.
    void markEmpty(const table & owner, const QString & column);
    [[nodiscard]] bool isEmpty(const table & owner, const QString & column) const;
    void forgetEmpty() { m_empty.clear(); }
    /// Remembers that rows have a value in the column that nobody gave.
    void markFilled(const table & owner, const QString & column);
    [[nodiscard]] bool isFilled(const table & owner, const QString & column) const;

private:
    [[nodiscard]] QString keyOf(const QString & name) const { return foldedTable(known, name); }
    /// Calls `take` with each name of the table that is of the space of names that tables are of.
    template <class Taker>
    void takeSharedNames(const table & owner, const Taker & take) const;
    void enter(const table & owner);
    void leave(const table & owner);
    void enter(const QString & key, const index & made);
    void enter(const QString & key, const foreign_key & made);

    held_catalogue m_held;
    QHash<QString, QString> m_relations;           ///< name to the key of the table that it is of
    QHash<QString, QString> m_indexes;             ///< the same, of indexes alone
    QHash<QString, QString> m_triggers;            ///< those that count, by name, to the key of the table
    QHash<QString, int> m_foreignKeys;             ///< how often a name is there
    QHash<QString, std::set<QString>> m_referrers; ///< key of a table to those that refer to it
    QHash<QString, int> m_rows;
    QSet<QString> m_filled;
    QSet<QString> m_empty;
    QSet<QString> m_columnNames;
};

} // namespace database
