// What shells offer while a command is typed: first what the program tells them, then real shells with the
// files that are installed for them.

#include "support/program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProcess;
using support::runProgram;

namespace {

const QString Shells = QStringLiteral(KORVANE_SOURCE_DIR "/app/shell/");
const QString Drivers = QStringLiteral(KORVANE_SOURCE_DIR "/tests/installed/");

/// The words of a line up to the cursor, which stands at its end.
QStringList wordsOf(const char * line)
{
    return QString::fromLatin1(line).split(QLatin1Char(' '));
}

} // namespace

class tst_completion : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void programTells_data();
    void programTells();
    void everyCommandIsOffered();
    void everyOptionOfHelpIsOffered_data();
    void everyOptionOfHelpIsOffered();
    void damagedProjectHasNoVersions();
    void bash_data();
    void bash();
    void zsh_data();
    void zsh();
    void fish_data();
    void fish();
    void onlyFoldersForPages();

private:
    [[nodiscard]] QByteArray inBash(const QString & line) const;
    [[nodiscard]] QByteArray inZsh(const QString & line) const;
    [[nodiscard]] QByteArray inFish(const QString & line) const;
    [[nodiscard]] QByteArray inFolder(const QString & program, const QStringList & arguments) const;

    QTemporaryDir m_folder;
};

void tst_completion::initTestCase()
{
    const QString project = m_folder.filePath(QStringLiteral("shop.korv"));
    const QString text = m_folder.filePath(QStringLiteral("shop.json"));
    QVERIFY(QFile::copy(QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival_v1.json"), text));
    QFile other(m_folder.filePath(QStringLiteral("shop.txt")));
    QVERIFY(other.open(QIODevice::WriteOnly));
    QCOMPARE(runProgram({"import", text, project}).status, 0);
    QCOMPARE(runProgram({"tag", project, "-m", "first release"}).status, 0);
    QCOMPARE(runProgram({"tag", project}).status, 0);
    // The words name files as a person does, from the folder they are in.
    QVERIFY(QDir::setCurrent(m_folder.path()));
}

void tst_completion::programTells_data()
{
    QTest::addColumn<QByteArray>("told");
    const auto row = [](const char * line, const QByteArray & told) { QTest::newRow(line) << told; };
    row("ta", "tag\tTag the current state of a project as a new version\n:project\n");
    row("-", "--help\tPrint this help and exit\n--version\tPrint the versions and exit\n");
    row("tag ", ":project\n");
    row("tag shop.korv ", "");
    row("tag shop.korv --u",
        "--undo\tTake the newest version away again, while no database has its script\n");
    row("tag shop.korv --undo --u", "");
    row("tag shop.korv -- --u", "");
    row("tag shop.korv -m --un", "");
    row("tag -m x ", ":project\n");
    row("import ", ":source\n");
    row("import shop.json ", ":project\n");
    row("dump shop.korv ", "v1\tfirst release\nv2\nnow\t"
                           "the state of the project\n");
    row("dump shop.korv v2", "v2\n");
    row("dump shop.json ", "now\t"
                           "the state of the project\n");
    row("dump gone.korv v", "");
    row("diff shop.korv v1 v", "v1\tfirst release\nv2\n");
    row("diff shop.korv v", "v1\tfirst release\nv2\n:source\n");
    row("diff shop.korv --db ma", "mariadb\tMariaDB 10.11\n");
    row("diff shop.korv --db al", "");
    row("check shop.korv --db al", "all\tevery one of them\n");
    row("check shop.korv --db sqlite,mar", "sqlite,mariadb\tMariaDB 10.11\n");
    row("check shop.korv --db sqlite,sq", "");
    row("check shop.korv --db sqlite,a", "");
    row("check shop.korv --db=sqlite,mar", "--db=sqlite,mariadb\tMariaDB 10.11\n");
    row("check shop.korv --fail-on ", "error\nwarning\nnote\nnever\n");
    row("check shop.korv --format s", "sarif\n");
    row("check --explain KV203", "KV203\tA table is renamed to a name that is still taken\n");
    row("check shop.korv -o ", ":file\n");
    row("export shop.korv --path ", ":folder\n");
    row("export shop.korv --schema ", "full\nevolution\nboth\n");
    row("export shop.korv --relationships n", "no\n");
    row("export shop.korv --plugin K", "KorvGenericDDLExport\tExport to DDL SQL script file\n:file\n");
    // A script cannot be proven, nor run to be read, on what does not run here.
    row("verify shop.korv --db ", "sqlite\tSQLite 3.40\nmariadb\tMariaDB 10.11\npostgresql\tPostgreSQL 15\n");
    row("verify shop.korv --db mariadb,", "mariadb,sqlite\tSQLite 3.40\nmariadb,postgresql\tPostgreSQL 15\n");
    row("import ddl:shop.sql shop.korv --db ",
        "sqlite\tSQLite 3.40\nmariadb\tMariaDB 10.11\npostgresql\tPostgreSQL 15\n");
    row("document shop.korv -o ", ":folder\n");
    row("document shop.korv -o site --db ora", "oracle\tOracle\n");
    row("verify shop.korv --from v", "v1\tfirst release\nv2\n");
    row("schema p", "project\n");
    row("unknown x", "");
}

void tst_completion::programTells()
{
    QFETCH(QByteArray, told);
    const program_result result =
        runProgram(QStringList(QStringLiteral("--complete")) + wordsOf(QTest::currentDataTag()));
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, told);
    QCOMPARE(result.status, 0);
}

void tst_completion::everyCommandIsOffered()
{
    const QByteArray offered = runProgram({"--complete", ""}).output;
    QStringList names;
    for (const QString & line : QString::fromUtf8(offered).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        names << line.section(QLatin1Char('\t'), 0, 0);
    }
    QCOMPARE(names,
             QStringList({"import", "dump", "tag", "log", "status", "diff", "export", "explain", "check",
                          "verify", "document", "settings", "schema", "plugins", ":project"}));
}

void tst_completion::everyOptionOfHelpIsOffered_data()
{
    QTest::addColumn<QString>("command");
    for (const char * const command : {"import", "dump", "tag", "log", "status", "diff", "export", "explain",
                                       "check", "verify", "document", "settings", "schema", "plugins"}) {
        QTest::newRow(command) << QString::fromLatin1(command);
    }
}

void tst_completion::everyOptionOfHelpIsOffered()
{
    QFETCH(QString, command);
    const QByteArray offered = '\n' + runProgram({"--complete", command, "--"}).output;
    const QByteArray help = runProgram({command, "--help"}).output;
    int options = 0;
    const qsizetype begin = help.indexOf("\nOptions:\n") + 1;
    for (const QByteArray & line : help.mid(begin, help.indexOf("\n\n", begin) - begin).split('\n')) {
        if (line.startsWith("  -")) {
            const QByteArray names = line.trimmed().split(' ').constFirst();
            const QByteArray name = names.split(',').constLast();
            QVERIFY2(offered.contains('\n' + name + '\t'), name.constData());
            ++options;
        }
    }
    QVERIFY(options > 0);
    QCOMPARE(offered.count('\n') - 1, options);
}

void tst_completion::damagedProjectHasNoVersions()
{
    QFile damaged(QStringLiteral("damaged.korv"));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    QCOMPARE(damaged.write("not a project"), qint64(13));
    damaged.close();
    const program_result result = runProgram({"--complete", "dump", "damaged.korv", ""});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, QByteArray("now\t"
                                       "the state of the project\n"));
    QVERIFY(QFile::remove(damaged.fileName()));
}

/// What a program prints, which finds korvane where it was built.
QByteArray tst_completion::inFolder(const QString & program, const QStringList & arguments) const
{
    const QString folder = QFileInfo(QStringLiteral(KORVANE_PROGRAM)).path();
    const QString path = folder + QLatin1Char(':') + qEnvironmentVariable("PATH");
    const program_result result = runProcess(program, arguments,
                                             {{QStringLiteral("PATH"), path},
                                              {QStringLiteral("HOME"), m_folder.path()},
                                              {QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8")}},
                                             {});
    return result.status == 0 ? result.output : "failed: " + result.errors;
}

QByteArray tst_completion::inBash(const QString & line) const
{
    return inFolder(QStringLiteral("bash"),
                    {"--norc", Drivers + "complete.bash", Shells + "korvane.bash", line});
}

QByteArray tst_completion::inZsh(const QString & line) const
{
    QFile::remove(QStringLiteral("shown"));
    return inFolder(QStringLiteral("zsh"), {"-f", Drivers + "complete.zsh", Shells, line});
}

QByteArray tst_completion::inFish(const QString & line) const
{
    return inFolder(QStringLiteral("fish"),
                    {"--no-config", "--command",
                     QStringLiteral("source %1korvane.fish; complete -C '%2'").arg(Shells, line)});
}

void tst_completion::bash_data()
{
    QTest::addColumn<QByteArray>("offered");
    QTest::newRow("korvane ta") << QByteArray("tag\n");
    QTest::newRow("korvane tag ") << QByteArray("shop.korv\n");
    QTest::newRow("korvane import ") << QByteArray("shop.json\nshop.korv\n");
    QTest::newRow("korvane export shop.korv --custom-script sho")
        << QByteArray("shop.json\nshop.korv\nshop.txt\n");
    QTest::newRow("korvane dump shop.korv v") << QByteArray("v1\nv2\n");
    // After "=" readline puts in what follows it.
    QTest::newRow("korvane check --db=sqlite,mar") << QByteArray("sqlite,mariadb\n");
    QTest::newRow("korvane check --db sqlite,mar") << QByteArray("sqlite,mariadb\n");
    QTest::newRow("korvane verify --db m") << QByteArray("mariadb\n");
    QTest::newRow("korvane document shop.korv --p") << QByteArray("--plugin\n");
}

void tst_completion::bash()
{
    QFETCH(QByteArray, offered);
    QCOMPARE(inBash(QString::fromLatin1(QTest::currentDataTag())), offered);
}

void tst_completion::zsh_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("korvane ta") << QByteArray("korvane tag \n");
    QTest::newRow("korvane tag sho") << QByteArray("korvane tag shop.korv \n");
    QTest::newRow("korvane dump shop.korv v2") << QByteArray("korvane dump shop.korv v2 \n");
    QTest::newRow("korvane check --db=sqlite,mar") << QByteArray("korvane check --db=sqlite,mariadb \n");
    QTest::newRow("korvane check --db sqlite,mar") << QByteArray("korvane check --db sqlite,mariadb \n");
    QTest::newRow("korvane verify --db m") << QByteArray("korvane verify --db mariadb \n");
    QTest::newRow("korvane document shop.korv --p") << QByteArray("korvane document shop.korv --plugin \n");
}

void tst_completion::zsh()
{
    QFETCH(QByteArray, line);
    QCOMPARE(inZsh(QString::fromLatin1(QTest::currentDataTag())), line);
    QVERIFY(QFile::remove(QStringLiteral("shown")));
}

void tst_completion::fish_data()
{
    QTest::addColumn<QByteArray>("offered");
    QTest::newRow("korvane ta") << QByteArray("tag\tTag the current state of a project as a new version\n");
    QTest::newRow("korvane tag sho") << QByteArray("shop.korv\n");
    QTest::newRow("korvane import sho") << QByteArray("shop.json\nshop.korv\n");
    QTest::newRow("korvane dump shop.korv v") << QByteArray("v1\tfirst release\nv2\n");
    QTest::newRow("korvane check --db=sqlite,mar") << QByteArray("--db=sqlite,mariadb\tMariaDB 10.11\n");
    QTest::newRow("korvane verify --db m") << QByteArray("mariadb\tMariaDB 10.11\n");
    QTest::newRow("korvane document shop.korv --p")
        << QByteArray("--plugin\tName or file of the plugin; by default the only one found\n");
}

void tst_completion::fish()
{
    QFETCH(QByteArray, offered);
    QCOMPARE(inFish(QString::fromLatin1(QTest::currentDataTag())), offered);
}

void tst_completion::onlyFoldersForPages()
{
    // Beside it there is shop.korv, which no pages can be written into.
    QVERIFY(QDir().mkdir(QStringLiteral("shop-pages")));
    const QString line = QStringLiteral("korvane document shop.korv -o sho");
    const QByteArrayList offered = {inBash(line), inZsh(line), inFish(line)};
    QVERIFY(QFile::remove(QStringLiteral("shown")));
    QVERIFY(QDir().rmdir(QStringLiteral("shop-pages")));
    QCOMPARE(offered, QByteArrayList({"shop-pages\n", "korvane document shop.korv -o shop-pages/\n",
                                      "shop-pages/\tDirectory\n"}));
}

QTEST_GUILESS_MAIN(tst_completion)
#include "tst_completion.moc"
