#include "app/command_options.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace app {

CLI::Option * command_options::add(const char * names, const char * what, QString & text)
{
    return m_app.add_option_function<std::string>(
        names, [&text](const std::string & given) { text = QString::fromStdString(given); }, what);
}

void command_options::addOptionalFile(const char * name, const char * what, QString & file)
{
    add(name, what, file)->type_name("");
    m_files.append(&file);
}

void command_options::addFile(const char * name, const char * what, QString & file)
{
    add(name, what, file)->required()->type_name("");
    m_files.append(&file);
}

void command_options::addProject(QString & file)
{
    addFile("PROJECT.korv", "The project file", file);
}

namespace {

const char SourceName[] = "SOURCE";
const char AboutSource[] = "A project file, or a model in text form; - is a text on standard input";

} // namespace

void command_options::addSource(QString & file)
{
    addFile(SourceName, AboutSource, file);
}

void command_options::addOptionalSource(QString & file)
{
    addOptionalFile(SourceName, AboutSource, file);
}

void command_options::addVersion(const char * name, const char * what, QString & word)
{
    add(name, what, word)->type_name("");
}

void command_options::addText(const char * names, const char * placeholder, const char * what, QString & text)
{
    add(names, what, text)->type_name(placeholder);
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
}

void command_options::addFlag(const char * names, const char * what, bool & flag)
{
    m_app.add_flag(names, flag, what);
}

void command_options::setFooter(const char * text)
{
    m_app.footer(text);
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

} // namespace app
