// The pages for man(1): every command has one, man finds nothing wrong with it, and it says what the help
// says.

#include "support/program.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using support::program_result;
using support::runProcess;
using support::runProgram;

namespace {

const QString Folder = QStringLiteral(KORVANE_MAN_PAGES "/");

/// What man shows of a page, in lines so long that none is broken.
program_result shown(const QString & page)
{
    return runProcess(QStringLiteral("man"),
                      {QStringLiteral("--warnings"), QStringLiteral("--encoding=UTF-8"),
                       QStringLiteral("--local-file"), Folder + page + QStringLiteral(".1.gz")},
                      {{QStringLiteral("MANWIDTH"), QStringLiteral("2000")},
                       {QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8")}},
                      {});
}

/// The lines of a section of a page.
QString section(const QString & page, const QString & heading)
{
    const qsizetype begin = page.indexOf(QLatin1Char('\n') + heading + QLatin1Char('\n')) + 1;
    static const QRegularExpression next(QStringLiteral("\n\\S"));
    return begin == 0 ? QString() : page.mid(begin, page.indexOf(next, begin + heading.size()) - begin);
}

} // namespace

class tst_man_pages : public QObject
{
    Q_OBJECT

private slots:
    void everyCommandHasOne();
    void pageIsWhole_data();
    void pageIsWhole();
    void programTellsOfItsCommands();
    void pageSaysWhatTheManualSays();
    void exitStatusIsAList();
};

void tst_man_pages::everyCommandHasOne()
{
    const QStringList pages = QDir(Folder).entryList({QStringLiteral("*.1.gz")}, QDir::Files, QDir::Name);
    QCOMPARE(pages, QStringList({"korvane-check.1.gz", "korvane-diff.1.gz", "korvane-document.1.gz",
                                 "korvane-dump.1.gz", "korvane-explain.1.gz", "korvane-export.1.gz",
                                 "korvane-import.1.gz", "korvane-log.1.gz", "korvane-plugins.1.gz",
                                 "korvane-schema.1.gz", "korvane-settings.1.gz", "korvane-status.1.gz",
                                 "korvane-tag.1.gz", "korvane-verify.1.gz", "korvane.1.gz"}));
}

void tst_man_pages::pageIsWhole_data()
{
    QTest::addColumn<QString>("command");
    for (const char * const command : {"import", "dump", "tag", "log", "status", "diff", "export", "explain",
                                       "check", "verify", "document", "settings", "schema", "plugins"}) {
        QTest::newRow(command) << QString::fromLatin1(command);
    }
}

void tst_man_pages::pageIsWhole()
{
    QFETCH(QString, command);
    const QString name = QStringLiteral("korvane-") + command;
    const program_result page = shown(name);
    QCOMPARE(page.errors, QByteArray());
    QCOMPARE(page.status, 0);
    const QString text = QString::fromUtf8(page.output);
    const QString help = QString::fromUtf8(runProgram({command, QStringLiteral("--help")}).output);
    QVERIFY(section(text, QStringLiteral("NAME"))
                .contains(name + QStringLiteral(" - ") + help.section('\n', 0, 0)));
    QVERIFY(section(text, QStringLiteral("SYNOPSIS")).contains(QStringLiteral("korvane ") + command));
    QVERIFY(section(text, QStringLiteral("DESCRIPTION")).simplified().size() > 20);
    QVERIFY(section(text, QStringLiteral("EXIT STATUS"))
                .contains(QRegularExpression(QStringLiteral("\n +2\n +wrong usage\n"))));
    QVERIFY(section(text, QStringLiteral("SEE ALSO")).contains(QStringLiteral("korvane(1)")));
    const QString options = section(text, QStringLiteral("OPTIONS"));
    const qsizetype begin = help.indexOf(QStringLiteral("\nOptions:\n")) + 1;
    static const QRegularExpression option(QStringLiteral("^  (-[^ ]+)"),
                                           QRegularExpression::MultilineOption);
    int found = 0;
    for (auto each = option.globalMatch(help.mid(begin, help.indexOf(QStringLiteral("\n\n"), begin) - begin));
         each.hasNext(); ++found) {
        const QString names = each.next().captured(1).replace(QLatin1Char(','), QStringLiteral(", "));
        QVERIFY2(options.contains(names), qPrintable(names));
    }
    QVERIFY(found > 0);
}

void tst_man_pages::programTellsOfItsCommands()
{
    const QString text = QString::fromUtf8(shown(QStringLiteral("korvane")).output);
    QVERIFY(section(text, QStringLiteral("SYNOPSIS")).contains(QStringLiteral("korvane [PROJECT.korv]")));
    QVERIFY(section(text, QStringLiteral("COMMANDS"))
                .contains(QRegularExpression(QStringLiteral(
                    "korvane-tag\\(1\\)\n +Tag the current state of a project as a new version\n"))));
    QVERIFY(section(text, QStringLiteral("ENVIRONMENT"))
                .contains(QRegularExpression(QStringLiteral(
                    "KORVANE_PLUGIN_PATH\n +further folders with plugins, separated by :\n"))));
    QVERIFY(section(text, QStringLiteral("EXAMPLES"))
                .contains(QStringLiteral("korvane tag shop.korv -m \"first release\"")));
}

void tst_man_pages::pageSaysWhatTheManualSays()
{
    const QString page = QString::fromUtf8(shown(QStringLiteral("korvane-verify")).output);
    QVERIFY(section(page, QStringLiteral("DESCRIPTION"))
                .contains(QStringLiteral(
                    "Runs the scripts on scratch databases and proves what was foretold of them")));
    QVERIFY(section(page, QStringLiteral("PROVE IT")).contains(QStringLiteral("rows kept: each property")));
    QVERIFY(!page.contains(QStringLiteral("<a id")));
    QVERIFY(!page.contains(QStringLiteral("](")));
}

void tst_man_pages::exitStatusIsAList()
{
    const QString page = QString::fromUtf8(shown(QStringLiteral("korvane-status")).output);
    QVERIFY(section(page, QStringLiteral("EXIT STATUS"))
                .contains(QRegularExpression(QStringLiteral("\n +0\n +done\n"))));
    // A command that says nothing else has the usual ones.
    const QString tag = QString::fromUtf8(shown(QStringLiteral("korvane-tag")).output);
    QVERIFY(section(tag, QStringLiteral("EXIT STATUS"))
                .contains(QRegularExpression(QStringLiteral("\n +1\n +it could not be done\n"))));
}

QTEST_GUILESS_MAIN(tst_man_pages)
#include "tst_man_pages.moc"
