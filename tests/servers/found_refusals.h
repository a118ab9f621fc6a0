#pragma once

#include "check/checker.h"

#include <QStringList>

#include <vector>

namespace servers {

/// A statement that a database was given.
struct executed_statement
{
    check::statement_place place;
    bool isDone = false;
    QString code;            ///< the database's own, when it was refused
    bool isByValues = false; ///< what rows hold decides whether it is refused, which nobody foretells
};

/// How findings compare with a database.
struct finding_figures
{
    int statements = 0;  ///< compared
    int refused = 0;     ///< by the database
    int found = 0;       ///< of these: with a finding that says so
    int rightCode = 0;   ///< of those: with the database's own code
    int falseAlarms = 0; ///< found as refused, and ran
    int byValues = 0;    ///< of these: if rows have such values
    int leftOut =
        0; ///< statements with rows after one that was decided by values, or without a row to put in
    int catalogues = 0; ///< of the chain
    int equalCatalogues = 0;

    void add(const finding_figures & other);
    [[nodiscard]] QString told() const;
};

/// What a check finds about scripts that are run one after another, beside what a database said to them.
class found_refusals
{
public:
    /// The facts have to outlive it.
    explicit found_refusals(const database::facts & known);

    /// Judges the next script.
    void judge(const check::script & next);
    /// What the database holds after the script that was judged last.
    [[nodiscard]] database::catalogue held() const { return m_checker.held(); }

    /// Begins to compare, from the first script on, with a database whose tables have rows before each
    /// script, or never.
    void begin(bool withRows);
    /// Compares the next of the scripts. `isWithoutRow` says that a table has none though it should.
    void compare(const std::vector<executed_statement> & executed, bool isWithoutRow);
    /// Compares the catalogue after the script that was judged last.
    void compareCatalogue(const database::catalogue & of);

    [[nodiscard]] const finding_figures & figures() const { return m_figures; }
    /// One for each statement that was found otherwise.
    [[nodiscard]] const QStringList & misses() const { return m_misses; }

private:
    [[nodiscard]] const check::finding * refusalOf(const check::report & in,
                                                   const check::statement_place & of) const;
    void compare(const executed_statement & executed, const check::finding * found);

    check::checker m_checker;
    std::vector<check::report> m_reports; ///< one a script
    finding_figures m_figures;
    QStringList m_misses;
    std::size_t m_next = 0;
    bool m_withRows = false;
    bool m_isAlike = true; ///< the database holds what was foretold
};

} // namespace servers
