#pragma once

#include "database/facts/facts.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <unordered_map>

namespace database {

/// The parts of a type as it is declared.
struct declared_type
{
    QString word;          ///< the first, in capitals: "VARCHAR"; empty for a type that is missing
    QStringList arguments; ///< between the brackets, without blanks around them
    QString rest;          ///< the other words, in capitals: "UNSIGNED"
    bool isArray = false;  ///< "[]" stands at the end
};

[[nodiscard]] declared_type partsOf(const QString & type);

/// What a database makes of a type.
struct understood_type
{
    const type_word * row = nullptr; ///< none for a type that it does not know, or refuses
    refusal_cause refused = refusal_cause::none;
    QStringList arguments;   ///< with those that the database adds
    bool isUnsigned = false; ///< it has no negative numbers
    bool isArray = false;

    [[nodiscard]] bool isLarge() const { return row != nullptr && row->large && !isArray; }
    /// By itself, not by a word after the type.
    [[nodiscard]] bool counts() const { return row != nullptr && row->counts; }
    /// Without a word that says so.
    [[nodiscard]] bool isUnique() const { return row != nullptr && row->isUnique; }
    /// Characters of a bounded text; 0 for all else.
    [[nodiscard]] int length() const;
    /// Bytes that a value takes in a key.
    [[nodiscard]] int bytes() const;
};

[[nodiscard]] understood_type understoodType(const facts & known, const QString & type);

/// The types of one database, each understood once: a schema has many columns of few types.
class known_types
{
public:
    /// The facts have to outlive it. Not explicit: who asks about one type needs no memory.
    known_types(const facts & known) : m_known(known) {}

    [[nodiscard]] const facts & known() const { return m_known; }
    [[nodiscard]] const understood_type & of(const QString & type) const { return entry(type).understood; }
    /// The type as the database's catalogue shows it; the same for what the catalogue shows.
    [[nodiscard]] const QString & shown(const QString & type) const { return entry(type).shown; }
    /// What the columns of a foreign key and their targets have in common, see family_pair; empty for a type
    /// that neither can have.
    [[nodiscard]] const QString & family(const QString & type) const { return entry(type).family; }
    /// The same text, shared by all who ask for it.
    [[nodiscard]] const QString & shared(const QString & type) const { return entry(type).written; }

private:
    struct known_type
    {
        QString written;
        QString shown;
        QString family;
        understood_type understood;
    };

    /// Of few types that differ in length or in their ends; asked for each column many times.
    struct hash
    {
        std::size_t operator()(const QString & type) const
        {
            return type.isEmpty() ? 0
                                  : static_cast<std::size_t>(type.size()) * 64 +
                                        std::size_t{8} * type.front().unicode() + type.back().unicode();
        }
    };

    [[nodiscard]] const known_type & entry(const QString & type) const;

    const facts & m_known;
    mutable std::unordered_map<QString, known_type, hash> m_types; ///< a reference stays when others come
};

/// Why the database does not take the type; `none` when it does.
[[nodiscard]] refusal_cause refusalOf(const known_types & types, const QString & type);
/// Whether the cause is told before what is there is looked at.
[[nodiscard]] bool isReadFirst(const facts & known, refusal_cause cause);

/// Whether a foreign key may lead from a column of type `from` to one of type `to`.
[[nodiscard]] bool mayRefer(const known_types & types, const QString & from, const QString & to);

/// Whether an index can be on a column of the type.
[[nodiscard]] bool hasOrder(const known_types & types, const QString & type);

/// Whether a unique index over a column of the type is kept as a hash.
[[nodiscard]] bool isHashed(const known_types & types, const QString & type);

/// Text or bytes without a bounded length.
[[nodiscard]] bool isLarge(const known_types & types, const QString & type);

/// Whether the beginning of a value, of so many characters, can be part of a key.
[[nodiscard]] bool takesPrefix(const known_types & types, const QString & type, int characters);

/// The type as the database's catalogue shows it; the same for what the catalogue shows.
[[nodiscard]] QString shownType(const facts & known, const QString & type);

} // namespace database
