#include "faults/command_runs.h"

#include <QElapsedTimer>

namespace faults {

namespace {

constexpr int Patience = 60000; // ms

QByteArray textWith(const QByteArray & name)
{
    QByteArray entities;
    for (int e = 1; e <= 6; ++e) {
        const QByteArray number = QByteArray::number(e);
        entities += (e > 1 ? ", " : "") + QByteArray("{\"id\": ") + number + ", \"name\": \"" + name +
                    number + "\", \"tableName\": \"t" + number + "\", \"properties\": [{\"id\": " + number +
                    ", \"name\": \"" + name + "\", \"columnName\": \"" + name +
                    "\", \"type\": \"long\", \"identifier\": true}]}";
    }
    return support::textOf(entities);
}

/// The model and the versions of a project file; empty, with a warning, when it cannot be read.
QByteArray stateOf(const QString & file)
{
    QByteArray state = support::storedText(file);
    QList<storage::history::version> versions;
    if (state.isEmpty() || storage::history::list(file, versions).isValid()) {
        return {};
    }
    for (const storage::history::version & v : versions) {
        state += QByteArray::number(v.number) + ' ' + v.message.toUtf8() + '\n';
    }
    return state;
}

} // namespace

bool command_runs::init()
{
    const bool isMade =
        m_folder.isValid() && QDir().mkpath(path("runtime")) &&
        QFile::setPermissions(path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
        support::writeBytes(path("old.json"), textWith("old")) &&
        support::writeBytes(path("new.json"), textWith("new")) &&
        support::runKorvane({"import", path("old.json"), path("project.korv")}).status == 0 &&
        support::runKorvane({"tag", path("project.korv"), "-m", "first"}).status == 0;
    for (const QString & command : Commands) {
        prepare(command);
        m_before.insert(command, state(command));
        QElapsedTimer timer;
        timer.start();
        const ended done = run(command);
        m_duration.insert(command, timer.nsecsElapsed() / 1000);
        m_after.insert(command, state(command));
        m_entries.insert(command, entries());
        if (!isMade || done.status != 0 || after(command).isEmpty() || after(command) == before(command)) {
            qWarning("%s: %s", qPrintable(command), done.err.constData());
            return false;
        }
    }
    return true;
}

void command_runs::prepare(const QString & command) const
{
    const bool isReady = QDir(workFolder()).removeRecursively() && QDir().mkpath(work("sql")) &&
                         QDir().mkpath(work("tmp")) && QFile::copy(path("new.json"), work("model.json")) &&
                         support::writeBytes(work("user.txt"), "the user's") &&
                         support::writeBytes(work("tmp/user.txt"), "the user's") &&
                         support::writeBytes(work(".korvane-user.new"), "the user's, too") &&
                         (command == "import new" || QFile::copy(path("project.korv"), work("p.korv")));
    if (!isReady) {
        qFatal("the folder of the test cannot be prepared");
    }
}

QStringList command_runs::commandLine(const QString & command) const
{
    const QString project = work(QStringLiteral("p.korv"));
    if (command.startsWith("import")) {
        return {KORVANE_PROGRAM, "import", work("model.json"), project};
    }
    if (command == "tag") {
        return {KORVANE_PROGRAM, "tag", project, "-m", "second"};
    }
    if (command == "export") {
        return {KORVANE_PROGRAM,
                "export",
                project,
                "-y",
                "--KorvGenericDDLExport_path=" + work("sql"),
                "--KorvGenericDDLExport_schema_type=2",
                "--KorvGenericDDLExport_db_type=3"};
    }
    return {KORVANE_SETTINGS_PROGRAM, project, "elsewhere"};
}

void command_runs::start(QProcess & process, const QString & command, const QStringList & environment) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("QT_QPA_PLATFORM", "offscreen");
    variables.insert("TMPDIR", work("tmp"));
    variables.insert("XDG_RUNTIME_DIR", path("runtime"));
    for (const QString & entry : environment) {
        variables.insert(entry.section('=', 0, 0), entry.section('=', 1));
    }
    QStringList line = commandLine(command);
    process.setProcessEnvironment(variables);
    process.start(line.takeFirst(), line);
}

ended command_runs::run(const QString & command, const QStringList & environment) const
{
    QProcess process;
    start(process, command, environment);
    if (!process.waitForFinished(Patience)) {
        process.kill();
        process.waitForFinished();
        return {false, -1, process.readAllStandardOutput(), "it did not end"};
    }
    return {process.exitStatus() == QProcess::NormalExit, process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError()};
}

QByteArray command_runs::state(const QString & command) const
{
    if (command == "export") {
        QByteArray scripts;
        for (const QString & name : QDir(work("sql")).entryList(QDir::Files)) {
            scripts += name.toUtf8() + '\n' + support::bytesOf(work("sql/" + name));
        }
        return scripts;
    }
    if (!QFile::exists(work("p.korv"))) {
        return "no project";
    }
    if (command == "settings") {
        const support::run_result settings = support::run(
            "sqlite3", {work("p.korv"), "SELECT param_key, param_value FROM t_plugin_params ORDER BY 1"});
        return settings.out + stateOf(work("p.korv"));
    }
    return stateOf(work("p.korv"));
}

bool command_runs::usersFilesAreWhole() const
{
    return support::bytesOf(work("user.txt")) == "the user's" &&
           support::bytesOf(work("tmp/user.txt")) == "the user's" &&
           support::bytesOf(work(".korvane-user.new")) == "the user's, too" &&
           support::bytesOf(work("model.json")) == support::bytesOf(path("new.json"));
}

QString command_runs::wrongAfterNextRun(const QString & command) const
{
    const ended again = run(command);
    if (again.status != 0) {
        return QString::fromUtf8("it fails when it is run once more: " + again.err);
    }
    QStringList found = entries();
    for (const QString & expected : m_entries.value(command)) {
        if (!found.removeOne(expected)) {
            return "missing: " + expected;
        }
    }
    return found.isEmpty() ? QString() : "left behind: " + found.join(", ");
}

QStringList command_runs::entries() const
{
    QStringList found;
    QDirIterator all(workFolder(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        found << all.next();
    }
    return found;
}

} // namespace faults
