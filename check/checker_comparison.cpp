// What a step left beside a new database.

#include "check/checker.h"
#include "check/remedy/repair.h"
#include "check/rules/change_rules.h"
#include "check/rules/difference_rules.h"
#include "check/view/step_changes.h"

#include "database/facts/normal_form.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>
#include <future>

namespace check {

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
    // Models and catalogues are compared beside each other, since large ones take long, if there is room for
    // a thread.
    std::future<std::vector<schema_difference>> differing =
        std::async([&] { return differencesOf(now, stored(), m_known); });
    const step_changes changes(*step.before, *step.now);
    const std::vector<schema_difference> differences = differing.get();
    for (finding & each : explainChanges(step, changes)) {
        addTo(told, std::move(each), step);
    }
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
