// What an export says of the scripts that it wrote: a count, and the command that lists what was counted.

#include "support/program.h"
#include "support/project_support.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using support::program_result;
using support::runProgram;

namespace {

// The table is refused everywhere, as its name is a keyword or for a type that is none; so its index is, too.
const QByteArray Ordered = R"({ "format": "korvane-project", "formatVersion": 1, "name": "shop", "entities": [
    { "id": 1, "name": "order", "properties": [
      { "id": 2, "name": "id", "type": "long", "identifier": true },
      { "id": 3, "name": "placed", "type": "QDate", "index": true },
      { "id": 4, "name": "state", "type": "QString", "forceSqlType": "NOTYPE" } ] } ] })";
const QByteArray Purchased =
    R"({ "format": "korvane-project", "formatVersion": 1, "name": "shop", "entities": [
    { "id": 1, "name": "purchase", "properties": [
      { "id": 2, "name": "id", "type": "long", "identifier": true } ] } ] })";

} // namespace

class tst_export_findings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        import(Ordered);
    }

    void countsAndNamesTheCommand_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("line");
        QTest::newRow("full") << QStringList{"--db", "postgresql"}
                              << "2 errors, 0 warnings, 0 notes; list them with: korvane check % --db "
                                 "postgresql";
        QTest::newRow("long names") << QStringList{"--KorvGenericDDLExport_db_type=2",
                                                   "--KorvGenericDDLExport_relation_as_fk=1"}
                                    << "0 errors, 2 warnings, 0 notes; list them with: korvane check % --db "
                                       "mysql --relationships yes";
        QTest::newRow("mariadb") << QStringList{"--db", "mariadb"}
                                 << "2 errors, 0 warnings, 0 notes; list them with: korvane check % --db "
                                    "mariadb";
    }
    void countsAndNamesTheCommand()
    {
        QFETCH(const QStringList, options);
        QFETCH(QString, line);
        const program_result bare = exported(QStringList{"--no-check", "--path", "bare"} + options);
        QCOMPARE(bare.errors, QByteArray());
        program_result result = exported(QStringList{"--path", "sql"} + options);
        QCOMPARE(result.status, 0);
        QCOMPARE(QString::fromUtf8(result.errors),
                 "Findings about these scripts: " + line.replace('%', project()) + "\n");
        QCOMPARE(result.output.replace("/sql/", "/bare/"), bare.output);
        const QStringList scripts = QDir(path("sql")).entryList(QDir::Files);
        QCOMPARE(scripts.size(), 1);
        QCOMPARE(support::bytesOf(path("sql/" + scripts.front())),
                 support::bytesOf(path("bare/" + scripts.front())));
    }

    void saysNothingWithoutFindings()
    {
        import(Purchased);
        const program_result result = exported({"--path", "sql", "--db", "postgresql"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QByteArray());
    }

    void theCommandListsWhatWasCounted()
    {
        const QString other = path("the shop's.korv");
        QVERIFY(QFile::copy(project(), other));
        QCOMPARE(runProgram({"tag", other}).status, 0);
        const program_result result =
            runProgram({"export", other, "-y", "--path", "sql", "--db", "postgresql", "--schema", "both"});
        QCOMPARE(result.status, 0);
        const QString line = QString::fromUtf8(result.errors.trimmed());
        const QString command = "korvane check " +
                                path("the shop's.korv").replace("'", "'\\''").prepend('\'') +
                                "' --db postgresql --all";
        QCOMPARE(line,
                 "Findings about these scripts: 4 errors, 0 warnings, 0 notes; list them with: " + command);
        QString pasted = command;
        pasted.replace(0, QLatin1String("korvane").size(), QStringLiteral(KORVANE_PROGRAM));
        const program_result listed = support::runShell(pasted, {});
        QCOMPARE(listed.status, 3);
        QVERIFY(listed.output.endsWith("\n4 errors, 0 warnings, 0 notes\n"));
    }

    void judgesOnlyWhatWasWritten()
    {
        QCOMPARE(runProgram({"tag", project()}).status, 0);
        import(Purchased);
        // The state is as it should be; the history begins with a table that is refused.
        QCOMPARE(exported({"--path", "sql", "--db", "postgresql"}).errors, QByteArray());
        const program_result history =
            exported({"--path", "sql", "--db", "postgresql", "--schema", "evolution"});
        QVERIFY2(history.errors.startsWith("Findings about these scripts: "), history.errors.constData());
        QVERIFY(history.errors.endsWith("--db postgresql --all\n"));
    }

    void acceptedOnesAreNotCounted()
    {
        QVERIFY(support::writeBytes(
            path("korvane-check.json"),
            R"({ "accept": [ { "code": "KV101", "entity": 1, "why": "the table is made by hand" } ] })"));
        const program_result result = exported({"--path", "sql", "--db", "postgresql"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QByteArray());
    }

    void aFailingCheckFailsNoExport()
    {
        QVERIFY(support::writeBytes(path("korvane-check.json"), "{ \"accept\": 3 }"));
        const program_result result = exported({"--path", "sql", "--db", "postgresql"});
        QCOMPARE(result.status, 0);
        QVERIFY2(result.errors.startsWith("Judged are 0 of 1 script: "), result.errors.constData());
        QCOMPARE(result.errors.count('\n'), 1);
        QVERIFY(QFile::exists(path("sql/shop_postgresql_db_schema_full.sql")));
    }

    void isInTheHelp() { QVERIFY(runProgram({"export", "--help"}).output.contains("--no-check")); }

private:
    QString path(const QString & name) const { return m_folder->filePath(name); }
    QString project() const { return path("shop.korv"); }
    void import(const QByteArray & text) const
    {
        QVERIFY(support::writeBytes(path("shop.json"), text));
        QCOMPARE(runProgram({"import", path("shop.json"), project()}).status, 0);
    }
    program_result exported(const QStringList & options) const
    {
        return runProgram(QStringList{"export", project(), "-y"} + options);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_export_findings)

#include "tst_export_findings.moc"
