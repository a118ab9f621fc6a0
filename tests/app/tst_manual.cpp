// The manual's commands do what the manual says: every block of shell runs, in order, and prints what the
// text block after it shows.

#include "support/manual_blocks.h"
#include "support/program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using support::block;
using support::blocksOf;
using support::contentOf;
using support::Docs;

namespace {

QStringList pages()
{
    return QDir(Docs).entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name);
}

} // namespace

class tst_manual : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commands_data();
    void commands();
    void links_data();
    void links();
    void webPages();
    void hasTheAnchorOfTheSettings();
};

void tst_manual::commands_data()
{
    QTest::addColumn<int>("shellBlocks");
    for (const QString & page : pages()) {
        int count = 0;
        for (const block & b : blocksOf(page)) {
            count += b.kind == QStringLiteral("sh") ? 1 : 0;
        }
        if (count > 0) {
            QTest::newRow(qPrintable(page)) << count;
        }
    }
}

void tst_manual::commands()
{
    QFETCH(int, shellBlocks);
    const QTemporaryDir folder;
    QByteArray output;
    for (const block & b : blocksOf(QString::fromLatin1(QTest::currentDataTag()))) {
        if (b.kind == QStringLiteral("sh")) {
            const support::program_result result = support::runBlock(b, folder.path());
            output = result.output;
            QVERIFY2(result.status == 0, (b.text.toUtf8() + "\n" + output + result.errors).constData());
            --shellBlocks;
        } else if (b.kind == QStringLiteral("text")) {
            QCOMPARE(QString::fromUtf8(output), b.text);
        }
    }
    QCOMPARE(shellBlocks, 0);
}

void tst_manual::links_data()
{
    QTest::addColumn<QString>("page");
    for (const QString & page : pages()) {
        QTest::newRow(qPrintable(page)) << page;
    }
}

void tst_manual::links()
{
    QFETCH(QString, page);
    static const QRegularExpression link(QStringLiteral("\\]\\(([^)#:]+)(#[^)]*)?\\)"));
    QRegularExpressionMatchIterator matches = link.globalMatch(contentOf(page));
    while (matches.hasNext()) {
        const QString target = matches.next().captured(1);
        QVERIFY2(QFileInfo::exists(Docs + target), qPrintable(target));
    }
}

// The pages that are installed, and that the program opens in a browser.
void tst_manual::webPages()
{
    const QDir folder(QStringLiteral(KORVANE_MANUAL_FOLDER));
    QStringList made = folder.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
    QCOMPARE(made,
             (QStringList{"ci.html", "custom_script.html", "databases.html", "evolution.html", "git.html",
                          "manual.html", "plugins.html", "text_form.html", "types.html", "window.html"}));
    static const QRegularExpression link(QStringLiteral("(?:href|src|srcset)=\"([^\"#:]*)(?:#([^\"]*))?\""));
    for (const QString & name : std::as_const(made)) {
        QFile page(folder.filePath(name));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        QVERIFY2(text.contains(QStringLiteral("<h1>")), qPrintable(name));
        static const QRegularExpression source(QStringLiteral("(?:href|src)=\"[^\"]*\\.md[\"#]"));
        QVERIFY2(!text.contains(source), qPrintable(name));
        QRegularExpressionMatchIterator matches = link.globalMatch(text);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            const QString target = match.captured(1).isEmpty() ? name : match.captured(1);
            QFile file(folder.filePath(target));
            QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(name + QStringLiteral(": ") + target));
            if (!match.captured(2).isEmpty()) {
                const QByteArray anchor = "id=\"" + match.captured(2).toUtf8() + '"';
                QVERIFY2(file.readAll().contains(anchor), anchor.constData());
            }
        }
    }
}

// The help of the settings opens the manual there.
void tst_manual::hasTheAnchorOfTheSettings()
{
    QVERIFY(
        contentOf(QStringLiteral("manual.md"))
            .contains(QStringLiteral("<a id=\"ddl_export_settings\"></a>\n\n## Settings of the export\n")));
}

QTEST_GUILESS_MAIN(tst_manual)
#include "tst_manual.moc"
