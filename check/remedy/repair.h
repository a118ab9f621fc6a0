#pragma once

#include "check/finding/finding.h"
#include "check/remedy/sql_writer.h"
#include "check/view/difference_view.h"

#include "database/facts/known_types.h"

#include <QHash>
#include <QMultiHash>

#include <functional>
#include <utility>

namespace check {

/// What repairs of a database start from: what a step left, and what it should have.
struct repair_ground
{
    const script_view & step;
    const step_changes & changes;
    const step_record & record;
    const database::catalogue & expected; ///< of a new database, as its script made it
    /// The statements of a new database; asked for when a whole table has to be made.
    const std::function<const std::vector<plugin::statement_record> &()> & full;
};

/// A difference with the finding that tells of it, by its index.
struct told_difference
{
    std::size_t finding;
    difference_view what;
};

/// Finds the statements after which a database is like a new one, finding by finding. Each set of statements
/// is run on a simulated database, which takes those of earlier findings for done; a set of which that
/// refuses one is left out.
class repair
{
public:
    /// @param left what the step left
    repair(const repair_ground & from, database::catalogue left);

    /// Fills in the statements of all findings that differences belong to, or names that stayed.
    void fillIn(std::vector<finding> & findings, const std::vector<told_difference> & differences);

private:
    struct pending_rename
    {
        std::size_t finding;
        QString table; ///< of a column; empty for a table
        QString from;
        QString to;
    };

    [[nodiscard]] QString storedTable(const QString & name) const;
    void renameTables(std::vector<finding> & findings);
    void renameColumns(std::vector<finding> & findings);
    void rename(std::vector<finding> & findings, std::vector<pending_rename> pending);
    [[nodiscard]] QStringList renaming(const pending_rename & of, const QString & to) const;
    [[nodiscard]] bool isTaken(const pending_rename & of, const QString & name) const;
    [[nodiscard]] QStringList mend(const std::vector<const difference_view *> & asked);
    [[nodiscard]] QStringList movedAside(const std::vector<const difference_view *> & differences,
                                         database::catalogue & part) const;
    [[nodiscard]] std::vector<schema_difference>
    differencesOf(const std::vector<const difference_view *> & like, const database::catalogue & wanted,
                  const database::catalogue & in) const;
    /// Runs statements; false, and nothing is changed, when one is refused.
    bool run(const QStringList & statements, database::catalogue & on) const;
    bool runOnState(const QStringList & statements, const QStringList & tables);
    [[nodiscard]] static QStringList tablesOf(const pending_rename & of, const QString & to);
    /// The tables by the names that tell them apart, with those that foreign keys connect them with.
    [[nodiscard]] QSet<QString> keysOf(const QStringList & tables);
    void findNeighbours();
    void addHolders(const QString & of, QSet<QString> & keys) const;
    /// Some tables of a catalogue, in normal form.
    [[nodiscard]] database::catalogue partOf(const QSet<QString> & keys,
                                             const database::catalogue & of) const;
    void putBack(const QSet<QString> & keys, database::catalogue & part);

    const repair_ground & m_from;
    const database::facts & m_known;
    const database::known_types m_types;
    sql_writer m_sql;
    database::catalogue m_state;
    QHash<std::pair<int, long>, std::size_t> m_about; ///< findings by the objects that can have kept a name
    QMultiHash<QString, QString> m_neighbours;        ///< tables that a foreign key connects, by their keys
    QMultiHash<QString, QString> m_holders; ///< tables by the names of their indexes and foreign keys
    bool m_hasNeighbours = false;
};

} // namespace check
