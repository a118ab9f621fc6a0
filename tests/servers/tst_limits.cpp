// How many columns, keys and bytes a table can have: what the database answers, and that it is foretold.

#include "database/server/target_database.h"

#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include <QTest>

namespace {

/// "c1 TYPE, c2 TYPE, …"
QString columns(int count, const char * type)
{
    QStringList list;
    for (int i = 1; i <= count; ++i) {
        list += QStringLiteral("c%1 %2").arg(QString::number(i), QLatin1String(type));
    }
    return list.join(QStringLiteral(", "));
}

QString names(int count)
{
    QStringList list;
    for (int i = 1; i <= count; ++i) {
        list += QStringLiteral("c%1").arg(i);
    }
    return list.join(QStringLiteral(", "));
}

QString table(const QString & inside)
{
    return QStringLiteral("CREATE TABLE t (%1)").arg(inside);
}

} // namespace

class tst_limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QString why;
        m_target = database::server::KORVANE_TARGET(why);
        if (!m_target) {
            QSKIP(qPrintable(why));
        }
    }

    void limits_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("code"); // of the last one; empty when it runs
        const auto row = [](const char * database, const char * name, const QStringList & statements,
                            const char * code) {
            QTest::addRow("%s: %s", database, name)
                << QString(database) << statements << QString::fromLatin1(code);
        };
        const QString oneMore = QStringLiteral("ALTER TABLE t ADD COLUMN x INTEGER");
        row("sqlite", "most columns", {table(columns(2000, "INTEGER"))}, "");
        row("sqlite", "a column too many", {table(columns(2001, "INTEGER"))}, "SQLITE_ERROR");
        row("sqlite", "added to the most", {table(columns(2000, "INTEGER")), oneMore}, "SQLITE_ERROR");
        row("sqlite", "key of many columns",
            {table(columns(300, "INTEGER") + ", PRIMARY KEY (" + names(300) + ")")}, "");

        row("postgresql", "most columns", {table(columns(1600, "INTEGER"))}, "");
        row("postgresql", "a column too many", {table(columns(1601, "INTEGER"))}, "54011");
        row("postgresql", "before a column that is there twice",
            {table(columns(1601, "INTEGER") + ", c1 INTEGER")}, "54011");
        row("postgresql", "after a type", {table(columns(1601, "INTEGER") + ", x NONSENSE")}, "42704");
        row("postgresql", "added to the most", {table(columns(1600, "INTEGER")), oneMore}, "54011");
        row("postgresql", "key of most columns",
            {table(columns(40, "INTEGER") + ", PRIMARY KEY (" + names(32) + ")")}, "");
        row("postgresql", "key of a column too many",
            {table(columns(40, "INTEGER") + ", PRIMARY KEY (" + names(33) + ")")}, "54011");

        row("mariadb", "most columns", {table(columns(1017, "INTEGER"))}, "");
        row("mariadb", "a column too many", {table(columns(1018, "INTEGER"))}, "1005");
        row("mariadb", "after a column that is there twice",
            {table(columns(1018, "INTEGER") + ", c1 INTEGER")}, "1060");
        row("mariadb", "after a row too long", {table(columns(1018, "VARCHAR(255)"))}, "1118");
        row("mariadb", "many columns too many", {table(columns(4097, "INTEGER"))}, "1117");
        row("mariadb", "added to the most", {table(columns(1017, "INTEGER")), oneMore}, "1005");
        row("mariadb", "key of most columns",
            {table(columns(40, "INTEGER") + ", PRIMARY KEY (" + names(32) + ")")}, "");
        row("mariadb", "key of a column too many",
            {table(columns(40, "INTEGER") + ", PRIMARY KEY (" + names(33) + ")")}, "1070");
        row("mariadb", "most unique columns", {table(columns(64, "INTEGER UNIQUE"))}, "");
        row("mariadb", "a unique column too many", {table(columns(65, "INTEGER UNIQUE"))}, "1069");
        row("mariadb", "a unique column too many beside the key",
            {table("id INTEGER PRIMARY KEY, " + columns(64, "INTEGER UNIQUE"))}, "1069");
        row("mariadb", "foreign key over the most indexes",
            {QStringLiteral("CREATE TABLE other (id INTEGER PRIMARY KEY)"),
             table("f INTEGER, " + columns(64, "INTEGER UNIQUE")),
             QStringLiteral("ALTER TABLE t ADD CONSTRAINT f FOREIGN KEY (f) REFERENCES other (id)")},
            "1069");
        // What a row takes of a page.
        row("mariadb", "short texts", {table(columns(32, "VARCHAR(63)"))}, "");
        row("mariadb", "a short text too many", {table(columns(33, "VARCHAR(63)"))}, "1118");
        row("mariadb", "short texts beside a key",
            {table("id BIGINT PRIMARY KEY, " + columns(31, "VARCHAR(63)"))}, "");
        row("mariadb", "a short text too many beside a key",
            {table("id BIGINT PRIMARY KEY, " + columns(32, "VARCHAR(63)"))}, "1118");
        row("mariadb", "texts", {table(columns(383, "TEXT"))}, "");
        row("mariadb", "a text too many", {table(columns(384, "TEXT"))}, "1118");
        row("mariadb", "texts that are there", {table(columns(385, "TEXT NOT NULL"))}, "");
        row("mariadb", "a text that is there too many", {table(columns(386, "TEXT NOT NULL"))}, "1118");
        row("mariadb", "fixed texts", {table(columns(55, "CHAR(36)"))}, "");
        row("mariadb", "a fixed text too many", {table(columns(56, "CHAR(36)"))}, "1118");
        row("mariadb", "numbers", {table(columns(997, "BIGINT"))}, "");
        row("mariadb", "a number too many", {table(columns(998, "BIGINT"))}, "1118");
        row("mariadb", "decimals", {table(columns(887, "DECIMAL(20,2)"))}, "");
        row("mariadb", "a decimal too many", {table(columns(888, "DECIMAL(20,2)"))}, "1118");
        row("mariadb", "bytes", {table(columns(40, "VARBINARY(200)"))}, "");
        row("mariadb", "bytes too many", {table(columns(41, "VARBINARY(200)"))}, "1118");
        row("mariadb", "a short text added",
            {table(columns(32, "VARCHAR(63)")), QStringLiteral("ALTER TABLE t ADD COLUMN x VARCHAR(63)")},
            "");
    }
    void limits()
    {
        QFETCH(QString, key);
        QFETCH(QStringList, statements);
        QFETCH(QString, code);
        if (key != m_target->known().key) {
            return;
        }
        QString why;
        QVERIFY2(m_target->reset(why), qPrintable(why));
        database::simulation simulated(m_target->known());
        for (qsizetype i = 0; i < statements.size(); ++i) {
            database::server::server_error error;
            const bool isDone = m_target->execute(statements.at(i), error);
            const database::verdict said = simulated.run(database::readStatements(statements.at(i)).front());
            const QString wanted = i + 1 == statements.size() ? code : QString();
            QCOMPARE(isDone ? QString() : error.code, wanted);
            QCOMPARE(QString(said.code), wanted);
            QCOMPARE(said.what == database::outcome::done, wanted.isEmpty());
        }
        QCOMPARE(database::difference(m_target->held(), simulated.held()), database::catalogue_difference());
    }

private:
    std::unique_ptr<database::server::target_database> m_target;
};

QTEST_GUILESS_MAIN(tst_limits)
#include "tst_limits.moc"
