#include "app/command.h"
#include "app/command_options.h"
#include "app/commands/commands.h"
#include "app/database_choice.h"
#include "app/named_rows.h"
#include "app/output.h"
#include "app/script_guard.h"
#include "app/server_access.h"
#include "app/source.h"
#include "app/statement_plugin.h"
#include "app/verify_reports.h"
#include "app/whole_file.h"

#include "database/server/server_url.h"
#include "database/server/target_database.h"
#include "model/project.h"
#include "os/stop_requests.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>

#include <unistd.h>

namespace app {

namespace {

const char Help[] =
    "Runs the full script and the history, statement by statement, with a row in each table, once with\n"
    "a value in each column and once with a null in each that allows one, and without rows where they\n"
    "made a difference. Then compares: the history's database with a new one, both with what was\n"
    "foretold, values and nulls with those that were put in. SQLite runs inside the program, in two\n"
    "threads; MariaDB and PostgreSQL are started from what is installed, in a folder of their own, and\n"
    "ended again.\n"
    "\n"
    "Exit status: 0 all was foretold; 1 it could not be done; 2 wrong usage; 3 something was refused,\n"
    "differs or was lost that was not foretold.\n"
    "\n"
    "Examples:\n"
    "  korvane verify shop.korv\n"
    "  korvane verify shop.korv --db sqlite,mariadb,postgresql --format junit -o verify.xml";

struct verify_format
{
    QLatin1String name;
    QByteArray (*write)(const verification & of);
};

const verify_format Formats[] = {
    {QLatin1String("text"), &verifyText},
    {QLatin1String("json"),
     [](const verification & of) { return verifyJson(of, QCoreApplication::applicationVersion()); }},
    {QLatin1String("junit"), &verifyJunit},
    {QLatin1String("markdown"), &verifyMarkdown},
};

/// Tells a person at a terminal how far the work is; the line goes with this object.
class progress_line
{
public:
    explicit progress_line(const QString & database) : m_database(database) {}
    ~progress_line()
    {
        if (m_isShown) {
            std::fputs("\r\033[K", stderr);
        }
    }
    progress_line(const progress_line &) = delete;
    progress_line & operator=(const progress_line &) = delete;

    void show(int done, int total)
    {
        if (isatty(STDERR_FILENO) == 1 && !areResultsPrintedAlone()) {
            std::fputs(QStringLiteral("\r\033[K%1: %2 of %3 scripts")
                           .arg(m_database, QString::number(done), QString::number(total))
                           .toUtf8()
                           .constData(),
                       stderr);
            m_isShown = true;
        }
    }

private:
    QString m_database;
    bool m_isShown = false;
};

/// Proves by running what the scripts of a project do.
class verify_command : public command
{
public:
    verify_command()
        : command("verify", "Prove what the scripts do by running them on scratch databases",
                  surroundings::plugins)
    {
    }

    void declare(command_options & options) override;
    [[nodiscard]] QString whyWrong() const override;
    [[nodiscard]] int run() override;

private:
    [[nodiscard]] QStringList keys() const
    {
        return !m_databases.isEmpty() ? databaseKeys(m_databases)
               : m_urls.isEmpty()     ? QStringList(QStringLiteral("sqlite"))
                                      : QStringList();
    }
    /// Makes a database ready; null with the reason.
    using opener = std::function<std::unique_ptr<database::server::target_database>(QString & why)>;

    [[nodiscard]] zk::ZkBool verify(plugin::statement_source & statements, source & of,
                                    verification & told) const;
    [[nodiscard]] zk::ZkBool verifyOne(const opener & open, plugin::statement_source & statements,
                                       source & of, database_proof & proof) const;
    [[nodiscard]] zk::ZkBool proveOn(database::server::target_database & target,
                                     plugin::statement_source & statements, source & of,
                                     database_proof & proof) const;
    [[nodiscard]] int tell(const verification & told) const;

    QString m_source;
    QString m_databases;
    QStringList m_urls;
    QString m_from;
    QString m_format = QStringLiteral("text");
    QString m_file;
    export_options m_exportOptions;
    plugin_request m_plugin;
    bool m_skipMissing = false;
    bool m_keep = false;
    bool m_json = false;
    bool m_noCustomScript = false;
};

void verify_command::declare(command_options & options)
{
    options.addSource(m_source);
    options.addText("--db", "LIST",
                    "Databases, with commas between: sqlite (the default), mariadb, postgresql", m_databases,
                    value_kind::runnable_databases);
    options.addTexts("--url", "URL", "A server to run them on, such as postgresql://user@host/database",
                     m_urls);
    options.addText("--from", "VERSION", "Tell of this version and those after it", m_from,
                    value_kind::version);
    options.addFlag("--skip-missing", "Leave databases out that are not installed", m_skipMissing);
    options.addFlag("--keep",
                    "Leave what was made for --url where it is, as the history left it, and tell its name",
                    m_keep);
    options.addWords("--format", "FORMAT", namesOf(Formats), m_format);
    options.addFlag("--json", "The same as --format json", m_json);
    options.addText("-o,--output", "FILE", "Write to FILE in the place of standard output", m_file,
                    value_kind::file);
    m_exportOptions.declareContent(options);
    options.addFlag("--no-custom-script", "Leave the custom script out that the project names",
                    m_noCustomScript);
    options.addPlugin(m_plugin.name);
    options.setFooter(Help);
}

QString verify_command::whyWrong() const
{
    for (const QString & url : m_urls) {
        QString why;
        if (!database::server::readUrl(url, why)) {
            return QStringLiteral("--url: ") + why;
        }
    }
    if (m_keep && m_urls.isEmpty()) {
        return QStringLiteral("--keep needs --url; what is made without one goes with the program");
    }
    for (const QString & why : {whyNoDatabase(keys()), whyNoVersion(m_from), m_exportOptions.whyWrong()}) {
        if (!why.isEmpty()) {
            return why;
        }
    }
    return {};
}

int verify_command::run()
{
    statement_plugin plugin;
    if (const int status = plugin.load(m_plugin, m_exportOptions); status != Done) {
        return status;
    }
    source of;
    verification told;
    const tools::script_guard_scope guard(commandScriptGuard(m_noCustomScript));
    zk::ZkBool result = of.open(m_source);
    if (result && !m_from.isEmpty()) {
        result = of.checkVersion(versionNumber(m_from).value_or(Now));
    }
    std::shared_ptr<model::project> project;
    if (result) {
        result = of.load(Now, project);
    }
    if (result) {
        told.project = project->getName();
        result = verify(plugin.statements(), of, told);
    }
    // What was proven until a failure is told as well.
    const int status = told.proofs.empty() ? Done : tell(told);
    return result ? status : failed(result.getDesc());
}

zk::ZkBool verify_command::verify(plugin::statement_source & statements, source & of,
                                  verification & told) const
{
    const auto add = [&](const QString & key, const QString & missing, const opener & open) {
        database_proof proof;
        proof.database = key;
        proof.missing = missing;
        const zk::ZkBool proven = verifyOne(open, statements, of, proof);
        if (proven) {
            told.proofs.push_back(std::move(proof));
        }
        return proven;
    };
    zk::ZkBool result = zk::ZkBool::success();
    for (const QString & key : keys()) {
        result = result ? add(key, database::server::whyMissing(key),
                              [&key](QString & why) { return database::server::start(key, why); })
                        : result;
    }
    for (const QString & text : m_urls) {
        QString wrong;
        const auto url = database::server::readUrl(text, wrong).value_or(database::server::server_url());
        result = result ? add(url.scheme, QString(),
                              [&url](QString & why) {
                                  auto opened = openAsking(url, why, &database::server::open);
                                  why = opened ? why : url.shown() + QStringLiteral(": ") + why;
                                  return opened;
                              })
                        : result;
    }
    return result;
}

zk::ZkBool verify_command::verifyOne(const opener & open, plugin::statement_source & statements, source & of,
                                     database_proof & proof) const
{
    const os::stop_requests stops; // the server and its folder go first
    QString why;
    const std::unique_ptr<database::server::target_database> target = open(why);
    if (!target) {
        // One that is there and fails has to be heard of.
        if (proof.missing.isEmpty()) {
            return zk::ZkBool::failure(QStringLiteral("%1: %2").arg(proof.database, why));
        }
        return m_skipMissing ? zk::ZkBool::success()
                             : zk::ZkBool::failure(QStringLiteral("%1: %2 (--skip-missing leaves it out)")
                                                       .arg(proof.database, proof.missing));
    }
    const zk::ZkBool proven = proveOn(*target, statements, of, proof);
    if (const QString kept = proven && m_keep ? target->keep() : QString(); !kept.isEmpty()) {
        printError(QStringLiteral("Kept: the %1 database %2").arg(proof.database, kept));
    }
    return proven;
}

zk::ZkBool verify_command::proveOn(database::server::target_database & target,
                                   plugin::statement_source & statements, source & of,
                                   database_proof & proof) const
{
    progress_line line(proof.database);
    verification_request asked;
    asked.options = m_exportOptions.given();
    asked.from = m_from.isEmpty() ? 1 : versionNumber(m_from).value_or(Now);
    if (asked.from == Now) {
        asked.from = of.newestVersion() + 1;
    }
    asked.progress = [&line](int done, int total) { line.show(done, total); };
    return verifyOn(target, statements, of, asked, proof);
}

int verify_command::tell(const verification & told) const
{
    const QByteArray bytes =
        (m_json ? rowOf(Formats, QStringLiteral("json")) : rowOf(Formats, m_format))->write(told);
    if (m_file.isEmpty()) {
        printBytes(bytes);
    } else if (const zk::ZkBool written = writeWholeFile(m_file, bytes); !written) {
        return failed(QStringLiteral("%1: cannot be written (%2)")
                          .arg(QDir::toNativeSeparators(m_file), written.getDesc()));
    }
    return told.isOk() ? Done : Objected;
}

} // namespace

std::unique_ptr<command> makeVerifyCommand()
{
    return std::make_unique<verify_command>();
}

} // namespace app
