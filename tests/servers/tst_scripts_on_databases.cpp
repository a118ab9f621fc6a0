// Runs the scripts of real models on real databases, statement by statement, and reads the catalogue back.
//
// Built once for each database: KORVANE_TARGET is the function that starts it, KORVANE_DATABASE its number.

#include "database/server/target_database.h"
#include "servers/catalogue_lines.h"
#include "servers/expected_catalogue.h"
#include "servers/model_history.h"
#include "servers/refusals.h"

#include "plugin/builder/databases.h"
#include "plugin/ddl_export.h"

#include "support/models.h"
#include "support/stored_project.h"

#include "storage/history.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using plugin::ddl_export;
using support::modelText;

namespace {

constexpr auto Database = static_cast<ddl_export::database_type>(KORVANE_DATABASE);

/// The statements of a script: one a line, comments and empty lines left out.
QStringList statementsOf(const QString & script)
{
    QStringList statements;
    for (const QString & line : script.split(QLatin1Char('\n'))) {
        if (!line.isEmpty() && !line.startsWith(QStringLiteral("--"))) {
            statements.append(line);
        }
    }
    return statements;
}

/// Catalogue lines without the names of indexes and foreign keys: they keep the name of the table they were
/// made for when it is renamed.
QStringList withoutConstraintNames(QStringList lines)
{
    static const QRegularExpression name(QStringLiteral("^(index|foreign) \\S+ "));
    lines.replaceInStrings(name, QStringLiteral("\\1 "));
    lines.sort();
    return lines;
}

QString rowName(const char * model, bool relationships)
{
    return QStringLiteral("%1, %2 relationships")
        .arg(QLatin1String(model), QLatin1String(relationships ? "with" : "without"));
}

QString difference(const QStringList & actual, const QStringList & expected)
{
    QStringList text;
    for (const QString & line : expected) {
        if (!actual.contains(line)) {
            text.append(QStringLiteral("missing: ") + line);
        }
    }
    for (const QString & line : actual) {
        if (!expected.contains(line)) {
            text.append(QStringLiteral("too much: ") + line);
        }
    }
    return text.join(QLatin1Char('\n'));
}

} // namespace

class tst_scripts_on_databases : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fullScript_data();
    void fullScript();
    void evolutionChain_data();
    void evolutionChain();
    void refusals_data();
    void refusals();

private:
    [[nodiscard]] QString exportTo(support::stored_project & stored, bool relationships,
                                   ddl_export::export_db_schema schema) const;
    /// The script of the only version, or those that lead from the first version to the last one.
    [[nodiscard]] QStringList scriptsOf(const QStringList & versions, bool relationships) const;
    /// Runs a script in the database as it is; the refused statements, each with the database's words.
    [[nodiscard]] QStringList run(const QString & script) const;
    void runOnEmpty(const QString & script) const;

    std::unique_ptr<database::server::target_database> m_target;
};

void tst_scripts_on_databases::initTestCase()
{
    QString why;
    m_target = database::server::KORVANE_TARGET(why);
    if (!m_target) {
        QSKIP(qPrintable(why));
    }
}

/// Exports and returns the beginning of the scripts' names.
QString tst_scripts_on_databases::exportTo(support::stored_project & stored, bool relationships,
                                           ddl_export::export_db_schema schema) const
{
    ddl_export plugin;
    plugin.setDDLExportPath(stored.path());
    plugin.setDatabaseType(Database);
    plugin.setExportRelationships(relationships);
    plugin.setExportDatabaseSchema(schema);
    if (plugin.saveSettings().isValid()) {
        qFatal("the settings cannot be stored");
    }
    if (const zk::ZkBool result = plugin.exportProject(stored.project()); !result) {
        qFatal("%s", qPrintable(result.getDesc()));
    }
    return QStringLiteral("%1_%2_db_schema_")
        .arg(stored.project().getName(), plugin::databaseOf(Database).getShortName());
}

QStringList tst_scripts_on_databases::scriptsOf(const QStringList & versions, bool relationships) const
{
    const auto model = [](const QString & entities) {
        return QStringLiteral(R"({"format": "korvane-project", "formatVersion": 1, "name": "refused",)"
                              R"( "entities": [%1]})")
            .arg(entities)
            .toUtf8();
    };
    support::stored_project stored(model(versions.constFirst()));
    for (qsizetype i = 1; i < versions.size(); ++i) {
        int number = 0;
        if (storage::history::tag(stored.file(), QString(), number).isValid()) {
            qFatal("the version cannot be tagged");
        }
        stored.replaceModel(model(versions.at(i)));
    }
    const QString name = exportTo(stored, relationships, ddl_export::full_and_evolution);
    if (versions.size() == 1) {
        return {stored.content(name + QStringLiteral("full.sql"))};
    }
    QStringList scripts = {stored.content(name + QStringLiteral("v1.sql"))};
    for (qsizetype i = 1; i < versions.size(); ++i) {
        scripts.append(stored.content(name + QStringLiteral("v%1_to_v%2.sql").arg(i).arg(i + 1)));
    }
    return scripts;
}

QStringList tst_scripts_on_databases::run(const QString & script) const
{
    QStringList refused;
    for (const QString & statement : statementsOf(script)) {
        database::server::server_error error;
        if (!m_target->execute(statement, error)) {
            refused.append(statement + QStringLiteral(" => ") + error.words);
        }
    }
    return refused;
}

void tst_scripts_on_databases::runOnEmpty(const QString & script) const
{
    QString error;
    QVERIFY2(m_target->reset(error), qPrintable(error));
    QVERIFY(!statementsOf(script).isEmpty());
    QCOMPARE(run(script).join(QLatin1Char('\n')), QString());
}

void tst_scripts_on_databases::fullScript_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("relationships");
    for (const char * name : {"festival", "chinook", "sakila"}) {
        for (const bool relationships : {false, true}) {
            QTest::newRow(
                qPrintable(QStringLiteral("%1, %2 relationships")
                               .arg(QLatin1String(name), QLatin1String(relationships ? "with" : "without"))))
                << QString::fromLatin1(name) << relationships;
        }
    }
}

void tst_scripts_on_databases::fullScript()
{
    QFETCH(QString, name);
    QFETCH(bool, relationships);
    const QByteArray text = modelText(name);
    if (text.isEmpty()) {
        QSKIP(support::NoPublicModels);
    }
    support::stored_project stored(text);
    const QString scripts = exportTo(stored, relationships, ddl_export::full);
    runOnEmpty(stored.content(scripts + QStringLiteral("full.sql")));

    servers::expectations expected;
    const auto mapping = ddl_export().getListTypeMappingByDb(Database);
    expected.sqlType = [&mapping](const QString & cppType) {
        return mapping.getByKey(mapping.exist(cppType) ? cppType : QStringLiteral("<default type>"));
    };
    expected.spell = [this](const QString & type) { return m_target->typeAsStored(type); };
    expected.relationships = relationships;
    if (Database == ddl_export::db_sqlite) {
        expected.inlineForeignKeys = true;
    } else if (Database == ddl_export::db_mysql) {
        expected.stringKeyType = QStringLiteral("VARCHAR(255)");
    } else if (Database == ddl_export::db_postgresql) {
        expected.countedKeyType = QStringLiteral("BIGSERIAL");
        expected.countedKeyTypeIsNotNull = true;
    }
    const QStringList wanted = servers::expectedCatalogue(stored.project(), expected);
    QVERIFY(wanted.size() > 50);
    const QStringList found = servers::modelLinesOf(m_target->held());
    QVERIFY2(found == wanted, qPrintable(difference(found, wanted)));
}

void tst_scripts_on_databases::evolutionChain_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<bool>("relationships");
    const auto model = [](const QByteArray & entities) {
        return QString::fromUtf8(
            R"({"format": "korvane-project", "formatVersion": 1, "name": "chain", "entities": [)" + entities +
            "]}");
    };
    const QByteArray id = R"({"id": %1, "name": "id", "type": "long", "identifier": true})";
    const auto key = [&id](int n) { return QByteArray(id).replace("%1", QByteArray::number(n)); };
    // What every database can express: tables made, renamed and dropped, columns and indexes added, an index
    // dropped.
    const QStringList simple = {
        model(R"({"id": 1, "name": "plant", "version": 1, "properties": [)" + key(10) +
              R"(, {"id": 11, "name": "label", "type": "QString", "index": true}]},
                 {"id": 2, "name": "pot", "version": 1, "properties": [)" +
              key(20) + "]}"),
        model(
            R"({"id": 1, "name": "plant", "version": 2, "properties": [)" + key(10) +
            R"(, {"id": 11, "name": "label", "type": "QString"}, {"id": 12, "name": "height", "type": "double"}]},
                 {"id": 2, "name": "pot", "version": 1, "properties": [)" +
            key(20) + R"(]},
                 {"id": 3, "name": "garden", "version": 1, "properties": [)" +
            key(30) + R"(, {"id": 31, "name": "area", "type": "double", "index": true}]})"),
        model(
            R"({"id": 1, "name": "flower", "version": 3, "properties": [)" + key(10) +
            R"(, {"id": 11, "name": "label", "type": "QString"}, {"id": 12, "name": "height", "type": "double", "index": true}]},
                 {"id": 3, "name": "garden", "version": 1, "properties": [)" +
            key(30) + R"(, {"id": 31, "name": "area", "type": "double", "index": true}]})")};
    QTest::newRow("what every database can express") << simple << false;
    QTest::newRow("the same with relationships on") << simple << true;
    for (const char * name : {"chinook", "sakila"}) {
        const QStringList history =
            servers::historyOf(modelText(QLatin1String(name)), Database != ddl_export::db_sqlite);
        for (const bool relationships : {false, true}) {
            QTest::newRow(qPrintable(rowName(name, relationships))) << history << relationships;
        }
    }
    if (Database != ddl_export::db_sqlite) {
        const QStringList sample = {QString::fromUtf8(modelText(QStringLiteral("festival_v1"))),
                                    QString::fromUtf8(modelText(QStringLiteral("festival_v2"))),
                                    QString::fromUtf8(modelText(QStringLiteral("festival_v3"))),
                                    QString::fromUtf8(modelText(QStringLiteral("festival")))};
        QTest::newRow("the sample without relationships") << sample << false;
        QTest::newRow("the sample with relationships") << sample << true;
    }
}

void tst_scripts_on_databases::evolutionChain()
{
    QFETCH(QStringList, texts);
    QFETCH(bool, relationships);
    if (texts.isEmpty()) {
        QSKIP(support::NoPublicModels);
    }
    support::stored_project stored(texts.constFirst().toUtf8());
    for (qsizetype i = 1; i < texts.size(); ++i) {
        int number = 0;
        QVERIFY(!storage::history::tag(stored.file(), QString(), number).isValid());
        QCOMPARE(number, static_cast<int>(i));
        stored.replaceModel(texts.at(i).toUtf8());
    }
    const QString scripts = exportTo(stored, relationships, ddl_export::full_and_evolution);
    runOnEmpty(stored.content(scripts + QStringLiteral("v1.sql")));
    for (qsizetype i = 1; i < texts.size(); ++i) {
        const QString step = QStringLiteral("v%1_to_v%2.sql").arg(i).arg(i + 1);
        QCOMPARE(run(stored.content(scripts + step)).join(QLatin1Char('\n')), QString());
    }
    const QStringList evolved = withoutConstraintNames(servers::modelLinesOf(m_target->held()));
    runOnEmpty(stored.content(scripts + QStringLiteral("full.sql")));
    const QStringList full = withoutConstraintNames(servers::modelLinesOf(m_target->held()));
    QVERIFY(full.size() > 10);
    QVERIFY2(evolved == full, qPrintable(difference(evolved, full)));
}

void tst_scripts_on_databases::refusals_data()
{
    QTest::addColumn<int>("number");
    const QList<servers::refusal> all = servers::refusals();
    for (int i = 0; i < all.size(); ++i) {
        if (all.at(i).onlyOn == 0 || all.at(i).onlyOn == static_cast<int>(Database)) {
            QTest::newRow(all.at(i).name) << i;
        }
    }
}

// A database that begins to take, or to refuse, a statement of the manual's list shows here.
void tst_scripts_on_databases::refusals()
{
    QFETCH(int, number);
    const servers::refusal row = servers::refusals().at(number);
    const QStringList scripts = scriptsOf(row.versions, row.relationships);
    QString error;
    QVERIFY2(m_target->reset(error), qPrintable(error));
    QStringList refused;
    for (qsizetype i = 0; i < scripts.size(); ++i) {
        if (i > 0 && i + 1 == scripts.size()) {
            QCOMPARE(run(row.rows.join(QLatin1Char('\n'))).join(QLatin1Char('\n')), QString());
        }
        refused = run(scripts.at(i));
        if (i + 1 < scripts.size()) {
            QCOMPARE(refused.join(QLatin1Char('\n')), QString());
        }
    }
    refused += run(row.afterwards.join(QLatin1Char('\n')));
    const QStringList expected = row.refused.value(Database);
    QVERIFY2(refused.size() == expected.size(),
             qPrintable(QStringLiteral("refused: ") + refused.join(QLatin1Char('\n'))));
    for (qsizetype i = 0; i < refused.size(); ++i) {
        QVERIFY2(refused.at(i).startsWith(expected.at(i)), qPrintable(refused.at(i)));
    }
    const QStringList catalogue = servers::modelLinesOf(m_target->held());
    for (const QString & line : row.found.value(Database)) {
        QVERIFY2(catalogue.contains(line),
                 qPrintable(line + QStringLiteral(" is not in\n") + catalogue.join(QLatin1Char('\n'))));
    }
    for (const QString & line : row.missing.value(Database)) {
        QVERIFY2(!catalogue.contains(line), qPrintable(line));
    }
}

QTEST_GUILESS_MAIN(tst_scripts_on_databases)
#include "tst_scripts_on_databases.moc"
