#include "check/judged_script.h"

#include "check/remedy/row_repair.h"
#include "check/rules/loss_rules.h"
#include "check/rules/refusal_rules.h"
#include "check/rules/statement_rules.h"
#include "check/view/statement_place.h"

#include "model/property.h"

#include <algorithm>

namespace check {

namespace {

bool isRefused(const database::verdict & said)
{
    return said.what == database::outcome::refused;
}

} // namespace

checker::judged_script::judged_script(checker & of, const script & next, report * told)
    : m_of(of), m_next(next), m_told(told), m_view(next, of.m_known, of.m_made), m_reader(of.m_known)
{
    m_run.database = of.m_database;
    m_run.basis = (of.m_known.isTried ? QLatin1String("run on ") : QLatin1String("documentation of ")) +
                  of.m_known.label;
    m_run.script = next.name;
    m_run.from = next.from;
    m_run.to = next.to;
    m_run.step = next.step;
    of.begin(next);
    of.m_beforeStep = told != nullptr && !next.isFull ? of.stored() : database::catalogue();
}

std::vector<database::statement> checker::judged_script::read(database::statement_reader & with,
                                                              const plugin::statement_record & record)
{
    return with.read(record.text,
                     record.isReplaced() ? database::writer::anyone : database::writer::exporter);
}

void checker::judged_script::run(const plugin::statement_record & record)
{
    if (!isMadeAgain(record)) {
        run(record, read(m_reader, record));
    }
}

void checker::judged_script::run(const plugin::statement_record & record,
                                 const std::vector<database::statement> & statements)
{
    m_view.see(record);
    for (const database::statement & read : statements) {
        runStatement(record, read);
    }
    if (statements.size() == 1) {
        remember(record, statements.front());
    }
    if (statements.empty() && record.property != 0 && !record.text.trimmed().isEmpty()) {
        m_of.m_step.commented.insert(record.property);
        keepColumn(record);
    }
}

void checker::judged_script::end()
{
    if (m_told != nullptr) {
        m_told->runs.push_back(m_run);
        tellHalfApplied();
    }
}

/// Makes the table anew that the same text made elsewhere, when nothing is to be told of it.
bool checker::judged_script::isMadeAgain(const plugin::statement_record & record)
{
    const bool isSilent = m_told == nullptr && !m_of.m_withRows;
    const auto * const known = isSilent && isMemorable(record) ? m_of.m_memory->find(record.text) : nullptr;
    if (known == nullptr || !m_of.m_empty.makeAgain(known->made)) {
        return false;
    }
    ++m_of.m_number;
    m_of.m_made.addTable(known->written, record);
    return true;
}

/// Whether it makes a table of which the text of the record says all.
bool checker::judged_script::isMemorable(const plugin::statement_record & record) const
{
    using plugin::statement_action;
    return m_of.m_memory != nullptr && !record.isReplaced() &&
           (record.action == statement_action::create_table ||
            record.action == statement_action::create_extra_table);
}

void checker::judged_script::remember(const plugin::statement_record & record,
                                      const database::statement & only)
{
    const database::table * const made =
        !m_wasRefused && isMemorable(record) ? m_of.m_empty.madeByItself(only) : nullptr;
    if (made != nullptr) {
        m_of.m_memory->add(record.text, {std::get<database::create_table>(only.asked).table.text, *made});
    }
}

void checker::judged_script::runStatement(const plugin::statement_record & record,
                                          const database::statement & read)
{
    const database::verdict empty = m_of.m_empty.run(read);
    const database::verdict withRows = m_of.m_withRows ? m_of.m_withRows->run(read) : empty;
    const int number = m_of.m_number++;
    ++m_run.statements;
    m_run.judged += empty.what == database::outcome::not_judged ? 0 : 1;
    m_wasRefused = isRefused(empty);
    const bool always = isRefused(empty) || withRows.what == database::outcome::not_judged;
    const database::verdict & said = always ? empty : withRows;
    if (isRefused(said)) {
        m_of.m_refused.insert(number, {placeOf(record, read), -1});
    }
    if (isRefused(empty)) {
        ++m_refused;
        ++m_of.m_step.refused;
        m_of.m_made.addRefused(read, record);
        m_of.m_step.refusedEntities.insert(record.entity);
        if (record.property != 0) {
            m_of.m_step.refusedProperties.insert(record.property);
        }
    }
    if (m_told != nullptr) {
        const told_statement told(m_view, record, read, said);
        tell(told, always ? occasion::always : occasion::rows, number);
        // Where it is refused by rows alone it runs else, and costs what it costs.
        if (isRefused(said) && !isRefused(empty)) {
            tellDone(told_statement(m_view, record, read, empty));
        }
    }
    // Of a new database that nothing is told of only what it holds is asked.
    if (!isRefused(empty) && !(m_next.isFull && m_told == nullptr)) {
        m_of.m_made.add(read, record);
    }
}

/// A rename that stands in the script as a comment alone leaves the name as it is.
void checker::judged_script::keepColumn(const plugin::statement_record & record)
{
    const auto before = record.action == plugin::statement_action::rename_column && m_next.before
                            ? findProperty(*m_next.before, record.entity, record.property)
                            : nullptr;
    const QStringList columns = before ? columnNamesOf(*before) : QStringList();
    if (columns.size() == 1) {
        m_of.m_made.keepColumn(record.property, columns.front());
    }
}

void checker::judged_script::tell(const told_statement & of, occasion when, int number)
{
    using database::outcome;
    switch (of.said().what) {
    case outcome::refused:
        tellRefusal(of, when, number);
        break;
    case outcome::maybe_refused:
        tellRefusal(of, when, number);
        tellDone(of);
        break;
    case outcome::not_judged:
        add(notJudged(of), of, occasion::always);
        break;
    case outcome::done:
        tellDone(of);
        break;
    }
    for (const database::loss & each : of.said().losses) {
        if (std::optional<finding> told = explainLoss(of, each)) {
            const occasion whenLost = told->when;
            // A new database has the cut name as well, so that explains no difference.
            if (each.kind != database::loss_kind::name_cut) {
                m_of.m_step.toldProperties.insert(of.record().property);
            }
            const bool isGone =
                each.kind == database::loss_kind::rows || each.kind == database::loss_kind::values;
            if (isGone) {
                addRowCopy(told->way, of, m_of.m_beforeStep);
            }
            add(std::move(*told), of, whenLost);
        }
    }
}

/// What a statement that runs costs others.
void checker::judged_script::tellDone(const told_statement & of)
{
    for (finding & each : explainDone(of)) {
        add(std::move(each), of, occasion::always);
    }
}

/// A script with a statement that is always refused is done in parts.
void checker::judged_script::tellHalfApplied()
{
    if (m_refused == 0 || m_refused == m_run.statements || !m_view.isStep()) {
        return;
    }
    finding told = halfApplied({{QStringLiteral("db"), m_of.m_known.label},
                                {QStringLiteral("refused"), QString::number(m_refused)},
                                {QStringLiteral("done"), QString::number(m_run.statements - m_refused)}});
    m_of.addTo(*m_told, std::move(told), m_next);
}

void checker::judged_script::tellRefusal(const told_statement & of, occasion when, int number)
{
    const auto cause = m_of.m_refused.constFind(of.said().consequenceOf);
    const bool follows = cause != m_of.m_refused.constEnd();
    finding told = explainRefusal(of, follows ? nameOf(cause->place) : QString());
    // Whether it happens depends on values, which nobody knows here.
    if (of.said().what == database::outcome::maybe_refused) {
        told.weight = std::min(told.weight, severity::warning);
    }
    told.consequenceOf = follows ? cause->finding : -1;
    if (when == occasion::rows || of.said().what == database::outcome::maybe_refused) {
        addRowRepair(told.way, of);
    }
    addSchema(told.way, of);
    if (follows && told.consequenceOf >= 0 && when == occasion::rows) {
        repeatAfter(told.consequenceOf, of);
    }
    const auto index = static_cast<int>(m_told->findings.size());
    add(std::move(told), of, when);
    if (const auto own = m_of.m_refused.find(number); own != m_of.m_refused.end()) {
        own->finding = index;
    }
}

/// What rows alone refuse in the wake of another statement is run again once that is mended.
void checker::judged_script::repeatAfter(int finding, const told_statement & of)
{
    check::remedy & way = m_told->findings.at(static_cast<std::size_t>(finding)).way;
    if (!way.sql.isEmpty()) {
        way.sql += placeOf(of.record(), of.read()).text;
    }
}

QString checker::judged_script::nameOf(const statement_place & of) const
{
    return of.script == m_next.name
               ? QStringLiteral("line %1").arg(of.line)
               : QStringLiteral("line %1 of %2").arg(QString::number(of.line), of.script);
}

void checker::judged_script::add(finding told, const told_statement & of, occasion when)
{
    told.when = when;
    told.objects = of.objects();
    told.statement = placeOf(of.record(), of.read());
    told.statement->objects = told.objects;
    m_of.addTo(*m_told, std::move(told), m_next);
}

} // namespace check
