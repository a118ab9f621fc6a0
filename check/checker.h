#pragma once

#include "check/finding/finding.h"
#include "check/rules/model_rules.h"
#include "check/view/difference_view.h"
#include "check/view/made_objects.h"
#include "check/view/script.h"

#include "database/simulation/simulation.h"
#include "database/simulation/table_memory.h"

#include <functional>
#include <memory>
#include <optional>

namespace check {

struct told_difference;
class text_positions;

/// Foretells what one database does with scripts that are run one after another: the full script, or those of
/// a history from its first version on. Statements are run one by one, a refused one changes nothing.
class checker
{
public:
    /// The facts have to outlive it. `database` is the word for it on the command line.
    /// @param memory of tables that other checkers of the same database made, and takes those that this one
    /// makes; has to outlive it
    checker(const database::facts & known, const QString & database,
            database::table_memory * memory = nullptr);

    /// The database that it foretells for.
    [[nodiscard]] const database::facts & known() const { return m_known; }
    /// Runs a script. What it has to say of a script goes to `told`, when that is given, the same for all
    /// calls: a script without it is only there for what it leaves to those after it.
    void run(const script & next, report * told);
    /// The same while the statements of the script come one after another; see check/judged_script.h.
    class judged_script;

    /// Tells what the full script that was run left otherwise than its model says, and what is unwise in it.
    /// @param made what stored() says after it
    void lookAtModel(const script & full, const database::catalogue & made, const export_settings & settings,
                     report & told);

    /// Tells what the step that was run last left otherwise than a new database is. Differences that were
    /// there before it are not told again.
    /// @param now what stored() says of a new database, made by the full script of the model after the step
    /// @param before the same of the model before it, asked for when there are differences
    /// @param full the statements of the full script of the model after the step, asked for when one of its
    /// tables has to be made
    void compare(const script & step, const database::catalogue & now,
                 const std::function<database::catalogue()> & before,
                 const std::function<std::vector<plugin::statement_record>()> & full, report & told);

    /// What the scripts made, with the names that it has.
    [[nodiscard]] const made_objects & made() const { return m_made; }
    /// What stored() said before the script that was told last.
    [[nodiscard]] const database::catalogue & storedBefore() const { return m_beforeStep; }
    /// What the database holds now when no table has rows, as the scripts made it.
    [[nodiscard]] const database::catalogue & stored() const { return m_empty.stored(); }
    /// The same without a copy, for the last time: nothing is asked of this object afterwards.
    [[nodiscard]] database::catalogue takeStored() { return m_empty.takeStored(); }
    /// The same in normal form.
    [[nodiscard]] database::catalogue held() const { return m_empty.held(); }

private:
    void begin(const script & next);
    struct refused_statement
    {
        statement_place place;
        int finding = -1; ///< its place in the report; -1 when it is not told
    };

    void addDifference(const difference_view & seen, const script & of, report & told);
    void noteDifference(const schema_difference & what, std::size_t at, report & told);
    /// Tells a difference, or notes what it follows from.
    void tellDifference(const difference_view & of, const script & step, report & told,
                        std::vector<told_difference> & mended);
    [[nodiscard]] const text_positions & positionsIn(const script & of) const;
    /// Adds a finding about a script, which is worth less where all is known from documentation.
    void addTo(report & told, finding one, const script & of) const;

    const database::facts & m_known;
    QString m_database;
    database::table_memory * m_memory;
    database::simulation m_empty;                   ///< no table has rows
    std::optional<database::simulation> m_withRows; ///< each table has a row when a script begins
    made_objects m_made;
    QHash<int, refused_statement> m_refused; ///< by their numbers, for what follows from them
    int m_number = 0;                        ///< of the next statement
    QHash<QString, std::size_t> m_toldAt;    ///< which finding explains a difference, by what it is about
    step_record m_step;                      ///< of the script that was run last
    database::catalogue m_beforeStep;        ///< what was held before it, if it was told
    mutable std::shared_ptr<text_positions> m_positions; ///< of the model that findings were told about last
    mutable std::shared_ptr<model::project> m_positionsOf;
};

} // namespace check
