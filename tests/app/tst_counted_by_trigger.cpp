// Keys that a sequence and a trigger count, in a history: neither follows the model.

#include "support/program.h"
#include "support/project_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using support::runProgram;

namespace {

/// The table of a shop, and whether its key is counted.
QString shop(const char * table, const char * key, bool isCounted)
{
    return QStringLiteral(
               "{'id': 1, 'name': 'shop', 'tableName': '%1', 'properties': [{'id': 2, 'name': 'id', "
               "'columnName': '%2', 'type': 'long', 'identifier': true, 'autoIncrement': %3}, "
               "{'id': 3, 'name': 'x', 'type': 'QString'}]}")
        .arg(QLatin1String(table), QLatin1String(key), QLatin1String(isCounted ? "true" : "false"));
}

const QString Kiosk =
    QStringLiteral("{'id': 9, 'name': 'kiosk', 'tableName': 't_shop', 'properties': [{'id': 92, 'name': "
                   "'id', 'columnName': 'k_id', 'type': 'long', 'identifier': true}]}");

} // namespace

class tst_counted_by_trigger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTold_data()
    {
        QTest::addColumn<QStringList>("versions");
        QTest::addColumn<QStringList>("told");
        QTest::newRow("counted from now on")
            << QStringList{shop("t_shop", "shop_id", false), shop("t_shop", "shop_id", true)}
            << QStringList{"KV403 silent: The key of table 'T_SHOP' is not auto-increment, that of a new "
                           "database auto-increment."};
        QTest::newRow("counted no more")
            << QStringList{shop("t_shop", "shop_id", true), shop("t_shop", "shop_id", false)}
            << QStringList{"KV403 silent: The key of table 'T_SHOP' is auto-increment, that of a new "
                           "database not auto-increment.",
                           "KV409 differs: The sequence 'SEQ_INC_T_SHOP', which counted the key of 'shop', "
                           "stays as it is."};
        QTest::newRow("the key is renamed")
            << QStringList{shop("t_shop", "shop_id", true), shop("t_shop", "sid", true)}
            << QStringList{"KV308 loss: No row can be put into table 't_shop' any more: the trigger that "
                           "counts the key 'sid' knows it as 'shop_id'."};
        QTest::newRow("a key that nothing counts is renamed")
            << QStringList{shop("t_shop", "shop_id", false), shop("t_shop", "sid", false)} << QStringList();
        QTest::newRow("the table is renamed")
            << QStringList{shop("t_shop", "shop_id", true), shop("t_store", "shop_id", true)}
            << QStringList{"KV409 differs: The sequence 'SEQ_INC_T_SHOP', which counted the key of 'shop', "
                           "stays as it is."};
        const QString store = shop("t_store", "shop_id", true);
        QTest::newRow("the former name is given anew")
            << QStringList{shop("t_shop", "shop_id", true), store, store + ", " + Kiosk}
            << QStringList{"KV220 refused: Oracle refuses the statement about 'kiosk': the name "
                           "'seq_inc_t_shop' belongs to the sequence that 'shop_oracle_db_schema_v1.sql' "
                           "made.",
                           "KV220 refused: Oracle refuses the statement about 'kiosk': the name "
                           "'trigger_inc_t_shop' belongs to the trigger that "
                           "'shop_oracle_db_schema_v1.sql' made."};
    }
    /// What the last step leaves beside a new database of Oracle.
    void isTold()
    {
        QFETCH(const QStringList, versions);
        QFETCH(const QStringList, told);
        const QTemporaryDir folder;
        const QString project = folder.filePath("shop.korv");
        for (const QString & each : versions) {
            const QString text = folder.filePath("shop.json");
            QVERIFY(support::writeBytes(text, support::textOf(support::json(qPrintable(each)))));
            QCOMPARE(runProgram({"import", text, project}).status, 0);
            QCOMPARE(runProgram({"tag", project}).status, 0);
        }
        const QString to = QStringLiteral("v%1").arg(versions.size());
        const QString from = QStringLiteral("v%1").arg(versions.size() - 1);
        const QByteArray output = runProgram({"check", project, "--db", "oracle", "--from", from, "--to", to,
                                              "--json", "--fail-on", "never"})
                                      .output;
        QStringList found;
        const QJsonArray findings = QJsonDocument::fromJson(output)["findings"].toArray();
        for (const auto & each : findings) {
            const QJsonObject one = each.toObject();
            const QString code = one["code"].toString();
            // That programs have to follow, and that a script is done in part, is told as well.
            if (code != QLatin1String("KV601") && code != QLatin1String("KV503")) {
                found += QStringLiteral("%1 %2: %3")
                             .arg(code, one["outcome"].toString(), one["message"].toString());
            }
        }
        QCOMPARE(found, told);
    }
};

QTEST_GUILESS_MAIN(tst_counted_by_trigger)
#include "tst_counted_by_trigger.moc"
