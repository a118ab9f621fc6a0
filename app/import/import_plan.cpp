#include "app/import/import_plan.h"

#include "app/project_work.h"

#include "model/project.h"

namespace app {

using zk::ZkBool;

ZkBool existingProject(const QString & projectFile, std::shared_ptr<model::project> & project)
{
    return replacesModel(projectFile) ? openProject(projectFile, project) : ZkBool::success();
}

diff_report plannedChanges(const QString & projectFile, const std::shared_ptr<model::project> & existing,
                           const QString & source, const std::shared_ptr<model::project> & next)
{
    diff_report report;
    report.hasTwoSources = true;
    report.states.before = existing ? existing : std::make_shared<model::project>(1);
    report.states.after = next;
    report.states.state = next;
    report.states.from = existing ? shownName(projectFile) : QStringLiteral("nothing");
    report.states.to = source;
    if (!existing) { // the name of a new project is no change
        report.states.before->setName(next->getName());
    }
    report.changes = model::difference(*report.states.before, *next);
    return report;
}

text_plan planOfText(const QString & modelFile, const QString & projectFile)
{
    text_plan plan;
    QByteArray text;
    std::shared_ptr<model::project> existing;
    plan.result = readText(modelFile, text);
    if (plan.result) {
        plan.result = existingProject(projectFile, existing);
    }
    if (plan.result) {
        const auto next = std::make_shared<model::project>(1);
        plan.result = readModel(text, shownName(modelFile), existing.get(), *next, plan.warnings);
        if (plan.result) {
            plan.text = diffText(plannedChanges(projectFile, existing, shownName(modelFile), next));
        }
    }
    return plan;
}

} // namespace app
