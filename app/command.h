#pragma once

#include <QString>
#include <QStringList>

namespace app {

class command_options;

/// The exit statuses of the program.
constexpr int Done = 0;
constexpr int Failed = 1;     ///< with one line on standard error that says what and where
constexpr int WrongUsage = 2; ///< the command line was wrong, which one line on standard error tells
constexpr int Objected = 3;   ///< done, and there is something to object to

/// What a command needs around it.
enum class surroundings
{
    console, ///< files and standard streams
    plugins, ///< plug-ins too, whose widgets nobody sees
    window   ///< a display
};

/// One command of the program: how it is called, what it takes and what it does. Each has a file of its own,
/// and a row in commands/commands.h.
class command
{
public:
    command(const char * name, const char * description, surroundings needs = surroundings::console)
        : m_name(name), m_description(description), m_needs(needs)
    {
    }
    virtual ~command() = default;
    command(const command &) = delete;
    command & operator=(const command &) = delete;

    [[nodiscard]] const char * name() const { return m_name; }
    [[nodiscard]] const char * description() const { return m_description; }
    /// What it needs, given what declare() was told of.
    [[nodiscard]] virtual surroundings needs() const { return m_needs; }

    /// Says what the command takes and where to put it; what it is given is there before whyWrong() is asked.
    /// The command outlives `options`.
    virtual void declare(command_options & options) = 0;
    /// Takes out of `arguments`, those after the command's name, what declare() cannot describe; the reason
    /// when that is wrong.
    virtual QString takeOthers(QStringList & arguments);
    /// What takeOthers() takes, for the text that lists what the command takes; empty for nothing.
    [[nodiscard]] virtual QString aboutOthers() const { return {}; }
    /// Why what was given cannot be right together; empty when it can.
    [[nodiscard]] virtual QString whyWrong() const { return {}; }
    /// What its help says besides, which takes what needs() says to find out: lines, or nothing.
    [[nodiscard]] virtual QString moreHelp() { return {}; }
    /// Does it and prints what it has to say. The exit status.
    [[nodiscard]] virtual int run() = 0;

private:
    const char * m_name;
    const char * m_description;
    surroundings m_needs;
};

inline QString command::takeOthers(QStringList &)
{
    return {};
}

} // namespace app
