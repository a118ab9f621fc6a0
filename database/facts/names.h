#pragma once

#include "database/facts/facts.h"
#include "database/facts/reserved_words.h"

#include <QString>

namespace database {

/// A name as a statement writes it.
struct identifier
{
    QString text;
    QChar quote; ///< that it stands in; null for none

    bool operator==(const identifier &) const = default;
};

/// What two table names of the database have in common exactly when they are one.
[[nodiscard]] QString foldedTable(const facts & known, const QString & name);
/// The same for names of columns, indexes, sequences and constraints.
[[nodiscard]] QString foldedName(const facts & known, const QString & name);

/// Whether letters of such names have nothing to say but with the letter at the same place: the case of A to
/// Z may not count, but all else does.
[[nodiscard]] bool areComparedByLetters(const facts & known);
/// Whether two names of columns, indexes, sequences or constraints are one.
[[nodiscard]] bool isSameName(const facts & known, const QString & a, const QString & b);

/// Whether the name is no longer than names of the database can be.
[[nodiscard]] bool isShort(const facts & known, const QString & name);

/// Whether the database reads the text as a number, or as no value.
[[nodiscard]] bool isLiteral(const QString & text);

/// Whether the text has the shape of names with points between them.
[[nodiscard]] bool isQualified(const facts & known, const QString & text);

/// What the database makes of a name that a statement writes.
struct understood_name
{
    QString name; ///< as it is stored
    refusal_cause refused = refusal_cause::none;
    bool isCut = false;
};
[[nodiscard]] understood_name understood(const facts & known, const identifier & written, name_place place);

/// The name as it is stored; what is written where the database cannot read that.
[[nodiscard]] QString storedName(const facts & known, const identifier & written, name_place place);
/// The same of a name without quotes.
[[nodiscard]] QString storedName(const facts & known, const QString & name, name_place place);

/// What two names that statements write have in common exactly when the database takes them for one.
[[nodiscard]] QString nameKey(const facts & known, const identifier & written, name_place place);
/// The same of a name without quotes.
[[nodiscard]] QString nameKey(const facts & known, const QString & name, name_place place);

/// A name that is stored, as a statement has to write it: in quotes where it would be read otherwise.
[[nodiscard]] QString writtenName(const facts & known, const QString & stored, name_place place);

/// The name that the database makes up for what belongs to a table and, unless that is empty, a column: the
/// parts with low lines between, cut until they fit. Not yet made different from names that are taken.
[[nodiscard]] QString impliedName(const facts & known, const QString & table, const QString & column,
                                  const QString & label);

} // namespace database
