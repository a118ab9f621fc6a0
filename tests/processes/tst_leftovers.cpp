// What a killed command leaves behind goes with the next run; what a living one uses, and what is not ours,
// stays.

#include "support/project_support.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

class tst_leftovers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void afterACommandThatWasKilled_data() { commands(); }
    void afterACommandThatWasKilled();
    void anyCommandThatWritesToTheFolderCleansIt_data();
    void anyCommandThatWritesToTheFolderCleansIt();
    void whatALivingCommandUsesStays_data() { commands(); }
    void whatALivingCommandUsesStays();
    void nothingAfterACommandThatWasInterrupted_data() { commands(); }
    void nothingAfterACommandThatWasInterrupted();
    void whatOnlyHasSuchANameStays_data() { commands(); }
    void whatOnlyHasSuchANameStays();
    void whatOnlyHasSuchANameHidesNothing();
    void aFileInThePlaceOfARestoredVersionStays();

private:
    static void commands();
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    [[nodiscard]] QProcessEnvironment environment() const
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert("TMPDIR", path("tmp"));
        // Where there is none, Qt makes one among the temporary files.
        result.insert("XDG_RUNTIME_DIR", path("runtime"));
        return result;
    }
    [[nodiscard]] QStringList argumentsOf(const QString & command) const;
    [[nodiscard]] QString placeOf(const QString & command) const
    {
        return command == "import" ? path("projects") : path("tmp");
    }
    /// What is in the place of a command's temporary files.
    [[nodiscard]] QStringList found(const QString & command) const
    {
        QStringList names =
            QDir(placeOf(command))
                .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        names.removeAll("new.korv");
        return names;
    }
    /// Starts the command, which is held as soon as its temporary files are there.
    void startAndHold(QProcess & process, const QString & command);
    static void signalTo(const QProcess & process, int signal)
    {
        ::kill(static_cast<pid_t>(process.processId()), signal);
    }
    void runWhole(const QString & command);
    void killInTheMiddle(const QString & command);

    std::unique_ptr<QTemporaryDir> m_stored;
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_leftovers::commands()
{
    QTest::addColumn<QString>("command");
    for (const char * const command : {"import", "tag", "export"}) {
        QTest::newRow(command) << QString(command);
    }
}

void tst_leftovers::initTestCase()
{
    m_stored = std::make_unique<QTemporaryDir>();
    QByteArray entities;
    for (int i = 0; i < 3000; ++i) {
        entities += (i > 0 ? ", " : "") + QByteArray("{\"name\": \"e") + QByteArray::number(i) +
                    "\", \"properties\": [{\"name\": \"a\", \"type\": \"int\"}]}";
    }
    QVERIFY(support::writeBytes(m_stored->filePath("m.json"), support::textOf(entities)));
    const QString file = m_stored->filePath("shop.korv");
    QCOMPARE(support::runKorvane({"import", m_stored->filePath("m.json"), file}).status, 0);
    QCOMPARE(support::runKorvane({"tag", file}).status, 0);
}

void tst_leftovers::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(path("projects")) && QDir().mkpath(path("tmp")) && QDir().mkpath(path("sql")));
    QVERIFY(QDir().mkpath(path("runtime")));
    QVERIFY(QFile::setPermissions(path("runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(QFile::copy(m_stored->filePath("shop.korv"), path("shop.korv")));
    QVERIFY(support::writeBytes(path("victim"), "of the user"));
}

QStringList tst_leftovers::argumentsOf(const QString & command) const
{
    if (command == "import") {
        return {"import", m_stored->filePath("m.json"), path("projects/new.korv")};
    }
    if (command == "tag") {
        return {"tag", path("shop.korv")};
    }
    return {"export", path("shop.korv"), "-y", "--KorvGenericDDLExport_path=" + path("sql"),
            "--KorvGenericDDLExport_schema_type=1"};
}

void tst_leftovers::startAndHold(QProcess & process, const QString & command)
{
    QProcessEnvironment held = environment();
    held.insert("LD_PRELOAD", KORVANE_HOLD_AT_WRITE);
    // An export claims the name of a restored version before it is there.
    held.insert("KORVANE_HOLD_AT", command == "export" ? "/shop_v1_" : "/.korvane-");
    process.setProcessEnvironment(held);
    process.start(KORVANE_PROGRAM, argumentsOf(command));
    QVERIFY(process.waitForStarted());
    const QString status = QString("/proc/%1/stat").arg(process.processId());
    QTRY_VERIFY_WITH_TIMEOUT(support::bytesOf(status).contains(") T "), 60000);
}

void tst_leftovers::runWhole(const QString & command)
{
    QFile::remove(path("projects/new.korv"));
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(KORVANE_PROGRAM, argumentsOf(command));
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
}

void tst_leftovers::killInTheMiddle(const QString & command)
{
    QProcess process;
    startAndHold(process, command);
    process.kill();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
}

void tst_leftovers::afterACommandThatWasKilled()
{
    QFETCH(QString, command);
    killInTheMiddle(command);
    QVERIFY(!found(command).isEmpty());
    killInTheMiddle(command);
    runWhole(command);
    QCOMPARE(found(command), QStringList());
}

void tst_leftovers::anyCommandThatWritesToTheFolderCleansIt_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("import into a project") << QStringList{"import", m_stored->filePath("m.json")};
    QTest::newRow("tag") << QStringList{"tag"};
}

void tst_leftovers::anyCommandThatWritesToTheFolderCleansIt()
{
    QFETCH(QStringList, command);
    killInTheMiddle("import");
    QVERIFY(!found("import").isEmpty());
    QVERIFY(QFile::rename(path("shop.korv"), path("projects/shop.korv")));
    // Through a link it is the folder of the file that counts.
    QVERIFY(QFile::link("projects/shop.korv", path("link.korv")));
    QCOMPARE(support::runKorvane(command + QStringList{path("link.korv")}).status, 0);
    QCOMPARE(found("import"), QStringList{"shop.korv"});
}

void tst_leftovers::whatALivingCommandUsesStays()
{
    QFETCH(QString, command);
    if (command == "tag") {
        // While one tags nobody else can; but others use the same folder.
        QVERIFY(QFile::copy(path("shop.korv"), path("other.korv")));
    }
    QProcess process;
    startAndHold(process, command);
    const QStringList used = found(command);
    QVERIFY(!used.isEmpty());
    if (command == "tag") {
        qputenv("TMPDIR", path("tmp").toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", path("runtime").toLocal8Bit());
        QCOMPARE(support::runKorvane({"tag", path("other.korv")}).status, 0);
        qunsetenv("TMPDIR");
        qunsetenv("XDG_RUNTIME_DIR");
    } else {
        runWhole(command);
    }
    for (const QString & name : used) {
        QVERIFY2(found(command).contains(name), qPrintable(name));
    }
    signalTo(process, SIGCONT);
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    QCOMPARE(found(command), QStringList());
}

void tst_leftovers::nothingAfterACommandThatWasInterrupted()
{
    QFETCH(QString, command);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        QProcess process;
        startAndHold(process, command);
        signalTo(process, signal);
        signalTo(process, SIGCONT);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.exitCode(), signal);
        QCOMPARE(found(command), QStringList());
    }
}

void tst_leftovers::whatOnlyHasSuchANameStays()
{
    QFETCH(QString, command);
    killInTheMiddle(command);
    const QString place = placeOf(command) + '/';
    QString left = found(command).filter(".korvane-").value(0);
    QVERIFY(!left.isEmpty());
    const QString end = left.right(4);
    const QString madeUp = ".korvane-0123456789abcdef" + end;
    const QString restored = "shop_v1_20260101000000000.korv";
    QStringList kept{madeUp, ".korvane-user" + end, restored};
    for (const QString & name : kept) {
        QVERIFY(support::writeBytes(place + name, "of the user"));
    }
    // The very name, but a link, or somebody else's.
    const bool isRoot = geteuid() == 0;
    QVERIFY(QFile::remove(place + left));
    QVERIFY(QFile::link(path("victim"), place + left));
    kept << left;
    runWhole(command);
    for (const QString & name : kept) {
        QCOMPARE(support::bytesOf(place + name), QByteArray("of the user"));
    }
    QCOMPARE(support::bytesOf(path("victim")), QByteArray("of the user"));
    QVERIFY(QFile::remove(place + left));
    QCOMPARE(mkfifo(QFile::encodeName(place + left).constData(), 0600), 0);
    runWhole(command);
    QVERIFY(QFileInfo::exists(place + left));
    if (isRoot) {
        QVERIFY(QFile::remove(place + left));
        QVERIFY(support::writeBytes(place + left, "of the user"));
        QCOMPARE(::chown(QFile::encodeName(place + left).constData(), 65534, 65534), 0);
        runWhole(command);
        QCOMPARE(support::bytesOf(place + left), QByteArray("of the user"));
    }
}

void tst_leftovers::whatOnlyHasSuchANameHidesNothing()
{
    killInTheMiddle("import");
    QStringList kept;
    for (const char * const name : {".korvane-0000000000000000.new", ".korvane-zzzzzzzzzzzzzzzz.new"}) {
        QVERIFY(support::writeBytes(path("projects/") + name, "of the user"));
        kept << name;
    }
    runWhole("import");
    QCOMPARE(found("import"), kept);
}

void tst_leftovers::aFileInThePlaceOfARestoredVersionStays()
{
    killInTheMiddle("export");
    const QString name = found("export").filter("shop_v1_").value(0);
    QVERIFY(!name.isEmpty());
    QVERIFY(support::writeBytes(path("tmp/own"), "of the user"));
    QVERIFY(QFile::remove(path("tmp/" + name)));
    QVERIFY(QFile::rename(path("tmp/own"), path("tmp/" + name)));
    runWhole("export");
    QCOMPARE(found("export"), QStringList{name});
    QCOMPARE(support::bytesOf(path("tmp/" + name)), QByteArray("of the user"));
}

QTEST_GUILESS_MAIN(tst_leftovers)
#include "tst_leftovers.moc"
