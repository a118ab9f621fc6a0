#include "app/command_options.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace app {

namespace {

const char SourceName[] = "SOURCE";
const char AboutSource[] = "A project file, or a model in text form; - is a text on standard input";

const char ExitStatus[] = "Exit status: ";
/// That of a command that says nothing else about it.
const char UsualStatus[] = "Exit status: 0 done; 1 it could not be done; 2 wrong usage.";

/// "text (the default), json or markdown"
std::string listed(QStringList words)
{
    words.front() += QStringLiteral(" (the default)");
    const QString last = words.takeLast();
    return (words.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last).toStdString();
}

} // namespace

command_options::command_options(CLI::App & app) : m_app(app)
{
    setFooter("");
}

described_option & command_options::describe(const char * names, const char * what, value_kind kind)
{
    described_option & option = m_described.emplaceBack();
    option.names = QString::fromLatin1(names).split(QLatin1Char(','));
    option.what = QString::fromLatin1(what);
    option.kind = kind;
    return option;
}

CLI::Option * command_options::add(const char * names, const char * what, QString & text)
{
    return m_app.add_option_function<std::string>(
        names, [&text](const std::string & given) { text = QString::fromStdString(given); }, what);
}

void command_options::addOptionalFile(const char * name, const char * what, QString & file, value_kind kind)
{
    add(name, what, file)->type_name("");
    describe(name, what, kind);
    m_files.append(&file);
}

void command_options::addFile(const char * name, const char * what, QString & file, value_kind kind)
{
    add(name, what, file)->required()->type_name("");
    describe(name, what, kind).isRequired = true;
    m_files.append(&file);
}

void command_options::addProject(QString & file)
{
    addFile("PROJECT.korv", "The project file", file, value_kind::project);
}

void command_options::addSource(QString & file)
{
    addFile(SourceName, AboutSource, file, value_kind::source);
}

void command_options::addOptionalSource(QString & file)
{
    addOptionalFile(SourceName, AboutSource, file, value_kind::source);
}

void command_options::addVersion(const char * name, const char * what, QString & word, value_kind kind)
{
    add(name, what, word)->type_name("");
    describe(name, what, kind);
}

void command_options::addOptionalWord(const char * name, const char * what, const QStringList & words,
                                      QString & word)
{
    add(name, what, word)->type_name("");
    describe(name, what, value_kind::words).words = words;
}

void command_options::addText(const char * names, const char * placeholder, const char * what, QString & text,
                              value_kind kind)
{
    add(names, what, text)->type_name(placeholder);
    described_option & option = describe(names, what, kind);
    option.placeholder = QString::fromLatin1(placeholder);
    if (option.placeholder.contains(QLatin1Char('|'))) {
        option.kind = value_kind::words;
        option.words = option.placeholder.split(QLatin1Char('|'));
    }
}

void command_options::addTexts(const char * names, const char * placeholder, const char * what,
                               QStringList & texts)
{
    m_app
        .add_option_function<std::vector<std::string>>(
            names,
            [&texts](const std::vector<std::string> & given) {
                for (const std::string & each : given) {
                    texts << QString::fromStdString(each);
                }
            },
            what)
        ->type_name(placeholder)
        ->allow_extra_args(false);
    described_option & option = describe(names, what, value_kind::text);
    option.placeholder = QString::fromLatin1(placeholder);
    option.isRepeatable = true;
}

void command_options::addWords(const char * names, const char * placeholder, const QStringList & words,
                               QString & word)
{
    const std::string what = listed(words);
    add(names, what.c_str(), word)->type_name(placeholder);
    described_option & option = describe(names, what.c_str(), value_kind::words);
    option.placeholder = QString::fromLatin1(placeholder);
    option.words = words;
    m_words.append({names, words, &word});
}

void command_options::addPlugin(QString & name)
{
    addText("--plugin", "NAME", "Name or file of the plugin; by default the only one found", name,
            value_kind::plugin);
}

void command_options::addFlag(const char * names, const char * what, bool & flag)
{
    m_app.add_flag(names, flag, what);
    describe(names, what, value_kind::none);
}

void command_options::addQuiet(bool & flag)
{
    addFlag("-q,--quiet", "Print results only", flag);
}

void command_options::setFooter(const char * text)
{
    m_footer = QString::fromLatin1(text);
    if (!m_footer.contains(QLatin1String(ExitStatus))) {
        m_footer = (m_footer + QStringLiteral("\n\n") + QLatin1String(UsualStatus)).trimmed();
    }
    m_app.footer(m_footer.toStdString());
}

QStringList command_options::files() const
{
    QStringList given;
    for (const QString * const file : m_files) {
        if (!file->isEmpty()) {
            given << *file;
        }
    }
    return given;
}

QString command_options::whyWrong() const
{
    for (const chosen_word & option : m_words) {
        if (!option.given->isNull() && !option.words.contains(*option.given)) {
            return QStringLiteral("'%1' is not a value of %2; it takes %3")
                .arg(*option.given, QLatin1String(option.names), option.words.join(QStringLiteral(", ")));
        }
    }
    return {};
}

} // namespace app
