// The statements of the scripts without scripts. Each call has a plug-in object of its own, so that neither
// its options nor its custom script are seen by any other.

#include "plugin/ddl_export.h"

#include "plugin/builder/databases.h"
#include "plugin/builder/ddl_export_builder.h"
#include "plugin/builder/statement_records.h"
#include "plugin/ddl_export_options.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"

#include <QStringList>

#include <algorithm>

namespace plugin {

namespace {

bool hasFile(const std::shared_ptr<model::project> & project)
{
    return project && !project->getFileName().isEmpty();
}

/// The choice whose long option has `number`, by its friendly name; the number when there is none.
QString friendlyName(const export_option & option, const QString & number)
{
    if (option.choices) {
        for (const option_choice & choice : option.choices()) {
            if (choice.number == number) {
                return choice.friendly;
            }
        }
    }
    return number;
}

QString joinedNames(const QList<option_choice> & choices)
{
    QStringList names;
    for (const option_choice & choice : choices) {
        names.append(choice.friendly);
    }
    return names.join(QStringLiteral(", "));
}

QString joinedNames()
{
    QStringList names;
    for (const export_option & option : allOptions()) {
        names.append(option.name);
    }
    return names.join(QStringLiteral(", "));
}

} // namespace

zk::ZkBool ddl_export::loadStoredSettings()
{
    if (!hasFile(context::ctx_project::getSingleton().getProject())) {
        return zk::ZkBool::success();
    }
    const QSqlError error = loadSettings();
    return error.isValid() ? settingsFailure(error) : zk::ZkBool::success();
}

zk::ZkBool ddl_export::applyOptions(const friendly_settings & options)
{
    for (auto it = options.constBegin(); it != options.constEnd(); ++it) {
        const export_option * const option = findOption(it.key());
        if (!option) {
            return zk::ZkBool::failure(
                tr("The export has no option '%1': it has %2").arg(it.key(), joinedNames()));
        }
        QString value = it.value();
        if (option->choices) {
            const QList<option_choice> choices = option->choices();
            const auto choice = std::find_if(choices.cbegin(), choices.cend(), [&](const option_choice & c) {
                return c.friendly == it.value();
            });
            if (choice == choices.cend()) {
                return zk::ZkBool::failure(tr("'%1' is not a value of the option '%2': it takes %3")
                                               .arg(it.value(), it.key(), joinedNames(choices)));
            }
            value = choice->number;
        }
        option->set(*this, value);
        m_bScriptIsStored = m_bScriptIsStored && option->longName != CustomScriptOption;
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export::listDatabases(QList<statement_database> & databases)
{
    databases.clear();
    ddl_export stored;
    if (const zk::ZkBool loaded = stored.loadStoredSettings(); !loaded) {
        return loaded;
    }
    for (const database & db : allDatabases()) {
        statement_database told{
            db.number, QString::fromLatin1(db.key), QString::fromLatin1(db.label), db.getShortName(), {}};
        const type_mapping types = stored.getListTypeMappingByDb(db.number);
        for (long i = 0; i < types.count(); ++i) {
            told.types.append({types.getKeyByIndex(i), types.getByIndex(i)});
        }
        databases.append(told);
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export::listOptions(QList<friendly_option> & options)
{
    options.clear();
    ddl_export stored;
    if (const zk::ZkBool loaded = stored.loadStoredSettings(); !loaded) {
        return loaded;
    }
    for (const export_option & option : allOptions()) {
        friendly_option told{
            option.name, option.longName, tr(option.about), QString::fromLatin1(option.argument), {}, {}};
        const QList<option_choice> choices = option.choices ? option.choices() : QList<option_choice>();
        for (const option_choice & choice : choices) {
            told.values.append({choice.friendly, choice.number, choice.label});
        }
        told.stored = friendlyName(option, option.get(stored));
        options.append(told);
    }
    return zk::ZkBool::success();
}

zk::ZkBool ddl_export::storeOptions(const friendly_settings & options)
{
    if (!hasFile(context::ctx_project::getSingleton().getProject())) {
        return zk::ZkBool::failure(tr("The settings cannot be stored: the project has no file"));
    }
    ddl_export stored;
    zk::ZkBool result = stored.loadStoredSettings();
    if (result) {
        result = stored.applyOptions(options);
    }
    if (!result) {
        return result;
    }
    const QSqlError error = stored.saveSettings();
    return error.isValid() ? zk::ZkBool::failure(tr("The settings cannot be stored: %1").arg(error.text()))
                           : zk::ZkBool::success();
}

/// Makes this object, which is one call's own, ready to make statements.
zk::ZkBool ddl_export::prepareStatements(const friendly_settings & options)
{
    zk::ZkBool result = loadStoredSettings();
    if (result) {
        result = applyOptions(options);
    }
    if (!result) {
        return result;
    }
    if (!mayRunCustomScript()) {
        return zk::ZkBool::failure(
            tr("The statements are not known: the custom script '%1' was not allowed to run")
                .arg(m_settings.customScript));
    }
    return loadCustomScript();
}

statement_list ddl_export::collect(const friendly_settings & options, export_db_schema scripts,
                                   const statement_receiver & receiver,
                                   const std::function<zk::ZkBool(ddl_export_builder &)> & build)
{
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    statement_list list;
    ddl_export call;
    connect(&call, &ddl_export::onMessage, this, &ddl_export::onMessage);
    list.outcome = call.prepareStatements(options);
    if (!list.outcome) {
        return list;
    }
    call.setExportDatabaseSchema(scripts);
    const std::shared_ptr<ddl_export_builder> builder = call.getBuilder(call.getDatabaseType());
    connect(builder.get(), &ddl_export_builder::onProgress, this, &ddl_export::onProgress);
    const statement_receiver lister = [&list](statement_record record) {
        list.records.push_back(std::move(record));
    };
    builder->setSinks([&](const script_identity & script) {
        return std::make_unique<statement_records>(script, receiver ? receiver : lister);
    });
    list.outcome = build(*builder);
    return list;
}

statement_list ddl_export::fullStatements(model::project & project, const friendly_settings & options,
                                          const statement_receiver & receiver)
{
    return collect(options, full, receiver,
                   [&project](ddl_export_builder & builder) { return builder.buildScripts(project); });
}

statement_list ddl_export::historyStatements(model::project & project, const friendly_settings & options,
                                             const statement_receiver & receiver)
{
    if (project.getFileName().isEmpty()) {
        return {zk::ZkBool::success(), {}};
    }
    return collect(options, evolution, receiver,
                   [&project](ddl_export_builder & builder) { return builder.buildScripts(project); });
}

statement_list ddl_export::stepStatements(const project_step & step, const friendly_settings & options,
                                          const statement_receiver & receiver)
{
    return collect(options, evolution, receiver, [&step](ddl_export_builder & builder) {
        return builder.buildStep(step.previous, step.current, step.from, step.to);
    });
}

} // namespace plugin
