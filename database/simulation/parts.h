#pragma once

#include "database/simulation/state.h"
#include "database/statement/change.h"

namespace database {

/// Reads the names of one statement, one after the other. After the first that the database does not take,
/// all are passed over; the refusal stands.
class name_reader
{
public:
    name_reader(const facts & rules, losses & lost) : m_known(rules), m_lost(lost) {}

    QString table(const identifier & written) { return read(written, name_place::table); }
    QString other(const identifier & written) { return read(written, name_place::other); }
    QStringList others(const std::vector<identifier> & written);
    /// The same for the new name of a table, which cannot name a schema.
    QString newTable(const identifier & written);

    /// The same for a name that the database looks for, or measures once it has found what the name is for.
    QString lookedFor(const identifier & written);

    [[nodiscard]] const refusal & why() const { return m_why; }

private:
    QString read(const identifier & written, name_place place);

    const facts & m_known;
    losses & m_lost;
    refusal m_why;
};

/// Whether the name is longer than what can be made under it.
[[nodiscard]] refusal tooLong(const facts & known, const identifier & written);
[[nodiscard]] bool isSystemColumn(const facts & known, const QString & name);
[[nodiscard]] bool countsByType(const facts & known, const column_definition & asked);
/// Whether the column can be made beside those that the table has.
[[nodiscard]] refusal checkColumn(const state & at, const table & owner, const column_definition & asked,
                                  const QString & name);
[[nodiscard]] column columnOf(const facts & known, const column_definition & asked, const QString & name);
/// The index that a unique column gets, beside those of the table.
[[nodiscard]] index uniqueIndex(const state & at, const table & owner, const QString & column,
                                const QSet<QString> & taken);
[[nodiscard]] QStringList columnsOf(const std::vector<key_part> & parts);
/// A prefix that is as long as the text is no prefix.
[[nodiscard]] int keptPrefix(const QString & type, int prefix);

} // namespace database
