#include "database/facts/facts.h"
#include "database/facts/known_types.h"
#include "database/facts/names.h"

#include <QTest>

using namespace database;

namespace {

const facts & sqlite()
{
    return *factsOf(u"sqlite");
}
const facts & mariadb()
{
    return *factsOf(u"mariadb");
}
const facts & postgresql()
{
    return *factsOf(u"postgresql");
}

understood_name column(const facts & known, const QString & text, QChar quote = {})
{
    return understood(known, {text, quote}, name_place::other);
}

} // namespace

class tst_database_facts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRowForEachDatabase()
    {
        QStringList keys;
        for (const facts * row : allFacts()) {
            keys += row->key;
            QCOMPARE(factsOf(QString(row->key)), row);
            QVERIFY(QByteArray(row->names.longest.source).size() > 5);
        }
        QCOMPARE(keys, (QStringList{"generic", "sqlite", "mysql", "mariadb", "postgresql", "oracle",
                                    "mssqlserver"}));
        QVERIFY(factsOf(u"db2") == nullptr);
    }
    void eachFactSaysWhereItIsKnownFrom()
    {
        QCOMPARE(sqlite().names.longest.source, "tried on SQLite 3.40.1");
        QCOMPARE(mariadb().keys.longest.source, "tried on MariaDB 10.11.19");
        QCOMPARE(mariadb().label, QLatin1String("MariaDB 10.11"));
        QCOMPARE(factsOf(u"mysql")->keys.longest.source, "documentation of MySQL 8.0");
        QCOMPARE(factsOf(u"mysql")->label, QLatin1String("MySQL 8.0"));
        QCOMPARE(postgresql().types.words.source, "tried on PostgreSQL 15.20");
        QCOMPARE(factsOf(u"oracle")->names.longest.source, "documentation of Oracle");
        QCOMPARE(factsOf(u"mssqlserver")->errors.source, "documentation of SQL Server");
    }
    void reservedWords_data()
    {
        QTest::addColumn<QString>("database");
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("asTable");
        QTest::addColumn<bool>("asColumn");
        QTest::newRow("first of SQLite") << "sqlite"
                                         << "add" << true << true;
        QTest::newRow("last of SQLite") << "sqlite"
                                        << "where" << true << true;
        QTest::newRow("only a table") << "sqlite"
                                      << "if" << true << false;
        QTest::newRow("capitals") << "sqlite"
                                  << "SELECT" << true << true;
        QTest::newRow("a keyword that runs") << "sqlite"
                                             << "key" << false << false;
        QTest::newRow("MariaDB's key") << "mariadb"
                                       << "key" << true << true;
        QTest::newRow("MariaDB's window") << "mariadb"
                                          << "window" << false << false;
        QTest::newRow("with a low line") << "mariadb"
                                         << "year_month" << true << true;
        QTest::newRow("MySQL's window") << "mysql"
                                        << "window" << true << true;
        QTest::newRow("user") << "postgresql"
                              << "user" << true << true;
        QTest::newRow("rows") << "postgresql"
                              << "rows" << false << false;
        QTest::newRow("no list") << "generic"
                                 << "select" << false << false;
    }
    void reservedWords()
    {
        QFETCH(QString, database);
        QFETCH(QString, word);
        const facts & known = *factsOf(database);
        QTEST(isReserved(known, word, name_place::table), "asTable");
        QTEST(isReserved(known, word, name_place::other), "asColumn");
    }
    void namesAreFoldedAsTheDatabaseDoes()
    {
        QCOMPARE(column(postgresql(), "Name").name, QString("name"));
        QCOMPARE(column(postgresql(), "Name", u'"').name, QString("Name"));
        QCOMPARE(column(postgresql(), QStringLiteral("ÄPFEL")).name, QStringLiteral("Äpfel"));
        QCOMPARE(column(mariadb(), "Name").name, QString("Name"));
        QCOMPARE(foldedName(mariadb(), "Name"), QString("name"));
        QCOMPARE(foldedTable(mariadb(), "Name"), QString("Name"));
        QCOMPARE(foldedTable(sqlite(), "NAME"), QString("name"));
        QVERIFY(foldedName(mariadb(), "role") != foldedName(mariadb(), QStringLiteral("rôle")));
    }
    void shapesOfUnquotedNames()
    {
        const auto refused = [](const facts & known, const QString & text) {
            return column(known, text).refused;
        };
        QCOMPARE(refused(sqlite(), "my-name"), refusal_cause::syntax);
        QCOMPARE(refused(sqlite(), "1st"), refusal_cause::syntax);
        QCOMPARE(refused(mariadb(), "1st"), refusal_cause::none);
        QCOMPARE(refused(mariadb(), "12"), refusal_cause::syntax);
        QCOMPARE(refused(postgresql(), "a$b"), refusal_cause::none);
        QCOMPARE(refused(postgresql(), "a.b"), refusal_cause::syntax);
        QCOMPARE(refused(postgresql(), QString()), refusal_cause::syntax);
        QCOMPARE(column(mariadb(), "my-name", u'`').refused, refusal_cause::none);
        QCOMPARE(column(postgresql(), "x", u'`').refused, refusal_cause::syntax);
    }
    void schemasOfTables()
    {
        const auto refused = [](const facts & known, const QString & text) {
            return understood(known, {text, {}}, name_place::table).refused;
        };
        QCOMPARE(refused(sqlite(), "main.a"), refusal_cause::none);
        QCOMPARE(refused(sqlite(), "shop.a"), refusal_cause::schema_missing);
        QCOMPARE(refused(postgresql(), "shop.a"), refusal_cause::schema_missing);
        QCOMPARE(refused(postgresql(), "shop.a.b"), refusal_cause::database_named);
        QCOMPARE(codeOf(postgresql(), refusal_cause::schema_missing, error_form::any),
                 QLatin1String("3F000"));
    }
    void longNames()
    {
        QCOMPARE(column(mariadb(), QString(64, u'é')).refused, refusal_cause::none);
        QCOMPARE(column(mariadb(), QString(65, u'a')).refused, refusal_cause::name_too_long);
        QCOMPARE(understood(mariadb(), {QString(65, u'a'), u'`'}, name_place::table).refused,
                 refusal_cause::table_name_too_long);
        QVERIFY(!column(postgresql(), QString(63, u'a')).isCut);
        QVERIFY(column(postgresql(), QString(64, u'a')).isCut);
        QCOMPARE(column(postgresql(), QString(64, u'a')).name, QString(63, u'a'));
        // 63 bytes end inside the 32nd letter of two bytes.
        QCOMPARE(column(postgresql(), QString(32, u'é')).name, QString(31, u'é'));
        QCOMPARE(column(sqlite(), QString(500, u'a')).name, QString(500, u'a'));
    }
    void impliedNamesAreCutFromTheLongerPart()
    {
        const QLatin1String seq("seq");
        QCOMPARE(impliedName(postgresql(), "orders", "id", seq), QString("orders_id_seq"));
        QCOMPARE(impliedName(postgresql(), "orders", {}, QLatin1String("pkey")), QString("orders_pkey"));
        // 58 bytes are left for both.
        QCOMPARE(impliedName(postgresql(), QString(60, u't'), "id", seq),
                 QString(QString(56, u't') + "_id_seq"));
        QCOMPARE(impliedName(postgresql(), QString(40, u't'), QString(40, u'c'), seq),
                 QString(QString(29, u't') + "_" + QString(29, u'c') + "_seq"));
        // Of an odd rest the table keeps the byte that is over.
        QCOMPARE(impliedName(postgresql(), QString(40, u't'), QString(40, u'c'), QLatin1String("keys")),
                 QString(QString(29, u't') + "_" + QString(28, u'c') + "_keys"));
    }
    void partsOfTypes()
    {
        const declared_type decimal = partsOf("decimal(12, 2) unsigned");
        QCOMPARE(decimal.word, QString("DECIMAL"));
        QCOMPARE(decimal.arguments, (QStringList{"12", "2"}));
        QCOMPARE(decimal.rest, QString("UNSIGNED"));
        QCOMPARE(understoodType(mariadb(), "VARCHAR(80)").length(), 80);
        QCOMPARE(understoodType(mariadb(), "INTEGER(8)").length(), 0);
        QCOMPARE(partsOf("").word, QString());
    }
    void typesThatAreRefused()
    {
        QCOMPARE(refusalOf(sqlite(), "ANYTHING AT HAND"), refusal_cause::none);
        QCOMPARE(refusalOf(sqlite(), "ANYTHING AT ALL"), refusal_cause::syntax);
        for (const char * const type :
             {"y` ALL(7,8,9),\n `z INTEGER", "\"ALL\"", "[a` b]", "N\"ALL\"[NOT]`NULL`(3)"}) {
            QCOMPARE(refusalOf(sqlite(), type), refusal_cause::none);
        }
        QCOMPARE(refusalOf(sqlite(), "y` ALL `ALL"), refusal_cause::syntax);
        QCOMPARE(refusalOf(sqlite(), ""), refusal_cause::none);
        QCOMPARE(refusalOf(sqlite(), "ENUM('y','n')"), refusal_cause::syntax);
        QCOMPARE(refusalOf(sqlite(), "DECIMAL(1,2,3)"), refusal_cause::syntax);
        QCOMPARE(refusalOf(sqlite(), "DECIMAL(-1,+2)"), refusal_cause::none);
        QCOMPARE(refusalOf(mariadb(), "BYTEA"), refusal_cause::unknown_type);
        QCOMPARE(refusalOf(mariadb(), "VARCHAR2(10)"), refusal_cause::syntax);
        QCOMPARE(refusalOf(mariadb(), ""), refusal_cause::syntax);
        QCOMPARE(refusalOf(postgresql(), "DATETIME"), refusal_cause::unknown_type);
        QCOMPARE(refusalOf(postgresql(), "INTEGER(11)"), refusal_cause::syntax);
        QCOMPARE(refusalOf(postgresql(), "TEXT(11)"), refusal_cause::type_with_length);
        QCOMPARE(refusalOf(postgresql(), "VARCHAR(11)"), refusal_cause::none);
    }
    void typesOfForeignKeys()
    {
        QVERIFY(mayRefer(mariadb(), "INTEGER", "int(11)"));
        QVERIFY(!mayRefer(mariadb(), "INTEGER", "BIGINT"));
        QVERIFY(!mayRefer(mariadb(), "INTEGER", "INTEGER UNSIGNED"));
        QVERIFY(mayRefer(mariadb(), "VARCHAR(10)", "CHAR(36)"));
        QVERIFY(mayRefer(mariadb(), "TINYINT", "BOOLEAN"));
        QVERIFY(!mayRefer(mariadb(), "TEXT", "TEXT"));
        QVERIFY(mayRefer(postgresql(), "INTEGER", "BIGSERIAL"));
        QVERIFY(mayRefer(postgresql(), "INTEGER", "NUMERIC(10,2)"));
        QVERIFY(!mayRefer(postgresql(), "NUMERIC(10,2)", "INTEGER"));
        QVERIFY(mayRefer(postgresql(), "TEXT", "VARCHAR(10)"));
        QVERIFY(mayRefer(postgresql(), "UUID", "UUID"));
        QVERIFY(!mayRefer(postgresql(), "UUID", "TEXT"));
    }
    void typesInKeys()
    {
        QVERIFY(isHashed(mariadb(), "TEXT"));
        QVERIFY(isHashed(mariadb(), "VARCHAR(769)"));
        QVERIFY(!isHashed(mariadb(), "VARCHAR(768)"));
        QVERIFY(!isHashed(postgresql(), "TEXT"));
        QVERIFY(takesPrefix(mariadb(), "JSON", 255));
        QVERIFY(takesPrefix(mariadb(), "VARCHAR(255)", 255));
        QVERIFY(!takesPrefix(mariadb(), "VARCHAR(80)", 255));
        QVERIFY(takesPrefix(mariadb(), "CHAR(255)", 255));
        QVERIFY(!takesPrefix(mariadb(), "CHAR(36)", 255));
        QVERIFY(!takesPrefix(mariadb(), "INTEGER", 255));
    }
    void typesAsTheCatalogueShowsThem()
    {
        QCOMPARE(shownType(sqlite(), "DECIMAL(12,2)"), QString("DECIMAL(12,2)"));
        QCOMPARE(shownType(sqlite(), "\"A\"\"L\"L `x` y"), QString("A\"L"));
        QCOMPARE(shownType(sqlite(), "[a`` b] c"), QString("a`` b"));
        QCOMPARE(shownType(sqlite(), "`a``b` c"), QString("a`b"));
        QCOMPARE(shownType(sqlite(), "x\"y\""), QString("x\"y\""));
        QCOMPARE(shownType(mariadb(), "INTEGER"), QString("int(11)"));
        QCOMPARE(shownType(mariadb(), "DECIMAL(12,2)"), QString("decimal(12,2)"));
        QCOMPARE(shownType(mariadb(), "JSON"), QString("longtext"));
        QCOMPARE(shownType(postgresql(), "VARCHAR(80)"), QString("character varying(80)"));
        QCOMPARE(shownType(postgresql(), "BIGSERIAL"), QString("bigint"));
        QCOMPARE(shownType(sqlite(), "Money"), QString("Money"));
    }
    void codesOfErrors()
    {
        QCOMPARE(codeOf(mariadb(), refusal_cause::relation_exists, error_form::any), QLatin1String("1050"));
        QCOMPARE(codeOf(postgresql(), refusal_cause::relation_exists, error_form::any),
                 QLatin1String("42P07"));
        QCOMPARE(codeOf(sqlite(), refusal_cause::relation_exists, error_form::any),
                 QLatin1String("SQLITE_ERROR"));
        QCOMPARE(codeOf(*factsOf(u"oracle"), refusal_cause::relation_exists, error_form::any),
                 QLatin1String("ORA-00955"));
        QCOMPARE(codeOf(*factsOf(u"mssqlserver"), refusal_cause::relation_exists, error_form::any),
                 QLatin1String("2714"));
        QCOMPARE(codeOf(*factsOf(u"generic"), refusal_cause::relation_exists, error_form::any),
                 QLatin1String());
    }
};

QTEST_APPLESS_MAIN(tst_database_facts)
#include "tst_database_facts.moc"
