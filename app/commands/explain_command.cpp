#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/explained_script.h"
#include "app/export_options.h"
#include "app/output.h"
#include "app/project_work.h"
#include "app/script_difference.h"
#include "app/script_guard.h"
#include "app/source.h"
#include "app/statement_plugin.h"

#include "check/report/json_parts.h"
#include "model/project.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace app {

namespace {

const char Help[] =
    "Each statement is printed with its reason, the change in the model, and what 'korvane check' finds "
    "about it,\n"
    "as comments: what is printed can be run like the script. A script that an export with the stored "
    "settings would\n"
    "not write as it is now is said to differ; told is then what the export would write.\n"
    "\n"
    "Examples:\n"
    "  korvane explain shop.korv sql/shop_postgresql_db_schema_v1_to_v2.sql\n"
    "  korvane explain shop.korv sql/shop_postgresql_db_schema_v1_to_v2.sql:7";

/// Explains the statements of a script.
class explain_command : public command
{
public:
    explain_command()
        : command("explain", "Tell the reason of each statement of a script", surroundings::plugins)
    {
    }

    void declare(command_options & options) override;
    [[nodiscard]] QString whyWrong() const override { return m_exportOptions.whyWrong(); }
    [[nodiscard]] int run() override;

private:
    void splitLine();
    [[nodiscard]] int explain(plugin::statement_source & statements);
    [[nodiscard]] zk::ZkBool readScript(QByteArray & there) const;
    [[nodiscard]] bool isAsked(const explained_statement & statement) const;
    [[nodiscard]] QByteArray asText(const explained_script & told) const;
    [[nodiscard]] QByteArray asJson(const explained_script & told, const QString & project) const;

    QString m_source;
    QString m_script;
    int m_line = 0; ///< 0 for all
    export_options m_exportOptions;
    plugin_request m_plugin;
    bool m_noCustomScript = false;
    bool m_json = false;
};

void explain_command::declare(command_options & options)
{
    options.addProject(m_source);
    options.addFile("SCRIPT.sql", "A script of an export; with :LINE after it the statement on that line",
                    m_script);
    m_exportOptions.declareContent(options);
    options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                    m_noCustomScript);
    options.addPlugin(m_plugin.name);
    options.addFlag("--json", "Print a JSON document", m_json);
    options.setFooter(Help);
}

/// Takes ":LINE" off the name of the script, unless there is a file of the whole name.
void explain_command::splitLine()
{
    static const QRegularExpression form(QStringLiteral("^(.+\\.sql):(\\d{1,9})$"));
    const QRegularExpressionMatch match = form.match(m_script);
    if (match.hasMatch() && !QFile::exists(m_script)) {
        m_script = match.captured(1);
        m_line = match.captured(2).toInt();
    }
}

int explain_command::run()
{
    splitLine();
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin, m_exportOptions); status != Done) {
        return status;
    }
    return explain(plugin.statements());
}

int explain_command::explain(plugin::statement_source & statements)
{
    source of;
    script_name name;
    QByteArray there;
    explained_script told;
    const tools::script_guard_scope guard(commandScriptGuard(m_noCustomScript));
    zk::ZkBool result = of.open(m_source);
    if (result && of.isText()) {
        result = zk::ZkBool::failure(
            QStringLiteral(
                "%1: is a text form, which has no versions and so no scripts; give the project file")
                .arg(shownName(m_source)));
    }
    if (result) {
        result = readScript(there);
    }
    if (result) {
        result = readScriptName(statements, QFileInfo(m_script).fileName(), name);
    }
    if (result) {
        result = explainScript(statements, of, name, m_exportOptions.given(), told);
    }
    if (!result) {
        return failed(result.getDesc());
    }
    const auto lines = told.bytes.count('\n');
    if (m_line > lines) {
        return failed(QStringLiteral("%1 has no line %2; it has %3")
                          .arg(shownName(m_script), QString::number(m_line), QString::number(lines)));
    }
    if (there != told.bytes) {
        printError(QStringLiteral("%1 is not what an export writes now: %2; told is what it writes")
                       .arg(shownName(m_script), scriptDifference(there, told.bytes, {})));
    }
    std::shared_ptr<model::project> project;
    result = of.load(Now, project);
    printBytes(m_json ? asJson(told, project->getName()) : asText(told));
    return result ? Done : failed(result.getDesc());
}

zk::ZkBool explain_command::readScript(QByteArray & there) const
{
    QFile file(m_script);
    if (!file.open(QIODevice::ReadOnly)) {
        return zk::ZkBool::failure(
            QStringLiteral("%1: cannot be read (%2)").arg(shownName(m_script), file.errorString()));
    }
    there = file.readAll();
    return zk::ZkBool::success();
}

bool explain_command::isAsked(const explained_statement & statement) const
{
    const check::statement_place & place = statement.statement.place;
    return m_line == 0 || (m_line >= place.line && m_line < place.line + place.lines);
}

QByteArray explain_command::asText(const explained_script & told) const
{
    const QByteArrayList lines = told.bytes.split('\n');
    QByteArray text;
    qsizetype next = 0; // the first line that is not printed yet
    const auto copyUpTo = [&](qsizetype line) {
        for (; next < line && next + 1 < lines.size(); ++next) {
            text += lines[next] + '\n';
        }
    };
    for (const explained_statement & each : told.statements) {
        const check::statement_place & place = each.statement.place;
        if (!isAsked(each)) {
            continue;
        }
        m_line == 0 ? copyUpTo(place.line - 1) : void(next = place.line - 1);
        for (const QString & reason : each.reasons) {
            text += "-- " + oneLine(reason).toUtf8() + '\n';
        }
        for (const check::finding * const finding : each.findings) {
            text += "-- " + oneLine(check::briefText(*finding)).toUtf8() + '\n';
        }
        copyUpTo(place.line - 1 + place.lines);
    }
    if (m_line == 0) {
        copyUpTo(lines.size());
    }
    return text;
}

QByteArray explain_command::asJson(const explained_script & told, const QString & project) const
{
    using check::json;
    using check::textOf;
    json statements = json::array();
    for (const explained_statement & each : told.statements) {
        if (!isAsked(each)) {
            continue;
        }
        json statement = check::statementOf(each.statement.place);
        json reasons = json::array();
        for (const QString & reason : each.reasons) {
            reasons.push_back(textOf(reason));
        }
        json findings = json::array();
        for (const check::finding * const finding : each.findings) {
            findings.push_back(check::briefOf(*finding));
        }
        statement["reasons"] = std::move(reasons);
        statement["findings"] = std::move(findings);
        statements.push_back(std::move(statement));
    }
    return check::written({{"format", "korvane.explain"},
                           {"formatVersion", 1},
                           {"program", textOf(QCoreApplication::applicationVersion())},
                           {"project", textOf(project)},
                           {"database", textOf(told.name.database)},
                           {"from", told.from.isEmpty() ? json(nullptr) : textOf(told.from)},
                           {"to", textOf(told.to)},
                           {"statements", std::move(statements)}});
}

} // namespace

std::unique_ptr<command> makeExplainCommand()
{
    return std::make_unique<explain_command>();
}

} // namespace app
