#include "app/command_line.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QRegularExpression>

#include <string>
#include <vector>

namespace app {

namespace {

const char Examples[] =
    "Without a command the main window opens.\n"
    "\n"
    "Examples:\n"
    "  korvane shop.korv                           open a project in the main window\n"
    "  korvane import shop.json shop.korv          make a project of a model written as text\n"
    "  korvane tag shop.korv -m \"first release\"    keep its state as a version\n"
    "  korvane export shop.korv -y --KorvGenericDDLExport_path=sql --KorvGenericDDLExport_db_type=3\n"
    "                                              write the PostgreSQL scripts to the folder sql\n"
    "  korvane plugins                             list the plug-ins and their options\n"
    "\n"
    "Exit status: 0 done; 1 it failed, with one line on standard error; 2 the command line was wrong.";

const char ExportHelp[] = "--PLUGIN_OPTION=VALUE hands an option to the plug-in whose name it begins with; "
                          "'korvane plugins' lists the\n"
                          "options. Relative paths in them are taken from the folder of the project file.\n"
                          "\n"
                          "Example: korvane export shop.korv -y --KorvGenericDDLExport_path=sql";

/// Takes the options of plug-ins, "--Plugin_option=VALUE" or "--Plugin_option VALUE", out of `arguments`; the
/// reason when one has no value.
QString takePluginOptions(QStringList & arguments, export_request & request)
{
    static const QRegularExpression form(QStringLiteral("^(--\\w*_\\w*)(?:=(.*))?$"),
                                         QRegularExpression::DotMatchesEverythingOption);
    QStringList others;
    while (!arguments.isEmpty()) {
        const QString argument = arguments.takeFirst();
        const QRegularExpressionMatch match = form.match(argument);
        if (!match.hasMatch()) {
            others << argument;
        } else if (match.capturedStart(2) >= 0) {
            request.pluginOptions.append({match.captured(1), match.captured(2)});
        } else if (!arguments.isEmpty()) {
            request.pluginOptions.append({match.captured(1), arguments.takeFirst()});
        } else {
            return QStringLiteral("The option %1 needs a value: %1=VALUE").arg(argument);
        }
    }
    arguments = others;
    return {};
}

struct parser
{
    CLI::App app{
        "Imports models of persistent classes, tags their versions and exports them as DDL SQL scripts.",
        "korvane"};
    std::string modelFile;
    std::string projectFile;
    std::string windowFile;
    std::string message;
    std::string pluginName;
    bool answerYes = false;
    bool ifChanged = false;
    std::vector<std::pair<CLI::App *, command_line::command_type>> commands;

    parser();
    CLI::App * add(command_line::command_type type, const char * name, const char * what)
    {
        CLI::App * const command = app.add_subcommand(name, what);
        commands.emplace_back(command, type);
        return command;
    }
    void addProject(CLI::App * command)
    {
        command->add_option("PROJECT.korv", projectFile, "The project file")->required()->type_name("");
    }
};

parser::parser()
{
    app.set_version_flag("--version", "korvane " KORVANE_VERSION, "Print the version and end");
    app.set_help_flag("-h,--help", "Print this help and end");
    app.footer(Examples);
    app.require_subcommand(0, 1);
    app.add_option("PROJECT.korv", windowFile, "A project file to open in the main window")->type_name("");

    CLI::App * const import =
        add(command_line::import, "import", "Create a project from its text form, or replace its model");
    import->add_option("MODEL.json", modelFile, "The text form of the model")->required()->type_name("");
    addProject(import);
    addProject(add(command_line::dump, "dump", "Print the text form of a project"));
    CLI::App * const tag = add(command_line::tag, "tag", "Store the state of a project as a new version");
    addProject(tag);
    tag->add_option("-m,--message", message, "What the version is about")->type_name("TEXT");
    tag->add_flag("--if-changed", ifChanged, "Do nothing when the model is still that of the newest version");
    addProject(add(command_line::log, "log", "List the versions of a project"));
    CLI::App * const exportCommand = add(command_line::export_project, "export", "Run an export plug-in");
    addProject(exportCommand);
    exportCommand
        ->add_option("--plugin", pluginName, "Name or file of the plug-in; by default the only one found")
        ->type_name("NAME");
    exportCommand->add_flag("-y,--yes", answerYes, "Answer every question with Yes");
    exportCommand->footer(ExportHelp);
    add(command_line::plugins, "plugins", "List the plug-ins found, with their command-line help");
}

QString fromStd(const std::string & text)
{
    return QString::fromStdString(text);
}

command_line wrongLine(const QString & reason)
{
    command_line line;
    line.text = oneLine(reason);
    return line;
}

/// A mistyped command is no project: a window that says so would be of no use in a terminal.
command_line checkedWindow(const command_line & line)
{
    const QFileInfo file(line.projectFile);
    const bool isMeant =
        line.projectFile.isEmpty() || file.exists() || file.suffix().toLower() == QLatin1String("korv");
    return isMeant ? line
                   : wrongLine(QStringLiteral("korvane: '%1' is neither a command nor a project file "
                                              "('korvane --help' tells how to call it)")
                                   .arg(line.projectFile));
}

command_line parsed(const parser & p, export_request & request)
{
    command_line line;
    line.command = command_line::window;
    line.projectFile = fromStd(p.windowFile);
    line.help = fromStd(p.app.help()).trimmed();
    for (const auto & [command, type] : p.commands) {
        if (command->parsed()) {
            line.command = type;
        }
    }
    if (line.command == command_line::window) {
        return checkedWindow(line);
    }
    if (!p.windowFile.empty()) {
        return wrongLine(QStringLiteral("korvane: '%1' stands before the command ('korvane --help' tells how "
                                        "to call it)")
                             .arg(line.projectFile));
    }
    line.modelFile = fromStd(p.modelFile);
    line.projectFile = fromStd(p.projectFile);
    line.message = fromStd(p.message);
    line.ifChanged = p.ifChanged;
    request.projectFile = line.projectFile;
    request.pluginName = fromStd(p.pluginName);
    request.answerYes = p.answerYes;
    line.request = request;
    return line;
}

} // namespace

command_line parseCommandLine(const QStringList & arguments)
{
    QStringList own = arguments;
    export_request request;
    if (own.value(0) == QLatin1String("export")) {
        if (const QString reason = takePluginOptions(own, request); !reason.isEmpty()) {
            return wrongLine(reason);
        }
    }
    parser p;
    std::vector<std::string> reversed;
    for (qsizetype i = own.size() - 1; i >= 0; --i) {
        reversed.push_back(own[i].toStdString());
    }
    command_line help;
    help.command = command_line::print;
    try {
        p.app.parse(reversed);
        return parsed(p, request);
    } catch (const CLI::CallForHelp &) {
        help.text = fromStd(p.app.help()).trimmed();
    } catch (const CLI::CallForVersion & version) {
        help.text = fromStd(version.what());
    } catch (const CLI::ParseError & error) {
        return wrongLine(QStringLiteral("korvane: ") + fromStd(error.what()) +
                         QStringLiteral(" ('korvane --help' tells how to call it)"));
    }
    return help;
}

} // namespace app
