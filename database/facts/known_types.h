#pragma once

#include "database/facts/facts.h"

#include <QString>
#include <QStringList>

namespace database {

/// The parts of a type as it is declared.
struct declared_type
{
    QString word;          ///< the first, in capitals: "VARCHAR"; empty for a type that is missing
    QStringList arguments; ///< between the brackets, without blanks around them
    QString rest;          ///< what follows, in capitals: "UNSIGNED"

    /// The only number in the brackets; 0 when there is none, or more than one.
    [[nodiscard]] int length() const;
};

[[nodiscard]] declared_type partsOf(const QString & type);

/// What the database knows of the type's word; none when it does not know it.
[[nodiscard]] const type_word * knownType(const facts & known, const declared_type & type);

/// Why the database does not take the type; `none` when it does.
[[nodiscard]] refusal_cause refusalOf(const facts & known, const QString & type);

/// Whether a foreign key may lead from a column of type `from` to one of type `to`.
[[nodiscard]] bool mayRefer(const facts & known, const QString & from, const QString & to);

/// Whether a unique index over a column of the type is kept as a hash.
[[nodiscard]] bool isHashed(const facts & known, const QString & type);

/// Text or bytes without a bounded length.
[[nodiscard]] bool isLarge(const facts & known, const QString & type);

/// Whether the beginning of a value, of so many characters, can be part of a key.
[[nodiscard]] bool takesPrefix(const facts & known, const QString & type, int characters);

/// The type as the database's catalogue shows it.
[[nodiscard]] QString shownType(const facts & known, const QString & type);

} // namespace database
