// The folder that the command document writes into: what is replaced and removed there, and what never is.

#include "support/full_disk.h"
#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>

using support::bytesOf;
using support::program_result;
using support::runProgram;
using support::textOf;
using support::writeBytes;

namespace {

const char * const Note =
    "{'id': 1, 'name': 'note', 'properties': [{'id': 10, 'name': 'id', 'type': 'long', 'identifier': true}]}";
const char * const Page =
    "{'id': 2, 'name': 'page', 'properties': [{'id': 20, 'name': 'id', 'type': 'long', 'identifier': true},"
    "{'id': 21, 'name': 'note', 'relationship': {'id': 1, 'type': 'many-to-one', 'target': 1}}]}";

const char * const Other = "{'id': 3, 'name': 'other', 'properties': [{'id': 30, 'name': 'id', 'type': "
                           "'long', 'identifier': true}]}";

/// All files of a folder with what they hold.
QMap<QString, QByteArray> contentsOf(const QString & folder)
{
    QMap<QString, QByteArray> contents;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); it.hasNext();) {
        const QString file = it.next();
        contents.insert(file.mid(folder.size() + 1), bytesOf(file));
    }
    return contents;
}

} // namespace

class tst_document_folder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_site = m_folder->filePath("site");
    }

    void folderIsMade()
    {
        m_site = m_folder->filePath("a/b/c");
        QCOMPARE(document(Note).status, 0);
        QVERIFY(QFile::exists(file("index.html")));
    }
    void pagesAreReplacedAndRemoved()
    {
        QCOMPARE(document(QByteArray(Note) + ',' + Page).status, 0);
        QVERIFY(QFile::exists(file("entity-2.html")));
        QVERIFY(bytesOf(file("korvane-pages.txt")).contains("\nentity-2.html\n"));
        QVERIFY(writeBytes(file("style.css"), "body { color: red; }"));
        QCOMPARE(document(Note).status, 0);
        QVERIFY(!QFile::exists(file("entity-2.html")));
        QVERIFY(!bytesOf(file("korvane-pages.txt")).contains("entity-2.html"));
        QVERIFY(bytesOf(file("style.css")).contains("prefers-color-scheme"));
    }
    void otherFilesStay()
    {
        QVERIFY(QDir().mkpath(m_site + "/images"));
        QVERIFY(writeBytes(file("CNAME"), "docs.example"));
        QVERIFY(writeBytes(file("entity-7.html"), "mine"));
        QVERIFY(writeBytes(file("images/logo.svg"), "<svg/>"));
        QCOMPARE(document(Note).status, 0);
        QCOMPARE(document(Other).status, 0);
        QCOMPARE(bytesOf(file("CNAME")), QByteArray("docs.example"));
        QCOMPARE(bytesOf(file("entity-7.html")), QByteArray("mine"));
        QCOMPARE(bytesOf(file("images/logo.svg")), QByteArray("<svg/>"));
    }
    void noFileOfOthersIsReplaced()
    {
        QVERIFY(QDir().mkpath(m_site));
        QVERIFY(writeBytes(file("index.html"), "mine"));
        const program_result result = document(Note);
        QCOMPARE(result.errors, QByteArray("FOLDER/site/index.html: is no page that this command wrote, so "
                                           "nothing was written; choose another folder, or take the file "
                                           "away\n"));
        QCOMPARE(result.status, 1);
        QCOMPARE(QDir(m_site).entryList(QDir::Files), QStringList("index.html"));
        QCOMPARE(bytesOf(file("index.html")), QByteArray("mine"));
    }
    void aLinkIsNotFollowed()
    {
        QCOMPARE(document(Note).status, 0);
        const QString other = m_folder->filePath("other.html");
        QVERIFY(writeBytes(other, "mine"));
        QVERIFY(QFile::remove(file("index.html")));
        QVERIFY(QFile::link(other, file("index.html")));
        QCOMPARE(document(Note).status, 1);
        QCOMPARE(bytesOf(other), QByteArray("mine"));
        // Nor is one that would be removed.
        QVERIFY(QFile::remove(file("index.html")));
        QVERIFY(QFile::remove(file("entity-1.html")));
        QVERIFY(QFile::link(other, file("entity-1.html")));
        QCOMPARE(document(Other).status, 0);
        QCOMPARE(bytesOf(other), QByteArray("mine"));
        QVERIFY(QFileInfo(file("entity-1.html")).isSymLink());
    }
    void aListFromElsewhere()
    {
        QCOMPARE(document(Note).status, 0);
        const QByteArray list = bytesOf(file("korvane-pages.txt"));
        QVERIFY(writeBytes(m_folder->filePath("outside.html"), "mine"));
        QVERIFY(QDir().mkpath(m_site + "/sub"));
        QVERIFY(writeBytes(file("sub/inside.html"), "mine"));
        QVERIFY(writeBytes(file("Notes.html"), "mine"));
        QVERIFY(writeBytes(file("korvane-pages.txt"),
                           list + "../outside.html\nsub/inside.html\nNotes.html\nsub\n"));
        QCOMPARE(document(Other).status, 0);
        QCOMPARE(bytesOf(m_folder->filePath("outside.html")), QByteArray("mine"));
        QCOMPARE(bytesOf(file("sub/inside.html")), QByteArray("mine"));
        QCOMPARE(bytesOf(file("Notes.html")), QByteArray("mine"));
        QVERIFY(!QFile::exists(file("entity-1.html")));

        QVERIFY(writeBytes(file("korvane-pages.txt"), "shopping\n"));
        QCOMPARE(document(Note).errors,
                 QByteArray("FOLDER/site/korvane-pages.txt: is not the list of pages that this command "
                            "keeps; choose another folder, or take the file away\n"));
    }
    void aFolderInThePlaceOfAFile()
    {
        QVERIFY(QDir().mkpath(m_site + "/korvane-pages.txt"));
        const program_result list = document(Note);
        QCOMPARE(list.errors, QByteArray("FOLDER/site/korvane-pages.txt: is not the list of pages that this "
                                         "command keeps; choose another folder, or take the file away\n"));
        QCOMPARE(list.status, 1);
        QVERIFY(QDir(m_site).rmdir("korvane-pages.txt"));
        QCOMPARE(document(Note).status, 0);
        QVERIFY(QFile::remove(file("entity-1.html")));
        QVERIFY(QDir(m_site).mkdir("entity-1.html"));
        QCOMPARE(document(Note).errors,
                 QByteArray("FOLDER/site/entity-1.html: is no page that this command wrote, "
                            "so nothing was written; choose another folder, or take the "
                            "file away\n"));
        // One that would be removed stays as well.
        QCOMPARE(document(Other).status, 0);
        QVERIFY(QFileInfo(file("entity-1.html")).isDir());
    }
    void sameModelSameBytes()
    {
        const QByteArray entities = QByteArray(Note) + ',' + Page;
        QCOMPARE(document(entities).status, 0);
        const QMap<QString, QByteArray> first = contentsOf(m_site);
        m_site = m_folder->filePath("elsewhere");
        QCOMPARE(
            document(entities, {{"LC_ALL", "de_DE.UTF-8"}, {"TZ", "Asia/Tokyo"}, {"LANGUAGE", "de"}}).status,
            0);
        QCOMPARE(contentsOf(m_site), first);
        QVERIFY(!first.isEmpty());
        for (const QByteArray & bytes : first) {
            QVERIFY(!bytes.contains(m_folder->path().toUtf8()));
        }
    }
    void whatCannotBeWritten()
    {
        QVERIFY(writeBytes(m_site, "a file"));
        QCOMPARE(document(Note).errors,
                 QByteArray("FOLDER/site: the folder cannot be made (Not a directory)\n"));
        QCOMPARE(bytesOf(m_site), QByteArray("a file"));
        m_site = QStringLiteral("/proc/korvane");
        const program_result result = document(Note);
        QCOMPARE(result.errors,
                 QByteArray("/proc/korvane: the folder cannot be made (No such file or directory)\n"));
        QCOMPARE(result.status, 1);
    }
    void fullDisk()
    {
        const support::full_disk disk(3000);
        const program_result result = document(Note);
        QCOMPARE(result.status, 1);
        QCOMPARE(result.output, QByteArray());
        QCOMPARE(result.errors, QByteArray("FOLDER/site/search.js: cannot be written (File too large)\n"));
        // What was written until then is ours at the next try.
        QVERIFY(bytesOf(file("korvane-pages.txt")).contains("\nsearch.js\n"));
    }
    void afterAnEndInTheMiddle()
    {
        {
            const support::full_disk disk(3000);
            QCOMPARE(document(Note).status, 1);
        }
        QCOMPARE(document(Other).status, 0);
        QVERIFY(!QFile::exists(file("entity-1.html")));
        QVERIFY(QFile::exists(file("entity-3.html")));
    }
    void withoutGraphviz()
    {
        const program_result result = document(QByteArray(Note) + ',' + Page, {{"PATH", m_folder->path()}});
        QCOMPARE(result.errors, QByteArray("Graphviz (dot) is not installed; install Graphviz for a layout. "
                                           "The entities are arranged in a grid\n"));
        QCOMPARE(result.status, 0);
        QCOMPARE(bytesOf(file("diagram.svg")).count("<g class=\"box\">"), 2);
    }
    void tooManyForOnePicture()
    {
        QByteArrayList entities;
        for (int i = 1; i <= 201; ++i) {
            entities << QByteArray(Note)
                            .replace("'id': 10", "'id': " + QByteArray::number(1000 + i))
                            .replace("'id': 1,", "'id': " + QByteArray::number(i) + ',');
        }
        QCOMPARE(document(entities.mid(0, 200).join(',')).errors, QByteArray());
        QVERIFY(QFile::exists(file("diagram.html")));
        QCOMPARE(
            document(entities.join(',')).errors,
            QByteArray("There is no diagram of all entities, since more than 200 make no picture; the page "
                       "of each shows what it is related to\n"));
        QVERIFY(!QFile::exists(file("diagram.html")));
        QVERIFY(!QFile::exists(file("diagram.svg")));
        QVERIFY(!bytesOf(file("index.html")).contains("diagram"));
        QVERIFY(QFile::exists(file("entity-201.html")));
    }
    void wrongCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("told");
        QTest::newRow("no folder") << QStringList{"document", "x.korv"} << 2
                                   << QByteArray("-o is missing: name the folder for the pages");
        QTest::newRow("no such database")
            << QStringList{"document", "x.korv", "-o", "site", "--db", "postgres"} << 2
            << QByteArray("'postgres' is not a database; they are generic, sqlite, mysql, mariadb, "
                          "postgresql, oracle, mssqlserver, all (did you mean postgresql?)");
        QTest::newRow("no such source") << QStringList{"document", "/nowhere/x.korv", "-o", "/nowhere/site"}
                                        << 1 << QByteArray("/nowhere/x.korv: does not exist; check the name");
    }
    void wrongCommandLines()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QByteArray, told);
        const program_result result = runProgram(arguments);
        QTEST(result.status, "status");
        QCOMPARE(result.errors, told + '\n');
    }

private:
    QString file(const char * name) const { return m_site + QLatin1Char('/') + QLatin1String(name); }

    /// Documents a text with these entities; the folder of the test is called FOLDER in what is told.
    program_result document(const QByteArray & entities,
                            const QHash<QString, QString> & environment = {}) const
    {
        const QByteArray text = textOf(QByteArray(entities).replace('\'', '"'));
        program_result result = runProgram({"document", "-", "-o", m_site}, environment, text);
        result.errors.replace(m_folder->path().toUtf8(), "FOLDER");
        return result;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_site;
};

QTEST_GUILESS_MAIN(tst_document_folder)
#include "tst_document_folder.moc"
