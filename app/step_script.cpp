#include "app/step_script.h"

#include "app/change_causes.h"
#include "app/check_run.h"
#include "app/export_options.h"

#include "check/view/statement_place.h"
#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "database/facts/facts.h"
#include "database/statement/reader.h"
#include "model/project.h"

namespace app {

namespace {

using zk::ZkBool;

/// The database that is stored with the current project.
ZkBool findStored(plugin::statement_source & source, QString & key)
{
    QList<plugin::friendly_option> options;
    const ZkBool listed = source.listOptions(options);
    for (const plugin::friendly_option & option : options) {
        if (option.name == DatabaseOption) {
            key = option.stored;
        }
    }
    return listed;
}

/// What `known` is called, by the plug-in when it has scripts of its own.
ZkBool findLabel(plugin::statement_source & source, const database::facts & known, QString & label)
{
    label = known.label;
    QList<plugin::statement_database> databases;
    const ZkBool listed = source.listDatabases(databases);
    for (const plugin::statement_database & each : databases) {
        label = each.key == known.key ? each.label : label;
    }
    return listed;
}

/// The objects that a statement is about, with the names of `after`, or of `before` when they are gone.
std::vector<model::named_object> objectsOf(const plugin::statement_record & record,
                                           const compared_states & states)
{
    using model::object_kind;
    std::vector<model::named_object> objects;
    const auto add = [&objects](object_kind kind, long id, const auto & after, const auto & before) {
        if (id != 0) {
            objects.push_back({kind, id, after ? after->getName() : before ? before->getName() : QString()});
        }
    };
    const auto now = states.after->getEntityById(record.entity);
    const auto former = states.before->getEntityById(record.entity);
    const auto property = now ? now->getPropertyById(record.property) : nullptr;
    const auto formerProperty = former ? former->getPropertyById(record.property) : nullptr;
    add(object_kind::entity, record.entity, now, former);
    add(object_kind::property, record.property, property, formerProperty);
    add(object_kind::relationship, record.relationship, property, formerProperty);
    return objects;
}

/// The statements of `record`, each with its own line.
void addStatements(const plugin::statement_record & record, const compared_states & states,
                   const change_causes & causes, std::vector<step_statement> & statements)
{
    for (const database::statement & read : database::readStatements(
             record.text, record.isReplaced() ? database::writer::anyone : database::writer::exporter)) {
        step_statement statement{check::placeOf(record, read), causes.find(record)};
        statement.place.objects = objectsOf(record, states);
        statements.push_back(std::move(statement));
    }
}

plugin::statement_list makeStatements(plugin::statement_source & source, const compared_states & states,
                                      script_kind kind, const plugin::friendly_settings & options)
{
    switch (kind) {
    case script_kind::full:
        return source.fullStatements(*states.after, options);
    case script_kind::first:
        return source.stepStatements({nullptr, states.after, 0, states.toNumber}, options);
    case script_kind::step:
        break;
    }
    return source.stepStatements({states.before, states.after, states.fromNumber, states.toNumber}, options);
}

} // namespace

ZkBool makeStepScript(plugin::statement_source & source, const compared_states & states,
                      const std::vector<model::model_change> & changes, const script_request & request,
                      step_script & script)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(states.state);
    script.database =
        request.database.isEmpty() && states.isText ? QString(DatabaseOfTexts) : request.database;
    ZkBool result = script.database.isEmpty() ? findStored(source, script.database) : ZkBool::success();
    const database::facts * const known = database::factsOf(script.database);
    if (result && known) {
        result = findLabel(source, *known, script.label);
    }
    if (!result) {
        return result;
    }
    plugin::friendly_settings options = request.options;
    options.insert(DatabaseOption, known ? QString(known->scripts) : script.database);
    // Scripts of an older version bear the name that the project has now.
    const QString name = states.after->getName();
    states.after->setName(states.state->getName());
    plugin::statement_list list = makeStatements(source, states, request.kind, options);
    states.after->setName(name);
    if (request.kind == script_kind::step && request.history != nullptr &&
        !isNeighbour(states.fromNumber, states.toNumber)) {
        result = useKeptNames(source, *request.history, script.database, request.options, states.fromNumber,
                              *states.after, list.records);
    }
    const change_causes causes(changes, *states.after);
    for (const plugin::statement_record & record : list.records) {
        script.bytes += record.text.toUtf8() + '\n';
        addStatements(record, states, causes, script.statements);
    }
    return list.outcome ? result : list.outcome;
}

} // namespace app
