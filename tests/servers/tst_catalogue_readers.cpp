// What a database tells of itself: two ways of saying one thing are read alike, and what looks much like it
// and is something else is not.

#include "check/view/schema_difference.h"
#include "database/catalogue/catalogue.h"
#include "database/server/target_database.h"

#include <QMap>
#include <QTest>

#include <memory>
#include <span>

using database::server::server_error;
using database::server::target_database;

namespace {

/// Two ways of making something, and the lines that only one of both catalogues has then.
struct reading_case
{
    const char * what;
    const char * first; ///< statements, a line each
    const char * second;
    const char * onlyFirst; ///< empty, as onlySecond, for what is read alike
    const char * onlySecond;
};

constexpr reading_case OfSqlite[] = {
    {"a null", "CREATE TABLE a (x INT NOT NULL)", "CREATE TABLE a (x INT)", "column a.x INT NOT NULL",
     "column a.x INT"},
    {"a type by its words", "CREATE TABLE a (x INT)", "CREATE TABLE a (x INTEGER)", "column a.x INT",
     "column a.x INTEGER"},
    {"a length", "CREATE TABLE a (x VARCHAR(10))", "CREATE TABLE a (x VARCHAR(11))", "column a.x VARCHAR(10)",
     "column a.x VARCHAR(11)"},
    {"a counter", "CREATE TABLE a (x INTEGER PRIMARY KEY AUTOINCREMENT)",
     "CREATE TABLE a (x INTEGER PRIMARY KEY)", "column a.x INTEGER counted", "column a.x INTEGER"},
    {"the word of a counter in a text",
     "CREATE TABLE a (x INTEGER PRIMARY KEY, y TEXT DEFAULT 'AUTOINCREMENT' /* AUTOINCREMENT */)",
     "CREATE TABLE a (x INTEGER PRIMARY KEY, y TEXT)", "", ""},
    {"the word of a counter as a name", "CREATE TABLE a (x INTEGER PRIMARY KEY, \"autoincrement\" TEXT)",
     "CREATE TABLE a (x INTEGER PRIMARY KEY AUTOINCREMENT, \"autoincrement\" TEXT)", "column a.x INTEGER",
     "column a.x INTEGER counted"},
    {"the counter of another table",
     "CREATE TABLE a (x INTEGER PRIMARY KEY)\nCREATE TABLE b (x INTEGER PRIMARY KEY AUTOINCREMENT)",
     "CREATE TABLE a (x INTEGER PRIMARY KEY AUTOINCREMENT)\nCREATE TABLE b (x INTEGER PRIMARY KEY)",
     "column a.x INTEGER\ncolumn b.x INTEGER counted", "column a.x INTEGER counted\ncolumn b.x INTEGER"},
    {"a key said in two places", "CREATE TABLE a (x TEXT PRIMARY KEY)",
     "CREATE TABLE a (x TEXT, PRIMARY KEY (x))", "", ""},
    {"a key", "CREATE TABLE a (x TEXT PRIMARY KEY)", "CREATE TABLE a (x TEXT UNIQUE)", "key a (x)",
     "unique a (x) sqlite_autoindex_a_1"},
    {"the order of a key", "CREATE TABLE a (x INT, y INT, PRIMARY KEY (x, y))",
     "CREATE TABLE a (x INT, y INT, PRIMARY KEY (y, x))", "key a (x,y)", "key a (y,x)"},
    {"a key of one column more", "CREATE TABLE a (x INT, y INT, PRIMARY KEY (x))",
     "CREATE TABLE a (x INT, y INT, PRIMARY KEY (x, y))", "key a (x)", "key a (x,y)"},
    {"unique in two places", "CREATE TABLE a (x INT UNIQUE)", "CREATE TABLE a (x INT, UNIQUE (x))", "", ""},
    {"unique by an index", "CREATE TABLE a (x INT UNIQUE)",
     "CREATE TABLE a (x INT)\nCREATE UNIQUE INDEX i ON a (x)", "unique a (x) sqlite_autoindex_a_1",
     "unique a (x) i"},
    {"an index", "CREATE TABLE a (x INT)\nCREATE INDEX i ON a (x)",
     "CREATE TABLE a (x INT)\nCREATE UNIQUE INDEX i ON a (x)", "index a (x) i", "unique a (x) i"},
    {"two indexes", "CREATE TABLE a (x INT, y INT)\nCREATE INDEX i ON a (x)\nCREATE INDEX j ON a (y)",
     "CREATE TABLE a (x INT, y INT)\nCREATE INDEX i ON a (x, y)", "index a (x) i\nindex a (y) j",
     "index a (x,y) i"},
    {"the order of an index", "CREATE TABLE a (x INT, y INT)\nCREATE INDEX i ON a (x, y)",
     "CREATE TABLE a (x INT, y INT)\nCREATE INDEX i ON a (y, x)", "index a (x,y) i", "index a (y,x) i"},
    {"the name of an index", "CREATE TABLE a (x INT)\nCREATE INDEX i ON a (x)",
     "CREATE TABLE a (x INT)\nCREATE INDEX j ON a (x)", "index a (x) i", "index a (x) j"},
    {"the index of another table", "CREATE TABLE a (x INT)\nCREATE TABLE b (x INT)\nCREATE INDEX i ON a (x)",
     "CREATE TABLE a (x INT)\nCREATE TABLE b (x INT)\nCREATE INDEX i ON b (x)", "index a (x) i",
     "index b (x) i"},
    {"a target in other case", "CREATE TABLE a (x INT PRIMARY KEY, y INT REFERENCES a (X))",
     "CREATE TABLE a (x INT PRIMARY KEY, y INT REFERENCES a (x))", "", ""},
    {"a target", "CREATE TABLE a (x INT, y INT, z INT REFERENCES a (x))",
     "CREATE TABLE a (x INT, y INT, z INT REFERENCES a (y))", "foreign a (z) -> a (x)",
     "foreign a (z) -> a (y)"},
    {"a target table", "CREATE TABLE a (x INT REFERENCES a (x))", "CREATE TABLE a (x INT REFERENCES b (x))",
     "foreign a (x) -> a (x)", "foreign a (x) -> b (x)"},
    {"a foreign key of two columns", "CREATE TABLE a (x INT, y INT, FOREIGN KEY (x, y) REFERENCES b (p, q))",
     "CREATE TABLE a (x INT, y INT, FOREIGN KEY (x) REFERENCES b (p), FOREIGN KEY (y) REFERENCES b (q))",
     "foreign a (x,y) -> b (p,q)", "foreign a (x) -> b (p)\nforeign a (y) -> b (q)"},
    {"the order of a foreign key", "CREATE TABLE a (x INT, y INT, FOREIGN KEY (x, y) REFERENCES b (p, q))",
     "CREATE TABLE a (x INT, y INT, FOREIGN KEY (x, y) REFERENCES b (q, p))", "foreign a (x,y) -> b (p,q)",
     "foreign a (x,y) -> b (q,p)"},
    {"a quoted name", "CREATE TABLE \"a\" (\"x\" INT)", "CREATE TABLE a (x INT)", "", ""},
    {"a name in other case", "CREATE TABLE A (x INT)", "CREATE TABLE a (x INT)", "column A.x INT\ntable A",
     "column a.x INT\ntable a"},
};

constexpr reading_case OfMariaDb[] = {
    {"a null", "CREATE TABLE a (x int NOT NULL)", "CREATE TABLE a (x int)", "column a.x int(11) NOT NULL",
     "column a.x int(11)"},
    {"a number by another word", "CREATE TABLE a (x INTEGER)", "CREATE TABLE a (x int(11))", "", ""},
    {"a number shown wider", "CREATE TABLE a (x int(11))", "CREATE TABLE a (x int(5))", "column a.x int(11)",
     "column a.x int(5)"},
    {"a number without a sign", "CREATE TABLE a (x int(11))", "CREATE TABLE a (x int(11) unsigned)",
     "column a.x int(11)", "column a.x int(11) unsigned"},
    {"a number of another size", "CREATE TABLE a (x tinyint(1))", "CREATE TABLE a (x smallint(1))",
     "column a.x tinyint(1)", "column a.x smallint(1)"},
    {"digits", "CREATE TABLE a (x decimal(10))", "CREATE TABLE a (x decimal(10,2))",
     "column a.x decimal(10,0)", "column a.x decimal(10,2)"},
    {"a text", "CREATE TABLE a (x text)", "CREATE TABLE a (x mediumtext)", "column a.x text",
     "column a.x mediumtext"},
    {"a length", "CREATE TABLE a (x varchar(10))", "CREATE TABLE a (x varchar(11))", "column a.x varchar(10)",
     "column a.x varchar(11)"},
    {"a counter", "CREATE TABLE a (x int PRIMARY KEY AUTO_INCREMENT)", "CREATE TABLE a (x int PRIMARY KEY)",
     "column a.x int(11) NOT NULL counted", "column a.x int(11) NOT NULL"},
    {"the word of a counter in a comment", "CREATE TABLE a (x int PRIMARY KEY COMMENT 'auto_increment')",
     "CREATE TABLE a (x int PRIMARY KEY)", "", ""},
    {"what follows an update is no counter",
     "CREATE TABLE a (x timestamp NULL ON UPDATE current_timestamp())", "CREATE TABLE a (x timestamp NULL)",
     "", ""},
    {"a key said in two places", "CREATE TABLE a (x int PRIMARY KEY)",
     "CREATE TABLE a (x int, PRIMARY KEY (x))", "", ""},
    {"a key with a name, which is always the same", "CREATE TABLE a (x int, CONSTRAINT k PRIMARY KEY (x))",
     "CREATE TABLE a (x int PRIMARY KEY)", "", ""},
    {"a key", "CREATE TABLE a (x int PRIMARY KEY)", "CREATE TABLE a (x int NOT NULL UNIQUE)", "key a (x)",
     "unique a (x) x"},
    {"the order of a key", "CREATE TABLE a (x int, y int, PRIMARY KEY (x, y))",
     "CREATE TABLE a (x int, y int, PRIMARY KEY (y, x))", "key a (x,y)", "key a (y,x)"},
    {"a beginning in a key", "CREATE TABLE a (x varchar(9), PRIMARY KEY (x(3)))",
     "CREATE TABLE a (x varchar(9), PRIMARY KEY (x(4)))", "key a (x(3))", "key a (x(4))"},
    {"a beginning in an index", "CREATE TABLE a (x text)\nCREATE INDEX i ON a (x(3))",
     "CREATE TABLE a (x text)\nCREATE INDEX i ON a (x(4))", "index a (x(3)) i", "index a (x(4)) i"},
    {"all of a text as its beginning", "CREATE TABLE a (x varchar(9))\nCREATE INDEX i ON a (x(9))",
     "CREATE TABLE a (x varchar(9))\nCREATE INDEX i ON a (x)", "", ""},
    {"an index", "CREATE TABLE a (x int)\nCREATE INDEX i ON a (x)",
     "CREATE TABLE a (x int)\nCREATE UNIQUE INDEX i ON a (x)", "index a (x) i", "unique a (x) i"},
    {"unique by an index", "CREATE TABLE a (x int UNIQUE)",
     "CREATE TABLE a (x int)\nCREATE UNIQUE INDEX x ON a (x)", "", ""},
    {"two indexes", "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x)\nCREATE INDEX j ON a (y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x, y)", "index a (x) i\nindex a (y) j",
     "index a (x,y) i"},
    {"one name in two tables",
     "CREATE TABLE a (x int)\nCREATE TABLE b (x int)\nCREATE INDEX i ON a (x)\nCREATE INDEX i ON b (x)",
     "CREATE TABLE a (x int)\nCREATE TABLE b (x int)\nCREATE INDEX i ON a (x)", "index b (x) i", ""},
    {"the order of an index", "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x, y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (y, x)", "index a (x,y) i", "index a (y,x) i"},
    {"the index of a foreign key",
     "CREATE TABLE a (x int PRIMARY KEY, y int, CONSTRAINT f FOREIGN KEY (y) REFERENCES a (x))",
     "CREATE TABLE a (x int PRIMARY KEY, y int, KEY f (y), CONSTRAINT f FOREIGN KEY (y) REFERENCES a "
     "(x))",
     "", ""},
    {"an index without its foreign key",
     "CREATE TABLE a (x int PRIMARY KEY, y int, CONSTRAINT f FOREIGN KEY (y) REFERENCES a (x))",
     "CREATE TABLE a (x int PRIMARY KEY, y int, KEY f (y))", "foreign a (y) -> a (x) f", ""},
    {"a target",
     "CREATE TABLE a (x int UNIQUE, y int UNIQUE, z int, CONSTRAINT f FOREIGN KEY (z) REFERENCES a (x))",
     "CREATE TABLE a (x int UNIQUE, y int UNIQUE, z int, CONSTRAINT f FOREIGN KEY (z) REFERENCES a (y))",
     "foreign a (z) -> a (x) f", "foreign a (z) -> a (y) f"},
    {"the order of a foreign key",
     "CREATE TABLE b (p int, q int, KEY k (p, q), KEY l (q, p))\nCREATE TABLE a (x int, y int, "
     "CONSTRAINT f FOREIGN KEY (x, y) REFERENCES b (p, q))",
     "CREATE TABLE b (p int, q int, KEY k (p, q), KEY l (q, p))\nCREATE TABLE a (x int, y int, "
     "CONSTRAINT f FOREIGN KEY (x, y) REFERENCES b (q, p))",
     "foreign a (x,y) -> b (p,q) f", "foreign a (x,y) -> b (q,p) f"},
    {"a name in other case", "CREATE TABLE A (x int)", "CREATE TABLE a (x int)",
     "column A.x int(11)\ntable A", "column a.x int(11)\ntable a"},
};

constexpr reading_case OfPostgreSql[] = {
    {"a null", "CREATE TABLE a (x int NOT NULL)", "CREATE TABLE a (x int)", "column a.x integer NOT NULL",
     "column a.x integer"},
    {"a number by another word", "CREATE TABLE a (x int4)", "CREATE TABLE a (x integer)", "", ""},
    {"a number of another size", "CREATE TABLE a (x integer)", "CREATE TABLE a (x bigint)",
     "column a.x integer", "column a.x bigint"},
    {"digits", "CREATE TABLE a (x numeric)", "CREATE TABLE a (x numeric(10,2))", "column a.x numeric",
     "column a.x numeric(10,2)"},
    {"a length", "CREATE TABLE a (x varchar(10))", "CREATE TABLE a (x varchar(11))",
     "column a.x character varying(10)", "column a.x character varying(11)"},
    {"a text", "CREATE TABLE a (x varchar)", "CREATE TABLE a (x text)", "column a.x character varying",
     "column a.x text"},
    {"a zone", "CREATE TABLE a (x timestamp)", "CREATE TABLE a (x timestamptz)",
     "column a.x timestamp without time zone", "column a.x timestamp with time zone"},
    {"many values", "CREATE TABLE a (x int[])", "CREATE TABLE a (x int)", "column a.x integer[]",
     "column a.x integer"},
    {"a counter", "CREATE TABLE a (x serial)", "CREATE TABLE a (x int NOT NULL)",
     "column a.x integer NOT NULL counted\nsequence a_x_seq", "column a.x integer NOT NULL"},
    {"a counter by its parts", "CREATE TABLE a (x serial)",
     "CREATE TABLE a (x int NOT NULL)\nCREATE SEQUENCE a_x_seq OWNED BY a.x\nALTER TABLE a ALTER COLUMN "
     "x SET DEFAULT nextval('a_x_seq')",
     "", ""},
    {"an identity", "CREATE TABLE a (x serial)", "CREATE TABLE a (x int GENERATED BY DEFAULT AS IDENTITY)",
     "", ""},
    {"a sequence that counts nothing", "CREATE TABLE a (x serial)",
     "CREATE TABLE a (x int NOT NULL)\nCREATE SEQUENCE a_x_seq OWNED BY a.x",
     "column a.x integer NOT NULL counted", "column a.x integer NOT NULL"},
    {"a default that counts nothing", "CREATE TABLE a (x int DEFAULT 3)", "CREATE TABLE a (x int)", "", ""},
    {"a sequence of another name", "CREATE TABLE a (x serial)",
     "CREATE SEQUENCE s\nCREATE TABLE a (x int NOT NULL DEFAULT nextval('s'))\nALTER SEQUENCE s OWNED BY "
     "a.x",
     "sequence a_x_seq", "sequence s"},
    {"a key by its name", "CREATE TABLE a (x int PRIMARY KEY)",
     "CREATE TABLE a (x int, CONSTRAINT a_pkey PRIMARY KEY (x))", "", ""},
    {"a key of another name", "CREATE TABLE a (x int PRIMARY KEY)",
     "CREATE TABLE a (x int, CONSTRAINT k PRIMARY KEY (x))", "key a (x) a_pkey", "key a (x) k"},
    {"the order of a key", "CREATE TABLE a (x int, y int, PRIMARY KEY (x, y))",
     "CREATE TABLE a (x int, y int, PRIMARY KEY (y, x))", "key a (x,y) a_pkey", "key a (y,x) a_pkey"},
    {"an index", "CREATE TABLE a (x int)\nCREATE INDEX i ON a (x)",
     "CREATE TABLE a (x int)\nCREATE UNIQUE INDEX i ON a (x)", "index a (x) i", "unique a (x) i"},
    {"what an index includes is no part of it",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x) INCLUDE (y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x)", "", ""},
    {"an index of two columns", "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x) INCLUDE (y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x, y)", "index a (x) i", "index a (x,y) i"},
    {"the order of an index", "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x, y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (y, x)", "index a (x,y) i", "index a (y,x) i"},
    {"an index over what is no column", "CREATE TABLE a (x text)\nCREATE INDEX i ON a (lower(x))",
     "CREATE TABLE a (x text)\nCREATE INDEX i ON a (x)", "index a () i", "index a (x) i"},
    {"two indexes", "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x)\nCREATE INDEX j ON a (y)",
     "CREATE TABLE a (x int, y int)\nCREATE INDEX i ON a (x, y)", "index a (x) i\nindex a (y) j",
     "index a (x,y) i"},
    {"a target",
     "CREATE TABLE a (x int UNIQUE, y int UNIQUE, z int, CONSTRAINT f FOREIGN KEY (z) REFERENCES a (x))",
     "CREATE TABLE a (x int UNIQUE, y int UNIQUE, z int, CONSTRAINT f FOREIGN KEY (z) REFERENCES a (y))",
     "foreign a (z) -> a (x) f", "foreign a (z) -> a (y) f"},
    {"the order of a foreign key",
     "CREATE TABLE b (p int, q int, UNIQUE (p, q))\nCREATE TABLE a (x int, y int, CONSTRAINT f FOREIGN "
     "KEY (x, y) REFERENCES b (p, q))",
     "CREATE TABLE b (p int, q int, UNIQUE (p, q))\nCREATE TABLE a (x int, y int, CONSTRAINT f FOREIGN "
     "KEY (y, x) REFERENCES b (p, q))",
     "foreign a (x,y) -> b (p,q) f", "foreign a (y,x) -> b (p,q) f"},
    {"the name of a foreign key",
     "CREATE TABLE a (x int PRIMARY KEY, y int, CONSTRAINT f FOREIGN KEY (y) REFERENCES a (x))",
     "CREATE TABLE a (x int PRIMARY KEY, y int, CONSTRAINT g FOREIGN KEY (y) REFERENCES a (x))",
     "foreign a (y) -> a (x) f", "foreign a (y) -> a (x) g"},
    {"a dropped column", "CREATE TABLE a (x int, y int)\nALTER TABLE a DROP COLUMN y",
     "CREATE TABLE a (x int)", "", ""},
    {"a quoted name", "CREATE TABLE \"a\" (X int)", "CREATE TABLE a (x int)", "", ""},
    {"a name in other case", "CREATE TABLE \"A\" (x int)", "CREATE TABLE a (x int)",
     "column A.x integer\ntable A", "column a.x integer\ntable a"},
};

} // namespace

class tst_catalogue_readers : public QObject
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

    void readsWhatIsThere_data()
    {
        const QMap<QString, std::span<const reading_case>> all = {
            {QStringLiteral("sqlite"), OfSqlite},
            {QStringLiteral("mariadb"), OfMariaDb},
            {QStringLiteral("postgresql"), OfPostgreSql}};
        QTest::addColumn<reading_case>("asked");
        for (const reading_case & each : all.value(m_target->known().key)) {
            QTest::newRow(each.what) << each;
        }
    }
    void readsWhatIsThere()
    {
        QFETCH(const reading_case, asked);
        const database::catalogue first = made(asked.first);
        const database::catalogue second = made(asked.second);
        const database::catalogue_difference told = database::difference(first, second);
        QCOMPARE(told.onlyFirst, linesOf(asked.onlyFirst));
        QCOMPARE(told.onlySecond, linesOf(asked.onlySecond));
    }
    void theOrderOfColumnsIsToldByItself()
    {
        const auto told = check::compareSchemas(made("CREATE TABLE a (x int, y int)"),
                                                made("CREATE TABLE a (y int, x int)"));
        QCOMPARE(told.size(), 1U);
        QCOMPARE(told.front().kind, check::difference_kind::order);
    }

    /// One that belongs to a column goes with it; one that stands alone stays. Not every counter is one.
    void sequencesBelongToColumns_data()
    {
        QTest::addColumn<QByteArray>("statements");
        QTest::addColumn<QStringList>("owned");
        QTest::addColumn<QStringList>("alone");
        const QStringList none;
        const QStringList sequence{QStringLiteral("a_x_seq")};
        const QString key = m_target->known().key;
        if (key == QLatin1String("postgresql")) {
            QTest::newRow("counter") << QByteArray("CREATE TABLE a (x serial)") << sequence << none;
            QTest::newRow("identity")
                << QByteArray("CREATE TABLE a (x int GENERATED ALWAYS AS IDENTITY)") << sequence << none;
            QTest::newRow("alone") << QByteArray("CREATE SEQUENCE a_x_seq\nCREATE TABLE a (x int NOT NULL "
                                                 "DEFAULT nextval('a_x_seq'))")
                                   << none << sequence;
        } else {
            const QByteArray counter = key == QLatin1String("sqlite") ? "INTEGER PRIMARY KEY AUTOINCREMENT"
                                                                      : "int PRIMARY KEY AUTO_INCREMENT";
            QTest::newRow("counter") << QByteArray("CREATE TABLE a (x " + counter + ")") << none << none;
        }
    }
    void sequencesBelongToColumns()
    {
        QFETCH(const QByteArray, statements);
        const database::catalogue held = made(statements.constData());
        QStringList owned;
        for (const database::sequence & each : held.tables.at("a").sequences) {
            owned += each.name;
            QCOMPARE(each.column, QString("x"));
        }
        QStringList alone;
        for (const database::sequence & each : held.sequences) {
            alone += each.name;
            QCOMPARE(each.column, QString());
        }
        QTEST(owned, "owned");
        QTEST(alone, "alone");
        QVERIFY(held.tables.at("a").columns[0].counted);
    }

private:
    static QStringList linesOf(const char * text)
    {
        return QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
    }
    /// What the database holds when nothing but these statements was run.
    database::catalogue made(const char * statements)
    {
        QString why;
        if (!m_target->reset(why)) {
            QTest::qFail(qPrintable(why), __FILE__, __LINE__);
        }
        for (const QString & each : QString::fromUtf8(statements).split(u'\n')) {
            server_error error;
            if (!m_target->execute(each, error)) {
                QTest::qFail(qPrintable(each + QStringLiteral(": ") + error.words), __FILE__, __LINE__);
            }
        }
        return m_target->held();
    }

    std::unique_ptr<target_database> m_target;
};

QTEST_GUILESS_MAIN(tst_catalogue_readers)
#include "tst_catalogue_readers.moc"
