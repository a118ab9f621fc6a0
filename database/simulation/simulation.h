#pragma once

#include "database/catalogue/catalogue.h"
#include "database/simulation/verdict.h"

#include <memory>

namespace database {

struct facts;
struct statement;

/// What is known of the values in rows when a statement depends on them.
enum class row_values
{
    fitting,    ///< nothing, or that the statement runs: what follows is judged as if it ran
    conflicting ///< that it is refused
};

/// Runs statements as a database would, without one: a refused statement changes nothing, and what follows is
/// judged by what is there then.
class simulation
{
public:
    /// The facts have to outlive it. `begin` is what the database holds before the first statement.
    explicit simulation(const facts & known, catalogue begin = {});
    ~simulation();
    /// A database that holds the same, and goes on by itself.
    simulation(const simulation & other);
    simulation & operator=(const simulation &) = delete;

    /// Runs one statement. Statements are numbered from 0 in the order in which they are run.
    /// `values` has a say only in what is `maybe_refused`.
    verdict run(const statement & asked, row_values values = row_values::fitting);

    /// The table that the statement run last made, when it makes the same one wherever no name of it is
    /// taken; else none.
    [[nodiscard]] const table * madeByItself(const statement & last) const;
    /// Makes such a table, which counts as running the statement that made it. False, and nothing is done,
    /// where one of its names is taken: then the statement is to be run.
    bool makeAgain(const table & made);

    /// Puts rows into a table, as a program that uses the database would; tables are empty when they are
    /// made. A table that is not there, or has more rows already, is left alone.
    void putRows(const QString & table, int count);
    /// Puts one row into each table that has none.
    void putRowIntoEach();

    /// What the database holds now, in its normal form.
    [[nodiscard]] catalogue held() const;
    /// The same as the statements made it, until the next one is run: types by the words of the scripts.
    [[nodiscard]] const catalogue & stored() const;
    /// The same without a copy, for the last time: nothing is asked of this object afterwards.
    [[nodiscard]] catalogue takeStored();

private:
    class memory;
    std::unique_ptr<memory> m_memory;
};

} // namespace database
