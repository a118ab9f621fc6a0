#include "app/document/model_history.h"

#include "app/source.h"

#include "model/model_difference.h"
#include "model/project.h"

namespace app {

namespace {

using zk::ZkBool;

std::vector<outline_line> linesBetween(const std::shared_ptr<model::project> & before,
                                       const std::shared_ptr<model::project> & after)
{
    diff_report report;
    report.states.before = before;
    report.states.after = after;
    report.changes = model::difference(*before, *after);
    return outlineOf(report);
}

void addName(QStringList & names, const QString & name)
{
    if (!names.contains(name)) {
        names << name;
    }
}

QStringList without(QStringList names, const QString & current)
{
    names.removeAll(current);
    return names;
}

} // namespace

void former_names::add(const model::project & version)
{
    for (const auto & entity : version.getListOfAllEntities()->values()) {
        addName(m_entities[entity->getId()], entity->getName());
        for (const auto & property : entity->getListOfProperty(true, true, false)->values()) {
            addName(m_properties[property->getId()], property->getName());
        }
    }
}

QStringList former_names::ofEntity(long id, const QString & current) const
{
    return without(m_entities.value(id), current);
}

QStringList former_names::ofProperty(long id, const QString & current) const
{
    return without(m_properties.value(id), current);
}

ZkBool readHistory(source & of, model_history & history)
{
    std::vector<history_step> & steps = history.steps;
    auto before = std::make_shared<model::project>(1);
    for (const storage::history::version & version : of.versions()) {
        std::shared_ptr<model::project> after;
        if (const ZkBool loaded = of.load(version.number, after); !loaded) {
            return loaded;
        }
        history.names.add(*after);
        steps.push_back({versionWord(version.number), version, linesBetween(before, after)});
        before = after;
    }
    std::shared_ptr<model::project> now;
    const ZkBool loaded = steps.empty() ? ZkBool::success() : of.load(Now, now);
    if (now) {
        if (std::vector<outline_line> lines = linesBetween(before, now); !lines.empty()) {
            steps.push_back({versionWord(Now), {}, std::move(lines)});
        }
    }
    return loaded;
}

QHash<long, std::vector<entity_step>> stepsByEntity(const std::vector<history_step> & steps)
{
    QHash<long, std::vector<entity_step>> found;
    for (const history_step & step : steps) {
        for (const outline_line & line : step.lines) {
            if (line.entity == 0) {
                continue;
            }
            std::vector<entity_step> & own = found[line.entity];
            if (own.empty() || own.back().step != &step) {
                own.push_back({&step, {}});
            }
            own.back().lines.push_back(&line);
        }
    }
    return found;
}

} // namespace app
