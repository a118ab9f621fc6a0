#pragma once

#include "database/server/target_database.h"
#include "database/simulation/simulation.h"
#include "plugin/statement_source.h"
#include "servers/found_refusals.h"

#include <QStringList>

namespace servers {

using namespace database::server;

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
    /// Puts a row into each table that has none; false when there is a table that has none afterwards.
    bool putRows();
    /// Runs a script, statement by statement, and compares the catalogues then. What differs is added to the
    /// misses, headed by `name`.
    void run(const QString & name, const std::vector<plugin::statement_record> & script);

    [[nodiscard]] const foretelling_figures & figures() const { return m_figures; }
    /// The statements of the script that was run last.
    [[nodiscard]] const std::vector<executed_statement> & executed() const { return m_executed; }
    /// What the database holds after it.
    [[nodiscard]] const database::catalogue & held() const { return m_held; }
    /// What the database did since the beginning, in the form of tests/database/cases.
    [[nodiscard]] QString caseText() const;
    /// One for each statement that was foretold otherwise, and each catalogue that differs.
    [[nodiscard]] const QStringList & misses() const { return m_misses; }

private:
    void runStatement(const QString & name, const plugin::statement_record & record,
                      const database::statement & asked);
    void compareCatalogues(const QString & name);

    target_database & m_target;
    std::unique_ptr<database::simulation> m_simulation;
    foretelling_figures m_figures;
    std::vector<executed_statement> m_executed;
    database::catalogue m_held;
    QStringList m_misses;
    QStringList m_case;
    QStringList m_afterwards;
};

} // namespace servers
