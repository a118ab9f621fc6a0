#include "database/facts/facts.h"
#include "database/simulation/simulation.h"
#include "database/statement/reader.h"

#include <QTest>

using namespace database;

namespace {

/// A database that statements are run on, with the verdict of each.
class script
{
public:
    explicit script(QStringView database, const catalogue & begin = {})
        : m_reader(*factsOf(database)), m_simulation(*factsOf(database), begin)
    {
    }

    /// Runs the statements of the text and gives the verdict of the last.
    verdict run(const QString & text)
    {
        verdict last;
        for (const statement & each : m_reader.read(text)) {
            last = m_simulation.run(each);
        }
        return last;
    }
    /// The code of the last statement's refusal; "done" when it is not refused.
    QString code(const QString & text)
    {
        const verdict said = run(text);
        return said.what == outcome::done ? QString("done") : QString(said.code);
    }
    QStringList lines() { return linesOf(m_simulation.held()); }
    simulation & database() { return m_simulation; }
    /// Runs the one statement; what it made when that is the same anywhere.
    std::optional<table> madeByItself(const QString & text)
    {
        const statement read = readStatements(text).front();
        m_simulation.run(read);
        const table * const made = m_simulation.madeByItself(read);
        return made == nullptr ? std::nullopt : std::optional(*made);
    }

private:
    statement_reader m_reader;
    simulation m_simulation;
};

} // namespace

class tst_simulation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRefusedStatementChangesNothing()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`id` INTEGER NOT NULL AUTO_INCREMENT, `x` TEXT, PRIMARY KEY (`id`))");
        const QStringList before = mariadb.lines();
        QCOMPARE(before, (QStringList{"column a.id int(11) NOT NULL counted", "column a.x text", "key a (id)",
                                      "table a"}));
        for (const char * text :
             {"CREATE TABLE `a` (`y` INTEGER)", "ALTER TABLE `a` ADD COLUMN `X` INTEGER",
              "ALTER TABLE `a` CHANGE `x` `id` TEXT", "CREATE INDEX i ON `a` (`y`)", "DROP INDEX i ON `a`",
              "ALTER TABLE `a` DROP COLUMN `y`", "RENAME TABLE `b` TO `c`", "RENAME TABLE `a` TO `a`",
              "ALTER TABLE `a` ADD CONSTRAINT f FOREIGN KEY (`x`) REFERENCES `a` (`id`)",
              "ALTER TABLE `a` DROP CONSTRAINT f", "CREATE TABLE `b` (`x` BYTEA)", "DROP TABLE `b`"}) {
            QVERIFY2(mariadb.run(text).what == outcome::refused, text);
            QCOMPARE(mariadb.lines(), before);
        }
    }
    void aConsequenceNamesTheEarlierRefusal()
    {
        script sqlite(u"sqlite");
        sqlite.run("CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT)"); // 0
        const verdict unique = sqlite.run("ALTER TABLE a ADD COLUMN x TEXT UNIQUE");  // 1
        QCOMPARE(unique.cause, refusal_cause::unique_added);
        QCOMPARE(unique.consequenceOf, -1);
        const verdict indexed = sqlite.run("CREATE INDEX idx_a_x ON a (x)"); // 2
        QCOMPARE(indexed.cause, refusal_cause::key_column_missing);
        QCOMPARE(indexed.consequenceOf, 1);
        QCOMPARE(sqlite.run("DROP INDEX idx_a_x").consequenceOf, 2);
        QCOMPARE(sqlite.run("CREATE INDEX idx_a_y ON a (y)").consequenceOf, -1);
    }
    void aNameThatWasNotFreedIsAConsequence()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY); CREATE TABLE b (a_id INTEGER);"
                       "ALTER TABLE b ADD CONSTRAINT fk FOREIGN KEY (a_id) REFERENCES a (id)"); // 0 to 2
        QCOMPARE(postgresql.run("DROP TABLE a").cause, refusal_cause::table_referred_to);       // 3
        const verdict again = postgresql.run("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY)");
        QCOMPARE(again.code, QLatin1String("42P07"));
        QCOMPARE(again.consequenceOf, 3);
        QCOMPARE(again.object, QString("table a"));
    }
    void whatIsUnknownIsNotJudged()
    {
        script sqlite(u"sqlite");
        QCOMPARE(sqlite.run("CREATE VIEW v AS SELECT 1").what, outcome::not_judged);
        QCOMPARE(sqlite.lines(), QStringList());
        QCOMPARE(sqlite.run("CREATE TABLE v (x INTEGER)").what, outcome::done);
    }
    void ifExistsIsNoRefusal()
    {
        script postgresql(u"postgresql");
        QCOMPARE(postgresql.code("DROP TABLE a"), QString("42P01"));
        QCOMPARE(postgresql.code("DROP TABLE IF EXISTS a"), QString("done"));
        postgresql.run("CREATE TABLE a (x INTEGER)");
        QCOMPARE(postgresql.code("CREATE TABLE IF NOT EXISTS a (y INTEGER)"), QString("done"));
        QCOMPARE(postgresql.code("ALTER TABLE a DROP COLUMN IF EXISTS y"), QString("done"));
        QCOMPARE(postgresql.code("ALTER TABLE a ADD COLUMN IF NOT EXISTS x TEXT"), QString("done"));
        QCOMPARE(postgresql.code("DROP INDEX IF EXISTS i"), QString("done"));
        QCOMPARE(postgresql.code("ALTER TABLE a DROP CONSTRAINT IF EXISTS f"), QString("done"));
        QCOMPARE(postgresql.code("ALTER TABLE IF EXISTS a DROP COLUMN x"), QString());
        QCOMPARE(postgresql.lines(), (QStringList{"column a.x integer", "table a"}));
    }
    void quotedNamesKeepTheirCase()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE \"Order\" (\"Select\" INTEGER)");
        QCOMPARE(postgresql.lines(), (QStringList{"column Order.Select integer", "table Order"}));
        QCOMPARE(postgresql.code("DROP TABLE Order"), QString("42601"));
        QCOMPARE(postgresql.code("DROP TABLE \"order\""), QString("42P01"));
        QCOMPARE(postgresql.code("DROP TABLE \"Order\""), QString("done"));
    }
    void namesThatAreCutAreTold()
    {
        script postgresql(u"postgresql");
        const QString longName(70, u'a');
        const verdict said = postgresql.run("CREATE TABLE " + longName + " (x INTEGER)");
        QCOMPARE(said.what, outcome::done);
        QCOMPARE(said.losses, (std::vector<loss>{{loss_kind::name_cut, longName}}));
        QCOMPARE(postgresql.lines().last(), "table " + QString(63, u'a'));
    }
    void losses()
    {
        script mariadb(u"mariadb");
        mariadb.run(
            "CREATE TABLE `a` (`id` INTEGER NOT NULL AUTO_INCREMENT, `x` INTEGER NOT NULL, PRIMARY KEY "
            "(`id`))");
        QCOMPARE(mariadb.run("ALTER TABLE `a` CHANGE `id` `nr` INTEGER NOT NULL").losses,
                 (std::vector<loss>{{loss_kind::counter, "column a.nr"}}));
        QCOMPARE(mariadb.run("ALTER TABLE `a` CHANGE `x` `y` INTEGER").losses,
                 (std::vector<loss>{{loss_kind::not_null, "column a.y"}}));
        QCOMPARE(mariadb.run("ALTER TABLE `a` DROP COLUMN `nr`").losses,
                 (std::vector<loss>{{loss_kind::values, "column a.nr"}, {loss_kind::key, "table a"}}));
        QCOMPARE(mariadb.run("DROP TABLE `a`").losses, (std::vector<loss>{{loss_kind::rows, "table a"}}));
    }
    void aColumnNamedConstraintIsNotMadeOnSqlite()
    {
        script sqlite(u"sqlite");
        const verdict said = sqlite.run("CREATE TABLE a (x INTEGER, constraint TEXT)");
        QCOMPARE(said.what, outcome::done);
        QCOMPARE(said.losses, (std::vector<loss>{{loss_kind::column_not_made, "column a.constraint"}}));
        QCOMPARE(sqlite.lines(), (QStringList{"column a.x INTEGER", "table a"}));
        QCOMPARE(sqlite.code("CREATE TABLE b (constraint TEXT, x INTEGER)"), QString("SQLITE_ERROR"));
    }
    void columnsThatAreWordsOfTheTypeBeforeThem()
    {
        script sqlite(u"sqlite");
        const verdict said = sqlite.run("CREATE TABLE a (x`y INTEGER, z`w BIGINT NOT NULL, v TEXT)");
        QCOMPARE(said.what, outcome::done);
        QCOMPARE(said.losses, (std::vector<loss>{{loss_kind::columns_joined, "column a.x"}}));
        QCOMPARE(sqlite.lines(),
                 (QStringList{"column a.v TEXT", "column a.x y INTEGER, z NOT NULL", "table a"}));
        QCOMPARE(sqlite.code("CREATE INDEX i ON a (z)"), QString("SQLITE_ERROR"));
        // One that is alone has no end; one that ends in its own column takes no other with it.
        QCOMPARE(sqlite.code("CREATE TABLE b (x`y INTEGER, z BIGINT)"), QString("SQLITE_ERROR"));
        QVERIFY(sqlite.run("CREATE TABLE c (x `y` INTEGER, z BIGINT)").losses.empty());
    }
    void rowsDecideWhetherAColumnMayBeAdded()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY)");
        QCOMPARE(postgresql.code("ALTER TABLE a ADD COLUMN x INTEGER NOT NULL"), QString("done"));
        postgresql.database().putRowIntoEach();
        const verdict said = postgresql.run("ALTER TABLE a ADD COLUMN y INTEGER NOT NULL");
        QCOMPARE(said.what, outcome::refused);
        QCOMPARE(said.code, QLatin1String("23502"));
        QCOMPARE(postgresql.code("ALTER TABLE a ADD COLUMN z BIGSERIAL"), QString("done"));
    }
    void mysqlFillsAColumnWithoutAWord()
    {
        script mariadb(u"mariadb");
        mariadb.run(
            "CREATE TABLE `b` (`id` INTEGER NOT NULL, PRIMARY KEY (`id`)); CREATE TABLE `a` (`x` INTEGER)");
        mariadb.database().putRows("a", 2);
        QCOMPARE(mariadb.code("ALTER TABLE `a` ADD COLUMN `u` INTEGER NOT NULL UNIQUE"), QString("1062"));
        QCOMPARE(mariadb.run("ALTER TABLE `a` ADD COLUMN `b_id` INTEGER NOT NULL").losses,
                 (std::vector<loss>{{loss_kind::filled, "column a.b_id"}}));
        const verdict said =
            mariadb.run("ALTER TABLE `a` ADD CONSTRAINT f FOREIGN KEY (`b_id`) REFERENCES `b` (`id`)");
        QCOMPARE(said.what, outcome::refused);
        QCOMPARE(said.code, QLatin1String("1452"));
    }
    void valuesDecideWhetherAForeignKeyMayBeAdded()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY); CREATE TABLE b (a_id INTEGER)");
        postgresql.database().putRowIntoEach();
        const verdict said =
            postgresql.run("ALTER TABLE b ADD CONSTRAINT f FOREIGN KEY (a_id) REFERENCES a (id)");
        QCOMPARE(said.what, outcome::maybe_refused);
        QCOMPARE(said.code, QLatin1String("23503"));
        QVERIFY(postgresql.lines().contains("foreign b (a_id) -> a (id) f"));
    }
    void renamesCarryAlongWhatRefersAndKeepNames()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY, x INTEGER UNIQUE);"
                       "CREATE TABLE b (a_id INTEGER);"
                       "CREATE INDEX idx_a_x ON a (x);"
                       "ALTER TABLE b ADD CONSTRAINT fk FOREIGN KEY (a_id) REFERENCES a (id);"
                       "ALTER TABLE a RENAME TO c;"
                       "ALTER TABLE c RENAME COLUMN id TO nr;ALTER TABLE c RENAME COLUMN x TO y");
        QCOMPARE(
            postgresql.lines(),
            (QStringList{"column b.a_id integer", "column c.nr bigint NOT NULL counted", "column c.y integer",
                         "foreign b (a_id) -> c (nr) fk", "index c (y) idx_a_x", "key c (nr) a_pkey",
                         "sequence a_id_seq", "table b", "table c", "unique c (y) a_x_key"}));
        // The names left behind are taken, and those that are made up step aside.
        QCOMPARE(postgresql.code("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY)"), QString("done"));
        QVERIFY(postgresql.lines().contains("sequence a_id_seq1"));
        QVERIFY(postgresql.lines().contains("key a (id) a_pkey1"));
        QCOMPARE(postgresql.code("CREATE INDEX idx_a_x ON a (id)"), QString("42P07"));
        QCOMPARE(postgresql.code("ALTER TABLE b DROP COLUMN a_id; DROP TABLE c"), QString("done"));
        QCOMPARE(postgresql.code("CREATE INDEX idx_a_x ON a (id)"), QString("done"));
    }
    void aSequenceIsRenamedForATable()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY)");
        const verdict said = postgresql.run("ALTER TABLE a_id_seq RENAME TO b");
        QCOMPARE(said.what, outcome::done);
        QCOMPARE(said.losses, (std::vector<loss>{{loss_kind::other_renamed, "a_id_seq"}}));
        QVERIFY(postgresql.lines().contains("sequence b"));
        QCOMPARE(postgresql.code("DROP TABLE b"), QString("42809"));
    }
    void dropConstraintDoesNothingBesideAHash()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`id` INTEGER NOT NULL, PRIMARY KEY (`id`));"
                    "CREATE TABLE `b` (`a_id` INTEGER, `t` TEXT UNIQUE);"
                    "ALTER TABLE `b` ADD CONSTRAINT f FOREIGN KEY (`a_id`) REFERENCES `a` (`id`)");
        QCOMPARE(mariadb.run("ALTER TABLE `b` DROP CONSTRAINT f").losses,
                 (std::vector<loss>{{loss_kind::nothing_done, "foreign key f"}}));
        QVERIFY(mariadb.lines().contains("foreign b (a_id) -> a (id) f"));
        mariadb.run("ALTER TABLE `b` DROP FOREIGN KEY f");
        QVERIFY(!mariadb.lines().contains("foreign b (a_id) -> a (id) f"));
        QVERIFY(mariadb.lines().contains("index b (a_id) f"));
    }
    void anIndexGivesWayToOneThatIsAskedFor()
    {
        script mariadb(u"mariadb");
        mariadb.run(
            "CREATE TABLE `a` (`id` INTEGER NOT NULL, PRIMARY KEY (`id`)); CREATE TABLE `b` (`a_id` INTEGER);"
            "ALTER TABLE `b` ADD CONSTRAINT f FOREIGN KEY (`a_id`) REFERENCES `a` (`id`);"
            "CREATE INDEX i ON `b` (`a_id`)");
        QVERIFY(mariadb.lines().contains("index b (a_id) i"));
        QVERIFY(!mariadb.lines().contains("index b (a_id) f"));
        QCOMPARE(mariadb.code("DROP INDEX i ON `b`"), QString("1553"));
    }
    void indexesLoseADroppedColumn()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`x` INTEGER, `y` INTEGER); CREATE INDEX i ON `a` (`x`, `y`);"
                    "CREATE INDEX j ON `a` (`x`); ALTER TABLE `a` DROP COLUMN `x`");
        QCOMPARE(mariadb.lines(), (QStringList{"column a.y int(11)", "index a (y) i", "table a"}));
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (x INTEGER, y INTEGER); CREATE INDEX i ON a (x, y);"
                       "ALTER TABLE a DROP COLUMN x");
        QCOMPARE(postgresql.lines(), (QStringList{"column a.y integer", "table a"}));
    }
    void emptyListsAreSyntaxErrors()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`x` INTEGER)");
        QCOMPARE(mariadb.code("CREATE INDEX i ON `a` ()"), QString("1064"));
        QCOMPARE(mariadb.code("CREATE TABLE `b` (`x` INTEGER, PRIMARY KEY ())"), QString("1064"));
        QCOMPARE(mariadb.code("CREATE TABLE `b` (`x` INTEGER, FOREIGN KEY () REFERENCES `a` (`x`))"),
                 QString("1064"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` ADD CONSTRAINT f FOREIGN KEY () REFERENCES `a` (`x`)"),
                 QString("1064"));
    }
    void aQuotationWithoutEndIsASyntaxError()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`x` INTEGER)");
        QCOMPARE(mariadb.code("CREATE TABLE `a` (`x`y` INTEGER)"), QString("4161"));
        QCOMPARE(mariadb.code("CREATE TABLE `a` (`x` INTEGER, `y` TEXT"), QString());
        QCOMPARE(mariadb.code("DROP TABLE `a"), QString("1064"));
        QCOMPARE(mariadb.code("SELECT 'a"), QString("1064"));
        script sqlite(u"sqlite");
        QCOMPARE(sqlite.code("CREATE TABLE a (x`y INTEGER)"), QString("SQLITE_ERROR"));
        QCOMPARE(sqlite.lines(), QStringList());
    }
    void mysqlMeasuresNamesOfIndexesLast()
    {
        script mariadb(u"mariadb");
        const QString name(70, u'a');
        mariadb.run("CREATE TABLE `a` (`x` INTEGER)");
        QCOMPARE(mariadb.code("CREATE INDEX " + name + " ON `b` (`x`)"), QString("1146"));
        QCOMPARE(mariadb.code("CREATE INDEX " + name + " ON `a` (`y`)"), QString("1072"));
        QCOMPARE(mariadb.code("CREATE INDEX " + name + " ON `a` (`x`(255))"), QString("1089"));
        QCOMPARE(mariadb.code("CREATE INDEX " + name + " ON `a` (`x`)"), QString("1059"));
        QCOMPARE(mariadb.code("DROP INDEX " + name + " ON `a`"), QString("1091"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` DROP COLUMN " + name), QString("1091"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` DROP CONSTRAINT " + name), QString("1091"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` CHANGE " + name + " `b` INTEGER"), QString("1054"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` CHANGE `x` " + name + " INTEGER"), QString("1059"));
        QCOMPARE(mariadb.code("ALTER TABLE `b` ADD COLUMN " + name + " INTEGER"), QString("1059"));
        QCOMPARE(mariadb.code("ALTER TABLE `b` ADD CONSTRAINT " + name +
                              " FOREIGN KEY (`x`) REFERENCES `a` (`x`)"),
                 QString("1146"));
        QCOMPARE(mariadb.code("ALTER TABLE `a` ADD CONSTRAINT " + name +
                              " FOREIGN KEY (`y`) REFERENCES `a` (`x`)"),
                 QString("1072"));
    }
    void mysqlReadsTypesFirst()
    {
        script mariadb(u"mariadb");
        mariadb.run("CREATE TABLE `a` (`x` INTEGER)");
        QCOMPARE(mariadb.code("CREATE TABLE `a` (`x` BYTEA)"), QString("4161"));
        QCOMPARE(mariadb.code("CREATE TABLE shop.a (x INTEGER)"), QString("1049"));
    }
    void theLastColumnStaysOnSqlite()
    {
        script sqlite(u"sqlite");
        sqlite.run("CREATE TABLE a (x INTEGER, y INTEGER)");
        QCOMPARE(sqlite.code("ALTER TABLE a DROP COLUMN x"), QString("done"));
        QCOMPARE(sqlite.code("ALTER TABLE a DROP COLUMN y"), QString("SQLITE_ERROR"));
    }
    void beginsWithWhatIsThere()
    {
        script first(u"mariadb");
        first.run(
            "CREATE TABLE `a` (`id` INTEGER NOT NULL, PRIMARY KEY (`id`)); CREATE TABLE `b` (`a_id` INTEGER);"
            "ALTER TABLE `b` ADD CONSTRAINT f FOREIGN KEY (`a_id`) REFERENCES `a` (`id`)");
        script second(u"mariadb", first.database().held());
        QCOMPARE(second.lines(), first.lines());
        QCOMPARE(second.code("DROP TABLE `a`"), QString("1451"));
        QCOMPARE(second.code("ALTER TABLE `b` ADD CONSTRAINT F FOREIGN KEY (`a_id`) REFERENCES `a` (`id`)"),
                 QString("1005"));
        QCOMPARE(second.code("CREATE TABLE `b` (`x` INTEGER)"), QString("1050"));
    }
    void postgresqlRenamesKeysAsIndexes()
    {
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY); ALTER TABLE a RENAME TO b");
        QCOMPARE(postgresql.code("ALTER INDEX a_pkey RENAME TO b"), QString("42P07"));
        QCOMPARE(postgresql.code("ALTER INDEX a_pkey RENAME TO b_pkey"), QString("done"));
        QCOMPARE(postgresql.code("ALTER INDEX a_pkey RENAME TO b_pkey"), QString("42P01"));
        QCOMPARE(postgresql.database().held().tables.at("b").key->name, QString("b_pkey"));
    }
    void triggersOfOracleKnowColumnsByName()
    {
        const char * const made = "CREATE TABLE a (id NUMBER(10), x NUMBER(10));\n"
                                  "CREATE OR REPLACE TRIGGER t BEFORE INSERT OR UPDATE OF id ON a BEGIN "
                                  "NULL; END;\n/\n";
        const QString counted = QStringLiteral("column A.NUM number(10) counted");
        script other(u"oracle");
        other.run(made);
        other.run("ALTER TABLE a RENAME COLUMN x TO y");
        QVERIFY(other.lines().contains("column A.ID number(10) counted"));
        script renamed(u"oracle");
        renamed.run(made);
        const verdict said = renamed.run("ALTER TABLE a RENAME COLUMN id TO num");
        QCOMPARE(said.what, outcome::done);
        QVERIFY((said.losses == std::vector<loss>{{loss_kind::trigger, QStringLiteral("column A.NUM")}}));
        QVERIFY(renamed.lines().contains("column A.NUM number(10)"));
        renamed.run("CREATE OR REPLACE TRIGGER t BEFORE INSERT OR UPDATE OF num ON a BEGIN NULL; END;\n/\n");
        QVERIFY(renamed.lines().contains(counted));
        QCOMPARE(renamed.lines().filter("trigger").size(), 1);
        // The name goes with the table, and is taken until that is gone.
        const char * const again =
            "CREATE OR REPLACE TRIGGER t BEFORE INSERT OR UPDATE OF id ON b BEGIN NULL; END;\n/\n";
        renamed.run("ALTER TABLE a RENAME TO c; CREATE TABLE b (id NUMBER(10))");
        QCOMPARE(renamed.code(again), QString("ORA-04095"));
        QVERIFY(renamed.lines().contains("column B.ID number(10)"));
        renamed.run("DROP TABLE c");
        QCOMPARE(renamed.code(again), QString("done"));
        QVERIFY(renamed.lines().contains("column B.ID number(10) counted"));
        // Any other trigger, and one of another database, counts nothing.
        script audit(u"oracle");
        audit.run(
            "CREATE TABLE a (id NUMBER(10)); CREATE TRIGGER t AFTER UPDATE OF id ON a BEGIN NULL; END;\n/\n");
        QVERIFY(audit.lines().contains("column A.ID number(10)"));
        script sqlite(u"sqlite");
        sqlite.run(made);
        QVERIFY(sqlite.lines().contains("column a.id NUMBER(10)"));
    }
    void aTableIsMadeAgain()
    {
        const QString text =
            "CREATE TABLE A (id SERIAL NOT NULL, x INTEGER UNIQUE, CONSTRAINT k PRIMARY KEY (id))";
        const auto made = script(u"postgresql").madeByItself(text);
        QVERIFY(made);
        script other(u"postgresql");
        QCOMPARE(other.run("DROP TABLE b").consequenceOf, -1); // 0
        QVERIFY(other.database().makeAgain(*made));            // 1
        QCOMPARE(other.lines(),
                 (QStringList{"column a.id integer NOT NULL counted", "column a.x integer",
                              "key a (id) a_pkey", "sequence a_id_seq", "table a", "unique a (x) a_x_key"}));
        QCOMPARE(other.code("CREATE TABLE a (id INTEGER)"), QString("42P07"));          // 2
        QCOMPARE(other.code("CREATE INDEX a_x_key ON a (x)"), QString("42P07"));        // 3
        QCOMPARE(other.code("ALTER TABLE a ADD COLUMN b SMALLTEXT"), QString("42704")); // 4
        QCOMPARE(other.run("CREATE INDEX i ON a (b)").consequenceOf, 4);
    }
    void aTableIsNotMadeAgainWhereANameIsTaken()
    {
        const auto made =
            script(u"postgresql")
                .madeByItself("CREATE TABLE a (id SERIAL NOT NULL PRIMARY KEY, x INTEGER UNIQUE)");
        QVERIFY(made);
        for (const char * name : {"a", "a_pkey", "a_id_seq", "a_x_key"}) {
            script other(u"postgresql");
            other.run(QString("CREATE TABLE %1 (y INTEGER)").arg(name));
            QVERIFY2(!other.database().makeAgain(*made), name);
            QCOMPARE(other.lines(),
                     (QStringList{QString("column %1.y integer").arg(name), QString("table %1").arg(name)}));
        }
    }
    void aTableThatDependsOnOthersIsNotMadeAgain()
    {
        script numbered(u"postgresql");
        numbered.run("CREATE TABLE a_pkey (x INTEGER)");
        QVERIFY(!numbered.madeByItself("CREATE TABLE a (id INTEGER PRIMARY KEY)"));
        QVERIFY(numbered.lines().contains("key a (id) a_pkey1"));
        script there(u"sqlite");
        there.run("CREATE TABLE a (x INTEGER)");
        QVERIFY(!there.madeByItself("CREATE TABLE IF NOT EXISTS a (id INTEGER)"));
        QVERIFY(!there.madeByItself("CREATE INDEX i ON a (x)"));
        QVERIFY(there.madeByItself("CREATE TABLE b (id INTEGER)"));
    }
    void sqlServerNamesTheTableOfADroppedIndex()
    {
        script server(u"mssqlserver");
        server.run("CREATE TABLE a (x INT); CREATE INDEX i ON a (x); CREATE TABLE b (x INT); "
                   "CREATE INDEX i ON b (x)");
        QCOMPARE(server.code("DROP INDEX a.i"), QString("done"));
        QCOMPARE(server.lines().filter("index"), QStringList{"index b (x) i"});
        QCOMPARE(server.run("DROP INDEX a.i").cause, refusal_cause::index_missing);
        QCOMPARE(server.run("DROP INDEX c.i").cause, refusal_cause::table_missing);
        QCOMPARE(server.code("DROP INDEX i ON b"), QString("done"));
        QCOMPARE(server.lines().filter("index"), QStringList());
        script postgresql(u"postgresql");
        postgresql.run("CREATE TABLE a (x INTEGER); CREATE INDEX i ON a (x)");
        QCOMPARE(postgresql.run("DROP INDEX a.i").what, outcome::refused);
    }
    void documentedDatabasesAnswerAsWell()
    {
        script oracle(u"oracle");
        oracle.run("CREATE TABLE a (id NUMBER(10) NOT NULL PRIMARY KEY);\n"
                   "CREATE SEQUENCE seq_inc_a START WITH 1 INCREMENT BY 1;\n"
                   "CREATE OR REPLACE TRIGGER trigger_inc_a\n\tBEFORE INSERT OR UPDATE OF id ON a\n"
                   "\tFOR EACH ROW\n\tBEGIN\n\t\tNULL;\n\tEND;\n\t/\n");
        QCOMPARE(oracle.lines(), (QStringList{"column A.ID number(10) NOT NULL counted", "key A (ID)",
                                              "sequence SEQ_INC_A", "table A", "trigger TRIGGER_INC_A"}));
        QCOMPARE(oracle.code("CREATE TABLE A (x CLOB)"), QString("ORA-00955"));
        QCOMPARE(oracle.code("CREATE TABLE b (x CLOB); CREATE INDEX i ON b (x)"), QString("ORA-02327"));
        QCOMPARE(oracle.code("CREATE TABLE c (x CLOB UNIQUE)"), QString("ORA-02329"));
        script mysql(u"mysql");
        mysql.run("CREATE TABLE `a` (`x` LONGBLOB, `y` TEXT)");
        QCOMPARE(mysql.code("CREATE INDEX i ON `a` (`x`)"), QString("1170"));
        QCOMPARE(mysql.code("CREATE INDEX i ON `a` (`y`(255))"), QString("done"));
        QCOMPARE(mysql.code("CREATE TABLE `b` (`x` TEXT UNIQUE)"), QString("1170"));
        QCOMPARE(mysql.code("ALTER TABLE `a` ADD COLUMN `z` TEXT UNIQUE"), QString("1170"));
        script server(u"mssqlserver");
        server.run("CREATE TABLE a (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), x VARCHAR(80));"
                   "CREATE INDEX i ON a (x)");
        QCOMPARE(server.code("ALTER TABLE a DROP COLUMN x"), QString("5074"));
        QCOMPARE(server.code("CREATE TABLE c (x INT, y TEXT UNIQUE)"), QString("1919"));
        QCOMPARE(server.code("EXEC sp_rename 'a', 'b'"), QString("done"));
        QVERIFY(server.lines().contains("table b"));
    }
};

QTEST_APPLESS_MAIN(tst_simulation)
#include "tst_simulation.moc"
