#pragma once

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
    explicit command_options(CLI::App & app) : m_app(app) {}

    /// A file that has to be given, by its place among the arguments.
    void addFile(const char * name, const char * what, QString & file);
    void addOptionalFile(const char * name, const char * what, QString & file);
    /// The project file, which has to be given.
    void addProject(QString & file);
    /// What a command reads, which has to be given: a project file or a text form; see app::source.
    void addSource(QString & file);
    /// The same for a command that can do without.
    void addOptionalSource(QString & file);
    /// The word for a version, which need not be given.
    void addVersion(const char * name, const char * what, QString & word);
    /// An option with a value, which help calls `placeholder`.
    void addText(const char * names, const char * placeholder, const char * what, QString & text);
    /// The same for one that may be given several times.
    void addTexts(const char * names, const char * placeholder, const char * what, QStringList & texts);
    void addFlag(const char * names, const char * what, bool & flag);
    /// What help says after the options.
    void setFooter(const char * text);

    /// The files that were given.
    [[nodiscard]] QStringList files() const;

private:
    CLI::Option * add(const char * names, const char * what, QString & text);

    CLI::App & m_app;
    QList<const QString *> m_files;
};

} // namespace app
