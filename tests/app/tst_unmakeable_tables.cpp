// Steps to a model of which a new database refuses to make something: what the history left of it is to stay.

#include "support/program.h"
#include "support/project_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::runProgram;

namespace {

QString shelf(const char * properties)
{
    return QStringLiteral(
               "{'id': 2, 'name': 'shelf', 'properties': [{'id': 11, 'name': 'id', 'type': 'long', "
               "'identifier': true}, %1]}")
        .arg(QLatin1String(properties));
}

/// The findings of the step to the last of two versions.
QJsonArray lastStep(const QStringList & versions, const QString & database)
{
    const QTemporaryDir folder;
    const QString project = folder.filePath("shop.korv");
    for (qsizetype i = 0; i < versions.size(); ++i) {
        const QString model = folder.filePath(QStringLiteral("%1.json").arg(i));
        const QByteArray text = support::textOf(support::json(qPrintable(versions.at(i))));
        if (!support::writeBytes(model, text) || runProgram({"import", model, project}).status != 0 ||
            runProgram({"tag", project}).status != 0) {
            return {};
        }
    }
    const QStringList asked{"check", project, "--db",   database,    "--from", "v1",
                            "--to",  "v2",    "--json", "--fail-on", "never"};
    return QJsonDocument::fromJson(runProgram(asked).output)["findings"].toArray();
}

} // namespace

class tst_unmakeable_tables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void remediesLeaveThem_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QStringList>("versions");
        QTest::addColumn<QStringList>("told");
        const QString plain =
            shelf("{'id': 14, 'name': 'u', 'type': 'int'}, {'id': 16, 'name': 'z', 'type': 'int'}");
        const QString unknown = shelf("{'id': 14, 'name': 'u', 'type': 'int', 'forceSqlType': 'WIBBLE(9)'}");
        const QStringList left{"KV302: CREATE TABLE shelf_z_before AS SELECT id, z FROM shelf;",
                               "KV419: Table 'shelf' of 'shelf' is there as the steps left it, a new "
                               "database refuses to make it."};
        QTest::newRow("a type that PostgreSQL does not know")
            << "postgresql" << QStringList{plain, unknown} << left;
        QTest::newRow("a type that MariaDB does not know")
            << "mariadb" << QStringList{plain, unknown} << left;
        QTest::newRow("a renamed column")
            << "postgresql"
            << QStringList{plain, shelf("{'id': 14, 'name': 'u', 'columnName': 'order', 'type': 'int'}")}
            << QStringList{"KV302: CREATE TABLE shelf_z_before AS SELECT id, z FROM shelf;",
                           "KV101: ALTER TABLE shelf RENAME COLUMN u TO \"order\";"};
        QTest::newRow("a renamed table")
            << "postgresql" << QStringList{plain, plain.left(plain.size() - 1) + ", 'tableName': 'order'}"}
            << QStringList{"KV101: ALTER TABLE shelf RENAME TO \"order\";"};
        QTest::newRow("a table that is left out of scripts from now on")
            << "postgresql"
            << QStringList{plain,
                           plain.left(plain.size() - 1) + ", 'metaData': {'DDL_EXPORT_CREATE_TABLE': false}}"}
            << QStringList{"KV303: CREATE TABLE shelf_before AS SELECT * FROM shelf;"};
    }
    /// The statements that the findings of the step give, and what is told of tables as a whole.
    void remediesLeaveThem()
    {
        QFETCH(const QString, database);
        QFETCH(const QStringList, versions);
        QFETCH(const QStringList, told);
        QStringList found;
        const QJsonArray findings = lastStep(versions, database);
        for (const auto & each : findings) {
            const QJsonObject one = each.toObject();
            const QString code = one["code"].toString();
            const QJsonArray statements = one["remedy"]["sql"].toArray();
            for (const auto & sql : statements) {
                found += code + QStringLiteral(": ") + sql.toString();
            }
            if (code == QLatin1String("KV419")) {
                found += code + QStringLiteral(": ") + one["message"].toString();
            }
        }
        QCOMPARE(found, told);
    }
};

QTEST_GUILESS_MAIN(tst_unmakeable_tables)
#include "tst_unmakeable_tables.moc"
