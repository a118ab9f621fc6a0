#pragma once

#include "check/finding/rule.h"

#include "database/catalogue/catalogue.h"
#include "database/facts/facts.h"

#include <QStringList>

namespace check {

/// Words statements that change what is there as one database does.
class sql_writer
{
public:
    /// The facts have to outlive it.
    explicit sql_writer(const database::facts & known) : m_known(known) {}

    [[nodiscard]] const database::statement_words & words() const { return m_known.words.value; }

    [[nodiscard]] QString table(const QString & stored) const;
    [[nodiscard]] QString name(const QString & stored) const;
    [[nodiscard]] QString names(const QStringList & stored) const;
    [[nodiscard]] QString parts(const std::vector<database::key_part> & of) const;
    /// The type of a column with its constraints.
    [[nodiscard]] QString definition(const database::column & of) const;
    /// A value that stands for none in a column that has to have one.
    [[nodiscard]] QString filling(const database::column & of) const;

    /// The statements of one of words(), one each; none when the database has no such statement.
    [[nodiscard]] static QStringList statements(const char * words, const values & with);
    /// The same about a column, whose names and definition are filled in.
    [[nodiscard]] QStringList about(const char * words, const QString & in,
                                    const database::column & of) const;
    /// Copies columns of a table, or all when there are none, into another one.
    [[nodiscard]] QStringList copy(const QString & of, const QStringList & columns,
                                   const QString & into) const;
    [[nodiscard]] QStringList addForeignKey(const QString & to, const database::foreign_key & key) const;

private:
    const database::facts & m_known;
};

} // namespace check
