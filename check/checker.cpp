#include "check/checker.h"

#include "check/judged_script.h"
#include "check/remedy/model_patch.h"
#include "check/rules/model_rules.h"
#include "check/work_beside.h"

#include "database/facts/known_types.h"
#include "database/facts/normal_form.h"
#include "database/statement/reader.h"
#include "model/entity.h"
#include "model/property.h"
#include "model/relationship.h"

#include <algorithm>

namespace check {

namespace {

/// Has a text that is the same as an earlier one take no memory of its own.
void share(const QString & earlier, QString & text)
{
    if (text == earlier) {
        text = earlier;
    }
}

} // namespace

checker::checker(const database::facts & known, const QString & database, database::table_memory * memory)
    : m_known(known), m_database(database), m_memory(memory), m_empty(known), m_made(known)
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
    } else if (m_memory != nullptr) {
        m_memory->beginScript();
    }
    m_step = {};
}

void checker::run(const script & next, report * told)
{
    judged_script all(*this, next, told);
    for (const plugin::statement_record & record : next.records) {
        all.run(record);
    }
    all.end();
}

void checker::lookAtModel(const script & full, const database::catalogue & made,
                          const export_settings & settings, report & told)
{
    const database::known_types types(m_known);
    work_beside<finding> adding([&](finding & each) { addTo(told, std::move(each), full); });
    explainModel({m_known, types, full, made, settings, m_step.refusedProperties},
                 [&](finding each) { adding.take(std::move(each)); });
    adding.end();
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
    one.words = {};
    // Findings of one rule come together, and say the same in most of their texts.
    if (!told.findings.empty()) {
        share(told.findings.back().why, one.why);
        share(told.findings.back().way.text, one.way.text);
    }
    told.findings.push_back(std::move(one));
}

} // namespace check
