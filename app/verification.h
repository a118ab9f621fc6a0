#pragma once

#include "check/finding/finding.h"
#include "plugin/statement_source.h"
#include "zk/zk_bool.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace database::server {
class target_database;
}

namespace app {

class source;

/// A statement that a database refused.
struct verified_refusal
{
    check::statement_place place;
    QString code;           ///< the server's own
    QString words;          ///< the server's
    QString foretoldBy;     ///< code of the finding; empty when nobody foretold it
    bool withRows = false;  ///< whether the tables had rows
    bool withNulls = false; ///< whether these had nulls where a column allows one
};

/// Something that a database has otherwise than expected.
struct verified_difference
{
    QString version; ///< after which it is there: "v2", "now"
    QString object;  ///< "column t_gig.length"
    QString expected;
    QString found;
    QString explainedBy; ///< code of the finding; empty when nothing explains it
    QString ordered;     ///< the table, where no more differs than the order of its columns; else empty
};

/// A value that is not where its property is now.
struct lost_value
{
    QString version; ///< before which it was put in
    QString object;  ///< "property concert.length"
    QString value;
    QString explainedBy;
};

/// What running the scripts on one database proved.
struct database_proof
{
    QString database;    ///< key
    QString server;      ///< its own version text; empty when it did not run
    QString missing;     ///< why it did not run
    QStringList scripts; ///< that were run, by name
    int fullStatements = 0;
    std::vector<verified_refusal> fullRefused;
    int chainStatements = 0; ///< without rows
    std::vector<verified_refusal> chainRefused;
    std::vector<verified_difference> chainDifferences; ///< a history from a new database
    std::vector<verified_difference> modelDifferences; ///< a database from what was foretold of it
    int values = 0;
    int kept = 0;
    std::vector<lost_value> lost;
    QStringList emptyTables; ///< that took no row, so that nothing is proven of theirs
    int refused = 0;         ///< in all runs
    int foretold = 0;
    int falseAlarms = 0; ///< statements that were foretold to be refused, and ran

    /// Whether everything that was refused, differs or was lost has been foretold.
    [[nodiscard]] bool isOk() const;
};

struct verification
{
    QString project;
    std::vector<database_proof> proofs;

    [[nodiscard]] bool isOk() const;
};

/// What is to be proven.
struct verification_request
{
    plugin::friendly_settings options; ///< of the export, beside its database
    int from = 1;                      ///< versions before this one are run and not told
    /// Told how far the work is: versions of how many. Another thread may call it, but no two at once.
    std::function<void(int done, int total)> progress;
};

/// Runs the scripts of `of` on `target`, whose database holds nothing else, and compares. A failure, which is
/// one line, leaves in `proof` what was proven until then.
[[nodiscard]] zk::ZkBool verifyOn(database::server::target_database & target,
                                  plugin::statement_source & statements, source & of,
                                  const verification_request & asked, database_proof & proof);

} // namespace app
