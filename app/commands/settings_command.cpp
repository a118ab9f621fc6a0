#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/export_options.h"
#include "app/output.h"
#include "app/project_work.h"
#include "app/statement_plugin.h"

#include "context/ctx_project.h"
#include "context/ctx_scoped.h"
#include "model/project.h"
#include "plugin/statement_source.h"

#include <QDir>
#include <QHash>

namespace app {

namespace {

const char Help[] =
    "Without options of the export the stored settings are printed, with some they are stored; the others "
    "stay.\n"
    "Relative paths are taken from the folder of the project file.\n"
    "\n"
    "Example: korvane settings shop.korv --db postgresql --path sql --relationships yes";

/// The types of each database, by the database's key.
using types_by_database = QHash<QString, QList<std::pair<QString, QString>>>;

types_by_database typesOf(const QList<plugin::statement_database> & databases)
{
    types_by_database types;
    for (const plugin::statement_database & database : databases) {
        types.insert(database.key, database.types);
    }
    return types;
}

/// The rows of `stored` that are not in `defaults`, and those that it lacks: a line each.
QStringList changedTypes(const QList<std::pair<QString, QString>> & stored,
                         const QList<std::pair<QString, QString>> & defaults)
{
    const QMap<QString, QString> before(std::map<QString, QString>(defaults.begin(), defaults.end()));
    const QMap<QString, QString> now(std::map<QString, QString>(stored.begin(), stored.end()));
    QStringList lines;
    for (auto row = now.begin(); row != now.end(); ++row) {
        if (!before.contains(row.key())) {
            lines << QStringLiteral("%1: %2 (added)").arg(row.key(), row.value());
        } else if (before.value(row.key()) != row.value()) {
            lines << QStringLiteral("%1: %2 (by default %3)")
                         .arg(row.key(), row.value(), before.value(row.key()));
        }
    }
    for (auto row = before.begin(); row != before.end(); ++row) {
        if (!now.contains(row.key())) {
            lines << QStringLiteral("%1: (removed; by default %2)").arg(row.key(), row.value());
        }
    }
    return lines;
}

/// Prints or stores the settings of the export that are kept with a project.
class settings_command : public command
{
public:
    settings_command()
        : command("settings", "Print the settings of a project's export, or store some",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override
    {
        options.addProject(m_projectFile);
        m_options.declareAll(options);
        options.addPlugin(m_plugin.name);
        options.setFooter(Help);
    }
    [[nodiscard]] QString whyWrong() const override { return m_options.whyWrong(); }
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] int store(plugin::statement_source & source) const;
    [[nodiscard]] int print(plugin::statement_source & source) const;

    QString m_projectFile;
    export_options m_options;
    plugin_request m_plugin;
    types_by_database m_defaults; ///< without a project
};

int settings_command::run()
{
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin, m_options); status != Done) {
        return status;
    }
    QList<plugin::statement_database> databases;
    zk::ZkBool result = plugin.statements().listDatabases(databases);
    m_defaults = typesOf(databases);
    std::shared_ptr<model::project> project;
    if (result) {
        result = openProject(m_projectFile, project);
    }
    if (!result) {
        return failed(result.getDesc());
    }
    const context::ctx_kept kept(context::ctx_project::getSingleton());
    context::ctx_project::getSingleton().setProject(project);
    return m_options.isEmpty() ? print(plugin.statements()) : store(plugin.statements());
}

int settings_command::store(plugin::statement_source & source) const
{
    const plugin::friendly_settings given = m_options.given();
    if (const zk::ZkBool stored = source.storeOptions(given); !stored) {
        return failed(stored.getDesc());
    }
    QStringList told;
    for (auto each = given.begin(); each != given.end(); ++each) {
        told << each.key() + QLatin1Char(' ') + each.value();
    }
    printDone(QStringLiteral("Settings of %1 stored: %2")
                  .arg(QDir::toNativeSeparators(m_projectFile), told.join(QStringLiteral(", "))));
    return Done;
}

int settings_command::print(plugin::statement_source & source) const
{
    QList<plugin::friendly_option> options;
    QList<plugin::statement_database> databases;
    zk::ZkBool result = source.listOptions(options);
    if (result) {
        result = source.listDatabases(databases);
    }
    if (!result) {
        return failed(result.getDesc());
    }
    for (const plugin::friendly_option & option : std::as_const(options)) {
        printLine(oneLine(QString(option.name).leftJustified(15) +
                          (option.stored.isEmpty() ? QStringLiteral("(none)") : option.stored)));
    }
    const types_by_database stored = typesOf(databases);
    for (const plugin::statement_database & database : std::as_const(databases)) {
        for (const QString & line :
             changedTypes(stored.value(database.key), m_defaults.value(database.key))) {
            printLine(oneLine(QStringLiteral("type of %1: %2").arg(database.key, line)));
        }
    }
    return Done;
}

} // namespace

std::unique_ptr<command> makeSettingsCommand()
{
    return std::make_unique<settings_command>();
}

} // namespace app
