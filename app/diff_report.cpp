#include "app/diff_report.h"

#include "app/acceptance_file.h"
#include "app/change_causes.h"
#include "app/check_run.h"
#include "app/source.h"

#include <QDate>

#include <algorithm>

namespace app {

namespace {

using zk::ZkBool;

finding_place placeOf(const check::finding & finding, const std::vector<step_statement> & statements,
                      const change_causes & causes)
{
    finding_place place;
    const auto at = std::find_if(statements.begin(), statements.end(), [&](const step_statement & each) {
        return finding.statement && finding.statement->script == each.place.script &&
               finding.statement->line == each.place.line;
    });
    if (at != statements.end()) {
        place.statement = static_cast<int>(at - statements.begin());
        place.causes = at->causes;
    }
    if (place.causes.empty()) {
        place.causes = causes.find(finding);
    }
    return place;
}

} // namespace

ZkBool compareStates(const comparison_request & request, diff_report & report)
{
    report.hasTwoSources = request.hasTwoSources();
    const ZkBool loaded = loadStates(request, report.states);
    if (loaded) {
        report.changes = model::difference(*report.states.before, *report.states.after);
    }
    return loaded;
}

ZkBool compareVersions(const std::shared_ptr<source> & of, int from, int to, diff_report & report)
{
    const ZkBool loaded = loadVersions(of, from, to, report.states);
    if (loaded) {
        report.changes = model::difference(*report.states.before, *report.states.after);
    }
    return loaded;
}

ZkBool addScript(plugin::statement_source & statements, const script_request & request, diff_report & report)
{
    script_request asked = request;
    asked.history = report.hasTwoSources ? nullptr : report.states.of.get();
    return makeStepScript(statements, report.states, report.changes, asked, report.script.emplace());
}

ZkBool addFindings(plugin::statement_source & statements, const plugin::friendly_settings & options,
                   diff_report & report)
{
    if (!report.states.isForwards() || !report.script) {
        return ZkBool::success();
    }
    source & of = *report.states.of;
    check::accepted_findings accepted;
    ZkBool result = readAccepted(of, {}, accepted);
    if (result) {
        check_request asked;
        asked.databases = {report.script->database};
        asked.options = options;
        asked.from = report.states.fromNumber;
        const int to = report.states.toNumber;
        asked.to = to > of.newestVersion() ? Now : to;
        result = checkSource(statements, of, asked, report.found);
    }
    check::accept(accepted, QDate::currentDate(), report.found);
    const change_causes causes(report.changes, *report.states.after);
    for (const check::finding & finding : report.found.findings) {
        report.places.push_back(placeOf(finding, report.script->statements, causes));
    }
    return result;
}

} // namespace app
