#pragma once

#include "app/described_command.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace app {

/// What one command takes, in the order in which its help shows it. Names and texts live as long as the
/// program; what is given goes to the variables, which keep their values when it is not given.
class command_options
{
public:
    explicit command_options(CLI::App & app);

    /// A file that has to be given, by its place among the arguments.
    void addFile(const char * name, const char * what, QString & file, value_kind kind = value_kind::file);
    void addOptionalFile(const char * name, const char * what, QString & file,
                         value_kind kind = value_kind::file);
    /// The project file, which has to be given.
    void addProject(QString & file);
    /// What a command reads, which has to be given: a project file or a text form; see app::source.
    void addSource(QString & file);
    /// The same for a command that can do without.
    void addOptionalSource(QString & file);
    /// The word for a version, which need not be given.
    void addVersion(const char * name, const char * what, QString & word,
                    value_kind kind = value_kind::version);
    /// One of `words` by its place, which need not be given.
    void addOptionalWord(const char * name, const char * what, const QStringList & words, QString & word);
    /// An option with a value, which help calls `placeholder`: a name, or its words with "|" between, which
    /// are for the command to check.
    void addText(const char * names, const char * placeholder, const char * what, QString & text,
                 value_kind kind = value_kind::text);
    /// The same for one that may be given several times.
    void addTexts(const char * names, const char * placeholder, const char * what, QStringList & texts);
    /// An option that takes one of `words`, of which the first is what counts when it is not given. Another
    /// word is told by whyWrong().
    void addWords(const char * names, const char * placeholder, const QStringList & words, QString & word);
    /// --plugin, the plug-in that is meant.
    void addPlugin(QString & name);
    void addFlag(const char * names, const char * what, bool & flag);
    /// -q, which each command takes that has a name.
    void addQuiet(bool & flag);
    /// What help says after the options: paragraphs with an empty line between; the exit status and examples
    /// begin with "Exit status: " and with "Example: " or a line "Examples:". Without an exit status the
    /// usual one is added.
    void setFooter(const char * text);

    /// The files that were given.
    [[nodiscard]] QStringList files() const;
    /// Why a word that was given is none of those that addWords() was told; empty when all are.
    [[nodiscard]] QString whyWrong() const;
    /// What was declared, in that order.
    [[nodiscard]] const QList<described_option> & described() const { return m_described; }
    [[nodiscard]] QString footer() const { return m_footer; }

private:
    /// An option whose words are known, and where the one goes that is given.
    struct chosen_word
    {
        const char * names;
        QStringList words;
        const QString * given;
    };

    CLI::Option * add(const char * names, const char * what, QString & text);
    described_option & describe(const char * names, const char * what, value_kind kind);

    CLI::App & m_app;
    QList<const QString *> m_files;
    QList<described_option> m_described;
    QList<chosen_word> m_words;
    QString m_footer;
};

} // namespace app
