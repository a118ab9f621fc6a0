// The options of the export: their names and values on the command line, and the settings that they stand
// for.

#include "plugin/ddl_export_options.h"

#include "plugin/builder/databases.h"
#include "plugin/ddl_export.h"

#include <algorithm>

namespace plugin {

namespace {

const QLatin1String DatabaseOption("--KorvGenericDDLExport_db_type");
const QLatin1String RelationshipsOption("--KorvGenericDDLExport_relation_as_fk");

QList<option_choice> databaseChoices()
{
    QList<option_choice> choices;
    for (const database & db : allDatabases()) {
        choices.append({QString::number(db.number), db.getShortName(), QString::fromLatin1(db.key),
                        QString::fromLatin1(db.label)});
    }
    return choices;
}

QList<option_choice> relationshipsChoices()
{
    return {{QStringLiteral("0"), QStringLiteral("no"), QStringLiteral("no"), {}},
            {QStringLiteral("1"), QStringLiteral("yes"), QStringLiteral("yes"), {}}};
}

QList<option_choice> schemaChoices()
{
    return {{QString::number(ddl_export::full), QStringLiteral("full"), QStringLiteral("full"), {}},
            {QString::number(ddl_export::evolution),
             QStringLiteral("evolution"),
             QStringLiteral("evolution"),
             {}},
            {QString::number(ddl_export::full_and_evolution),
             QStringLiteral("full_and_evolution"),
             QStringLiteral("both"),
             {}}};
}

const export_option Options[] = {
    {QLatin1String("path"), QLatin1String("--KorvGenericDDLExport_path"),
     QT_TRANSLATE_NOOP("plugin::ddl_export", "Folder of the scripts"), "DIR", nullptr,
     [](const ddl_export & plugin) { return plugin.getDDLExportPath(false); },
     [](ddl_export & plugin, const QString & value) { plugin.setDDLExportPath(value); }},
    {QLatin1String("db"), DatabaseOption,
     QT_TRANSLATE_NOOP("plugin::ddl_export", "Database that the scripts are for"), "NAME", databaseChoices,
     [](const ddl_export & plugin) { return QString::number(plugin.getDatabaseType()); },
     [](ddl_export & plugin, const QString & value) {
         plugin.setDatabaseType(static_cast<ddl_export::database_type>(value.toInt()));
     }},
    {QLatin1String("relationships"), RelationshipsOption,
     QT_TRANSLATE_NOOP("plugin::ddl_export", "Whether relationships become foreign keys"), "",
     relationshipsChoices,
     [](const ddl_export & plugin) { return QString::number(plugin.getExportRelationships() ? 1 : 0); },
     [](ddl_export & plugin, const QString & value) {
         plugin.setExportRelationships(value == QLatin1String("1"));
     }},
    {QLatin1String("schema"), QLatin1String("--KorvGenericDDLExport_schema_type"),
     QT_TRANSLATE_NOOP("plugin::ddl_export", "Which scripts are written"), "", schemaChoices,
     [](const ddl_export & plugin) { return QString::number(plugin.getExportDatabaseSchema()); },
     [](ddl_export & plugin, const QString & value) {
         plugin.setExportDatabaseSchema(static_cast<ddl_export::export_db_schema>(value.toInt()));
     }},
    {QLatin1String("custom-script"), CustomScriptOption,
     QT_TRANSLATE_NOOP("plugin::ddl_export", "JavaScript file that may change each statement"), "FILE",
     nullptr, [](const ddl_export & plugin) { return plugin.getCustomScriptFile(); },
     [](ddl_export & plugin, const QString & value) { plugin.setCustomScriptFile(value); }},
};

QString shown(const option_choice & choice)
{
    return QStringLiteral("%1 (%2)").arg(choice.number, choice.longLabel);
}

} // namespace

std::span<const export_option> allOptions()
{
    return Options;
}

const export_option * findOption(const QString & name)
{
    const auto * const option = std::find_if(std::begin(Options), std::end(Options),
                                             [&name](const export_option & o) { return o.name == name; });
    return option == std::end(Options) ? nullptr : option;
}

QList<command_option> ddl_export::getCommandLineOptions() const
{
    QList<command_option> options;
    for (const export_option & option : allOptions()) {
        if (!option.choices) {
            continue;
        }
        QList<option_value> values;
        for (const option_choice & choice : option.choices()) {
            values.append({choice.number, choice.longLabel});
        }
        options.append({option.longName, values});
    }
    return options;
}

QString ddl_export::getTakenFor(const QString & option, const QString & value) const
{
    if (value.isEmpty()) {
        return tr("no value, so the stored setting counts");
    }
    for (const export_option & known : allOptions()) {
        if (known.longName != option || !known.choices) {
            continue;
        }
        const QList<option_choice> choices = known.choices();
        // Only 1 switches relationships on; other options are read as numbers.
        const int number = option == RelationshipsOption ? 0 : value.toInt();
        if (number >= 0 && number < choices.size()) {
            return shown(choices[number]);
        }
        return option == DatabaseOption ? shown(choices.constFirst())
                                        : tr("none of them, so nothing is written");
    }
    return {};
}

} // namespace plugin
