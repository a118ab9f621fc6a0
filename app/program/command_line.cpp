#include "app/program/command_line.h"

#include "app/command_options.h"
#include "app/commands/version_command.h"
#include "app/nearest_word.h"
#include "app/output.h"
#include "app/program/command_table.h"
#include "app/project_work.h"
#include "app/shell/completion_command.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace app {

namespace {

/// A command, and what stands for it in the parser.
struct declared_command
{
    std::unique_ptr<command> what;
    CLI::App * app;
    command_options options;
};

struct parser
{
    CLI::App app;
    declared_command window;
    std::vector<declared_command> commands;
    bool isQuiet = false;

    parser();
    /// The command that was given, or what the program does without one.
    declared_command & given()
    {
        const auto it = std::find_if(commands.begin(), commands.end(),
                                     [](const declared_command & c) { return c.app->parsed(); });
        return it == commands.end() ? window : *it;
    }
    /// How the command that was given is called.
    QString call()
    {
        const char * const program = window.what->name();
        const command & asked = *given().what;
        return QString::fromLatin1(program) + (&asked == window.what.get()
                                                   ? QString()
                                                   : QLatin1Char(' ') + QString::fromLatin1(asked.name()));
    }
};

parser::parser() : window{makeDefaultCommand(), &app, command_options(app)}
{
    app.name(window.what->name());
    app.description(window.what->description());
    app.set_version_flag("--version", std::string(),
                         "Print the versions of program, library, plugins, Qt and SQLite");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.require_subcommand(0, 1);
    window.what->declare(window.options);
    for (std::unique_ptr<command> & c : makeCommands()) {
        CLI::App * const own = app.add_subcommand(c->name(), c->description());
        commands.push_back({std::move(c), own, command_options(*own)});
        commands.back().what->declare(commands.back().options);
        commands.back().options.addQuiet(isQuiet);
    }
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
QString emptyName(parser & p)
{
    for (const CLI::App * const app : {p.window.app, p.given().app}) {
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
QString leftOver(parser & p)
{
    QStringList options;
    QStringList values;
    for (const QString & text : namesOf(p.app.remaining(true))) {
        (text.startsWith(QLatin1Char('-')) ? options : values) << text;
    }
    const QString taken = argumentsOf(*p.given().app);
    const QString others = p.given().what->aboutOthers();
    const QString more = others.isEmpty() ? QString() : QStringLiteral(", and ") + others;
    return options.isEmpty() ? QStringLiteral("Too many arguments: %1; '%2' takes %3%4")
                                   .arg(values.join(QLatin1Char(' ')), p.call(), taken, more)
                             : QStringLiteral("Unknown option %1; '%2' takes %3%4")
                                   .arg(options.join(QLatin1Char(' ')), p.call(), taken, more);
}

/// Why the first argument cannot be what it should be: a command, or a project for the window, where a
/// mistyped command would be of no use.
QString wrongFirst(const parser & p, const QString & first)
{
    const QFileInfo file(first);
    QStringList commands;
    for (const declared_command & c : p.commands) {
        commands << QString::fromLatin1(c.what->name());
    }
    if (first.isEmpty() || first.startsWith(QLatin1Char('-')) || commands.contains(first) ||
        (file.exists() && !file.isDir()) || isProjectName(first)) {
        return {};
    }
    const QString nearest = nearestWord(first, commands);
    return QStringLiteral("'%1' is neither a command nor a project file%2 (the commands are %3)")
        .arg(first, nearest.isEmpty() ? QString() : QStringLiteral("; did you mean '%1'?").arg(nearest),
             commands.join(QStringLiteral(", ")));
}

command_line parsed(parser & p)
{
    declared_command & given = p.given();
    if (const QString empty = emptyName(p); !empty.isEmpty()) {
        return wrongLine(empty);
    }
    const bool isWindow = &given == &p.window;
    if (const QStringList before = p.window.options.files(); !isWindow && !before.isEmpty()) {
        return wrongLine(
            QStringLiteral("'%1' stands before the command (see 'korvane --help')").arg(before.constFirst()));
    }
    const QString wrongWord = given.options.whyWrong();
    if (const QString wrong = wrongWord.isEmpty() ? given.what->whyWrong() : wrongWord; !wrong.isEmpty()) {
        return wrongLine(wrong);
    }
    command_line line;
    line.type = command_line::run;
    line.help = isWindow ? fromStd(p.app.help()).trimmed() : QString();
    line.files = given.options.files();
    line.isQuiet = p.isQuiet;
    line.asked = std::move(given.what);
    return line;
}

/// Takes out of `arguments` what the command that they name reads by itself; the reason when that is wrong.
QString takeOthers(const parser & p, QStringList & arguments)
{
    const auto named =
        std::find_if(p.commands.begin(), p.commands.end(), [&arguments](const declared_command & c) {
            return arguments.value(0) == QLatin1String(c.what->name());
        });
    if (named == p.commands.end()) {
        return {};
    }
    const QString name = arguments.takeFirst();
    const QString reason = named->what->takeOthers(arguments);
    arguments.prepend(name);
    return reason;
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
    const auto relative = std::find_if(line.files.cbegin(), line.files.cend(), [](const QString & file) {
        return file != QLatin1String("-") && QDir::isRelativePath(file);
    });
    std::error_code error;
    QString folder;
    if (relative == line.files.cend() || decode(std::filesystem::current_path(error).c_str(), folder)) {
        return {};
    }
    return QStringLiteral("The name of the current folder is not UTF-8: '%1'; "
                          "give %2 with its whole path, or use another folder")
        .arg(folder, *relative);
}

command_line parseCommandLine(const QStringList & arguments)
{
    if (arguments.value(0) == QLatin1String(shell::CompleteOption) && arguments.size() > 1) {
        command_line line;
        line.type = command_line::run;
        line.asked = shell::makeCompletionCommand(describeCommands(), arguments.mid(1));
        return line;
    }
    QStringList own = arguments;
    parser p;
    if (const QString reason = takeOthers(p, own); !reason.isEmpty()) {
        return wrongLine(reason);
    }
    if (const QString wrong = wrongFirst(p, own.value(0)); !wrong.isEmpty()) {
        return wrongLine(wrong);
    }
    std::vector<std::string> reversed;
    for (qsizetype i = own.size() - 1; i >= 0; --i) {
        reversed.push_back(own[i].toStdString());
    }
    command_line help;
    help.type = command_line::print;
    try {
        p.app.parse(reversed);
        return parsed(p);
    } catch (const CLI::CallForHelp &) {
        help.text = fromStd(p.app.help()).trimmed();
        if (declared_command & given = p.given(); &given != &p.window) {
            help.type = command_line::tell;
            help.asked = std::move(given.what);
        }
    } catch (const CLI::CallForVersion &) {
        help.type = command_line::run;
        help.asked = makeVersionCommand();
    } catch (const CLI::ExtrasError &) {
        return wrongLine(leftOver(p));
    } catch (const CLI::ParseError & error) {
        return wrongLine(QStringLiteral("%1 (see '%2 --help')").arg(fromStd(error.what()), p.call()));
    }
    return help;
}

} // namespace app
