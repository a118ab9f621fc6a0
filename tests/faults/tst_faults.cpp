// One fault at each call that reads, writes, locks or names a file: the command either does its work and says so, or leaves
// what there was and says why in one line; it never crashes, hangs, or touches what is not its own.
//
// KORVANE_FAULT_STEP=1 tries every call; by default every fifth is tried, begun at another one for each kind of fault.

#include "support/project_support.h"

#include "storage/history.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>

using support::bytesOf;
using support::storedText;
using support::textOf;
using support::writeBytes;

namespace {

constexpr int Patience = 60000; // ms

QByteArray textWith(const QByteArray & name)
{
    QByteArray entities;
    for (int e = 1; e <= 6; ++e) {
        const QByteArray number = QByteArray::number(e);
        entities += (e > 1 ? ", " : "") + QByteArray("{\"id\": ") + number + ", \"name\": \"" + name + number +
                    "\", \"tableName\": \"t" + number + "\", \"properties\": [{\"id\": " + number +
                    ", \"name\": \"" + name + "\", \"columnName\": \"" + name +
                    "\", \"type\": \"long\", \"identifier\": true}]}";
    }
    return textOf(entities);
}

/// All that a project file holds and a person sees, and empty when it cannot be read.
QByteArray stateOf(const QString & file)
{
    QByteArray state = storedText(file);
    QList<storage::history::version> versions;
    if (state.isEmpty() || storage::history::list(file, versions).isValid()) {
        return {};
    }
    for (const storage::history::version & v : versions) {
        state += QByteArray::number(v.number) + ' ' + v.message.toUtf8() + '\n';
    }
    return state;
}

struct ended
{
    bool normally = false;
    int status = -1;
    QByteArray out;
    QByteArray err;
};

} // namespace

class tst_faults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void atEveryCall_data();
    void atEveryCall();
    void cleanupTestCase() { qInfo("%d faults tried, %d of them ended in the new state", m_iTried, m_iNew); }

private:
    QString path(const QString & name) const { return m_folder.filePath(name); }
    QString work(const QString & name) const { return path(QStringLiteral("work/") + name); }
    QStringList arguments(const QString & command) const;
    ended run(const QString & command, const QStringList & environment = {}) const;
    void prepare(const QString & command) const;
    [[nodiscard]] QByteArray stateAfter(const QString & command) const;
    [[nodiscard]] int countCalls(const QString & command) const;
    void tryFault(const QString & command, const QString & kind, int call);
    [[nodiscard]] QStringList entries() const;

    QTemporaryDir m_folder;
    QHash<QString, QByteArray> m_before;
    QHash<QString, QByteArray> m_after;
    QHash<QString, QStringList> m_entries;
    int m_iTried = 0;
    int m_iNew = 0;
};

QStringList tst_faults::arguments(const QString & command) const
{
    const QString project = work(QStringLiteral("p.korv"));
    if (command == "import new" || command == "import over") {
        return {KORVANE_PROGRAM, "import", work("model.json"), project};
    }
    if (command == "tag") {
        return {KORVANE_PROGRAM, "tag", project, "-m", "second"};
    }
    if (command == "export") {
        return {KORVANE_PROGRAM, "export", project, "-y", "--KorvGenericDDLExport_path=" + work("sql"),
                "--KorvGenericDDLExport_schema_type=2", "--KorvGenericDDLExport_db_type=3"};
    }
    return {KORVANE_SETTINGS_PROGRAM, project, "elsewhere"};
}

ended tst_faults::run(const QString & command, const QStringList & environment) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert("QT_QPA_PLATFORM", "offscreen");
    variables.insert("TMPDIR", path("work/tmp"));
    variables.insert("XDG_RUNTIME_DIR", path("runtime"));
    for (const QString & entry : environment) {
        variables.insert(entry.section('=', 0, 0), entry.section('=', 1));
    }
    QStringList line = arguments(command);
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(line.takeFirst(), line);
    if (!process.waitForFinished(Patience)) {
        process.kill();
        process.waitForFinished();
        return {false, -1, process.readAllStandardOutput(), "it did not end"};
    }
    return {process.exitStatus() == QProcess::NormalExit, process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError()};
}

/// The folder as it is before `command`: a project with a version, a model, and files of the user's.
void tst_faults::prepare(const QString & command) const
{
    QVERIFY(QDir(path("work")).removeRecursively());
    QVERIFY(QDir().mkpath(path("work/sql")) && QDir().mkpath(path("work/tmp")));
    QVERIFY(QFile::copy(path("new.json"), work("model.json")));
    QVERIFY(writeBytes(work("user.txt"), "the user's") && writeBytes(work("tmp/user.txt"), "the user's"));
    QVERIFY(writeBytes(work(".korvane-user.new"), "the user's, too"));
    if (command != "import new") {
        QVERIFY(QFile::copy(path("project.korv"), work("p.korv")));
    }
}

/// What `command` is there to change.
QByteArray tst_faults::stateAfter(const QString & command) const
{
    if (command == "export") {
        QByteArray scripts;
        for (const QString & name : QDir(work("sql")).entryList(QDir::Files)) {
            scripts += name.toUtf8() + '\n' + bytesOf(work("sql/" + name));
        }
        return scripts;
    }
    if (command == "settings") {
        const support::run_result settings = support::run(
            "sqlite3", {work("p.korv"), "SELECT param_key, param_value FROM t_plugin_params ORDER BY 1"});
        return settings.out + stateOf(work("p.korv"));
    }
    return QFile::exists(work("p.korv")) ? stateOf(work("p.korv")) : QByteArray("no project");
}

QStringList tst_faults::entries() const
{
    QStringList found;
    QDirIterator all(path("work"), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        found << all.next();
    }
    found.sort();
    return found;
}

int tst_faults::countCalls(const QString & command) const
{
    const QString count = path("count");
    const ended done = run(command, {"LD_PRELOAD=" KORVANE_FAULT_LIBRARY, "KORVANE_FAULT_FOLDER=" + path("work"),
                                     "KORVANE_FAULT_COUNT=" + count});
    return done.status == 0 ? bytesOf(count).trimmed().toInt() : 0;
}

void tst_faults::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir().mkpath(path("runtime")));
    QFile::setPermissions(path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QVERIFY(writeBytes(path("old.json"), textWith("old")) && writeBytes(path("new.json"), textWith("new")));
    QCOMPARE(support::runKorvane({"import", path("old.json"), path("project.korv")}).status, 0);
    QCOMPARE(support::runKorvane({"tag", path("project.korv"), "-m", "first"}).status, 0);
    for (const QString command : {"import new", "import over", "tag", "export", "settings"}) {
        prepare(command);
        m_before.insert(command, stateAfter(command));
        const ended done = run(command);
        QVERIFY2(done.status == 0, done.err.constData());
        m_after.insert(command, stateAfter(command));
        m_entries.insert(command, entries());
        QVERIFY(!m_after.value(command).isEmpty() && m_after.value(command) != m_before.value(command));
    }
}

void tst_faults::atEveryCall_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("kind");
    for (const char * command : {"import new", "import over", "tag", "export", "settings"}) {
        for (const char * kind : {"fail", "short", "full", "from"}) {
            QTest::addRow("%s, %s", command, kind) << QString(command) << QString(kind);
        }
    }
}

void tst_faults::atEveryCall()
{
    QFETCH(QString, command);
    QFETCH(QString, kind);
    prepare(command);
    const int calls = countCalls(command);
    QVERIFY2(calls > 20, "the calls of the command are counted");
    const int step = qMax(1, qEnvironmentVariable("KORVANE_FAULT_STEP", "5").toInt());
    const int first = 1 + static_cast<int>(qHash(QString(command + kind), 7) % static_cast<unsigned>(step));
    for (int call = first; call <= calls; call += step) {
        tryFault(command, kind, call);
        if (QTest::currentTestFailed()) {
            qWarning("at call %d of %d", call, calls);
            return;
        }
    }
}

void tst_faults::tryFault(const QString & command, const QString & kind, int call)
{
    prepare(command);
    ++m_iTried;
    const ended done = run(command, {"LD_PRELOAD=" KORVANE_FAULT_LIBRARY, "KORVANE_FAULT_FOLDER=" + path("work"),
                                     "KORVANE_FAULT_KIND=" + kind, "KORVANE_FAULT_AT=" + QString::number(call)});
    QVERIFY2(done.normally, done.err.constData());
    QVERIFY2(done.status == 0 || done.status == 1, qPrintable(QString::number(done.status)));
    if (done.status == 1) {
        QVERIFY2(done.err.trimmed().size() > 10 && done.err.endsWith('\n'), "a failure says why");
    }
    // The user's files, first of all.
    QCOMPARE(bytesOf(work("user.txt")), QByteArray("the user's"));
    QCOMPARE(bytesOf(work("tmp/user.txt")), QByteArray("the user's"));
    QCOMPARE(bytesOf(work(".korvane-user.new")), QByteArray("the user's, too"));
    QCOMPARE(bytesOf(work("model.json")), bytesOf(path("new.json")));
    const QByteArray state = stateAfter(command);
    m_iNew += state == m_after.value(command) ? 1 : 0;
    if (done.status == 0) {
        QCOMPARE(state, m_after.value(command));
    } else if (command != "export") {
        QVERIFY2(state == m_before.value(command) || state == m_after.value(command), state.constData());
    }
    // What a command could not take away itself goes with the next one.
    const ended again = run(command == "import new" ? QString("import over") : command);
    QVERIFY2(again.status == 0, again.err.constData());
    QCOMPARE(entries(), m_entries.value(command));
}

QTEST_GUILESS_MAIN(tst_faults)
#include "tst_faults.moc"
