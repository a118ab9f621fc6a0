#include "app/command_line.h"

#include "app/nearest_word.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include <filesystem>
#include <string>
#include <vector>

namespace app {

namespace {

const char Examples[] =
    "Without a command the main window opens.\n"
    "\n"
    "Examples:\n"
    "  korvane shop.korv                           open a project in the main window\n"
    "  korvane import shop.json shop.korv          create a project from a model in text form\n"
    "  korvane tag shop.korv -m \"first release\"    tag its current state as a new version\n"
    "  korvane export shop.korv -y --KorvGenericDDLExport_path=sql --KorvGenericDDLExport_db_type=3\n"
    "                                              write the PostgreSQL scripts to the folder sql\n"
    "  korvane plugins                             list the plugins and their options\n"
    "\n"
    "Exit status: 0 success; 1 failure (one line on standard error says why); 2 wrong usage.";

const char ExportHelp[] = "--PLUGIN_OPTION=VALUE hands an option to the plugin whose name it begins with; "
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
    bool noCustomScript = false;
    bool ifChanged = false;
    std::vector<std::pair<CLI::App *, command_line::command_type>> commands;

    parser();
    CLI::App * add(command_line::command_type type, const char * name, const char * what)
    {
        CLI::App * const command = app.add_subcommand(name, what);
        commands.emplace_back(command, type);
        return command;
    }
    /// The command that was given, or the program itself.
    const CLI::App & given() const
    {
        const std::vector<const CLI::App *> parsed = app.get_subcommands(nullptr);
        const auto it =
            std::find_if(parsed.begin(), parsed.end(), [](const CLI::App * a) { return a->parsed(); });
        return it == parsed.end() ? app : **it;
    }
    /// How the command that was given is called.
    QString call() const
    {
        return &given() == &app ? QStringLiteral("korvane")
                                : QStringLiteral("korvane ") + QString::fromStdString(given().get_name());
    }
    void addProject(CLI::App * command)
    {
        command->add_option("PROJECT.korv", projectFile, "The project file")->required()->type_name("");
    }
};

parser::parser()
{
    app.set_version_flag("--version", "korvane " KORVANE_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.footer(Examples);
    app.require_subcommand(0, 1);
    app.add_option("PROJECT.korv", windowFile, "A project file to open in the main window")->type_name("");

    CLI::App * const import = add(command_line::import, "import",
                                  "Create a project from a model in text form, or replace a project's model");
    import->add_option("MODEL.json", modelFile, "The model in text form; - reads it from standard input")
        ->required()
        ->type_name("");
    addProject(import);
    addProject(add(command_line::dump, "dump", "Print the text form of a project"));
    CLI::App * const tag =
        add(command_line::tag, "tag", "Tag the current state of a project as a new version");
    addProject(tag);
    tag->add_option("-m,--message", message, "Description of the version")->type_name("TEXT");
    tag->add_flag("--if-changed", ifChanged,
                  "Do nothing when the model has not changed since the newest version");
    addProject(add(command_line::log, "log", "List the versions of a project"));
    CLI::App * const exportCommand = add(command_line::export_project, "export", "Run an export plugin");
    addProject(exportCommand);
    exportCommand
        ->add_option("--plugin", pluginName, "Name or file of the plugin; by default the only one found")
        ->type_name("NAME");
    exportCommand->add_flag("-y,--yes", answerYes, "Answer every question with Yes");
    exportCommand->add_flag("--no-custom-script", noCustomScript,
                            "Leave the custom script out that the project names");
    exportCommand->footer(ExportHelp);
    add(command_line::plugins, "plugins", "List the plugins found, with their command-line help");
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

/// The text of `bytes`; false with bytes that are not UTF-8 shown by their numbers.
bool decode(const QByteArray & bytes, QString & text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    text = decoder(bytes);
    if (!decoder.hasError()) {
        return true;
    }
    text.clear();
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code < 0x80 ? QString(QLatin1Char(byte)) : QStringLiteral("\\x") + QString::number(code, 16);
    }
    return false;
}

QStringList namesOf(const std::vector<std::string> & names)
{
    QStringList result;
    for (const std::string & name : names) {
        result << fromStd(name);
    }
    return result;
}

/// What a command takes, such as "PROJECT.korv, -m,--message TEXT, -h,--help".
QString argumentsOf(const CLI::App & command)
{
    QStringList own;
    QStringList general;
    for (const CLI::Option * const option : command.get_options()) {
        const QString type = option->get_positional() ? QString() : fromStd(option->get_type_name());
        const QString name = fromStd(option->get_name(option->get_positional(), true));
        const bool isGeneral = option == command.get_help_ptr() || option == command.get_version_ptr();
        (isGeneral ? general : own) << (name + QLatin1Char(' ') + type).trimmed();
    }
    return (own + general).join(QStringLiteral(", "));
}

/// Why a file name that is there, but empty, is wrong: most likely a variable of a script that was not set.
QString emptyName(const parser & p)
{
    for (const CLI::App * const app : {&p.app, &p.given()}) {
        for (const CLI::Option * const option : app->get_options()) {
            if (option->get_positional() && option->count() > 0 && option->results().front().empty()) {
                return QStringLiteral("%1 is empty; give a file name (see '%2 --help')")
                    .arg(fromStd(option->get_name(true)), p.call());
            }
        }
    }
    return {};
}

/// What is wrong with the arguments that are left over.
QString leftOver(const parser & p)
{
    QStringList options;
    QStringList others;
    for (const QString & text : namesOf(p.app.remaining(true))) {
        (text.startsWith(QLatin1Char('-')) ? options : others) << text;
    }
    const QString taken = argumentsOf(p.given());
    const QString more =
        p.given().get_name() == "export"
            ? QStringLiteral(", and the options of the plugins ('korvane plugins' lists them)")
            : QString();
    return options.isEmpty() ? QStringLiteral("Too many arguments: %1; '%2' takes %3%4")
                                   .arg(others.join(QLatin1Char(' ')), p.call(), taken, more)
                             : QStringLiteral("Unknown option %1; '%2' takes %3%4")
                                   .arg(options.join(QLatin1Char(' ')), p.call(), taken, more);
}

/// Why the first argument cannot be what it should be: a command, or a project for the window, where a
/// mistyped command would be of no use.
QString wrongFirst(const parser & p, const QString & first)
{
    const QFileInfo file(first);
    QStringList commands;
    for (const auto & [command, type] : p.commands) {
        commands << fromStd(command->get_name());
    }
    if (first.isEmpty() || first.startsWith(QLatin1Char('-')) || commands.contains(first) ||
        (file.exists() && !file.isDir()) || file.suffix().toLower() == QLatin1String("korv")) {
        return {};
    }
    const QString nearest = nearestWord(first, commands);
    return QStringLiteral("'%1' is neither a command nor a project file%2 (the commands are %3)")
        .arg(first, nearest.isEmpty() ? QString() : QStringLiteral("; did you mean '%1'?").arg(nearest),
             commands.join(QStringLiteral(", ")));
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
    if (const QString empty = emptyName(p); !empty.isEmpty()) {
        return wrongLine(empty);
    }
    if (line.command == command_line::window) {
        return line;
    }
    if (!p.windowFile.empty()) {
        return wrongLine(
            QStringLiteral("'%1' stands before the command (see 'korvane --help')").arg(line.projectFile));
    }
    if (line.command == command_line::import && p.projectFile == "-") {
        return wrongLine(QStringLiteral("PROJECT.korv is '-', but a project cannot be written to standard "
                                        "output; give a file name ('./-' for a file of that name)"));
    }
    line.modelFile = fromStd(p.modelFile);
    line.projectFile = fromStd(p.projectFile);
    line.message = fromStd(p.message);
    line.ifChanged = p.ifChanged;
    request.projectFile = line.projectFile;
    request.pluginName = fromStd(p.pluginName);
    request.answerYes = p.answerYes;
    request.noCustomScript = p.noCustomScript;
    line.request = request;
    return line;
}

} // namespace

bool decodeArguments(int count, const char * const * arguments, QStringList & decoded, QString & reason)
{
    for (int i = 1; i < count; ++i) {
        QString text;
        if (!decode(arguments[i], text)) {
            reason = QStringLiteral("Argument %1 is not UTF-8: '%2'; give the file a name in UTF-8")
                         .arg(QString::number(i), text);
            return false;
        }
        decoded << text;
    }
    return true;
}

QString workingFolderProblem(const command_line & line)
{
    const QStringList files{line.modelFile, line.projectFile};
    const auto relative = std::find_if(files.cbegin(), files.cend(), [](const QString & file) {
        return !file.isEmpty() && file != QLatin1String("-") && QDir::isRelativePath(file);
    });
    std::error_code error;
    QString folder;
    if (relative == files.cend() || decode(std::filesystem::current_path(error).c_str(), folder)) {
        return {};
    }
    return QStringLiteral(
               "The name of the current folder is not UTF-8: '%1'; give %2 with its whole path, or use "
               "another folder")
        .arg(folder, *relative);
}

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
    if (const QString wrong = wrongFirst(p, own.value(0)); !wrong.isEmpty()) {
        return wrongLine(wrong);
    }
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
    } catch (const CLI::ExtrasError &) {
        return wrongLine(leftOver(p));
    } catch (const CLI::ParseError & error) {
        return wrongLine(QStringLiteral("%1 (see '%2 --help')").arg(fromStd(error.what()), p.call()));
    }
    return help;
}

} // namespace app
