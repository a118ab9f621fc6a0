#include "app/version_scripts.h"

#include "app/source.h"

#include "model/project.h"

namespace app {

namespace {

using zk::ZkBool;

std::vector<run_statement> statementsOf(const plugin::statement_list & list)
{
    std::vector<run_statement> statements;
    for (const plugin::statement_record & record : list.records) {
        for (const database::statement & read : database::readStatements(
                 record.text, record.isReplaced() ? database::writer::anyone : database::writer::exporter)) {
            statements.push_back({check::placeOf(record, read), read});
        }
    }
    return statements;
}

} // namespace

ZkBool loadScripts(plugin::statement_source & statements, source & of,
                   const plugin::friendly_settings & options, const std::shared_ptr<model::project> & now,
                   std::vector<version_scripts> & versions)
{
    std::shared_ptr<model::project> before;
    const int newest = of.newestVersion();
    for (int number = 1; number <= newest + 1; ++number) {
        version_scripts version;
        const bool isNow = number > newest;
        version.word = versionWord(isNow ? Now : number);
        version.model = now;
        ZkBool result = isNow ? ZkBool::success() : of.load(number, version.model);
        if (result) {
            version.model->setName(now->getName());
            const plugin::statement_list full = statements.fullStatements(*version.model, options);
            version.full = statementsOf(full);
            result = full.outcome;
        }
        // A project without versions has no history.
        if (result && newest > 0) {
            const plugin::statement_list step =
                statements.stepStatements({before, version.model, before ? number - 1 : 0, number}, options);
            version.step = statementsOf(step);
            result = step.outcome;
        }
        if (!result) {
            return result;
        }
        before = version.model;
        versions.push_back(std::move(version));
    }
    return ZkBool::success();
}

} // namespace app
