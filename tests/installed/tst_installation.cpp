// What is installed: the files of one list and no others, a program that finds its parts there, and what
// others build plug-ins with.

#include "installed/installed_tree.h"
#include "support/program.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using support::program_result;
using support::runProcess;

namespace {

/// The files below `folder`, with what differs between machines called by the words of the list.
QStringList filesIn(const QString & folder)
{
    QStringList names;
    QDirIterator files(folder, QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QString name = QDir(folder).relativeFilePath(files.next());
        const QString libraries = QStringLiteral(KORVANE_LIBRARIES "/");
        if (name.startsWith(libraries)) {
            name.replace(0, libraries.size(), QStringLiteral("LIB/"));
        }
        static const QRegularExpression build(QStringLiteral("Targets-\\w+\\.cmake$"));
        name.replace(build, QStringLiteral("Targets-BUILD.cmake"));
        name.replace(QStringLiteral("zsh/site-functions/"), QStringLiteral("zsh/ZSH/"));
        names << name;
    }
    names.sort();
    return names;
}

QStringList listedFiles()
{
    QFile list(QStringLiteral(KORVANE_SOURCE_DIR "/cmake/installed_files.txt"));
    QStringList names;
    if (list.open(QIODevice::ReadOnly)) {
        names = QString::fromUtf8(list.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const QString & line) { return line.startsWith(QLatin1Char('#')); }),
                names.end());
    names.sort();
    return names;
}

QByteArray contentOf(const QString & name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

} // namespace

class tst_installation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void listedFilesAreThere();
    void programFindsItsParts();
    void samplePluginIsBuiltAndWrites();
    void pluginOfAnotherInterfaceIsRefused();

private:
    [[nodiscard]] QString path(const QString & name = QString()) const { return m_tree.path(name); }
    [[nodiscard]] program_result korvane(const QStringList & arguments, const QString & plugins = {}) const;

    support::installed_tree m_tree;
    QTemporaryDir m_work;
};

void tst_installation::initTestCase()
{
    const program_result installed = m_tree.install();
    QVERIFY2(installed.status == 0, installed.errors.constData());
}

program_result tst_installation::korvane(const QStringList & arguments, const QString & plugins) const
{
    return runProcess(path(QStringLiteral("bin/korvane")), arguments,
                      {{QStringLiteral("KORVANE_PLUGIN_PATH"), plugins}}, {});
}

void tst_installation::listedFilesAreThere()
{
    const QStringList there = filesIn(path());
    const QStringList listed = listedFiles();
    QStringList missing;
    QStringList unlisted;
    for (const QString & name : listed) {
        if (!there.contains(name)) {
            missing << name;
        }
    }
    for (const QString & name : there) {
        if (!listed.contains(name)) {
            unlisted << name;
        }
    }
    QCOMPARE(missing, QStringList());
    QCOMPARE(unlisted, QStringList());
}

void tst_installation::programFindsItsParts()
{
    const program_result plugins = korvane({QStringLiteral("plugins")});
    QCOMPARE(plugins.errors, QByteArray());
    QVERIFY2(plugins.output.contains(
                 "File: " +
                 path(QStringLiteral(KORVANE_LIBRARIES "/korvane/plugins/KorvGenericDDLExport.so")).toUtf8()),
             plugins.output.constData());
}

void tst_installation::samplePluginIsBuiltAndWrites()
{
    const QString folder = m_work.filePath(QStringLiteral("dictionary"));
    const program_result built = m_tree.buildSamplePlugin(folder);
    QVERIFY2(built.status == 0, (built.output + built.errors).constData());

    QFile text(m_work.filePath(QStringLiteral("shop.json")));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write(R"({"format": "korvane-project", "formatVersion": 1, "name": "shop",
        "enumerations": [ {"id": 3, "name": "colour", "values": [ {"name": "red", "value": 0}, {"name": "green", "value": 1} ]} ],
        "entities": [
          {"id": 1, "name": "customer", "tableName": "t_customer", "properties": [
            {"id": 11, "name": "id", "type": "long", "identifier": true},
            {"id": 12, "name": "full_name", "columnName": "name", "type": "QString", "allowNull": false, "index": true},
            {"id": 13, "name": "mail", "columnName": "mail|host", "type": "QString|QString", "unique": true},
            {"id": 14, "name": "likes", "enumeration": 3},
            {"id": 15, "name": "age", "type": "int", "transient": true},
            {"id": 16, "name": "orders", "relationship": {"id": 31, "type": "one-to-many", "target": 2, "inverse": 22}} ]},
          {"id": 2, "name": "order", "tableName": "t_order", "properties": [
            {"id": 21, "name": "id", "type": "long", "identifier": true},
            {"id": 22, "name": "by", "columnName": "customer_id", "relationship": {"id": 32, "type": "many-to-one", "target": 1, "inverse": 16}} ]} ]})");
    text.close();
    const QString project = m_work.filePath(QStringLiteral("shop.korv"));
    const program_result imported = korvane({QStringLiteral("import"), text.fileName(), project});
    QVERIFY2(imported.status == 0, imported.errors.constData());

    const program_result listed = korvane({QStringLiteral("plugins")}, folder);
    QVERIFY2(listed.output.contains("MarkdownDictionary 1.0.0\n  Export a data dictionary\n"),
             listed.output.constData());
    const program_result exported = korvane(
        {QStringLiteral("export"), project, QStringLiteral("--plugin"), QStringLiteral("MarkdownDictionary")},
        folder);
    QVERIFY2(exported.status == 0, exported.errors.constData());
    const QByteArray page = R"(# shop

## customer

Table `t_customer`

| property | column | type | |
| --- | --- | --- | --- |
| id | id | long | key |
| full_name | name | QString | not null, indexed |
| mail | mail, host | QString\|QString | unique |
| likes | likes | colour |  |
| age |  | int | not stored |
| orders |  | many [order](#order) |  |

## order

Table `t_order`

| property | column | type | |
| --- | --- | --- | --- |
| id | id | long | key |
| by | customer_id | [customer](#customer) |  |

## Enumerations

| name | values |
| --- | --- |
| colour | `red`, `green` |
)";
    QCOMPARE(QString::fromUtf8(contentOf(m_work.filePath(QStringLiteral("shop.md")))),
             QString::fromUtf8(page));

    const QString elsewhere = m_work.filePath(QStringLiteral("elsewhere.md"));
    const program_result again = korvane({QStringLiteral("export"), project, QStringLiteral("--plugin"),
                                          QStringLiteral("MarkdownDictionary"),
                                          QStringLiteral("--MarkdownDictionary_file=") + elsewhere},
                                         folder);
    QVERIFY2(again.status == 0, again.errors.constData());
    QCOMPARE(contentOf(elsewhere), page);
}

void tst_installation::pluginOfAnotherInterfaceIsRefused()
{
    // The same sources, with the headers of a later interface.
    const QString source = m_work.filePath(QStringLiteral("later"));
    QVERIFY(QDir().mkpath(source));
    for (const char * const name : {"CMakeLists.txt", "markdown_dictionary.cpp", "markdown_dictionary.h"}) {
        QVERIFY(QFile::copy(path(QStringLiteral("share/korvane/samples/plugin/") + QLatin1String(name)),
                            source + QLatin1Char('/') + QLatin1String(name)));
    }
    QFile header(source + QStringLiteral("/markdown_dictionary.h"));
    QVERIFY(header.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    const QByteArray changed =
        contentOf(header.fileName()).replace("(IID KORVANE_PLUGIN_IID)", "(IID \"KorvanePlugin/2\")");
    QVERIFY(header.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(header.write(changed), changed.size());
    header.close();
    const QString folder = m_work.filePath(QStringLiteral("later_build"));
    const program_result built = m_tree.build(source, folder);
    QVERIFY2(built.status == 0, (built.output + built.errors).constData());

    const QString file = folder + QStringLiteral("/MarkdownDictionary.so");
    const program_result refused =
        korvane({QStringLiteral("export"), m_work.filePath(QStringLiteral("shop.korv")),
                 QStringLiteral("--plugin"), file});
    QCOMPARE(refused.status, 1);
    QCOMPARE(QString::fromUtf8(refused.errors),
             file + QStringLiteral(": the plugin was built for version 2 of the plugin interface, and this "
                                   "program has version 1; "
                                   "take the plugin that belongs to this program, or build it anew\n"));
}

QTEST_GUILESS_MAIN(tst_installation)
#include "tst_installation.moc"
