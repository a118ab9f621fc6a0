#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/import/database_import.h"
#include "app/import/import_plan.h"
#include "app/named_rows.h"
#include "app/output.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"
#include "app/statement_plugin.h"

#include <QDir>

namespace app {

namespace {

const char Help[] =
    "A database or a script becomes a model table by table: columns are properties, foreign keys "
    "relationships. What a model\n"
    "has no place for, or scripts make otherwise, is listed by table. In a project that is there ids stay by "
    "the names of tables\n"
    "and columns, and what a database knows nothing of stays as it is.\n"
    "\n"
    "Examples:\n"
    "  korvane import shop.json shop.korv\n"
    "  korvane import sqlite:shop.db shop.korv -n             what would change\n"
    "  korvane import postgresql://ann@localhost/shop shop.korv --tables 't_*'\n"
    "  korvane import ddl:shop.sql --db mariadb shop.korv";

/// What tables that only link others become.
struct link_choice
{
    QLatin1String name;
    bool tellsLinks;
};
constexpr link_choice LinkChoices[] = {{QLatin1String("relationship"), true},
                                       {QLatin1String("entity"), false}};

/// Creates a project file from a text form or a database, or replaces its model.
class import_command : public command
{
public:
    import_command()
        : command("import",
                  "Create a project from a model in text form or a database, or replace a project's model",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override
    {
        options.addFile(
            "MODEL.json",
            "The model in text form, - from standard input; a database by its URL; or a script as ddl:FILE",
            m_request.from.source, value_kind::source);
        options.addProject(m_request.projectFile);
        options.addFlag("-n,--dry-run", "Tell what would change, and store nothing", m_request.isPlan);
        options.addTexts("--tables", "GLOB",
                         "Only tables of such names, such as 't_*'; of others nothing changes",
                         m_request.tables);
        options.addText("--schema", "NAME", "The schema of a PostgreSQL database; public is the default",
                        m_request.from.schema);
        options.addText("--link-tables", "relationship|entity",
                        "What a table of two foreign keys alone becomes; relationship is the default",
                        m_links);
        options.addText("--db", "NAME", "The database that a script runs on: sqlite, mariadb or postgresql",
                        m_request.from.database, value_kind::runnable_database);
        options.addFlag("--skip-refused", "List the statements of a script that are refused, and go on",
                        m_request.from.skipsRefused);
        options.setFooter(Help);
    }

    [[nodiscard]] QString whyWrong() const override;

    [[nodiscard]] int run() override
    {
        if (isSchemaSource(m_request.from.source)) {
            return runDatabase();
        }
        return m_request.isPlan ? runPlan() : runText();
    }

private:
    [[nodiscard]] int runText();
    [[nodiscard]] int runPlan() const;
    [[nodiscard]] int runDatabase();
    void tellRest(const database_import_result & done) const;

    /// Types that an export will not know are told by whoever knows the type mapping, if that is there.
    void tellUnknownTypes(const QList<column_type> & types) const
    {
        const found_plugins found = found_plugins::inFolders();
        int status = Failed;
        QString reason;
        plugin::statement_source * const statements = chooseStatementSource(found, {}, status, reason);
        for (const QString & line :
             statements ? unknownTypes(*statements, m_request.projectFile, types) : QStringList()) {
            printError(QStringLiteral("%1: warning: %2").arg(shownName(m_request.from.source), line));
        }
    }

    database_import_request m_request;
    QString m_links = LinkChoices[0].name;
};

QString import_command::whyWrong() const
{
    if (m_request.projectFile == QLatin1String("-")) {
        return QStringLiteral("PROJECT.korv is '-', but a project cannot be written to standard output; "
                              "give a file name ('./-' for a file of that name)");
    }
    if (!rowOf(LinkChoices, m_links)) {
        return QStringLiteral("--link-tables is 'relationship' or 'entity', not '%1'").arg(m_links);
    }
    if (isSchemaSource(m_request.from.source)) {
        return whyNoSchema(m_request.from);
    }
    const bool hasOthers = !m_request.tables.isEmpty() || !m_request.from.schema.isEmpty() ||
                           !m_request.from.database.isEmpty() || m_request.from.skipsRefused ||
                           m_links != LinkChoices[0].name;
    return hasOthers ? QStringLiteral(
                           "--tables, --schema, --link-tables, --db and --skip-refused are for databases and "
                           "scripts; '%1' is read as a model in text form")
                           .arg(m_request.from.source)
                     : QString();
}

int import_command::runText()
{
    const import_result done = importText(m_request.from.source, m_request.projectFile);
    if (!done.result) {
        return failed(done.result.getDesc());
    }
    for (const QString & warning : done.warnings) {
        printError(warning);
    }
    tellUnknownTypes(done.types);
    printDone(QStringLiteral("Project '%1' imported into %2 (entities: %3)")
                  .arg(done.projectName, QDir::toNativeSeparators(m_request.projectFile),
                       QString::number(done.entities)));
    return Done;
}

int import_command::runPlan() const
{
    const text_plan plan = planOfText(m_request.from.source, m_request.projectFile);
    if (!plan.result) {
        return failed(plan.result.getDesc());
    }
    for (const QString & warning : plan.warnings) {
        printError(warning);
    }
    printBytes(plan.text);
    return Done;
}

int import_command::runDatabase()
{
    statement_plugin plugin;
    if (const int status = plugin.load({}); status != Done) {
        return status;
    }
    m_request.tellsLinks = rowOf(LinkChoices, m_links)->tellsLinks;
    const database_import_result done = importDatabase(m_request, plugin.statements());
    if (!done.result) {
        return failed(done.result.getDesc());
    }
    if (done.plan) {
        printBytes(diffText(*done.plan));
    }
    tellRest(done);
    printDone(QStringLiteral("%1 (entities: %2; without a place in the model: %3)")
                  .arg(m_request.isPlan
                           ? QStringLiteral("Nothing is stored")
                           : QStringLiteral("Project '%1' imported into %2")
                                 .arg(done.projectName, QDir::toNativeSeparators(m_request.projectFile)),
                       QString::number(done.entities), QString::number(done.leftOut.size())));
    return Done;
}

/// Prints what may have been renamed, and what the model has no place for.
void import_command::tellRest(const database_import_result & done) const
{
    for (const QString & line : renameLines(done.renames, m_request.isPlan)) {
        printLine(oneLine(line));
    }
    std::optional<QString> table;
    for (const database::left_out & each : done.leftOut) {
        if (&each == &done.leftOut.constFirst()) {
            printLine(QStringLiteral("Without a place in the model, or made otherwise by scripts:"));
        }
        if (each.table != table) {
            table = each.table;
            printLine(QStringLiteral("  ") +
                      (table->isEmpty() ? QStringLiteral("the database") : oneLine(*table)));
        }
        printLine(QStringLiteral("    ") + oneLine(each.what));
    }
}

} // namespace

std::unique_ptr<command> makeImportCommand()
{
    return std::make_unique<import_command>();
}

} // namespace app
