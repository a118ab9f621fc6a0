#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/output.h"
#include "app/plugin_choice.h"
#include "app/project_work.h"
#include "app/silent_step.h"
#include "app/terminal_question.h"

#include <QDir>

namespace app {

namespace {

/// How messages tell of a version that is about to be taken away: "version 2 of shop.korv (2026-11-22
/// 09:30:00, second release)".
QString described(const storage::history::version & version, const QString & file)
{
    const QString when = version.created.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    return QStringLiteral("version %1 of %2 (%3)")
        .arg(QString::number(version.number), file,
             version.message.isEmpty() ? when : when + QStringLiteral(", ") + oneLine(version.message));
}

/// Stores the state of a project as a new version, or takes the newest one away.
class tag_command : public command
{
public:
    tag_command()
        : command("tag", "Tag the current state of a project as a new version", surroundings::plugins)
    {
    }

    void declare(command_options & options) override
    {
        options.addProject(m_sProjectFile);
        options.addText("-m,--message", "TEXT", "Description of the version", m_sMessage);
        options.addFlag("--if-changed", "Do nothing when the model has not changed since the newest version",
                        m_bIfChanged);
        options.addFlag("--undo", "Take the newest version away again, while no database has its script",
                        m_bUndo);
        options.addFlag("-y,--yes", "Take it away without a question", m_bYes);
    }

    [[nodiscard]] QString whyWrong() const override
    {
        if (m_bUndo && (m_bIfChanged || !m_sMessage.isEmpty())) {
            return QStringLiteral("--undo takes a version away, %1 belongs to a new one: give one of both")
                .arg(m_bIfChanged ? QStringLiteral("--if-changed") : QStringLiteral("--message"));
        }
        return m_bYes && !m_bUndo ? QStringLiteral("-y answers the question of --undo, which is missing")
                                  : QString();
    }

    [[nodiscard]] int run() override { return m_bUndo ? undo() : tag(); }

private:
    [[nodiscard]] int tag() const;
    void tellSilentStep(int number) const;
    [[nodiscard]] int undo() const;
    [[nodiscard]] bool isConfirmed(const storage::history::newest_version & newest,
                                   const QString & what) const;

    QString m_sProjectFile;
    QString m_sMessage;
    bool m_bIfChanged = false;
    bool m_bUndo = false;
    bool m_bYes = false;
};

int tag_command::tag() const
{
    using namespace storage::history;
    tag_result tagged;
    if (const zk::ZkBool done = tagState(m_sProjectFile, m_sMessage,
                                         m_bIfChanged ? tag_when::if_changed : tag_when::always, tagged);
        !done) {
        return failed(done.getDesc());
    }
    const QString file = QDir::toNativeSeparators(m_sProjectFile);
    const QString newest = QStringLiteral("the model has not changed since v%1").arg(tagged.unchanged);
    if (tagged.number == 0) {
        printNotice(QStringLiteral("No version of %1 tagged: %2").arg(file, newest));
        return Done;
    }
    const QString done = QStringLiteral("Version %1 of %2 tagged").arg(QString::number(tagged.number), file);
    printDone(tagged.unchanged == 0 ? done : done + QStringLiteral("; ") + newest);
    if (tagged.number > 1 && tagged.unchanged == 0) {
        tellSilentStep(tagged.number);
    }
    return Done;
}

/// Says so when the scripts will not hear of what was tagged, as far as there is a plug-in that makes some.
void tag_command::tellSilentStep(int number) const
{
    const found_plugins found = found_plugins::inFolders();
    int status = Failed;
    QString reason;
    plugin::statement_source * const statements = chooseStatementSource(found, {}, status, reason);
    const QString silent =
        statements ? silentStep(*statements, m_sProjectFile, number - 1, number, {}) : QString();
    if (!silent.isEmpty()) {
        printHint(silent);
    }
}

int tag_command::undo() const
{
    using namespace storage::history;
    newest_version newest;
    if (const QSqlError error = readNewest(m_sProjectFile, newest); error.isValid()) {
        return failed(error.text());
    }
    const QString file = QDir::toNativeSeparators(m_sProjectFile);
    if (newest.what.number == 0) {
        return failed(QStringLiteral("%1: has no version that could be taken away").arg(file));
    }
    const QString what = described(newest.what, file);
    if (!isConfirmed(newest, what)) {
        return failed(QStringLiteral("Nothing was taken away: %1 needs a Yes (-y answers Yes)").arg(what));
    }
    if (const QSqlError error = removeNewest(m_sProjectFile, newest.what); error.isValid()) {
        return failed(error.text());
    }
    const int left = newest.what.number - 1;
    printDone(QStringLiteral("Taken away: %1; %2")
                  .arg(what, left == 0 ? QStringLiteral("there is no version now")
                                       : QStringLiteral("the newest is v%1").arg(left)));
    return Done;
}

/// Whether the person wants the version to go.
bool tag_command::isConfirmed(const storage::history::newest_version & newest, const QString & what) const
{
    if (m_bYes || !hasTerminal()) {
        return m_bYes;
    }
    const QString lost =
        newest.isState ? QString() : QStringLiteral(" The model has changed since; what it held is lost.");
    return askAtTerminal(QStringLiteral("Take %1 away?%2").arg(what, lost), false).value_or(false);
}

} // namespace

std::unique_ptr<command> makeTagCommand()
{
    return std::make_unique<tag_command>();
}

} // namespace app
