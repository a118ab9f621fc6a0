// What is foretold of databases that are known from their documentation alone.

#include "database/facts/facts.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include <QTest>

using namespace database;

namespace {

/// The answers of an empty database to the statements of a text, done one after the other: "done", or the
/// code.
QStringList answers(const char * key, const char * text, int rows = 0)
{
    simulation server(*factsOf(QString::fromLatin1(key)), {});
    QStringList all;
    for (const statement & each : readStatements(QString::fromUtf8(text))) {
        if (rows > 0) {
            for (const auto & [name, owner] : server.stored().tables) {
                server.putRows(owner.name, rows);
            }
        }
        const verdict said = server.run(each);
        all += said.what == outcome::done ? QStringLiteral("done") : QString(said.code);
    }
    return all;
}

} // namespace

class tst_documented_databases : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answer_data()
    {
        QTest::addColumn<QByteArray>("database");
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QStringList>("said");
        const auto row = [](const char * name, const char * database, const char * script,
                            const QStringList & said) {
            QTest::newRow(name) << QByteArray(database) << QByteArray(script) << said;
        };
        row("a reserved word as a column", "oracle", "CREATE TABLE a (level INTEGER)", {"ORA-00904"});
        row("a reserved word as a table", "mssqlserver", "CREATE TABLE order (x INT)", {"102"});
        row("a word of another database", "mssqlserver", "CREATE TABLE a (level INT, mode INT)", {"done"});
        row("a low line in front (Oracle)", "oracle", "CREATE TABLE a (_x INTEGER)", {"ORA-00904"});
        row("a low line in front (SQL Server)", "mssqlserver", "CREATE TABLE a (_x INT)", {"done"});
        row("an index on a key", "oracle",
            "CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY); CREATE INDEX i ON a (id)",
            {"done", "ORA-01408"});
        row("an index on a unique column", "oracle",
            "CREATE TABLE a (x INTEGER UNIQUE); CREATE INDEX i ON a (x)", {"done", "ORA-01408"});
        row("a second unique constraint", "oracle",
            "CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY, x INTEGER UNIQUE, y INTEGER);"
            "ALTER TABLE a ADD UNIQUE (x); ALTER TABLE a ADD UNIQUE (id); ALTER TABLE a ADD UNIQUE (y);"
            "ALTER TABLE a ADD UNIQUE (y)",
            {"done", "ORA-02261", "ORA-02261", "done", "ORA-02261"});
        row("a unique constraint beside a unique index", "oracle",
            "CREATE TABLE a (x INTEGER); CREATE UNIQUE INDEX i ON a (x); ALTER TABLE a ADD UNIQUE (x)",
            {"done", "done", "done"});
        row("second unique constraints", "mssqlserver",
            "CREATE TABLE a (x INT UNIQUE, y INT UNIQUE); ALTER TABLE a ADD UNIQUE (x);"
            "ALTER TABLE a ADD UNIQUE (y)",
            {"done", "done", "done"});
        row("unique constraints that go", "oracle",
            "CREATE TABLE a (x INTEGER UNIQUE, y INTEGER); ALTER TABLE a DROP UNIQUE (y);"
            "ALTER TABLE a DROP UNIQUE (x); ALTER TABLE a DROP UNIQUE (x);"
            "CREATE INDEX i ON a (x)",
            {"done", "ORA-02442", "done", "ORA-02442", "done"});
        row("a unique constraint that goes by its columns", "mssqlserver",
            "CREATE TABLE a (x INT UNIQUE); ALTER TABLE a DROP UNIQUE (x)", {"done", "102"});
        row("an index on the first column of a key", "oracle",
            "CREATE TABLE a (x INTEGER, y INTEGER, CONSTRAINT k PRIMARY KEY (x, y)); CREATE INDEX i ON a (x)",
            {"done", "done"});
        row("a second index", "mssqlserver", "CREATE TABLE a (x INT UNIQUE); CREATE INDEX i ON a (x)",
            {"done", "done"});
        row("a column with its foreign key", "oracle",
            "CREATE TABLE a (id INTEGER PRIMARY KEY); CREATE TABLE b (x INTEGER, y INTEGER);"
            "ALTER TABLE b ADD CONSTRAINT f FOREIGN KEY (x) REFERENCES a (id); ALTER TABLE b DROP COLUMN x;"
            "ALTER TABLE b DROP CONSTRAINT f",
            {"done", "done", "done", "done", "ORA-02443"});
        row("a column of a key of two", "oracle",
            "CREATE TABLE a (x INTEGER, y INTEGER, CONSTRAINT k PRIMARY KEY (x, y)); ALTER TABLE a DROP "
            "COLUMN x",
            {"done", "ORA-12991"});
        row("a column of a foreign key of two", "oracle",
            "CREATE TABLE a (x INTEGER, y INTEGER, CONSTRAINT k PRIMARY KEY (x, y));"
            "CREATE TABLE b (p INTEGER, q INTEGER, r INTEGER);"
            "ALTER TABLE b ADD CONSTRAINT f FOREIGN KEY (p, q) REFERENCES a (x, y); ALTER TABLE b DROP "
            "COLUMN p",
            {"done", "done", "done", "ORA-12991"});
        row("a key that is referred to", "oracle",
            "CREATE TABLE a (id INTEGER PRIMARY KEY, x INTEGER); CREATE TABLE b (x INTEGER);"
            "ALTER TABLE b ADD CONSTRAINT f FOREIGN KEY (x) REFERENCES a (id); ALTER TABLE a DROP COLUMN id",
            {"done", "done", "done", "ORA-12992"});
        row("a column twice", "oracle",
            "CREATE TABLE a (x INTEGER, X INTEGER); CREATE TABLE b (x INTEGER, y INTEGER);"
            "ALTER TABLE b ADD x INTEGER; ALTER TABLE b RENAME COLUMN x TO y",
            {"ORA-00957", "done", "ORA-01430", "ORA-00957"});
        row("two long texts as a key", "oracle",
            "CREATE TABLE a (x VARCHAR2(4000), y VARCHAR2(4000), CONSTRAINT k PRIMARY KEY (x, y));"
            "CREATE TABLE b (x VARCHAR2(4000), y VARCHAR2(2000), CONSTRAINT l PRIMARY KEY (x, y))",
            {"ORA-01450", "done"});
        row("bytes as a key", "oracle", "CREATE TABLE a (x BLOB NOT NULL PRIMARY KEY)", {"ORA-02329"});
        row("a rename", "mssqlserver",
            "CREATE TABLE a (x INT, y INT); CREATE TABLE b (x INT); EXEC sp_rename 'a', 'b';"
            "EXEC sp_rename 'a.x', 'y', 'COLUMN'; EXEC sp_rename 'c', 'd'; EXEC sp_rename 'a.z', 'w', "
            "'COLUMN'",
            {"done", "done", "15335", "15335", "15225", "15248"});
        row("a rename to a reserved word", "mssqlserver",
            "CREATE TABLE a (x INT, y INT); EXEC sp_rename 'a', 'order'; EXEC sp_rename 'order.x', 'key', "
            "'COLUMN';"
            "ALTER TABLE order DROP COLUMN y; ALTER TABLE [order] DROP COLUMN [key]",
            {"done", "done", "done", "102", "done"});
        row("the schema that is always there", "mssqlserver",
            "CREATE TABLE dbo.a (x INT); CREATE INDEX i ON a (x); CREATE TABLE shop.a (x INT)",
            {"done", "done", "2760"});
        row("a long name of a table", "mysql",
            "CREATE TABLE `a234567890123456789012345678901234567890123456789012345678901234x` (`x` INTEGER)",
            {"1059"});
        row("missing objects", "mssqlserver",
            "CREATE TABLE a (x INT); CREATE INDEX i ON b (x); ALTER TABLE b DROP COLUMN x;"
            "ALTER TABLE a ADD CONSTRAINT f FOREIGN KEY (z) REFERENCES a (x)",
            {"done", "1088", "4902", "1769"});
        row("a column that is bound", "mssqlserver",
            "CREATE TABLE a (x INT UNIQUE, y INT, z INT); CREATE INDEX i ON a (y);"
            "ALTER TABLE a ALTER COLUMN x BIGINT NULL; ALTER TABLE a ALTER COLUMN y INT NOT NULL;"
            "ALTER TABLE a ALTER COLUMN z INT NOT NULL; ALTER TABLE a ALTER COLUMN z INT NULL;"
            "ALTER TABLE a ALTER COLUMN z TEXT NULL; ALTER TABLE a ALTER COLUMN z VARCHAR(20);"
            "ALTER TABLE a ALTER COLUMN w INT",
            {"done", "done", "5074", "5074", "done", "done", "206", "done", "4924"});
        row("a column restated", "postgresql", "CREATE TABLE a (x INT); ALTER TABLE a ALTER COLUMN x BIGINT",
            {"done", "42601"});
        row("types (Oracle)", "oracle",
            "CREATE TABLE a (a VARCHAR2(100 CHAR), b NVARCHAR2(20), c NUMBER(*, 2), d RAW(16), e "
            "BINARY_DOUBLE,"
            " f TIMESTAMP(6) WITH TIME ZONE, g DOUBLE PRECISION, h NCLOB, i XMLTYPE, j REAL, k LONG)",
            {"done"});
        row("types of others (Oracle)", "oracle",
            "CREATE TABLE a (x TEXT); CREATE TABLE a (x BIGINT); CREATE TABLE a (x DATETIME);"
            "CREATE TABLE a (x VARCHAR2)",
            {"ORA-00902", "ORA-00902", "ORA-00902", "ORA-00904"});
        row("types (SQL Server)", "mssqlserver",
            "CREATE TABLE a (a NVARCHAR(MAX), b UNIQUEIDENTIFIER, c DATETIME2(3), d BIT, e VARBINARY(max), f "
            "MONEY,"
            " g DATETIMEOFFSET, h XML, i NVARCHAR(4000), j DOUBLE PRECISION, k NUMERIC(10,2))",
            {"done"});
        row("types of others (SQL Server)", "mssqlserver",
            "CREATE TABLE a (x BOOLEAN); CREATE TABLE a (x CLOB); CREATE TABLE a (x VARCHAR(9000))",
            {"2715", "2715", "131"});
        row("a text without a bound", "mssqlserver",
            "CREATE TABLE a (x NVARCHAR(MAX)); CREATE INDEX i ON a (x)", {"done", "1919"});
        row("lengths of a foreign key", "mssqlserver",
            "CREATE TABLE a (id VARCHAR(255) NOT NULL PRIMARY KEY); CREATE TABLE b (x VARCHAR(100), y "
            "varchar(255));"
            "ALTER TABLE b ADD CONSTRAINT f FOREIGN KEY (x) REFERENCES a (id);"
            "ALTER TABLE b ADD CONSTRAINT g FOREIGN KEY (y) REFERENCES a (id)",
            {"done", "done", "1778", "done"});
    }
    void answer()
    {
        QFETCH(const QByteArray, database);
        QFETCH(const QByteArray, script);
        QFETCH(const QStringList, said);
        QCOMPARE(answers(database.constData(), script.constData()), said);
    }
    void rowsThatAreAlike()
    {
        const char * const added = "CREATE TABLE a (id INT); ALTER TABLE a ADD x INT UNIQUE";
        QCOMPARE(answers("mssqlserver", added, 2), (QStringList{"done", "1505"}));
        QCOMPARE(answers("mssqlserver", added, 1), (QStringList{"done", "done"}));
        QCOMPARE(answers("oracle", "CREATE TABLE a (id INTEGER); ALTER TABLE a ADD x INTEGER UNIQUE", 2),
                 (QStringList{"done", "done"}));
    }
};

QTEST_GUILESS_MAIN(tst_documented_databases)
#include "tst_documented_databases.moc"
