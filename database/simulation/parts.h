#pragma once

#include "database/simulation/state.h"
#include "database/statement/change.h"

namespace database {

/// Whether that is told once the text is read: where a name leads is not part of how it is written.
[[nodiscard]] bool isLookedUp(refusal_cause cause);

/// Reads the names of one statement, one after the other. After the first that the database does not take,
/// all are passed over; the refusal stands.
class name_reader
{
public:
    name_reader(const facts & rules, losses & lost) : m_known(rules), m_lost(lost) {}

    /// The name of a table that is to be there.
    QString table(const identifier & written, name_place place = name_place::named_table);
    /// The same of one that is made, which can be in another schema.
    QString createdTable(const identifier & written) { return read(written, name_place::table); }
    QString other(const identifier & written) { return read(written, name_place::other); }
    QStringList others(const std::vector<identifier> & written);
    /// The new name of a table, which cannot name a schema.
    QString newTable(const identifier & written);

    /// The name of a column that is defined.
    QString newColumn(const identifier & written);

    /// A name that the database looks for, or measures once it has found what the name is for.
    QString lookedFor(const identifier & written, name_place place = name_place::other);
    QStringList allLookedFor(const std::vector<identifier> & written);

    [[nodiscard]] const refusal & why() const { return m_why; }

private:
    QString read(const identifier & written, name_place place);

    const facts & m_known;
    losses & m_lost;
    refusal m_why;
};

/// Whether the name is longer than what can be made under it.
[[nodiscard]] refusal checkNameLength(const facts & known, const identifier & written);
/// Whether the database keeps the name of a table for itself.
[[nodiscard]] bool isKept(const facts & known, const QString & table);
/// Whether the name ends in a way that no name of a column may.
[[nodiscard]] bool endsInBlank(const facts & known, const QString & name);
[[nodiscard]] bool isSystemColumn(const facts & known, const QString & name);
/// What of a column's type is told before what is there is looked at. Here and below `type` is what the
/// database makes of the type of the column that is asked for.
[[nodiscard]] refusal_cause readType(const facts & known, const understood_type & type,
                                     const column_definition & asked);
/// Whether the column can have the name beside those that the table has.
[[nodiscard]] refusal checkColumnName(const state & at, const table & owner, const QString & name);
/// Whether the column can have its type, and be counted if it is to be.
[[nodiscard]] refusal checkColumnType(const state & at, const table & owner, const understood_type & type,
                                      const column_definition & asked, const QString & name);
[[nodiscard]] column columnOf(const known_types & types, const understood_type & type,
                              const column_definition & asked, const QString & name);
/// The name of an index that is named like its first column, with a number after it while that is taken.
[[nodiscard]] QString nameLikeColumn(const state & at, const table & owner, const QString & column);
/// The index that a unique column gets, beside those of the table.
[[nodiscard]] index uniqueIndex(const state & at, const table & owner, const QString & name,
                                const QSet<QString> & taken);
[[nodiscard]] QStringList columnsOf(const std::vector<key_part> & parts);
/// Whether these columns are the first ones, in their order.
[[nodiscard]] bool beginsWith(const std::vector<key_part> & parts, const QStringList & columns);
} // namespace database
