#include "servers/found_refusals.h"

#include <algorithm>

namespace servers {

void finding_figures::add(const finding_figures & other)
{
    statements += other.statements;
    refused += other.refused;
    found += other.found;
    rightCode += other.rightCode;
    falseAlarms += other.falseAlarms;
    byValues += other.byValues;
    leftOut += other.leftOut;
    catalogues += other.catalogues;
    equalCatalogues += other.equalCatalogues;
}

QString finding_figures::told() const
{
    return QStringLiteral("findings: %1 statements; %2 refused, %3 found, %4 with the right code; %5 false "
                          "alarms, %6 of them by values; %7 left out; %8 of %9 catalogues equal")
        .arg(statements)
        .arg(refused)
        .arg(found)
        .arg(rightCode)
        .arg(falseAlarms)
        .arg(byValues)
        .arg(leftOut)
        .arg(equalCatalogues)
        .arg(catalogues);
}

found_refusals::found_refusals(const database::facts & known) : m_checker(known, known.key) {}

void found_refusals::judge(const check::script & next)
{
    // Findings name others of the same report by their places in it, so each script has a part of one.
    check::report found = m_reports.empty() ? check::report() : m_reports.back();
    m_checker.run(next, &found);
    m_reports.push_back(std::move(found));
}

void found_refusals::begin(bool withRows)
{
    m_next = 0;
    m_withRows = withRows;
    m_isAlike = true;
}

void found_refusals::compare(const std::vector<executed_statement> & executed, bool isWithoutRow)
{
    const check::report & found = m_reports.at(m_next++);
    m_isAlike = m_isAlike && !isWithoutRow;
    for (const executed_statement & each : executed) {
        if (!m_isAlike) {
            ++m_figures.leftOut;
            continue;
        }
        compare(each, refusalOf(found, each.place));
    }
}

void found_refusals::compareCatalogue(const database::catalogue & of)
{
    const database::catalogue_difference differs = database::difference(of, held());
    ++m_figures.catalogues;
    m_figures.equalCatalogues += differs.isEmpty() ? 1 : 0;
    if (!differs.isEmpty()) {
        m_misses += QStringLiteral("the catalogues differ\n    only in the database: ") +
                    differs.onlyFirst.join(QStringLiteral("\n        ")) +
                    QStringLiteral("\n    only in the check: ") +
                    differs.onlySecond.join(QStringLiteral("\n        "));
    }
}

/// The finding that says that the statement is refused; null when there is none.
const check::finding * found_refusals::refusalOf(const check::report & in,
                                                 const check::statement_place & of) const
{
    const auto found = std::find_if(in.findings.begin(), in.findings.end(), [&](const check::finding & each) {
        return each.what == check::effect::refused && each.statement && each.statement->script == of.script &&
               each.statement->line == of.line && each.statement->text == of.text &&
               (m_withRows || each.when == check::occasion::always);
    });
    return found == in.findings.end() ? nullptr : &*found;
}

void found_refusals::compare(const executed_statement & executed, const check::finding * found)
{
    const bool hasRightCode = found != nullptr && found->error == executed.code;
    ++m_figures.statements;
    if (executed.isDone) {
        m_figures.falseAlarms += found != nullptr ? 1 : 0;
        m_figures.byValues += found != nullptr && executed.isByValues ? 1 : 0;
    } else {
        ++m_figures.refused;
        m_figures.found += found != nullptr ? 1 : 0;
        m_figures.rightCode += hasRightCode ? 1 : 0;
    }
    // A finding about a statement that is refused without rows, too, has the code of that.
    const bool isTold = found != nullptr && (hasRightCode || m_withRows);
    // What rows keep from running before it may be what it is refused for without rows.
    const bool mayRun =
        found == nullptr || executed.isByValues || (m_withRows && found->when == check::occasion::always);
    const bool isFound = executed.isDone ? mayRun : isTold;
    if (!isFound) {
        m_misses += executed.place.script + QStringLiteral(" line %1: ").arg(executed.place.line) +
                    executed.place.text.left(400) + QStringLiteral("\n    database: ") +
                    (executed.isDone ? QStringLiteral("runs") : executed.code) +
                    QStringLiteral("\n    check: ") +
                    (found == nullptr
                         ? QStringLiteral("runs")
                         : found->code + QLatin1Char(' ') + found->error + QLatin1Char(' ') + found->message);
    }
    // What follows was judged as if what depends on values was done.
    const bool isOther = executed.isByValues && !executed.isDone;
    const bool isFalseAlarm = executed.isDone && found != nullptr && !executed.isByValues;
    m_isAlike = !m_withRows || (isFound && !isOther && !isFalseAlarm);
}

} // namespace servers
