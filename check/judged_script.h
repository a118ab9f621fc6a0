#pragma once

#include "check/checker.h"
#include "check/finding/rule.h"
#include "check/view/told_statement.h"

#include "database/statement/reader.h"

#include <vector>

namespace check {

/// The run of one script, statement by statement, and what there is to say of it.
class checker::judged_script
{
public:
    /// Begins the script `next`, whose own records have no say in what is run. All have to outlive this
    /// object, and `of` runs nothing else meanwhile.
    /// @param told receives what there is to say; null for a script that is only there for what it leaves
    judged_script(checker & of, const script & next, report * told);

    void run(const plugin::statement_record & record);
    /// The same when the statements of its text were read already.
    void run(const plugin::statement_record & record, const std::vector<database::statement> & statements);
    /// Tells what there is to say when all of the script was run.
    void end();

    /// The statements of a record.
    [[nodiscard]] static std::vector<database::statement> read(database::statement_reader & with,
                                                               const plugin::statement_record & record);

private:
    bool isMadeAgain(const plugin::statement_record & record);
    [[nodiscard]] bool isMemorable(const plugin::statement_record & record) const;
    void remember(const plugin::statement_record & record, const database::statement & only);
    void runStatement(const plugin::statement_record & record, const database::statement & read);
    void keepColumn(const plugin::statement_record & record);
    void tell(const told_statement & of, occasion when, int number);
    void tellDone(const told_statement & of);
    void tellHalfApplied();
    void tellRefusal(const told_statement & of, occasion when, int number);
    void repeatAfter(int finding, const told_statement & of);
    [[nodiscard]] QString nameOf(const statement_place & of) const;
    void add(finding told, const told_statement & of, occasion when);

    checker & m_of;
    const script & m_next;
    report * m_told;
    script_view m_view;
    database::statement_reader m_reader;
    check::run m_run;
    bool m_wasRefused = false; ///< the last statement was, by empty tables
    int m_refused = 0;         ///< statements that are refused whatever there is in rows
};

} // namespace check
