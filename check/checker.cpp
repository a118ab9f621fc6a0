#include "check/checker.h"

#include "check/remedy/model_patch.h"
#include "check/remedy/repair.h"
#include "check/remedy/row_repair.h"
#include "check/rules/change_rules.h"
#include "check/rules/difference_rules.h"
#include "check/rules/loss_rules.h"
#include "check/rules/model_rules.h"
#include "check/rules/refusal_rules.h"
#include "check/rules/statement_rules.h"
#include "check/view/statement_place.h"
#include "check/view/told_statement.h"

#include "database/facts/known_types.h"
#include "database/facts/normal_form.h"
#include "database/statement/reader.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

bool isRefused(const database::verdict & said)
{
    return said.what == database::outcome::refused;
}

} // namespace

/// The run of one script, and what there is to say of it.
class checker::script_run
{
public:
    script_run(checker & of, const script & next, report * told)
        : m_of(of), m_next(next), m_told(told), m_view(next, of.m_known, of.m_made)
    {
        m_run.database = of.m_database;
        m_run.basis = (of.m_known.isTried ? QLatin1String("run on ") : QLatin1String("documentation of ")) +
                      of.m_known.label;
        m_run.script = next.name;
        m_run.from = next.from;
        m_run.to = next.to;
        m_run.step = next.step;
    }

    void run(const plugin::statement_record & record)
    {
        const std::vector<database::statement> statements = database::readStatements(
            record.text, record.isReplaced() ? database::writer::anyone : database::writer::exporter);
        for (const database::statement & read : statements) {
            runStatement(record, read);
        }
        if (statements.empty() && record.property != 0 && !record.text.trimmed().isEmpty()) {
            m_of.m_step.commented.insert(record.property);
            keepColumn(record);
        }
    }

    /// Tells what there is to say when all of the script was run.
    void end()
    {
        if (m_told != nullptr) {
            m_told->runs.push_back(m_run);
            tellHalfApplied();
        }
    }

private:
    void runStatement(const plugin::statement_record & record, const database::statement & read)
    {
        const database::verdict empty = m_of.m_empty.run(read);
        const database::verdict withRows = m_of.m_withRows ? m_of.m_withRows->run(read) : empty;
        const int number = m_of.m_number++;
        ++m_run.statements;
        m_run.judged += empty.what == database::outcome::not_judged ? 0 : 1;
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
        if (!isRefused(empty)) {
            m_of.m_made.add(read, record);
        }
    }

    /// A rename that stands in the script as a comment alone leaves the name as it is.
    void keepColumn(const plugin::statement_record & record)
    {
        const auto before = record.action == plugin::statement_action::rename_column && m_next.before
                                ? findProperty(*m_next.before, record.entity, record.property)
                                : nullptr;
        const QStringList columns = before ? columnNamesOf(*before) : QStringList();
        if (columns.size() == 1) {
            m_of.m_made.keepColumn(record.property, columns.front());
        }
    }

    void tell(const told_statement & of, occasion when, int number)
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
                m_of.m_step.toldProperties.insert(of.record().property);
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
    void tellDone(const told_statement & of)
    {
        for (finding & each : explainDone(of)) {
            add(std::move(each), of, occasion::always);
        }
    }

    /// A script with a statement that is always refused is done in parts.
    void tellHalfApplied()
    {
        if (m_refused == 0 || m_refused == m_run.statements || !m_view.isStep()) {
            return;
        }
        finding told = halfApplied({{QStringLiteral("db"), m_of.m_known.label},
                                    {QStringLiteral("refused"), QString::number(m_refused)},
                                    {QStringLiteral("done"), QString::number(m_run.statements - m_refused)}});
        m_of.addTo(*m_told, std::move(told), m_next);
    }

    void tellRefusal(const told_statement & of, occasion when, int number)
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
    void repeatAfter(int finding, const told_statement & of)
    {
        check::remedy & way = m_told->findings.at(static_cast<std::size_t>(finding)).way;
        if (!way.sql.isEmpty()) {
            way.sql += placeOf(of.record(), of.read()).text;
        }
    }

    [[nodiscard]] QString nameOf(const statement_place & of) const
    {
        return of.script == m_next.name
                   ? QStringLiteral("line %1").arg(of.line)
                   : QStringLiteral("line %1 of %2").arg(QString::number(of.line), of.script);
    }

    void add(finding told, const told_statement & of, occasion when)
    {
        told.when = when;
        told.objects = of.objects();
        told.statement = placeOf(of.record(), of.read());
        told.statement->objects = told.objects;
        m_of.addTo(*m_told, std::move(told), m_next);
    }

    checker & m_of;
    const script & m_next;
    report * m_told;
    script_view m_view;
    check::run m_run;
    int m_refused = 0; ///< statements that are refused whatever there is in rows
};

checker::checker(const database::facts & known, const QString & database)
    : m_known(known), m_database(database), m_empty(known), m_made(known)
{
}

void checker::begin(const script & next)
{
    // Before the first step there is no table to have a row.
    if (next.before) {
        if (!m_withRows) {
            m_withRows.emplace(m_empty);
        }
        m_withRows->putRowIntoEach();
    }
    m_step = {};
}

void checker::run(const script & next, report * told)
{
    begin(next);
    m_beforeStep = told != nullptr && !next.isFull ? stored() : database::catalogue();
    script_run all(*this, next, told);
    for (const plugin::statement_record & record : next.records) {
        all.run(record);
    }
    all.end();
}

void checker::runUntold(script & next)
{
    begin(next);
    m_beforeStep = {};
    script_run all(*this, next, nullptr);
    for (plugin::statement_record & record : next.records) {
        all.run(record);
        record = {};
    }
    next.records.clear();
}

namespace {

/// What makes two differences the same one at two times.
QString keyOf(const difference_view & of)
{
    const schema_difference & what = of.what();
    const auto entity = of.entity();
    const auto member = of.property();
    const auto idOf = [](const auto & each) { return QString::number(each ? each->getId() : 0); };
    return QStringList{QString::number(static_cast<int>(what.kind)),
                       idOf(entity),
                       idOf(member),
                       idOf(of.link()),
                       entity ? QString() : what.table,
                       member ? QString() : what.columns.join(u','),
                       what.expected,
                       what.found}
        .join(u'\n');
}

/// What the catalogue `found` has otherwise than `expected`. Neither is in normal form.
std::vector<schema_difference> differencesOf(const database::catalogue & expected,
                                             const database::catalogue & found, const database::facts & known)
{
    const database::catalogue_parts parts = database::differingParts(expected, found, known);
    return compareSchemas(parts.first, parts.second);
}

/// What the differences are about that were there before the step, by key.
QHash<QString, QString> subjectsOf(const std::vector<schema_difference> & differences, const script_view & in,
                                   const step_changes & changes, const step_record & record)
{
    QHash<QString, QString> subjects;
    for (const schema_difference & each : differences) {
        subjects.insert(keyOf(difference_view(in, changes, record, each)), subjectOf(each));
    }
    return subjects;
}

} // namespace

void checker::lookAtModel(const script & full, const database::catalogue & made,
                          const export_settings & settings, report & told)
{
    const database::known_types types(m_known);
    for (finding & each : explainModel({m_known, types, full, made, settings, m_step.refusedProperties})) {
        addTo(told, std::move(each), full);
    }
}

const text_positions & checker::positionsIn(const script & of) const
{
    if (!m_positions || m_positionsOf != of.now) {
        m_positions = std::make_shared<text_positions>(*of.now);
        m_positionsOf = of.now;
    }
    return *m_positions;
}

void checker::addTo(report & told, finding one, const script & of) const
{
    one.database = m_database;
    one.script = of.name;
    one.step = of.step;
    if (!m_known.isTried && one.weight == severity::error) {
        one.weight = severity::warning;
    }
    one.fingerprint = fingerprintOf(one);
    if (of.isCurrent) {
        one.way.model = modelPatch(one, *of.now, positionsIn(of), m_known);
    }
    told.findings.push_back(std::move(one));
}

namespace {

/// The finding of the script that explains the difference, by what it is about; none when there is none.
std::optional<std::size_t> findingFor(const difference_view & of, const QString & script, const report & in)
{
    std::optional<std::size_t> ofEntity;
    const auto isAbout = [](const finding & each, model::object_kind kind, long id) {
        return std::any_of(each.objects.begin(), each.objects.end(),
                           [&](const object & one) { return one.kind == kind && one.id == id; });
    };
    const auto owner = of.link() ? of.link()->getProperty() : nullptr;
    const auto member = of.property() ? of.property() : owner;
    for (std::size_t i = 0; i < in.findings.size(); ++i) {
        const finding & each = in.findings[i];
        const bool isCause =
            each.script == script && each.consequenceOf < 0 &&
            (each.what == effect::refused || each.what == effect::loss || each.what == effect::silent);
        if (isCause && member && isAbout(each, model::object_kind::property, member->getId())) {
            return i;
        }
        if (isCause && !ofEntity && of.entity() &&
            isAbout(each, model::object_kind::entity, of.entity()->getId())) {
            ofEntity = i;
        }
    }
    return ofEntity;
}

} // namespace

void checker::compare(const script & step, const database::catalogue & now,
                      const std::function<database::catalogue()> & before,
                      const std::function<std::vector<plugin::statement_record>()> & full, report & told)
{
    const step_changes changes(*step.before, *step.now);
    for (finding & each : explainChanges(step, changes)) {
        addTo(told, std::move(each), step);
    }
    const std::vector<schema_difference> differences = differencesOf(now, stored(), m_known);
    const script_view view(step, m_known, m_made);
    std::vector<told_difference> mended;
    if (!differences.empty()) {
        const QHash<QString, QString> old =
            subjectsOf(differencesOf(before(), m_beforeStep, m_known), view, changes, m_step);
        for (const schema_difference & each : differences) {
            const difference_view seen(view, changes, m_step, each);
            const auto was = old.constFind(keyOf(seen));
            if (was == old.constEnd()) {
                tellDifference(seen, step, told, mended);
            } else if (const auto at = m_toldAt.constFind(*was); at != m_toldAt.constEnd()) {
                noteDifference(each, *at, told);
            }
        }
    }
    if (!mended.empty() || m_step.refused > 0) {
        std::optional<std::vector<plugin::statement_record>> records;
        const std::function<const std::vector<plugin::statement_record> &()> once = [&]() -> const auto &
        {
            if (!records) {
                records = full();
            }
            return *records;
        };
        const repair_ground ground{view, changes, m_step, now, once};
        repair(ground, stored()).fillIn(told.findings, mended);
    }
}


/// Notes a difference with the finding that explains it.
void checker::noteDifference(const schema_difference & what, std::size_t at, report & told)
{
    const QString subject = subjectOf(what);
    told.findings[at].differences += subject;
    m_toldAt.insert(subject, at);
}

/// Notes a difference with what was told of the same object when its statement was run.
void checker::addDifference(const difference_view & seen, const script & of, report & told)
{
    const std::vector<object> objects = seen.objects();
    // Its name may be another one by now.
    const auto isOne = [&objects](const object & other) {
        return std::any_of(objects.begin(), objects.end(), [&other](const object & own) {
            return own.kind == other.kind && own.id == other.id;
        });
    };
    for (std::size_t at = 0; at < told.findings.size(); ++at) {
        const finding & each = told.findings[at];
        const bool isAlike = each.script == of.name && each.statement &&
                             (each.what == effect::refused || each.what == effect::loss) &&
                             std::any_of(each.objects.begin(), each.objects.end(), isOne);
        if (isAlike) {
            noteDifference(seen.what(), at, told);
            return;
        }
    }
}

void checker::tellDifference(const difference_view & of, const script & step, report & told,
                             std::vector<told_difference> & mended)
{
    if (isExplained(of)) {
        addDifference(of, step, told);
        if (const auto by = findingFor(of, step.name, told)) {
            mended.push_back({*by, of});
        }
        return;
    }
    const std::optional<finding> explained = explainDifference(of);
    finding one = explained ? *explained : unexplained(of);
    one.objects = of.objects();
    one.database = m_database;
    // One change can leave several differences; the first says it.
    const QString print = fingerprintOf(one);
    const auto same = std::find_if(told.findings.rbegin(), told.findings.rend(), [&](const finding & each) {
        return each.script == step.name && each.fingerprint == print;
    });
    std::size_t at = told.findings.size();
    if (same == told.findings.rend()) {
        addTo(told, std::move(one), step);
    } else {
        at = static_cast<std::size_t>(told.findings.rend() - same) - 1;
    }
    noteDifference(of.what(), at, told);
    mended.push_back({at, of});
}

} // namespace check
