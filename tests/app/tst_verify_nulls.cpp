// What the command verify proves with nulls in rows.

#include "app/verify_bench.h"

#include <memory>

using support::program_result;
using support::runProgram;

namespace {

const char * const Nullable = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                              "{'id': 10, 'name': 'id', ID},"
                              "{'id': 11, 'name': 'duration', 'type': 'int', 'index': true},"
                              "{'id': 12, 'name': 'note', 'type': 'QString', 'unique': true},"
                              "{'id': 13, 'name': 'picture', 'type': 'QByteArray'},"
                              "{'id': 14, 'name': 'fee', 'type': 'int', 'allowNull': false}]}";
const char * const Moved = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                           "{'id': 10, 'name': 'id', ID},"
                           "{'id': 11, 'name': 'duration', 'type': 'int', 'index': true},"
                           "{'id': 12, 'name': 'note', 'type': 'QString', 'unique': true},"
                           "{'id': 13, 'name': 'picture', 'type': 'QByteArray'},"
                           "{'id': 14, 'name': 'fee', 'type': 'int', 'allowNull': false}]}";
const char * const MovedAndRenamed = "{'id': 1, 'name': 'gig', 'tableName': 't_concert', 'properties': ["
                                     "{'id': 10, 'name': 'id', ID},"
                                     "{'id': 11, 'name': 'length', 'type': 'int', 'index': true},"
                                     "{'id': 12, 'name': 'remark', 'type': 'QString', 'unique': true},"
                                     "{'id': 13, 'name': 'picture', 'type': 'QByteArray'},"
                                     "{'id': 14, 'name': 'fee', 'type': 'int', 'allowNull': false}]}";

const char * const Plain = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                           "{'id': 10, 'name': 'id', ID},"
                           "{'id': 11, 'name': 'duration', 'type': 'int'}]}";
const char * const NotNull = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                             "{'id': 10, 'name': 'id', ID},"
                             "{'id': 11, 'name': 'length', 'type': 'int', 'allowNull': false}]}";
const char * const NotNullAgain = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                                  "{'id': 10, 'name': 'id', ID},"
                                  "{'id': 11, 'name': 'size', 'type': 'int', 'allowNull': false}]}";

} // namespace

class tst_verify_nulls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<verify_bench>(); }

    void renamesKeepNulls_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QByteArray>("now");
        QTest::newRow("sqlite") << "sqlite" << QByteArray(Moved); // its scripts rename no columns
        QTest::newRow("mariadb") << "mariadb" << QByteArray(MovedAndRenamed);
        QTest::newRow("postgresql") << "postgresql" << QByteArray(MovedAndRenamed);
    }
    void renamesKeepNulls()
    {
        QFETCH(const QString, database);
        QFETCH(const QByteArray, now);
        m_bench->history({Nullable, now.constData()});
        const QJsonObject run = m_bench->runOf({"--db", database, "--skip-missing"});
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        QCOMPARE(run["ok"].toBool(), true);
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 0}, {"foretold", 0}, {"false", 0}}));
        // Five values, and nulls in three columns.
        QCOMPARE(run["rows"], allKept(8));
    }

    /// The database refuses to leave nulls out; the next step then finds no column of that name.
    void notNullOverNulls()
    {
        m_bench->history({Plain, NotNull, NotNullAgain});
        const QJsonObject run = m_bench->runOf({"--db", "mariadb", "--skip-missing"});
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        QCOMPARE(
            refusalsIn(run),
            QStringList({"rows 1265 KV307: ALTER TABLE `t_gig` CHANGE `duration` `length` INTEGER NOT NULL;",
                         "rows 1054 KV307: ALTER TABLE `t_gig` CHANGE `length` `size` INTEGER NOT NULL;"}));
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 2}, {"foretold", 2}, {"false", 0}}));
        QCOMPARE(run["chainEqualsFull"]["equal"].toBool(), true);
        QCOMPARE(run["fullEqualsModel"]["equal"].toBool(), true);
        // Two values, and a null in the one column that allows it.
        QCOMPARE(run["rows"]["values"].toInt(), 3);
        QCOMPARE(run["rows"]["kept"].toInt(), 2);
        QCOMPARE(run["rows"]["lost"], (QJsonArray{QJsonObject{{"object", "property gig.size"},
                                                              {"version", "v1"},
                                                              {"value", "null"},
                                                              {"explainedBy", "KV307"}}}));
        QCOMPARE(run["ok"].toBool(), true);
    }

    /// A statement of the custom script may leave nulls out as well.
    void notNullByTheCustomScript()
    {
        const char * const renamed = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                                     "{'id': 10, 'name': 'id', ID},"
                                     "{'id': 11, 'name': 'length', 'type': 'int'}]}";
        m_bench->history({Plain, renamed});
        const QStringList own =
            m_bench->ownScript("RENAME_COLUMN", "'ALTER TABLE t_gig RENAME COLUMN duration TO length;"
                                                "\\nALTER TABLE t_gig ALTER COLUMN length SET NOT NULL;'");
        const QJsonObject run = m_bench->runOf(QStringList{"--db", "postgresql", "--skip-missing"} + own);
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        QCOMPARE(refusalsIn(run),
                 QStringList{"rows 23502 KV299: ALTER TABLE t_gig ALTER COLUMN length SET NOT NULL;"});
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 1}, {"foretold", 1}, {"false", 0}}));
    }

    void aNullThatBecomesAValue()
    {
        const char * const before = "{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'id', ID},"
                                    "{'id': 11, 'name': 'duration', 'type': 'int'},"
                                    "{'id': 12, 'name': 'note', 'type': 'QString'},"
                                    "{'id': 13, 'name': 'picture', 'type': 'QByteArray'}]}";
        const char * const now = "{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'id', ID},"
                                 "{'id': 11, 'name': 'length', 'type': 'int'},"
                                 "{'id': 12, 'name': 'note', 'type': 'QString'},"
                                 "{'id': 13, 'name': 'picture', 'type': 'QByteArray'}]}";
        m_bench->history({before, now});
        const QStringList own = m_bench->ownScript(
            "RENAME_COLUMN", "'ALTER TABLE gig RENAME COLUMN duration TO length;"
                             "\\nUPDATE gig SET length = 0 WHERE length IS NULL;"
                             "\\nUPDATE gig SET note = \\x27none\\x27 WHERE note IS NULL;"
                             "\\nUPDATE gig SET picture = X\\x27\\x27 WHERE picture IS NULL;'");
        const program_result result = runProgram(QStringList{"verify", m_bench->project()} + own);
        QCOMPARE(result.errors, QByteArray());
        QCOMPARE(result.status, 3);
        QVERIFY2(result.output.contains("  yes              4 of 7     0 of 0\n"), result.output.constData());
        QVERIFY2(
            result.output.endsWith(
                "  property gig.length: the value \"null\" put in after v1 is not there (NOT FORETOLD)\n"
                "  property gig.note: the value \"null\" put in after v1 is not there (NOT FORETOLD)\n"
                "  property gig.picture: the value \"null\" put in after v1 is not there (NOT FORETOLD)\n"
                "\n"
                "not ok: see what was NOT FORETOLD above\n"),
            result.output.constData());
    }

    /// A run with nulls that has none proves nothing, and is not counted.
    void whereNothingMayBeNull()
    {
        m_bench->history(
            {"{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'code', 'type': 'QString', "
             "'identifier': true},"
             "{'id': 11, 'name': 'fee', 'type': 'int', 'allowNull': false}]}",
             "{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'code', 'type': 'QString', "
             "'identifier': true},"
             "{'id': 11, 'name': 'fee', 'type': 'int', 'allowNull': false},"
             "{'id': 12, 'name': 'number', 'type': 'int', 'unique': true}]}"});
        const QJsonObject run = m_bench->runOf({});
        QCOMPARE(refusalsIn(run),
                 QStringList("always SQLITE_ERROR KV202: ALTER TABLE gig ADD COLUMN number INTEGER UNIQUE;"));
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 2}, {"foretold", 2}, {"false", 0}}));
        QCOMPARE(run["rows"], allKept(2));
    }

    /// SQLite would take a null in a key that does not say NOT NULL; no other database does.
    void aKeyThatMayBeNull()
    {
        m_bench->history(
            {"{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'code', 'type': 'QString', "
             "'identifier': true}]}",
             "{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'code', 'type': 'QString', "
             "'identifier': true},"
             "{'id': 11, 'name': 'fee', 'type': 'int'}]}"});
        const QJsonObject run =
            m_bench->runOf(m_bench->ownScript("CREATE_TABLE", "'CREATE TABLE gig (code TEXT PRIMARY KEY);'"));
        QCOMPARE(run["rows"], allKept(1));
    }

    /// Also types that come from a database that was there before have values.
    void valuesOfForcedTypes_data()
    {
        QTest::addColumn<QStringList>("types");
        QTest::newRow("postgresql") << QStringList{
            "uuid",    "interval",   "inet",        "cidr",           "integer[]",    "text[]",       "jsonb",
            "xml",     "bit(3)",     "bit",         "bit varying(4)", "numeric(3,2)", "numeric(4,4)", "money",
            "char(1)", "varchar(2)", "timestamptz", "timetz",         "tsvector",     "smallint",     "oid"};
        QTest::newRow("mariadb") << QStringList{"uuid",
                                                "inet6",
                                                "enum(\\u0027it\\u0027\\u0027s\\u0027,\\u0027b\\u0027)",
                                                "bit(3)",
                                                "set(\\u0027x\\u0027)",
                                                "numeric(3,2)",
                                                "char(1)",
                                                "varbinary(2)",
                                                "tinyint(1)",
                                                "year",
                                                "smallint",
                                                "double"};
        QTest::newRow("sqlite") << QStringList{"numeric(3,2)", "uuid", "whatever"};
    }
    void valuesOfForcedTypes()
    {
        QFETCH(const QStringList, types);
        QByteArrayList before;
        QByteArrayList now;
        int id = 100;
        for (const QString & type : types) {
            before += QStringLiteral("{'id': %1, 'name': 't%1', 'properties': [{'id': %2, 'name': 'id', ID},"
                                     "{'id': %3, 'name': 'it', 'type': 'QString', 'forceSqlType': '%4'}]}")
                          .arg(QString::number(id), QString::number(id + 1), QString::number(id + 2), type)
                          .toUtf8();
            now += before.constLast();
            now.last().replace("'properties'",
                               "'tableName': 'n" + QByteArray::number(id) + "', 'properties'");
            id += 3;
        }
        m_bench->history({before.join(',').constData(), now.join(',').constData()});
        const QJsonObject run = m_bench->runOf({"--db", QTest::currentDataTag(), "--skip-missing"});
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        // Of each table its key, a value and a null.
        QCOMPARE(run["rows"], allKept(3 * static_cast<int>(types.size())));
    }

    /// Where a type is not known the other columns of a row are proven all the same; a table without any row
    /// is told.
    void typesWithoutValues()
    {
        const char * const before =
            "{'id': 1, 'name': 'gig', 'properties': [{'id': 10, 'name': 'id', ID},"
            "{'id': 11, 'name': 'place', 'type': 'QString', 'forceSqlType': 'point'},"
            "{'id': 12, 'name': 'note', 'type': 'QString'}]},"
            "{'id': 2, 'name': 'area', 'properties': [{'id': 20, 'name': 'id', ID},"
            "{'id': 21, 'name': 'shape', 'type': 'QString', 'forceSqlType': 'polygon', 'allowNull': false}]}";
        const QByteArray now = QByteArray(before).replace("'name': 'note'", "'name': 'remark'");
        m_bench->history({before, now.constData()});
        const QStringList options = {"--db", "postgresql", "--skip-missing"};
        const QJsonObject run = m_bench->runOf(options);
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        // Key and text with a value, point and text with a null.
        QCOMPARE(
            run["rows"],
            (QJsonObject{
                {"values", 4}, {"kept", 4}, {"lost", QJsonArray()}, {"emptyTables", QJsonArray{"area"}}}));
        const program_result told = runProgram(QStringList{"verify", m_bench->project()} + options);
        QVERIFY2(
            told.output.contains("\n  table area: no row could be put in, so none is proven to be kept\n"),
            told.output.constData());
        QCOMPARE(told.status, 0);
    }

    /// A column that allows no null, in a table with a row.
    void aNewColumnThatAllowsNoNull_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("postgresql") << "postgresql"
                                    << "rows 23502 KV201: ALTER TABLE t_gig ADD COLUMN fee INTEGER NOT NULL;";
        QTest::newRow("mariadb") << "mariadb"
                                 << "";
        QTest::newRow("sqlite")
            << "sqlite"
            << "rows SQLITE_ERROR KV201: ALTER TABLE t_gig ADD COLUMN fee INTEGER NOT NULL;";
    }
    void aNewColumnThatAllowsNoNull()
    {
        QFETCH(const QString, database);
        QFETCH(const QString, refusal);
        const char * const more = "{'id': 1, 'name': 'gig', 'tableName': 't_gig', 'properties': ["
                                  "{'id': 10, 'name': 'id', ID},"
                                  "{'id': 11, 'name': 'duration', 'type': 'int'},"
                                  "{'id': 12, 'name': 'fee', 'type': 'int', 'allowNull': false}]}";
        m_bench->history({Plain, more});
        const QJsonObject run = m_bench->runOf({"--db", database, "--skip-missing"});
        if (run["missing"].isString()) {
            QSKIP(qPrintable(run["missing"].toString()));
        }
        QCOMPARE(refusalsIn(run).join(u'\n'), refusal);
        QCOMPARE(run["ok"].toBool(), true);
    }

    void aRefusalThatNobodyForetold()
    {
        m_bench->history({Nullable, Moved});
        const QStringList own = m_bench->ownScript(
            "RENAME_TABLE", "p.default_value + '\\nUPDATE t_concert SET fee = abs(-9223372036854775808) "
                            "WHERE note IS NULL;'");
        const program_result result = runProgram(QStringList{"verify", m_bench->project()} + own);
        QCOMPARE(result.status, 3);
        QVERIFY2(result.output.contains("  yes              8 of 8     0 of 1\n"), result.output.constData());
        QVERIFY2(result.output.contains(
                     "  shop_sqlite_db_schema_v1_to_v2.sql line 4: refused with nulls in rows, SQLITE_ERROR "
                     "integer overflow (NOT FORETOLD)\n"),
                 result.output.constData());
    }

    /// A table that is there with nulls only.
    void aCatalogueThatNobodyForetold()
    {
        m_bench->history({Nullable, Moved});
        const QStringList own = m_bench->ownScript(
            "RENAME_TABLE",
            "p.default_value + '\\nCREATE TABLE more AS SELECT CASE WHEN (SELECT count(*) FROM "
            "t_concert WHERE note IS NULL) = 0 THEN abs(-9223372036854775808) END AS x;'");
        const QJsonObject run = m_bench->runOf(own);
        QCOMPARE(run["ok"].toBool(), false);
        // With values and without rows.
        QCOMPARE(run["foretold"], (QJsonObject{{"refused", 2}, {"foretold", 0}, {"false", 0}}));
        QCOMPARE(run["chain"]["refused"].toArray().size(), 1);
        const QJsonArray differences = run["fullEqualsModel"]["differences"].toArray();
        QCOMPARE(differences.size(), 1);
        QCOMPARE(differences[0]["object"].toString(), "after the history with nulls, table more");
        QCOMPARE(differences[0]["version"].toString(), "now");
    }

private:
    /// What is told of that many values when none is lost.
    static QJsonObject allKept(int values)
    {
        return {{"values", values}, {"kept", values}, {"lost", QJsonArray()}, {"emptyTables", QJsonArray()}};
    }

    /// When, code, finding and text of each.
    static QStringList refusalsIn(const QJsonObject & run)
    {
        QStringList told;
        const QJsonArray refused = run["chain"]["refused"].toArray();
        for (const QJsonValue & each : refused) {
            told << QStringLiteral("%1 %2 %3: %4")
                        .arg(each["when"].toString(), each["code"].toString(), each["foretoldBy"].toString(),
                             each["statement"]["text"].toString());
        }
        return told;
    }

    std::unique_ptr<verify_bench> m_bench;
};

QTEST_GUILESS_MAIN(tst_verify_nulls)

#include "tst_verify_nulls.moc"
