// SQLite's tables are read once for the statements that made them; whatever changes is read anew.

#include "database/catalogue/catalogue.h"
#include "database/server/target_database.h"

#include <QTest>

#include <memory>

using database::server::server_error;
using database::server::target_database;

class tst_tables_read_again : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        m_target = database::server::startSqlite(why);
        QVERIFY2(m_target && m_target->reset(why), qPrintable(why));
        run("CREATE TABLE a (x INTEGER)");
        run("CREATE TABLE b (x INTEGER PRIMARY KEY AUTOINCREMENT, y TEXT UNIQUE)");
        m_held = m_target->held();
        QCOMPARE(database::linesOf(m_held),
                 QStringList({"column a.x INTEGER", "column b.x INTEGER counted", "column b.y TEXT",
                              "key b (x)", "table a", "table b", "unique b (y) sqlite_autoindex_b_1"}));
    }

    void whatAStatementChanges_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QStringList>("gone");
        QTest::addColumn<QStringList>("come");
        const QStringList none;
        QTest::newRow("a column") << "ALTER TABLE a ADD COLUMN y TEXT" << none
                                  << QStringList("column a.y TEXT");
        QTest::newRow("an index") << "CREATE INDEX i ON a (y)" << none << QStringList("index a (y) i");
        QTest::newRow("a second index") << "CREATE INDEX j ON a (x)" << none << QStringList("index a (x) j");
        QTest::newRow("no index") << "DROP INDEX i" << QStringList("index a (y) i") << none;
        QTest::newRow("the same index, unique")
            << "CREATE UNIQUE INDEX i ON a (y)" << none << QStringList("unique a (y) i");
        QTest::newRow("a foreign key") << "ALTER TABLE a ADD COLUMN z INTEGER REFERENCES b (x)" << none
                                       << QStringList({"column a.z INTEGER", "foreign a (z) -> b (x)"});
        QTest::newRow("a column's name")
            << "ALTER TABLE b RENAME COLUMN y TO yy"
            << QStringList({"column b.y TEXT", "unique b (y) sqlite_autoindex_b_1"})
            << QStringList({"column b.yy TEXT", "unique b (yy) sqlite_autoindex_b_1"});
        QTest::newRow("a name with a quote")
            << "CREATE TABLE \"it's\" (x TEXT)" << none << QStringList({"column it's.x TEXT", "table it's"});
        QTest::newRow("a table that is there once more")
            << "DROP TABLE \"it's\"" << QStringList({"column it's.x TEXT", "table it's"}) << none;
        QTest::newRow("with other columns") << "CREATE TABLE \"it's\" (x INTEGER NOT NULL)" << none
                                            << QStringList({"column it's.x INTEGER NOT NULL", "table it's"});
        QTest::newRow("of a time") << "CREATE TEMPORARY TABLE t (x TEXT)" << none
                                   << QStringList({"column t.x TEXT", "table t"});
        QTest::newRow("with an index")
            << "CREATE INDEX temp.k ON t (x)" << none << QStringList("index t (x) k");
    }
    void whatAStatementChanges()
    {
        QFETCH(const QString, statement);
        QFETCH(const QStringList, gone);
        QFETCH(const QStringList, come);
        run(statement);
        const database::catalogue now = m_target->held();
        const database::catalogue_difference told = database::difference(m_held, now);
        m_held = now;
        QCOMPARE(told.onlyFirst, gone);
        QCOMPARE(told.onlySecond, come);
        // Nothing changed since.
        QCOMPARE(database::linesOf(m_target->held()), database::linesOf(now));
    }

    /// What was read before a reset is of use after it, as far as the statements are the same.
    void anotherDatabase()
    {
        QString why;
        QVERIFY2(m_target->reset(why), qPrintable(why));
        QCOMPARE(database::linesOf(m_target->held()), QStringList());
        run("CREATE TABLE a (x INTEGER)");
        run("CREATE TABLE b (x TEXT)");
        QCOMPARE(database::linesOf(m_target->held()),
                 QStringList({"column a.x INTEGER", "column b.x TEXT", "table a", "table b"}));
    }

private:
    void run(const QString & statement)
    {
        server_error error;
        if (!m_target->execute(statement, error)) {
            QTest::qFail(qPrintable(statement + QStringLiteral(": ") + error.words), __FILE__, __LINE__);
        }
    }

    std::unique_ptr<target_database> m_target;
    database::catalogue m_held;
};

QTEST_GUILESS_MAIN(tst_tables_read_again)
#include "tst_tables_read_again.moc"
