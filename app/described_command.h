#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace app {

/// What a value is, which says what a shell can offer in its place.
enum class value_kind
{
    none,    ///< an option without a value
    text,    ///< anything
    file,    ///< the name of a file
    folder,  ///< the name of a folder
    project, ///< a project file
    source,  ///< a project file or a text form
    version, ///< a version of the project that is named
    version_or_source,
    words,              ///< one of `words`
    database,           ///< the key of a database
    databases,          ///< keys of databases with commas between
    runnable_database,  ///< the key of a database that can be run here
    runnable_databases, ///< keys of those with commas between
    plugin,             ///< the name or the file of a plug-in
    rule                ///< the code of a rule
};

/// An option of a command, or an argument by its place, as help, pages and shells tell of it.
struct described_option
{
    QStringList names;   ///< "-o", "--output"; one without a dash for an argument by its place
    QString placeholder; ///< how its value is called; empty without one, and for an argument by its place
    QString what;
    value_kind kind = value_kind::none;
    QStringList words; ///< for value_kind::words
    bool isRequired = false;
    bool isRepeatable = false;

    [[nodiscard]] bool isByPlace() const { return !names.constFirst().startsWith(QLatin1Char('-')); }
};

/// A command, as help, pages and shells tell of it.
struct described_command
{
    QString name; ///< as it is typed; that of the program for what it does without a command
    QString description;
    QString footer; ///< what help says after the options, in paragraphs; see command_options::setFooter()
    QList<described_option> options;
};

} // namespace app
