// What the program gives to a desktop: its entry, its description in software centres, its icons, and the
// type of its project files; judged by the desktop's own tools.

#include "support/program.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString Folder = QStringLiteral(KORVANE_SOURCE_DIR "/app/desktop/");

QByteArray contentOf(const QString & name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_desktop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void entryIsValid();
    void entrySaysInThreeLanguages_data();
    void entrySaysInThreeLanguages();
    void entryNamesWhatIsThere();
    void descriptionIsValid();
    void descriptionNamesTheVersion();
    void iconsHaveTheirSizes_data();
    void iconsHaveTheirSizes();
    void projectIsKnownWithoutItsSuffix();
    void anotherSQLiteFileIsNoProject();
    void emptyFileIsKnownByItsSuffix();

private:
    QTemporaryDir m_data;
};

void tst_desktop::initTestCase()
{
    // The desktop's table of types as it would be with ours installed.
    QVERIFY(QDir(m_data.path()).mkpath(QStringLiteral("mime/packages")));
    QVERIFY(
        QFile::copy(Folder + "korvane.xml", m_data.filePath(QStringLiteral("mime/packages/korvane.xml"))));
    QVERIFY2(QFile::copy(QStringLiteral("/usr/share/mime/packages/freedesktop.org.xml"),
                         m_data.filePath(QStringLiteral("mime/packages/freedesktop.org.xml"))),
             "the package shared-mime-info is missing");
    const support::program_result made = support::runProcess(
        QStringLiteral("update-mime-database"), {m_data.filePath(QStringLiteral("mime"))}, {}, {});
    QVERIFY2(made.status == 0, made.errors.constData());
    QVERIFY2(!made.errors.contains("korvane"), made.errors.constData());
    // Before the first use of a QMimeDatabase.
    qputenv("XDG_DATA_HOME", m_data.path().toLocal8Bit());
    qputenv("XDG_DATA_DIRS", m_data.path().toLocal8Bit());
}

void tst_desktop::entryIsValid()
{
    const support::program_result said =
        support::runProcess(QStringLiteral("desktop-file-validate"), {Folder + "korvane.desktop"}, {}, {});
    QCOMPARE(said.output + said.errors, QByteArray());
    QCOMPARE(said.status, 0);
}

void tst_desktop::entrySaysInThreeLanguages_data()
{
    QTest::addColumn<QString>("key");
    for (const char * const key : {"GenericName", "Comment", "Keywords"}) {
        QTest::newRow(key) << QString::fromLatin1(key);
    }
}

void tst_desktop::entrySaysInThreeLanguages()
{
    QFETCH(QString, key);
    const QString entry = QString::fromUtf8(contentOf(Folder + "korvane.desktop"));
    QStringList said;
    for (const char * const language : {"", "[de]", "[fr]"}) {
        const QString begin = QLatin1Char('\n') + key + QLatin1String(language) + QLatin1Char('=');
        QVERIFY2(entry.contains(begin), qPrintable(begin));
        const qsizetype at = entry.indexOf(begin) + begin.size();
        const QString text = entry.mid(at, entry.indexOf(QLatin1Char('\n'), at) - at);
        QVERIFY(!text.isEmpty());
        QVERIFY2(!said.contains(text), qPrintable(text));
        said << text;
    }
}

void tst_desktop::entryNamesWhatIsThere()
{
    const QByteArray entry = contentOf(Folder + "korvane.desktop");
    QVERIFY(entry.contains("\nExec=korvane %f\n"));
    // The class of the window as the desktop sees it is the program's name.
    QVERIFY(entry.contains("\nStartupWMClass=korvane\n"));
    QVERIFY(entry.contains("\nIcon=korvane\n"));
    QVERIFY(entry.contains("\nMimeType=application/x-korvane-project;\n"));
    QVERIFY(contentOf(Folder + "korvane.xml").contains("type=\"application/x-korvane-project\""));
}

void tst_desktop::descriptionIsValid()
{
    const support::program_result said =
        support::runProcess(QStringLiteral("appstreamcli"),
                            {QStringLiteral("validate"), QStringLiteral("--pedantic"),
                             QStringLiteral("--no-net"), QStringLiteral(KORVANE_METAINFO)},
                            {}, {});
    QVERIFY2(said.status == 0, (said.output + said.errors).constData());
    // It tells of what is only worth a look, too, and calls that a success.
    QVERIFY2(!said.output.contains("I: ") && !said.output.contains("P: "), said.output.constData());
}

void tst_desktop::descriptionNamesTheVersion()
{
    QFile file(QStringLiteral(KORVANE_METAINFO));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&file);
    QString version;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement &&
            reader.name() == QLatin1String("release")) {
            version = reader.attributes().value(QLatin1String("version")).toString();
        }
    }
    QCOMPARE(version, QStringLiteral(KORVANE_TESTED_VERSION));
}

void tst_desktop::iconsHaveTheirSizes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        for (const char * const name : {"apps/korvane", "mimetypes/application-x-korvane-project"}) {
            QTest::addRow("%s at %d", name, size) << QString::fromLatin1(name) << size;
        }
    }
}

void tst_desktop::iconsHaveTheirSizes()
{
    QFETCH(QString, name);
    QFETCH(int, size);
    const QImage icon(QStringLiteral("%1hicolor/%2x%2/%3.png").arg(Folder, QString::number(size), name));
    QCOMPARE(icon.size(), QSize(size, size));
    // Round corners: transparent outside, and something is drawn inside.
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
    QVERIFY(icon.pixelColor(size / 2, size / 2).alpha() > 0);
}

void tst_desktop::projectIsKnownWithoutItsSuffix()
{
    const QString project = m_data.filePath(QStringLiteral("nameless"));
    const support::program_result made = support::runProgram(
        {QStringLiteral("import"), QStringLiteral(KORVANE_SOURCE_DIR "/samples/festival.json"),
         project + QStringLiteral(".korv")});
    QVERIFY2(made.status == 0, made.errors.constData());
    QVERIFY(QFile::rename(project + QStringLiteral(".korv"), project));
    QCOMPARE(QMimeDatabase().mimeTypeForFile(project).name(),
             QStringLiteral("application/x-korvane-project"));
    QCOMPARE(QMimeDatabase().mimeTypeForFile(project).comment(), QStringLiteral("Korvane project"));
    QCOMPARE(QMimeDatabase().mimeTypeForFile(project).iconName(),
             QStringLiteral("application-x-korvane-project"));
}

void tst_desktop::anotherSQLiteFileIsNoProject()
{
    const QString other = m_data.filePath(QStringLiteral("other"));
    const support::program_result made = support::runProcess(
        QStringLiteral("sqlite3"),
        {other, QStringLiteral("PRAGMA application_id = 17; CREATE TABLE t (id INTEGER)")}, {}, {});
    QVERIFY2(made.status == 0, made.errors.constData());
    QCOMPARE(QMimeDatabase().mimeTypeForFile(other).name(), QStringLiteral("application/vnd.sqlite3"));
}

void tst_desktop::emptyFileIsKnownByItsSuffix()
{
    QFile file(m_data.filePath(QStringLiteral("shop.korv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(QMimeDatabase().mimeTypeForFile(file.fileName(), QMimeDatabase::MatchExtension).name(),
             QStringLiteral("application/x-korvane-project"));
}

QTEST_GUILESS_MAIN(tst_desktop)
#include "tst_desktop.moc"
