#include "servers/foretelling.h"

#include "database/server/table_rows.h"
#include "database/server/target_database.h"

#include "check/view/statement_place.h"
#include "database/statement/reader.h"

#include <algorithm>

namespace servers {

namespace {

QString told(const database::verdict & said)
{
    switch (said.what) {
    case database::outcome::done:
        return QStringLiteral("runs");
    case database::outcome::refused:
        return QStringLiteral("refused, ") + said.code + QStringLiteral(", about ") + said.object;
    case database::outcome::maybe_refused:
        return QStringLiteral("refused with some values, ") + said.code;
    case database::outcome::not_judged:
        return QStringLiteral("not judged");
    }
    return {};
}

database::writer writerOf(const plugin::statement_record & record)
{
    return record.isReplaced() ? database::writer::anyone : database::writer::exporter;
}

QString told(bool isDone, const server_error & error)
{
    return isDone ? QStringLiteral("runs") : error.code + QLatin1Char(' ') + error.words.simplified();
}

} // namespace

void foretelling_figures::add(const foretelling_figures & other)
{
    statements += other.statements;
    notJudged += other.notJudged;
    refused += other.refused;
    foretold += other.foretold;
    byValues += other.byValues;
    rightCode += other.rightCode;
    falseAlarms += other.falseAlarms;
    valuesFitted += other.valuesFitted;
    catalogues += other.catalogues;
    equalCatalogues += other.equalCatalogues;
}

QString foretelling_figures::told() const
{
    return QStringLiteral(
               "%1 statements, %2 not judged; %3 refused, %4 foretold (%5 as depending on values), "
               "%6 with the right code; %7 false alarms; %8 depending on values that ran; "
               "%9 of %10 catalogues equal")
        .arg(statements)
        .arg(notJudged)
        .arg(refused)
        .arg(foretold)
        .arg(byValues)
        .arg(rightCode)
        .arg(falseAlarms)
        .arg(valuesFitted)
        .arg(equalCatalogues)
        .arg(catalogues);
}

foretelling::foretelling(target_database & target) : m_target(target) {}

void foretelling::begin()
{
    QString error;
    if (!m_target.reset(error)) {
        qFatal("%s", qPrintable(error));
    }
    m_simulation = std::make_unique<database::simulation>(m_target.known());
    m_case = {QStringLiteral("database ") + m_target.known().key};
}

QString foretelling::caseText() const
{
    return (m_case + QStringList(QStringLiteral("afterwards")) + m_afterwards).join(QLatin1Char('\n'));
}

bool foretelling::putRows()
{
    int number = 1000; // four digits, as a UUID wants them
    server_error error;
    m_target.execute(m_target.foreignKeyChecks(false), error);
    const QMap<QString, int> counts = putRowIntoEach(m_target, m_target.held(), row_content::values, number);
    m_target.execute(m_target.foreignKeyChecks(true), error);
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it) {
        m_simulation->putRows(it.key(), it.value());
    }
    return std::all_of(counts.constBegin(), counts.constEnd(), [](int count) { return count > 0; });
}

void foretelling::run(const QString & name, const std::vector<plugin::statement_record> & script)
{
    m_executed.clear();
    m_case += QLatin1String(m_case.size() == 1 ? "begin" : "step");
    for (const plugin::statement_record & record : script) {
        for (const database::statement & asked :
             database::statement_reader(m_target.known()).read(record.text, writerOf(record))) {
            runStatement(name, record, asked);
        }
    }
    compareCatalogues(name);
}

void foretelling::runStatement(const QString & name, const plugin::statement_record & record,
                               const database::statement & asked)
{
    server_error error;
    const bool isDone = m_target.execute(asked.text, error);
    const database::verdict said =
        m_simulation->run(asked, isDone ? database::row_values::fitting : database::row_values::conflicting);
    const bool isForetold = said.what == database::outcome::refused;
    const bool isByValues = said.what == database::outcome::maybe_refused;
    const bool hasRightCode = said.code == error.code;
    m_executed.push_back({check::placeOf(record, asked), isDone, error.code, isByValues});
    ++m_figures.statements;
    m_figures.notJudged += said.what == database::outcome::not_judged ? 1 : 0;
    if (isDone) {
        m_figures.falseAlarms += isForetold ? 1 : 0;
        m_figures.valuesFitted += isByValues ? 1 : 0;
    } else {
        ++m_figures.refused;
        m_figures.foretold += isForetold || isByValues ? 1 : 0;
        m_figures.byValues += isByValues ? 1 : 0;
        m_figures.rightCode += (isForetold || isByValues) && hasRightCode ? 1 : 0;
    }
    const bool isRight = isDone ? !isForetold && said.what != database::outcome::not_judged
                                : (isForetold || isByValues) && hasRightCode;
    m_case += QStringLiteral("> ") + asked.text.simplified();
    if (!isDone) {
        m_case += QStringLiteral("refused ") + error.code;
    }
    if (!isRight) {
        m_misses += name + QStringLiteral(": ") + asked.text.left(400) + QStringLiteral("\n    database: ") +
                    told(isDone, error) + QStringLiteral("\n    foretold: ") + told(said);
    }
}

void foretelling::compareCatalogues(const QString & name)
{
    m_held = m_target.held();
    const auto found = database::difference(m_held, m_simulation->held());
    m_afterwards = database::linesOf(m_held);
    ++m_figures.catalogues;
    m_figures.equalCatalogues += found.isEmpty() ? 1 : 0;
    if (!found.isEmpty()) {
        m_misses += name + QStringLiteral(": the catalogues differ\n    only in the database: ") +
                    found.onlyFirst.join(QStringLiteral("\n        ")) +
                    QStringLiteral("\n    only foretold: ") +
                    found.onlySecond.join(QStringLiteral("\n        "));
    }
}

} // namespace servers
