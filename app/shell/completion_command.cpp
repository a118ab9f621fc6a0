#include "app/shell/completion_command.h"

#include "app/command.h"
#include "app/output.h"
#include "app/plugin_choice.h"
#include "app/shell/completion.h"

#include "plugin/export_interface.h"
#include "storage/history.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace app::shell {

namespace {

/// How a shell is told which files can stand there, on a line of its own.
constexpr std::pair<value_kind, const char *> FileLines[] = {
    {value_kind::file, ":file"},
    {value_kind::folder, ":folder"},
    {value_kind::project, ":project"},
    {value_kind::source, ":source"},
};

QList<offered_word> versionsOf(const QString & project)
{
    QList<offered_word> words;
    QList<storage::history::version> versions;
    // A text has no versions, and a shell is no place to tell what is wrong with a file.
    if (!QFileInfo(project).isFile() || storage::history::list(project, versions).isValid()) {
        return words;
    }
    for (const storage::history::version & version : std::as_const(versions)) {
        words.append({QStringLiteral("v%1").arg(version.number), version.message});
    }
    return words;
}

QList<offered_word> installedPlugins()
{
    QList<offered_word> words;
    for (const auto & loaded : found_plugins::inFolders().plugins) {
        words.append({loaded->getInterface()->getName(), loaded->getInterface()->getShortDesc()});
    }
    return words;
}

/// Tells a shell what can stand in the place of a word: for each a line with the word, a tab and what it
/// means, and one that begins with a colon for files.
class completion_command : public command
{
public:
    completion_command(QList<described_command> commands, QStringList words)
        : command("complete", "Tell a shell what can be typed", surroundings::plugins),
          m_commands(std::move(commands)), m_words(std::move(words))
    {
    }

    void declare(command_options &) override {}
    [[nodiscard]] int run() override
    {
        const completion found = complete(m_commands, m_words, {&versionsOf, &installedPlugins});
        for (const offered_word & each : found.words) {
            printLine(each.about.isEmpty() ? each.word : each.word + QLatin1Char('\t') + oneLine(each.about));
        }
        for (const auto & [kind, line] : FileLines) {
            if (kind == found.files) {
                printLine(QLatin1String(line));
            }
        }
        return Done;
    }

private:
    QList<described_command> m_commands;
    QStringList m_words;
};

} // namespace

std::unique_ptr<command> makeCompletionCommand(const QList<described_command> & commands,
                                               const QStringList & words)
{
    return std::make_unique<completion_command>(commands, words);
}

} // namespace app::shell
