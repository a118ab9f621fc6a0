#include "app/export_options.h"

#include "app/command_options.h"
#include "app/database_choice.h"
#include "app/plugin_choice.h"

#include "database/facts/facts.h"

#include <QStringList>

#include <algorithm>

namespace app {

namespace {

QStringList namesOf(const plugin::friendly_option & option)
{
    QStringList names;
    for (const plugin::friendly_value & value : option.values) {
        names << value.name;
    }
    return names;
}

/// What `option` is set to by `value`, as its long option has it.
QString longValue(const plugin::friendly_option & option, const QString & value)
{
    const auto named = std::find_if(option.values.cbegin(), option.values.cend(),
                                    [&value](const plugin::friendly_value & v) { return v.name == value; });
    return named == option.values.cend() ? value : named->number;
}

/// The name of what `number` sets `option` to; empty when it is no value of that.
QString friendlyValue(const plugin::friendly_option & option, const QString & number)
{
    const auto found =
        std::find_if(option.values.cbegin(), option.values.cend(),
                     [&number](const plugin::friendly_value & v) { return v.number == number; });
    return found == option.values.cend() ? QString() : found->name;
}

} // namespace

void export_options::declareContent(command_options & options)
{
    options.addText("--relationships", "yes|no", "Export relationships as foreign keys, or not",
                    m_relationships);
    options.addText("--custom-script", "FILE", "Custom script in the place of the project's", m_customScript,
                    value_kind::file);
}

void export_options::declareAll(command_options & options)
{
    options.addText("--db", "NAME", "Database that the scripts are for", m_database, value_kind::database);
    options.addText("--path", "DIR", "Folder of the scripts", m_path, value_kind::folder);
    options.addText("--schema", "full|evolution|both", "Which scripts are written", m_schema);
    declareContent(options);
}

QList<std::pair<QLatin1String, const QString *>> export_options::all() const
{
    return {{DatabaseOption, &m_database},
            {QLatin1String("path"), &m_path},
            {QLatin1String("schema"), &m_schema},
            {RelationshipsOption, &m_relationships},
            {QLatin1String("custom-script"), &m_customScript}};
}

QString export_options::whyWrong() const
{
    for (const auto & [name, value] : all()) {
        if (!value->isNull() && value->isEmpty()) {
            return QStringLiteral("--%1 is empty; give a value, or leave the option out").arg(name);
        }
    }
    return m_database.isEmpty() ? QString() : whyNotOneDatabase(m_database);
}

QString export_options::whyRefused(plugin::statement_source & source) const
{
    const plugin::friendly_settings settings = given();
    QList<plugin::friendly_option> options;
    if (const zk::ZkBool listed = source.listOptions(options); !listed) {
        return listed.getDesc();
    }
    for (const plugin::friendly_option & option : std::as_const(options)) {
        const QString value = settings.value(option.name);
        const QStringList names = namesOf(option);
        if (!value.isEmpty() && !names.isEmpty() && !names.contains(value)) {
            return QStringLiteral("'%1' is not a value of --%2; it takes %3")
                .arg(value, option.name, names.join(QStringLiteral(", ")));
        }
    }
    return {};
}

plugin::friendly_settings export_options::given() const
{
    plugin::friendly_settings settings;
    for (const auto & [name, value] : all()) {
        if (!value->isEmpty()) {
            settings.insert(name, *value);
        }
    }
    if (const database::facts * const known = database::factsOf(m_database)) {
        settings.insert(DatabaseOption, known->scripts);
    }
    return settings;
}

QString export_options::addTo(plugin_request & request, plugin::statement_source & source) const
{
    const plugin::friendly_settings settings = given();
    QList<plugin::friendly_option> options;
    if (const zk::ZkBool listed = source.listOptions(options); !listed) {
        return listed.getDesc();
    }
    for (const plugin::friendly_option & option : std::as_const(options)) {
        if (!settings.contains(option.name)) {
            continue;
        }
        const bool isTwice =
            std::any_of(request.options.cbegin(), request.options.cend(),
                        [&option](const auto & each) { return each.first == option.longName; });
        if (isTwice) {
            return QStringLiteral("--%1 and %2 set the same; give one of both")
                .arg(option.name, option.longName);
        }
        request.options.append({option.longName, longValue(option, settings.value(option.name))});
    }
    return {};
}

plugin::friendly_settings friendlyOptions(const plugin_request & request, plugin::statement_source & source)
{
    QList<plugin::friendly_option> options;
    plugin::friendly_settings settings;
    if (!source.listOptions(options)) {
        return settings;
    }
    for (const plugin::friendly_option & option : std::as_const(options)) {
        for (const auto & [name, value] : request.options) {
            const QString friendly = option.values.isEmpty() ? value : friendlyValue(option, value);
            if (name == option.longName && !friendly.isEmpty()) {
                settings.insert(option.name, friendly);
            }
        }
    }
    return settings;
}

QString describeOptions(plugin::statement_source & source, bool stored)
{
    QList<plugin::friendly_option> options;
    if (!source.listOptions(options)) {
        return {};
    }
    QString text;
    for (const plugin::friendly_option & option : std::as_const(options)) {
        const QString values = option.values.isEmpty() ? QStringLiteral("any %1").arg(option.argument)
                                                       : namesOf(option).join(QStringLiteral(", "));
        text += QStringLiteral("  %1%2; %3: %4\n")
                    .arg((QStringLiteral("--") + option.name).leftJustified(18), values,
                         stored ? QStringLiteral("stored") : QStringLiteral("by default"),
                         option.stored.isEmpty() ? QStringLiteral("(none)") : option.stored);
    }
    return text;
}

} // namespace app
