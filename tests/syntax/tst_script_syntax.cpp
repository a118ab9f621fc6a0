// Reads the scripts of real models with a parser of another maker.
//
// Built once for each parser: KORVANE_CHECKER is the function that gives it, KORVANE_DATABASE the number of
// its database.

#include "syntax/syntax_checker.h"

#include "support/models.h"
#include "support/program.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

using support::modelText;
using support::program_result;
using support::runProgram;
using syntax::syntax_error;

namespace {

/// Two versions with the statements that the other models do not need.
const char * const WorkshopModels[] = {
    R"({"format": "korvane-project", "formatVersion": 1, "name": "workshop", "entities": [
        {"id": 1, "name": "room", "properties": [
            {"id": 10, "name": "key", "columnName": "house|door", "type": ["QString", "int"], "identifier": true},
            {"id": 11, "name": "label", "type": "QString", "index": true}]},
        {"id": 2, "name": "course", "properties": [
            {"id": 20, "name": "id", "type": "long", "identifier": true},
            {"id": 21, "name": "room", "columnName": "house|door", "relationship": {"id": 50, "type": "many-to-one", "target": 1}},
            {"id": 22, "name": "seats", "type": "int"}]},
        {"id": 3, "name": "old", "properties": [{"id": 30, "name": "id", "type": "long", "identifier": true}]}]})",
    R"({"format": "korvane-project", "formatVersion": 1, "name": "workshop", "entities": [
        {"id": 1, "name": "hall", "version": 2, "properties": [
            {"id": 10, "name": "key", "columnName": "house|door", "type": ["QString", "int"], "identifier": true},
            {"id": 11, "name": "label", "type": "QString"}]},
        {"id": 2, "name": "course", "version": 2, "properties": [
            {"id": 20, "name": "id", "type": "long", "identifier": true},
            {"id": 22, "name": "places", "type": "int"},
            {"id": 23, "name": "title", "type": "QString", "allowNull": false, "unique": true},
            {"id": 24, "name": "fee", "type": "double"},
            {"id": 25, "name": "hall", "columnName": "hall_house|hall_door", "relationship": {"id": 52, "type": "many-to-one", "target": 1}}]},
        {"id": 4, "name": "note", "properties": [
            {"id": 40, "name": "code", "type": "QString", "identifier": true},
            {"id": 41, "name": "description", "type": "QString"},
            {"id": 42, "name": "course", "columnName": "course_id", "relationship": {"id": 51, "type": "many-to-one", "target": 2}}]}]})"};

/// The versions of a model, oldest first; empty when they are not there.
QList<QByteArray> versionsOf(const QString & model)
{
    QList<QByteArray> versions;
    if (model == QStringLiteral("workshop")) {
        return {WorkshopModels[0], WorkshopModels[1]};
    }
    if (model == QStringLiteral("festival")) {
        versions = {modelText(QStringLiteral("festival_v1")), modelText(QStringLiteral("festival_v2")),
                    modelText(QStringLiteral("festival_v3"))};
    }
    versions.append(modelText(model));
    return versions.contains(QByteArray()) ? QList<QByteArray>() : versions;
}

QString contentOf(const QString & name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class tst_script_syntax : public QObject
{
    Q_OBJECT

private:
    QString write(const QString & name, const QString & text) const
    {
        const QByteArray bytes = text.toUtf8();
        QFile file(m_dir.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return file.fileName();
    }
    /// One file for each text.
    [[nodiscard]] QStringList writeAll(const QString & prefix, const QStringList & texts) const
    {
        QStringList files;
        for (const QString & text : texts) {
            files.append(write(prefix + QStringLiteral("_%1.sql").arg(files.size()), text));
        }
        return files;
    }
    static void korvane(const QStringList & arguments)
    {
        if (const program_result result = runProgram(arguments); result.status != 0) {
            qFatal("%s", result.errors.constData());
        }
    }
    /// The scripts, full and evolution, of a model's versions.
    [[nodiscard]] QStringList scriptsOf(const QString & model, bool relationships) const;
    void collectScripts();
    void collectWrongTexts();
    void verifyRejected(const QStringList & files) const;

    QTemporaryDir m_dir;
    std::unique_ptr<syntax::syntax_checker> m_checker;
    QHash<QString, QStringList> m_scripts; // files by model
    QStringList m_statements;              // wrong ones
    QStringList m_scriptsWithWrongEnd;
    QList<QStringList> m_misjudged;       // one list for each kind
    QHash<QString, QStringList> m_errors; // by file

private Q_SLOTS:
    void initTestCase();
    void wrongStatementsAreRejected();
    void scriptsAreReadToTheEnd();
    void scripts_data();
    void scripts();
    void misjudgedStatementsAreStillRejected();
};

QStringList tst_script_syntax::scriptsOf(const QString & model, bool relationships) const
{
    const QString name = model + QLatin1Char(relationships ? '1' : '0');
    const QString project = m_dir.filePath(name + QStringLiteral(".korv"));
    const QList<QByteArray> versions = versionsOf(model);
    for (qsizetype i = 0; i < versions.size(); ++i) {
        if (i > 0) {
            korvane({QStringLiteral("tag"), project});
        }
        korvane({QStringLiteral("import"),
                 write(QStringLiteral("model.json"), QString::fromUtf8(versions.at(i))), project});
    }
    const QDir folder(m_dir.filePath(name));
    korvane({QStringLiteral("export"), project, QStringLiteral("-y"),
             QStringLiteral("--KorvGenericDDLExport_path=") + folder.path(),
             QStringLiteral("--KorvGenericDDLExport_db_type=" KORVANE_DATABASE),
             QStringLiteral("--KorvGenericDDLExport_schema_type=2"),
             QStringLiteral("--KorvGenericDDLExport_relation_as_fk=%1").arg(relationships ? 1 : 0)});
    QStringList texts;
    for (const QString & file : folder.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
        texts.append(contentOf(folder.filePath(file)));
    }
    return texts;
}

/// The statements that the parser is known to misjudge go into files of their own, replacements into the
/// scripts.
void tst_script_syntax::collectScripts()
{
    const QList<syntax::misjudgement> kinds = m_checker->misjudgements();
    QList<QStringList> misjudged(kinds.size());
    for (const char * const name : {"workshop", "festival", "chinook", "sakila"}) {
        const QString model = QString::fromLatin1(name);
        if (versionsOf(model).isEmpty()) {
            continue;
        }
        QStringList texts = scriptsOf(model, false) + scriptsOf(model, true);
        for (QString & text : texts) {
            for (qsizetype i = 0; i < kinds.size(); ++i) {
                const QRegularExpression & statement = kinds.at(i).statement;
                QRegularExpressionMatchIterator matches = statement.globalMatch(text);
                while (matches.hasNext()) {
                    misjudged[i].append(matches.next().captured() + QLatin1Char('\n'));
                }
                text.replace(statement, kinds.at(i).replacement);
            }
        }
        m_scripts.insert(model, writeAll(model, texts));
    }
    for (QStringList & statements : misjudged) {
        statements.removeDuplicates();
        m_misjudged.append(writeAll(QStringLiteral("misjudged_%1").arg(m_misjudged.size()), statements));
    }
}

void tst_script_syntax::collectWrongTexts()
{
    const QStringList statements = m_checker->wrongStatements();
    m_statements = writeAll(QStringLiteral("wrong"), statements);
    QStringList texts;
    for (const QString & file : m_scripts.value(QStringLiteral("workshop"))) {
        texts.append(contentOf(file) + statements.constFirst() + QLatin1Char('\n'));
    }
    m_scriptsWithWrongEnd = writeAll(QStringLiteral("wrong_end"), texts);
}

void tst_script_syntax::verifyRejected(const QStringList & files) const
{
    QVERIFY(!files.isEmpty());
    for (const QString & file : files) {
        QVERIFY2(m_errors.contains(file), qPrintable(QStringLiteral("taken: ") + contentOf(file)));
    }
}

// The parsers take seconds to start and to warm up: one call for everything.
void tst_script_syntax::initTestCase()
{
    QString why;
    m_checker = syntax::KORVANE_CHECKER(why);
    if (!m_checker) {
        QSKIP(qPrintable(why));
    }
    collectScripts();
    collectWrongTexts();
    QStringList files = m_statements + m_scriptsWithWrongEnd;
    for (const QStringList & more : m_scripts.values() + m_misjudged) {
        files += more;
    }
    QList<syntax_error> errors;
    QVERIFY2(m_checker->check(files, errors, why), qPrintable(why));
    for (const syntax_error & error : errors) {
        const QString line = contentOf(error.file).split(QLatin1Char('\n')).value(error.line - 1);
        m_errors[error.file].append(error.text + QStringLiteral("\n    ") + line);
    }
}

void tst_script_syntax::wrongStatementsAreRejected()
{
    verifyRejected(m_statements);
}

void tst_script_syntax::scriptsAreReadToTheEnd()
{
    verifyRejected(m_scriptsWithWrongEnd);
}

void tst_script_syntax::scripts_data()
{
    QTest::addColumn<qsizetype>("count");
    QTest::newRow("workshop") << qsizetype(2 * 3);
    QTest::newRow("festival") << qsizetype(2 * 5);
    QTest::newRow("chinook") << qsizetype(2);
    QTest::newRow("sakila") << qsizetype(2);
}

void tst_script_syntax::scripts()
{
    QFETCH(qsizetype, count);
    const QString model = QString::fromLatin1(QTest::currentDataTag());
    if (!m_scripts.contains(model)) {
        QSKIP(support::NoPublicModels);
    }
    const QStringList files = m_scripts.value(model);
    QCOMPARE(files.size(), count);
    for (const QString & file : files) {
        QVERIFY(contentOf(file).contains(QLatin1Char(';')));
        QVERIFY2(!m_errors.contains(file), qPrintable(m_errors.value(file).join(QLatin1Char('\n'))));
    }
}

void tst_script_syntax::misjudgedStatementsAreStillRejected()
{
    for (const QStringList & files : std::as_const(m_misjudged)) {
        verifyRejected(files);
    }
}

QTEST_GUILESS_MAIN(tst_script_syntax)
#include "tst_script_syntax.moc"
