// The program as people and scripts call it: commands, options, exit statuses, and what is written where.

#include "support/program.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

using support::program_result;
using support::runProgram;

namespace {

const QString TestPlugins = QStringLiteral(KORVANE_BUILD_DIR "/tests/plugins/");

} // namespace

class tst_command_line : public QObject
{
    Q_OBJECT

private:
    QString file(const QString & name) const { return m_dir->filePath(name); }
    QString write(const QString & name, const QByteArray & content) const
    {
        QFile f(file(name));
        if (!f.open(QIODevice::WriteOnly) || f.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(f.fileName()));
        }
        return f.fileName();
    }
    /// Runs "export" with the asking plug-in in `mode`.
    program_result ask(const QString & mode, const QStringList & more = {},
                       const QByteArray & input = {}) const
    {
        return runProgram(
            QStringList{QStringLiteral("export"), m_sProject, QStringLiteral("--plugin"),
                        QStringLiteral("AskingPlugin"), QStringLiteral("--AskingPlugin_mode=") + mode} +
                more,
            {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}}, input);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_sProject;

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_sProject = file(QStringLiteral("shop.korv"));
        const QString model = write(QStringLiteral("shop.json"), R"({
            "format": "korvane-project", "formatVersion": 1, "name": "shop",
            "entities": [ { "name": "customer", "properties": [
                { "name": "id", "type": "long", "identifier": true }, { "name": "email", "type": "QString" } ] } ] })");
        const program_result made = runProgram({QStringLiteral("import"), model, m_sProject});
        QVERIFY2(made.status == 0, made.errors.constData());
    }

    void wrongCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("mentioned");
        QTest::newRow("no command") << QStringList() << QByteArray("command");
        QTest::newRow("unknown command")
            << QStringList{"frobnicate"}
            << QByteArray("'frobnicate' is neither a command nor a project file (the commands are import, "
                          "dump, tag, log, status, diff, export, explain, check, verify, document, settings, "
                          "schema, "
                          "plugins)\n");
        QTest::newRow("mistyped command")
            << QStringList{"exprot"}
            << QByteArray("'exprot' is neither a command nor a project file; did you mean 'export'? (the "
                          "commands are import, dump, tag, log, status, diff, export, explain, check, "
                          "verify, document, settings, schema, plugins)\n");
        QTest::newRow("mistyped command with arguments")
            << QStringList{"exprot", "p.korv", "-y"} << QByteArray("did you mean 'export'?");
        QTest::newRow("mistyped command with two values")
            << QStringList{"imprt", "a.json", "b.korv"} << QByteArray("did you mean 'import'?");
        QTest::newRow("mistyped command and option of a plug-in")
            << QStringList{"Export", "p.korv", "--KorvGenericDDLExport_path=x"}
            << QByteArray("did you mean 'export'?");
        QTest::newRow("two letters swapped") << QStringList{"lgo", "p.korv"} << QByteArray("mean 'log'?");
        QTest::newRow("letter missing") << QStringList{"plugin"} << QByteArray("mean 'plugins'?");
        QTest::newRow("far from every command")
            << QStringList{"cat"} << QByteArray("'cat' is neither a command nor a project file (the");
        QTest::newRow("folder") << QStringList{"/tmp"} << QByteArray("'/tmp' is neither a command nor a");
        QTest::newRow("very long command") << QStringList{QString(100000, 'x')}
                                           << QByteArray("is neither a command nor a project file (the");
        QTest::newRow("project in capitals without a display")
            << QStringList{"SHOP.KORV"} << QByteArray("needs a display");
        QTest::newRow("two commands") << QStringList{"dump", "a.korv", "log", "b.korv"}
                                      << QByteArray("Too many arguments: b.korv; 'korvane dump' takes "
                                                    "SOURCE, VERSION, -q,--quiet, -h,--help\n");
        QTest::newRow("project without a display") << QStringList{"a.korv"} << QByteArray("display");
        QTest::newRow("file before the command")
            << QStringList{"a.korv", "dump", "b.korv"}
            << QByteArray("'a.korv' stands before the command (see 'korvane --help')\n");
        QTest::newRow("unknown option")
            << QStringList{"dump", "a.korv", "--frob"}
            << QByteArray(
                   "Unknown option --frob; 'korvane dump' takes SOURCE, VERSION, -q,--quiet, -h,--help\n");
        QTest::newRow("unknown option of tag")
            << QStringList{"tag", "a.korv", "--frob"}
            << QByteArray("Unknown option --frob; 'korvane tag' takes PROJECT.korv, -m,--message TEXT, "
                          "--if-changed, --undo, -y,--yes, -q,--quiet, -h,--help\n");
        QTest::newRow("unknown option of export")
            << QStringList{"export", "a.korv", "-x"}
            << QByteArray("Unknown option -x; 'korvane export' takes PROJECT.korv, --db NAME, --path DIR, ");
        QTest::newRow("unknown option of the window")
            << QStringList{"a.korv", "-y"}
            << QByteArray("Unknown option -y; 'korvane' takes PROJECT.korv, --version, -h,--help\n");
        QTest::newRow("unknown option before the command")
            << QStringList{"--frob", "dump", "a"}
            << QByteArray("Unknown option --frob; 'korvane dump' takes");
        QTest::newRow("import without arguments")
            << QStringList{"import"} << QByteArray("MODEL.json is required (see 'korvane import --help')\n");
        QTest::newRow("import without project")
            << QStringList{"import", "a.json"} << QByteArray("PROJECT.korv");
        QTest::newRow("import with too much")
            << QStringList{"import", "a", "b", "c", "d"}
            << QByteArray("Too many arguments: c d; 'korvane import' takes MODEL.json, PROJECT.korv, "
                          "-n,--dry-run, --tables GLOB, --schema NAME, --link-tables relationship|entity, "
                          "--db NAME, --skip-refused, -q,--quiet, -h,--help\n");
        QTest::newRow("import to standard output")
            << QStringList{"import", "a.json", "-"}
            << QByteArray("PROJECT.korv is '-', but a project cannot be written to standard output; give a "
                          "file name ('./-' for a file of that name)\n");
        QTest::newRow("empty name of a text")
            << QStringList{"import", "", "a.korv"}
            << QByteArray("MODEL.json is empty; give a file name (see 'korvane import --help')\n");
        QTest::newRow("empty name of an imported project")
            << QStringList{"import", "a.json", ""} << QByteArray("PROJECT.korv is empty; give a file");
        QTest::newRow("empty name of a project")
            << QStringList{"tag", ""} << QByteArray("PROJECT.korv is empty; give a file name");
        QTest::newRow("empty name for the window")
            << QStringList{""}
            << QByteArray("PROJECT.korv is empty; give a file name (see 'korvane --help')\n");
        QTest::newRow("dump without source") << QStringList{"dump"} << QByteArray("SOURCE is required");
        QTest::newRow("dump with a word that is no version")
            << QStringList{"dump", "a.korv", "V1"}
            << QByteArray(
                   "'V1' is not a version; versions are v1, v2 \u2026 as 'korvane log' lists them, and now "
                   "for the state of the project\n");
        QTest::newRow("tag without project") << QStringList{"tag"} << QByteArray("PROJECT.korv");
        QTest::newRow("tag without text")
            << QStringList{"tag", "a.korv", "-m"} << QByteArray("(see 'korvane tag --help')\n");
        QTest::newRow("log without project") << QStringList{"log"} << QByteArray("PROJECT.korv");
        QTest::newRow("export without project") << QStringList{"export"} << QByteArray("PROJECT.korv");
        QTest::newRow("export without plug-in name")
            << QStringList{"export", "a.korv", "--plugin"} << QByteArray("--plugin");
        QTest::newRow("plugins with an argument") << QStringList{"plugins", "x"} << QByteArray("x");
        QTest::newRow("option of no plug-in")
            << QStringList{"export", "a.korv", "--Foo_bar=1"}
            << QByteArray("Unknown option --Foo_bar: no plugin is called Foo (installed: "
                          "KorvGenericDDLExport)\n");
        QTest::newRow("unknown option of the plug-in")
            << QStringList{"export", "a.korv", "--KorvGenericDDLExport_typo=1"}
            << QByteArray("Unknown option --KorvGenericDDLExport_typo; the plugin's options are "
                          "--KorvGenericDDLExport_path, --KorvGenericDDLExport_db_type, "
                          "--KorvGenericDDLExport_relation_as_fk, --KorvGenericDDLExport_schema_type, "
                          "--KorvGenericDDLExport_custom_javacript (see 'korvane plugins')\n");
        QTest::newRow("part of an option") << QStringList{"export", "a.korv", "--KorvGenericDDLExport_db=1"}
                                           << QByteArray("--KorvGenericDDLExport_db");
        QTest::newRow("option of a plug-in without value")
            << QStringList{"export", "a.korv", "--KorvGenericDDLExport_path"} << QByteArray("needs a value");
        QTest::newRow("plug-in option of another command")
            << QStringList{"dump", "a.korv", "--KorvGenericDDLExport_path=x"}
            << QByteArray("--KorvGenericDDLExport_path=x");
    }
    void wrongCommandLines()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, mentioned);
        const program_result result = runProgram(arguments);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY2(result.errors.contains(mentioned), result.errors.constData());
        QCOMPARE(result.output.isEmpty(), !arguments.isEmpty());
    }

    void displayThatCannotBeReached()
    {
        const program_result result = runProgram({m_sProject}, {{"DISPLAY", ":9777"}});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.errors,
                 QByteArray("The window needs a display and none was found; 'korvane --help' lists the "
                            "commands that work without one\n"));
    }

    void emptyDisplayIsNone()
    {
        const program_result result = runProgram({m_sProject}, {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
        QCOMPARE(result.status, runProgram({m_sProject}).status);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors, runProgram({m_sProject}).errors);
    }

    void argumentsThatAreNotUtf8()
    {
        // Decoded with replacements the name would be that of the second file.
        const QByteArray shown = file(QStringLiteral("caf")).toUtf8() + "\\xe9.korv";
        const program_result result = support::runShell(
            QStringLiteral("cp '%1' \"$(printf '%2/caf\\351.korv')\" && exec '%3' log \"$(printf "
                           "'%2/caf\\351.korv')\"")
                .arg(m_sProject, m_dir->path(), QStringLiteral(KORVANE_PROGRAM)),
            {});
        QCOMPARE(result.errors, "Argument 2 is not UTF-8: '" + shown + "'; give the file a name in UTF-8\n");
        QCOMPARE(result.status, 2);
        const program_result made = support::runShell(
            QStringLiteral("'%1' import '%2' \"$(printf '%3/n\\377.korv')\"; ls '%3'")
                .arg(QStringLiteral(KORVANE_PROGRAM), file(QStringLiteral("shop.json")), m_dir->path()),
            {});
        QVERIFY2(made.errors.contains("n\\xff.korv'"), made.errors.constData());
        QCOMPARE(QString::fromLatin1(made.output).split('\n', Qt::SkipEmptyParts).size(), 3);
    }

    void workingFolderThatIsNotUtf8()
    {
        const program_result result = support::runShell(
            QStringLiteral(
                "cd '%1' && d=$(printf 'd\\377') && mkdir \"$d\" && cp shop.json \"$d\" && cd \"$d\" && "
                "'%2' import shop.json new.korv; echo $?; ls; '%2' import '%1/shop.json' '%1/other.korv'")
                .arg(m_dir->path(), QStringLiteral(KORVANE_PROGRAM)),
            {});
        QCOMPARE(result.errors, "The name of the current folder is not UTF-8: '" + m_dir->path().toUtf8() +
                                    "/d\\xff'; give shop.json with its whole path, or use another folder\n");
        QCOMPARE(result.output, QByteArray("1\nshop.json\nProject 'shop' imported into ") +
                                    m_dir->path().toUtf8() + "/other.korv (entities: 1)\n");
    }

    void commandsSpeakEnglish()
    {
        const program_result result = runProgram(
            {QStringLiteral("export"), m_sProject, QStringLiteral("--KorvGenericDDLExport_path=new")},
            {{QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8")}});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.startsWith("Export directory '"), result.errors.constData());
    }

    void withoutCommandTheWindowOpensTheProject()
    {
        const QTemporaryDir config;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        QProcess window;
        window.setProcessEnvironment(environment);
        window.start(QStringLiteral(KORVANE_PROGRAM), {m_sProject});
        // A project that was opened is remembered.
        const auto isRemembered = [&] {
            QFile settings(config.filePath(QStringLiteral("korvane/korvane.conf")));
            return settings.open(QIODevice::ReadOnly) && settings.readAll().contains(m_sProject.toUtf8());
        };
        QTRY_VERIFY_WITH_TIMEOUT(isRemembered(), 20000);
        QCOMPARE(window.state(), QProcess::Running);
        window.kill();
        QVERIFY(window.waitForFinished());
    }

    void helpAndVersion()
    {
        const program_result version = runProgram({QStringLiteral("--version")});
        QCOMPARE(version.status, 0);
        QCOMPARE(version.errors, QByteArray());
        QCOMPARE(version.output,
                 QByteArray("korvane 1.1.7\nKorvaneCore 1.0.0\nKorvGenericDDLExport 1.1.7\nQt ") +
                     qVersion() + "\nSQLite " + SQLITE_VERSION + '\n');
        const program_result help = runProgram({QStringLiteral("--help")});
        QCOMPARE(help.status, 0);
        QCOMPARE(help.errors, QByteArray());
        for (const char * const command : {"import", "dump", "tag", "log", "diff", "export", "plugins"}) {
            QVERIFY2(help.output.contains(QByteArray("\n  ") + command + " "), command);
            const program_result own = runProgram({QString::fromLatin1(command), QStringLiteral("--help")});
            QCOMPARE(own.status, 0);
            QCOMPARE(own.errors, QByteArray());
            QVERIFY2(own.output.contains(QByteArray("Usage: korvane ") + command), own.output.constData());
        }
        QVERIFY(help.output.contains("korvane export shop.korv"));
    }

    void pluginOptionsReachThePlugin_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("told");
        QTest::newRow("none") << QStringList() << QByteArray("0 values: ''");
        QTest::newRow("equals") << QStringList{"--AskingPlugin_report=a b"} << QByteArray("1 values: 'a b'");
        QTest::newRow("apart") << QStringList{"--AskingPlugin_report", "a b"}
                               << QByteArray("1 values: 'a b'");
        QTest::newRow("empty") << QStringList{"--AskingPlugin_report="} << QByteArray("1 values: ''");
        QTest::newRow("equals in the value")
            << QStringList{"--AskingPlugin_report=x=y"} << QByteArray("1 values: 'x=y'");
        QTest::newRow("dashes in the value")
            << QStringList{"--AskingPlugin_report=--x"} << QByteArray("1 values: '--x'");
        QTest::newRow("twice") << QStringList{"--AskingPlugin_report=1", "--AskingPlugin_report=2"}
                               << QByteArray("2 values: '1' '2'");
        QTest::newRow("two lines") << QStringList{"--AskingPlugin_report=a\nb"}
                                   << QByteArray("1 values: 'a b'");
        QTest::newRow("not ASCII") << QStringList{QStringLiteral("--AskingPlugin_report=Zürich")}
                                   << QByteArray("1 values: 'Z\xc3\xbcrich'");
    }
    void pluginOptionsReachThePlugin()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, told);
        const program_result result = ask(QStringLiteral("arguments"), options);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, told + ", window shown: 0\n");
    }

    void optionsMayComeBeforeTheProject()
    {
        const program_result result =
            runProgram({QStringLiteral("export"), QStringLiteral("--AskingPlugin_mode"),
                        QStringLiteral("nothing"), QStringLiteral("--plugin=AskingPlugin"), m_sProject},
                       {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}});
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.status, 0);
    }

    void theProjectIsCurrent()
    {
        const program_result result = ask(QStringLiteral("context"));
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, "project shop in " + m_sProject.toUtf8() + ", current: 1\n");
    }

    void eachMessageIsALine()
    {
        const program_result result = ask(QStringLiteral("messages"));
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output, QByteArray("one\ntwo lines and  [31mred\nthree\n"));
        QCOMPARE(result.errors, QByteArray("bad\n"));
    }

    void messagesAndErrorsKeepTheirOrder()
    {
        const program_result result = support::runShell(
            QStringLiteral("exec '%1' export '%2' --plugin AskingPlugin --AskingPlugin_mode=messages 2>&1")
                .arg(QStringLiteral(KORVANE_PROGRAM), m_sProject),
            {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}});
        QCOMPARE(result.output, QByteArray("one\ntwo lines and  [31mred\nbad\nthree\n"));
    }

    void failuresAreToldOnce_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QByteArray>("errors");
        QTest::newRow("result only") << "fail" << QByteArray("first line second line\n");
        QTest::newRow("shown before") << "fail_shown" << QByteArray("shown once\n");
        QTest::newRow("without text")
            << "fail_silent" << QByteArray("The export failed; the plug-in gave no reason\n");
    }
    void failuresAreToldOnce()
    {
        QFETCH(QString, mode);
        QFETCH(QByteArray, errors);
        const program_result result = ask(mode);
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, errors);
        QCOMPARE(result.output, QByteArray());
    }

    void windowsWithoutAPerson_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("answerYes");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QByteArray>("errors");
        const QByteArray question = "The folder '/x' is not there. Make it ? (-y answers Yes)\n";
        const QByteArray dialog =
            "The window 'Settings of the asker' wants a person. Give the settings on the command "
            "line ('korvane plugins' lists the options)\n";
        QTest::newRow("question") << "question" << false << 1 << QByteArray("answered no\n") << question;
        QTest::newRow("question, -y")
            << "question" << true << 0 << QByteArray("answered yes\n") << QByteArray();
        QTest::newRow("ok or cancel")
            << "question_ok" << false << 1 << QByteArray("answered no\n") << question;
        QTest::newRow("ok or cancel, -y")
            << "question_ok" << true << 0 << QByteArray("answered yes\n") << QByteArray();
        QTest::newRow("dialog") << "dialog" << false << 1 << QByteArray("rejected\n") << dialog;
        QTest::newRow("dialog, -y") << "dialog" << true << 1 << QByteArray("rejected\n") << dialog;
        QTest::newRow("dialog without title")
            << "dialog_untitled" << false << 1 << QByteArray("rejected\n")
            << QByteArray(dialog).replace("Settings of the asker", "QDialog");
        QTest::newRow("question then dialog")
            << "question_then_dialog" << false << 1 << QByteArray("answered no\nrejected\n") << question;
        QTest::newRow("question then dialog, -y")
            << "question_then_dialog" << true << 1 << QByteArray("answered yes\nrejected\n")
            << QByteArray(dialog).chopped(1) +
                   " (after the question: The folder '/x' is not there. Make it ?)\n";
        QTest::newRow("mark-up") << "question_no" << false << 1
                                 << QByteArray("before the question\nanswered no\n")
                                 << QByteArray("Make it & go ? It is new. (-y answers Yes)\n");
        QTest::newRow("button for Escape") << "question_escape" << false << 1 << QByteArray("clicked Stay\n")
                                           << QByteArray("Go ? (-y answers Yes)\n");
        QTest::newRow("own buttons") << "question_own" << false << 1 << QByteArray("clicked nothing\n")
                                     << QByteArray("Left or right ? (-y answers Yes)\n");
        QTest::newRow("own buttons, -y") << "question_own" << true << 1 << QByteArray("clicked nothing\n")
                                         << QByteArray("Left or right ? (-y answers Yes)\n");
        QTest::newRow("progress") << "progress" << false << 0 << QByteArray("worked\n") << QByteArray();
        QTest::newRow("information") << "information" << false << 0 << QByteArray("something to know\ntold\n")
                                     << QByteArray();
        QTest::newRow("warning") << "warning" << false << 0 << QByteArray("told\n")
                                 << QByteArray("something to know\n");
        // Nobody is there to let it go on: its window is closed, and the export ends as without it.
        QTest::newRow("debugger") << "debugger" << false << 0 << QByteArray("stepped\n") << QByteArray();
    }
    void windowsWithoutAPerson()
    {
        QFETCH(QString, mode);
        QFETCH(bool, answerYes);
        QFETCH(int, status);
        QFETCH(QByteArray, output);
        QFETCH(QByteArray, errors);
        // An answer that waits in a pipe is none of a person.
        const program_result result = ask(mode, answerYes ? QStringList{"-y"} : QStringList(), "y\ny\n");
        QCOMPARE(result.errors, errors);
        QCOMPARE(result.output, output);
        QCOMPARE(result.status, status);
    }

    void aPersonAtTheTerminalIsAsked_data()
    {
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("y") << QByteArray("y\n") << QByteArray("answered yes");
        QTest::newRow("default") << QByteArray("\n") << QByteArray("answered yes");
        QTest::newRow("no") << QByteArray("No\n") << QByteArray("answered no");
        QTest::newRow("asked again") << QByteArray("perhaps\nn\n") << QByteArray("answered no");
    }
    void aPersonAtTheTerminalIsAsked()
    {
        QFETCH(QByteArray, typed);
        QFETCH(QByteArray, answer);
        const program_result result = support::runInTerminal(
            {QStringLiteral("export"), m_sProject, QStringLiteral("--plugin"), QStringLiteral("AskingPlugin"),
             QStringLiteral("--AskingPlugin_mode=question")},
            {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}}, typed);
        QVERIFY2(result.output.contains("The folder '/x' is not there. Make it ? [Y/n]"),
                 result.output.constData());
        QVERIFY2(result.output.contains(answer), result.output.constData());
        QCOMPARE(result.status, 0);
    }

    void theDefaultOfAQuestionCounts_data()
    {
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("default") << QByteArray("\n") << QByteArray("answered no");
        QTest::newRow("yes") << QByteArray("YES\nn\n") << QByteArray("answered yes");
        QTest::newRow("y") << QByteArray("y\nn\n") << QByteArray("answered yes");
    }
    void theDefaultOfAQuestionCounts()
    {
        QFETCH(QByteArray, typed);
        QFETCH(QByteArray, answer);
        // What the command says goes to a file: there nothing but the command itself puts it in order.
        const program_result result = support::runProcess(
            QStringLiteral("script"),
            {QStringLiteral("-qec"),
             QStringLiteral(
                 "'%1' export '%2' --plugin AskingPlugin --AskingPlugin_mode=question_no > '%3' 2>&1")
                 .arg(QStringLiteral(KORVANE_PROGRAM), m_sProject, file(QStringLiteral("told"))),
             QStringLiteral("/dev/null")},
            {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}}, typed);
        QFile told(file(QStringLiteral("told")));
        QVERIFY(told.open(QIODevice::ReadOnly));
        QCOMPARE(told.readAll(), "before the question\nMake it & go ? It is new. [y/N] " + answer + "\n");
        QCOMPARE(result.status, 0);
    }

    void pluginIsTerminatedThenDeleted()
    {
        const program_result result =
            runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--plugin"),
                        TestPlugins + QStringLiteral("asking/asking_plugin.so"),
                        QStringLiteral("--AskingPlugin_mode=nothing")},
                       {{QStringLiteral("ASKING_PLUGIN_TRACE"), QStringLiteral("1")}});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QByteArray("asking_plugin terminated\nasking_plugin deleted\n"));
    }

    void noPluginAtAll()
    {
        const QTemporaryDir copy;
        const QString program = copy.filePath(QStringLiteral("korvane"));
        QVERIFY(QFile::copy(QStringLiteral(KORVANE_PROGRAM), program));
        const program_result listed = support::runProcess(program, {QStringLiteral("plugins")}, {}, {});
        QVERIFY2(listed.output.startsWith("No plugin was found in "), listed.output.constData());
        QVERIFY(listed.output.endsWith("; reinstall korvane, or name their folder in KORVANE_PLUGIN_PATH\n"));
        QCOMPARE(listed.output.count('\n'), 1);
        const program_result result =
            support::runProcess(program, {QStringLiteral("export"), m_sProject}, {}, {});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, listed.output);
    }

    void choiceOfThePlugin()
    {
        const QHash<QString, QString> two = {
            {QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}};
        const program_result unclear = runProgram({QStringLiteral("export"), m_sProject}, two);
        QCOMPARE(unclear.status, 2);
        QCOMPARE(unclear.errors,
                 QByteArray("There are several plugins, choose one with --plugin: AskingPlugin, "
                            "KorvGenericDDLExport\n"));
        const program_result unknown =
            runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--plugin=Nobody")}, two);
        QCOMPARE(unknown.status, 1);
        QCOMPARE(
            unknown.errors,
            QByteArray("No plugin is called 'Nobody' (installed: AskingPlugin, KorvGenericDDLExport)\n"));
        const program_result missing =
            runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--plugin=/no/such.so")});
        QCOMPARE(missing.status, 1);
        QCOMPARE(missing.errors, QByteArray("/no/such.so: the plugin file does not exist\n"));
        // A name with the suffix of a library is a file, also without a folder.
        const program_result bare =
            runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--plugin=such.so")}, two);
        QCOMPARE(bare.errors.right(34), QByteArray("such.so: the plugin file does not exist\n").right(34));
        QCOMPARE(bare.status, 1);
        const program_result path =
            runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--plugin=/no/such")});
        QCOMPARE(path.status, 1);
        QCOMPARE(path.errors, QByteArray("/no/such: the plugin file does not exist\n"));
    }

    void projectThatIsNotThere()
    {
        const program_result result =
            runProgram({QStringLiteral("export"), file(QStringLiteral("none.korv")),
                        QStringLiteral("--KorvGenericDDLExport_path=") + m_dir->path()});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY2(result.errors.contains("none.korv"), result.errors.constData());
        QVERIFY(!QFile::exists(file(QStringLiteral("none.korv"))));
    }

    void listOfPlugins()
    {
        const program_result result = runProgram({QStringLiteral("plugins")});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QByteArray());
        const QByteArray expected =
            "KorvGenericDDLExport 1.1.7\n"
            "  Export to DDL SQL script file\n"
            "  This plugin exports current opened project to a DDL SQL script file.\n"
            "  File: " KORVANE_PLUGIN_FILE "\n"
            "  Command line of 'korvane export':\n"
            "    !!! Note : this plugin loads automatically previous parameters values before starting the "
            "export process, but you can use following parameters to override them !!!\n"
            "    --KorvGenericDDLExport_path=\"<Export Path>\" : [Optional] DDL export path parameter\n"
            "    --KorvGenericDDLExport_db_type=<numeric value> : [Optional] Database type (0=default, "
            "1=sqlite, 2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)\n"
            "    --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign keys "
            "in database\n"
            "    --KorvGenericDDLExport_schema_type=<numeric value> : [Optional] Way to export database "
            "schema (0=full, 1=evolution, 2=full_and_evolution)\n"
            "    --KorvGenericDDLExport_custom_javacript=\"<Custom JS>\" : [Optional] Custom script "
            "(javascript file) to change the default behaviour of the export process\n";
        QCOMPARE(result.output, expected);
    }

    void badPluginFilesAreReportedAndTheOthersListed()
    {
        write(QStringLiteral("text.so"), "just text");
        const QString path = m_dir->path() + QLatin1Char(':') + TestPlugins + QStringLiteral("other:") +
                             TestPlugins + QStringLiteral("asking:") + TestPlugins +
                             QStringLiteral("asking_again");
        const program_result result =
            runProgram({QStringLiteral("plugins")}, {{QStringLiteral("KORVANE_PLUGIN_PATH"), path}});
        QCOMPARE(result.status, 0);
        QVERIFY(result.output.startsWith("AskingPlugin 9.8\n"));
        QVERIFY(result.output.contains("\nKorvGenericDDLExport 1.1.7\n"));
        QCOMPARE(result.output.count("AskingPlugin 9.8"), 1);
        QVERIFY(result.output.contains("/tests/plugins/asking/asking_plugin.so"));
        const QList<QByteArray> errors = result.errors.trimmed().split('\n');
        QCOMPARE(errors.size(), 3);
        QVERIFY(errors[0].startsWith(file(QStringLiteral("text.so")).toUtf8() + ": is not a plugin: "));
        QCOMPARE(errors[1], TestPlugins.toUtf8() +
                                "other/other_interface.so: the plugin was built for another interface");
        QCOMPARE(errors[2], TestPlugins.toUtf8() + "asking_again/asking_plugin_again.so: not used, " +
                                TestPlugins.toUtf8() +
                                "asking/asking_plugin.so is a plugin of the same name");
    }

    void manyMessagesAreFast()
    {
        QElapsedTimer time;
        time.start();
        const program_result result = ask(QStringLiteral("many"));
        QCOMPARE(result.status, 0);
        QCOMPARE(result.output.count('\n'), 40000);
        QVERIFY(result.output.endsWith("message number 39999 of very many\n"));
        QVERIFY2(time.elapsed() < 20000, qPrintable(QString::number(time.elapsed())));
    }

    void readerThatGoesAwayIsNoFailure()
    {
        const program_result result = support::runShell(
            QStringLiteral(
                "{ '%1' export '%2' --plugin AskingPlugin --AskingPlugin_mode=many; echo $? >'%3'; } | "
                "head -n 1")
                .arg(QStringLiteral(KORVANE_PROGRAM), m_sProject, file(QStringLiteral("status"))),
            {{QStringLiteral("KORVANE_PLUGIN_PATH"), TestPlugins + QStringLiteral("asking")}});
        QCOMPARE(result.output, QByteArray("message number 0 of very many\n"));
        QCOMPARE(result.errors, QByteArray());
        QFile status(file(QStringLiteral("status")));
        QVERIFY(status.open(QIODevice::ReadOnly));
        QCOMPARE(status.readAll(), QByteArray("0\n"));
    }

    void readerOfADumpGoesAway()
    {
        QByteArray model =
            R"({"format": "korvane-project", "formatVersion": 1, "name": "big", "entities": [)";
        for (int i = 0; i < 5000; ++i) {
            model += (i ? "," : "") + QByteArray(R"({"name": "entity_with_a_long_name_)") +
                     QByteArray::number(i) + "\"}";
        }
        const QString big = file(QStringLiteral("big.korv"));
        QCOMPARE(runProgram({QStringLiteral("import"), write(QStringLiteral("big.json"), model + "]}"), big})
                     .status,
                 0);
        const program_result result =
            support::runShell(QStringLiteral("{ '%1' dump '%2'; echo $? >'%3'; } | head -n 1")
                                  .arg(QStringLiteral(KORVANE_PROGRAM), big, file(QStringLiteral("status"))),
                              {});
        QCOMPARE(result.output, QByteArray("{\n"));
        QCOMPARE(result.errors, QByteArray());
        QFile status(file(QStringLiteral("status")));
        QVERIFY(status.open(QIODevice::ReadOnly));
        QCOMPARE(status.readAll(), QByteArray("0\n"));
    }

    void outputThatCannotBeWrittenIsAFailure()
    {
        const program_result dump = support::runShell(
            QStringLiteral("exec '%1' dump '%2' >/dev/full").arg(QStringLiteral(KORVANE_PROGRAM), m_sProject),
            {});
        QCOMPARE(dump.status, 1);
        QCOMPARE(dump.errors, QByteArray("Standard output: No space left on device\n"));
        const program_result result = support::runShell(
            QStringLiteral("exec '%1' --help >/dev/full").arg(QStringLiteral(KORVANE_PROGRAM)), {});
        QCOMPARE(result.status, 1);
        QCOMPARE(result.errors, QByteArray("Standard output: No space left on device\n"));
        // The command line was wrong all the same.
        const program_result wrong = support::runShell(
            QStringLiteral("exec '%1' >/dev/full").arg(QStringLiteral(KORVANE_PROGRAM)), {});
        QCOMPARE(wrong.status, 2);
        QCOMPARE(wrong.errors.count('\n'), 2);
    }

    void filesDoNotTakeThePlaceOfClosedStreams()
    {
        QByteArray entities;
        for (int i = 0; i < 400; ++i) {
            entities += (i > 0 ? ", " : "") + QByteArray("{\"name\": \"entity_") + QByteArray::number(i) +
                        "\", \"softDeleteColumn\": \"gone\"}";
        }
        const QString model =
            write(QStringLiteral("many.json"),
                  R"({"format": "korvane-project", "formatVersion": 1, "name": "many", "entities": [)" +
                      entities + "]}");
        const QString project = file(QStringLiteral("many.korv"));
        QCOMPARE(runProgram({QStringLiteral("import"), model, project}).status, 0);
        const QString command = QStringLiteral("'%1' export '%2' -y --KorvGenericDDLExport_path=%3")
                                    .arg(QStringLiteral(KORVANE_PROGRAM), project);
        QCOMPARE(support::runShell(command.arg(QStringLiteral("open")), {}).status, 0);
        const program_result closed =
            support::runShell(command.arg(QStringLiteral("closed")) + QStringLiteral(" <&- >&- 2>&-"), {});
        QCOMPARE(closed.status, 1); // what was to be told could not be told
        const auto script = [this](const QString & folder) {
            QFile f(file(folder + QStringLiteral("/many_sqlite_db_schema_full.sql")));
            return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("missing");
        };
        QCOMPARE(script(QStringLiteral("closed")), script(QStringLiteral("open")));
        QVERIFY(script(QStringLiteral("open")).endsWith("END TRANSACTION;\n"));
        const program_result told = support::runShell(
            QStringLiteral("'%1' dump '%2' >&-").arg(QStringLiteral(KORVANE_PROGRAM), m_sProject), {});
        QCOMPARE(told.errors, QByteArray("Standard output: Bad file descriptor\n"));
    }

    void whatIsDoneIsToldThoughTheOutputIsFull()
    {
        const auto fullOutput = [this](const QString & command) {
            return support::runShell(
                QStringLiteral("exec '%1' %2 >/dev/full").arg(QStringLiteral(KORVANE_PROGRAM), command), {});
        };
        const QByteArray project = m_sProject.toUtf8();
        const QByteArray end = "; only telling it on standard output failed (No space left on device)\n";
        const program_result tagged = fullOutput(QStringLiteral("tag '%1'").arg(m_sProject));
        QCOMPARE(tagged.status, 1);
        QCOMPARE(tagged.errors, "Version 1 of " + project + " tagged" + end);
        const program_result imported =
            fullOutput(QStringLiteral("import '%1' '%2'").arg(file(QStringLiteral("shop.json")), m_sProject));
        QCOMPARE(imported.status, 1);
        QCOMPARE(imported.errors, "Project 'shop' imported into " + project + " (entities: 1)" + end);
        // Nothing is done here, so nothing is said to be.
        const program_result nothing = fullOutput(QStringLiteral("tag --if-changed '%1'").arg(m_sProject));
        QCOMPARE(nothing.status, 1);
        QCOMPARE(nothing.errors, QByteArray("Standard output: No space left on device\n"));
    }

    void versionsAreListedInLocalTimeAndOnOneLineEach()
    {
        QCOMPARE(runProgram({QStringLiteral("tag"), m_sProject, QStringLiteral("-m"),
                             QStringLiteral("one\ntwo\a") + QChar(0x202e) + QStringLiteral("three") +
                                 QChar(0x2028) + QStringLiteral("four")})
                     .status,
                 0);
        const auto logIn = [this](const char * zone) {
            return runProgram({QStringLiteral("log"), m_sProject},
                              {{QStringLiteral("TZ"), QString::fromLatin1(zone)}})
                .output;
        };
        const QByteArray utc = logIn("UTC0");
        const QByteArray east = logIn("EAST-5:30");
        QCOMPARE(utc.count('\n'), 1);
        QCOMPARE(utc.mid(23), QByteArray("  one two <U+202E>three<U+2028>four\n"));
        const QString format = QStringLiteral("yyyy-MM-dd HH:mm:ss");
        const QDateTime inUtc = QDateTime::fromString(QString::fromLatin1(utc.mid(4, 19)), format);
        const QDateTime inEast = QDateTime::fromString(QString::fromLatin1(east.mid(4, 19)), format);
        QVERIFY2(inUtc.isValid(), utc.constData());
        QCOMPARE(inUtc.secsTo(inEast), qint64(19800));
    }

    void controlsAreNotPrinted()
    {
        const program_result result = runProgram(
            {QStringLiteral("dump"), QStringLiteral("a") + QChar(0x9b) + QStringLiteral("b") + QChar(0x7f) +
                                         QStringLiteral("c") + QChar(0x85) + QStringLiteral("d") +
                                         QChar(0x200f) + QStringLiteral("e.korv")});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.errors.endsWith("/a b c d<U+200F>e.korv: does not exist; check the name\n"),
                 result.errors.constData());
    }

    void importFromStandardInput();
    void importIntoAnEmptyFile();
    void exportEndToEnd();
    void exportNeedsNoDisplay();
    void exportAsksForTheFolder();
    void exportFolderThatCannotBeMade();
    void scriptsThatCannotBeOpened_data();
    void scriptsThatCannotBeOpened();
    void optionsOverrideTheSettings_data();
    void optionsOverrideTheSettings();
    void fileNamesAreToldInOneLine();
    void exportWithAScript();
    void scriptThatDoesNotEnd();
};

void tst_command_line::importFromStandardInput()
{
    QFile model(file(QStringLiteral("shop.json")));
    QVERIFY(model.open(QIODevice::ReadOnly));
    const QString project = file(QStringLiteral("piped.korv"));
    const program_result result =
        runProgram({QStringLiteral("import"), QStringLiteral("-"), project}, {}, model.readAll());
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(runProgram({QStringLiteral("dump"), project}).output,
             runProgram({QStringLiteral("dump"), m_sProject}).output);
    const program_result bad =
        runProgram({QStringLiteral("import"), QStringLiteral("-"), project}, {}, "{\"name\": 1}");
    QCOMPARE(bad.status, 1);
    QCOMPARE(bad.errors, QByteArray("standard input: field 'format' is missing\n"));
    const program_result closed = support::runShell(
        QStringLiteral("'%1' import - '%2' <&-").arg(QStringLiteral(KORVANE_PROGRAM), project), {});
    QCOMPARE(closed.status, 1);
    QCOMPARE(closed.errors, QByteArray("standard input: cannot be read (Bad file descriptor)\n"));
    QVERIFY(!QFile::exists(file(QStringLiteral("-"))));
}

void tst_command_line::importIntoAnEmptyFile()
{
    const QString project = write(QStringLiteral("empty.korv"), "");
    const program_result result =
        runProgram({QStringLiteral("import"), file(QStringLiteral("shop.json")), project});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QCOMPARE(runProgram({QStringLiteral("dump"), project}).output,
             runProgram({QStringLiteral("dump"), m_sProject}).output);
}

void tst_command_line::exportEndToEnd()
{
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("sql")));
    const program_result result =
        runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("--KorvGenericDDLExport_path=sql")});
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    const QString script = file(QStringLiteral("sql/shop_sqlite_db_schema_full.sql"));
    QVERIFY2(result.output.contains("Full database schema DDL SQL script created for project 'shop'"),
             result.output.constData());
    QFile f(script);
    QVERIFY(f.open(QIODevice::ReadOnly));
    const QByteArray sql = f.readAll();
    QVERIFY(sql.startsWith("BEGIN TRANSACTION;\nPRAGMA foreign_keys = OFF;\n"));
    QVERIFY2(sql.contains("CREATE TABLE customer"), sql.constData());
    QVERIFY(sql.endsWith("END TRANSACTION;\n"));
}

void tst_command_line::exportNeedsNoDisplay()
{
    const QStringList arguments = {QStringLiteral("export"), m_sProject,
                                   QStringLiteral("--KorvGenericDDLExport_path=") + m_dir->path()};
    const QHash<QString, QString> environments[] = {
        {{QStringLiteral("DISPLAY"), QStringLiteral(":987")}},
        {{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb")}},
        {{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("no such platform")}}};
    for (const QHash<QString, QString> & environment : environments) {
        const program_result result = runProgram(arguments, environment);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 0);
    }
}

void tst_command_line::exportAsksForTheFolder()
{
    const QString option = QStringLiteral("--KorvGenericDDLExport_path=new");
    const QString folder = file(QStringLiteral("new"));
    const program_result asked = runProgram({QStringLiteral("export"), m_sProject, option});
    QCOMPARE(asked.status, 1);
    QCOMPARE(asked.errors,
             "Export directory '" + folder.toUtf8() +
                 "' doesn't exist. Do you want to create it and start the export process ? (-y answers "
                 "Yes)\n");
    QCOMPARE(asked.output, QByteArray());
    QVERIFY(!QFile::exists(folder));
    const program_result yes =
        runProgram({QStringLiteral("export"), m_sProject, option, QStringLiteral("-y")});
    QCOMPARE(yes.errors, QByteArray());
    QCOMPARE(yes.status, 0);
    QVERIFY(QFile::exists(folder + QStringLiteral("/shop_sqlite_db_schema_full.sql")));
    const program_result none = runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("-y")});
    QCOMPARE(none.status, 1);
    QCOMPARE(none.errors.count('\n'), 1);
    QVERIFY2(
        none.errors.contains("No export folder is set. Give one with --KorvGenericDDLExport_path=FOLDER"),
        none.errors.constData());
}

void tst_command_line::exportFolderThatCannotBeMade()
{
    write(QStringLiteral("file"), "no folder");
    const program_result result = runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("-y"),
                                              QStringLiteral("--KorvGenericDDLExport_path=file/sql")});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY2(result.errors.contains("Export directory '" + file(QStringLiteral("file/sql")).toUtf8() + "'"),
             result.errors.constData());
}

void tst_command_line::scriptsThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("the script's name is a folder") << "blocked" << QByteArray("it exists, but is not a file");
    QTest::newRow("the export folder is a file") << "file" << QByteArray("Not a directory");
    QTest::newRow("nobody may write there") << "/proc" << QByteArray("No such file or directory");
}

void tst_command_line::scriptsThatCannotBeOpened()
{
    QFETCH(QString, folder);
    QFETCH(QByteArray, reason);
    write(QStringLiteral("file"), "no folder");
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("blocked/shop_sqlite_db_schema_full.sql")));
    const program_result result = runProgram({QStringLiteral("export"), m_sProject, QStringLiteral("-y"),
                                              QStringLiteral("--KorvGenericDDLExport_path=") + folder});
    const QString script =
        QDir(m_dir->path()).absoluteFilePath(folder) + QStringLiteral("/shop_sqlite_db_schema_full.sql");
    QCOMPARE(result.errors,
             "An error occurred opening SQL file : " + script.toUtf8() + " (" + reason + ")\n");
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.status, 1);
}

void tst_command_line::optionsOverrideTheSettings_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("scripts");
    QTest::addColumn<bool>("foreignKeys");
    const QString full = QStringLiteral("shop_%1_db_schema_full.sql");
    const auto db = [](const char * number) { return QStringLiteral("db_type=") + QLatin1String(number); };
    QTest::newRow("none") << QStringList() << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("generic") << QStringList{db("0")} << QStringList{full.arg("default")} << false;
    QTest::newRow("SQLite") << QStringList{db("1")} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("MySQL") << QStringList{db("2")} << QStringList{full.arg("mysql")} << false;
    QTest::newRow("PostgreSQL") << QStringList{db("3")} << QStringList{full.arg("postgresql")} << false;
    QTest::newRow("Oracle") << QStringList{db("4")} << QStringList{full.arg("oracle")} << false;
    QTest::newRow("SQL Server") << QStringList{db("5")} << QStringList{full.arg("mssqlserver")} << false;
    QTest::newRow("unknown database") << QStringList{db("7")} << QStringList{full.arg("default")} << false;
    QTest::newRow("below all databases")
        << QStringList{db("-1")} << QStringList{full.arg("default")} << false;
    QTest::newRow("database that is no number")
        << QStringList{db("sqlite")} << QStringList{full.arg("default")} << false;
    QTest::newRow("hexadecimal database")
        << QStringList{db("0x2")} << QStringList{full.arg("default")} << false;
    QTest::newRow("empty database") << QStringList{db("")} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("the first of two databases")
        << QStringList{db("3"), db("4")} << QStringList{full.arg("postgresql")} << false;
    QTest::newRow("an empty one before")
        << QStringList{db(""), db("4")} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("relationships") << QStringList{"relation_as_fk=1"} << QStringList{full.arg("sqlite")}
                                   << true;
    QTest::newRow("no relationships")
        << QStringList{"relation_as_fk=0"} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("relationships in words")
        << QStringList{"relation_as_fk=true"} << QStringList{full.arg("sqlite")} << false;
    const QStringList steps = {"shop_sqlite_db_schema_v1.sql", "shop_sqlite_db_schema_v1_to_v2.sql"};
    QTest::newRow("full schema") << QStringList{"schema_type=0"} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("evolution") << QStringList{"schema_type=1"} << steps << false;
    QTest::newRow("both") << QStringList{"schema_type=2"} << QStringList{full.arg("sqlite")} + steps << false;
    QTest::newRow("schema that is no number")
        << QStringList{"schema_type=evolution"} << QStringList{full.arg("sqlite")} << false;
    QTest::newRow("unknown schema") << QStringList{"schema_type=3"} << QStringList() << false;
}

void tst_command_line::optionsOverrideTheSettings()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, scripts);
    QFETCH(bool, foreignKeys);
    const QString project = file(QStringLiteral("related.korv"));
    const QString model = write(QStringLiteral("related.json"), R"({
        "format": "korvane-project", "formatVersion": 1, "name": "shop", "entities": [
        { "id": 1, "name": "country", "properties": [ { "name": "id", "type": "long", "identifier": true } ] },
        { "id": 2, "name": "person", "properties": [
          { "name": "id", "type": "long", "identifier": true },
          { "name": "country", "relationship": { "type": "many-to-one", "target": 1 } } ] } ] })");
    QCOMPARE(runProgram({QStringLiteral("import"), model, project}).status, 0);
    QCOMPARE(runProgram({QStringLiteral("tag"), project}).status, 0);
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("scripts")));
    QStringList arguments = {QStringLiteral("export"), project, QStringLiteral("--no-check"),
                             QStringLiteral("--KorvGenericDDLExport_path=scripts")};
    for (const QString & option : options) {
        arguments << QStringLiteral("--KorvGenericDDLExport_") + option;
    }
    const program_result result = runProgram(arguments);
    // What a strange value is taken for is told on a line.
    const QStringList strange = {
        "unknown database",       "below all databases",      "database that is no number",
        "hexadecimal database",   "empty database",           "an empty one before",
        "relationships in words", "schema that is no number", "unknown schema"};
    QCOMPARE(result.errors.count('\n'), strange.contains(QTest::currentDataTag()) ? 1 : 0);
    QCOMPARE(result.status, 0);
    const QDir folder(file(QStringLiteral("scripts")));
    QCOMPARE(folder.entryList(QDir::Files, QDir::Name), scripts);
    bool hasForeignKeys = false;
    for (const QString & script : scripts) {
        QFile f(folder.filePath(script));
        QVERIFY(f.open(QIODevice::ReadOnly));
        hasForeignKeys =
            hasForeignKeys || f.readAll().contains("FOREIGN KEY (country) REFERENCES country (id)");
    }
    QCOMPARE(hasForeignKeys, foreignKeys);
}

void tst_command_line::fileNamesAreToldInOneLine()
{
    const QString project = file(QStringLiteral("two\nlines.korv"));
    const QByteArray told = file(QStringLiteral("two lines.korv")).toUtf8();
    const program_result import =
        runProgram({QStringLiteral("import"), file(QStringLiteral("shop.json")), project});
    QCOMPARE(import.status, 0);
    QCOMPARE(import.output, "Project 'shop' imported into " + told + " (entities: 1)\n");
    const program_result tag = runProgram({QStringLiteral("tag"), project});
    QCOMPARE(tag.output, "Version 1 of " + told + " tagged\n");
}

void tst_command_line::exportWithAScript()
{
    write(QStringLiteral("hook.js"),
          "function exportStep(project, entity, property, enumeration, parameters) {\n"
          "  if (parameters.action === 'CREATE_TABLE') {\n"
          "    console.log('seen ' + entity.getName());\n"
          "    return '-- no ' + entity.getName();\n"
          "  }\n"
          "  if (parameters.action === 'DDL_EXPORT_END' && project.getName() === 'stop') "
          "throw new Error('stopped');\n"
          "}\n");
    const QStringList arguments = {QStringLiteral("export"), m_sProject,
                                   QStringLiteral("--KorvGenericDDLExport_path=") + m_dir->path(),
                                   QStringLiteral("--KorvGenericDDLExport_custom_javacript=hook.js")};
    const program_result result = runProgram(arguments);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.status, 0);
    QVERIFY(result.output.startsWith("seen customer\n") || result.output.contains("\nseen customer\n"));
    QFile sql(file(QStringLiteral("shop_sqlite_db_schema_full.sql")));
    QVERIFY(sql.open(QIODevice::ReadOnly));
    QCOMPARE(
        sql.readAll(),
        QByteArray("BEGIN TRANSACTION;\nPRAGMA foreign_keys = OFF;\n-- no customer\nEND TRANSACTION;\n"));

    const QString broken =
        write(QStringLiteral("hook.js"), "function exportStep(p, e) {\n  return e.getName();\n}\n");
    const program_result failed = runProgram(arguments);
    QCOMPARE(failed.status, 1);
    QCOMPARE(failed.errors, broken.toUtf8() +
                                ":2: TypeError: Cannot call method 'getName' of null\n"
                                "The SQL file is incomplete : " +
                                sql.fileName().toUtf8() + "\n");
}

void tst_command_line::scriptThatDoesNotEnd()
{
    const QString hook = write(QStringLiteral("hook.js"), "function exportStep() {\n  for (;;) {}\n}\n");
    const program_result result = runProgram(
        {QStringLiteral("export"), m_sProject, QStringLiteral("--KorvGenericDDLExport_path=") + m_dir->path(),
         QStringLiteral("--KorvGenericDDLExport_custom_javacript=") + hook},
        {{QStringLiteral("KORVANE_SCRIPT_TIMEOUT_MS"), QStringLiteral("200")}});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.errors, hook.toUtf8() +
                                ":1: exportStep did not end within 200 ms\nThe SQL file is incomplete : " +
                                file(QStringLiteral("shop_sqlite_db_schema_full.sql")).toUtf8() + "\n");
}

QTEST_GUILESS_MAIN(tst_command_line)
#include "tst_command_line.moc"
