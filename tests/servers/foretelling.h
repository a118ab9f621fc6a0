#pragma once

#include "database/simulation/simulation.h"
#include "plugin/statement_source.h"

#include <QStringList>

namespace servers {

class target_database;

/// How the simulation compares with a database.
struct foretelling_figures
{
    int statements = 0;
    int notJudged = 0;
    int refused = 0;      ///< by the database
    int foretold = 0;     ///< of these: as refused, or as refused if the rows have such values
    int byValues = 0;     ///< of these: the second
    int rightCode = 0;    ///< of those foretold: with the database's own code
    int falseAlarms = 0;  ///< foretold as refused, and ran
    int valuesFitted = 0; ///< foretold as depending on values, and ran
    int catalogues = 0;   ///< compared
    int equalCatalogues = 0;

    void add(const foretelling_figures & other);
    [[nodiscard]] QString told() const;
};

/// Scripts that are run on a database and through the simulation, side by side.
class foretelling
{
public:
    explicit foretelling(target_database & target);

    /// Empties the database and begins anew.
    void begin();
    /// Puts a row into each table that has none.
    void putRows();
    /// Runs a script, statement by statement, and compares the catalogues then. What differs is added to the
    /// misses, headed by `name`.
    void run(const QString & name, const std::vector<plugin::statement_record> & script);

    [[nodiscard]] const foretelling_figures & figures() const { return m_figures; }
    /// What the database did since the beginning, in the form of tests/database/cases.
    [[nodiscard]] QString caseText() const;
    /// One for each statement that was foretold otherwise, and each catalogue that differs.
    [[nodiscard]] const QStringList & misses() const { return m_misses; }

private:
    void runStatement(const QString & name, const database::statement & asked);
    void compareCatalogues(const QString & name);

    target_database & m_target;
    std::unique_ptr<database::simulation> m_simulation;
    foretelling_figures m_figures;
    QStringList m_misses;
    QStringList m_case;
    QStringList m_afterwards;
};

} // namespace servers
