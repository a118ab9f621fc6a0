#include "database/facts/facts.h"
#include "database/statement/reader.h"
#include "database/statement/token.h"

#include <QTest>

using namespace database;

namespace {

/// The only statement of the text, as that form.
template <class Form>
Form only(const QString & text)
{
    const std::vector<statement> read = readStatements(text);
    if (read.size() != 1 || !std::holds_alternative<Form>(read.front().asked)) {
        throw std::runtime_error("another form, or not one statement: " + text.toStdString());
    }
    return std::get<Form>(read.front().asked);
}

identifier bare(const char * text)
{
    return {QString::fromUtf8(text), {}};
}

identifier ticked(const char * text)
{
    return {QString::fromUtf8(text), u'`'};
}

identifier bracketed(const char * text)
{
    return {QString::fromUtf8(text), u'['};
}

bool isUnknown(const QString & text)
{
    const std::vector<statement> read = readStatements(text);
    return read.size() == 1 && std::holds_alternative<unknown_statement>(read.front().asked);
}

} // namespace

class tst_statement_reader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tablesOfSqlite()
    {
        const auto read = only<create_table>("CREATE TABLE a (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, "
                                             "x DECIMAL(12,2) UNIQUE, b_id INTEGER, "
                                             "FOREIGN KEY (b_id) REFERENCES b (id));");
        QCOMPARE(read.table, bare("a"));
        QVERIFY(!read.ifNotExists);
        QCOMPARE(read.columns.size(), 3U);
        QVERIFY((read.columns[0] == column_definition{bare("id"), "INTEGER", true, true, true, false}));
        QVERIFY(
            (read.columns[1] == column_definition{bare("x"), "DECIMAL(12,2)", false, false, false, true}));
        QVERIFY((read.columns[2] == column_definition{bare("b_id"), "INTEGER", false, false, false, false}));
        QVERIFY(!read.key);
        QCOMPARE(read.references.size(), 1U);
        QVERIFY((read.references[0] == reference_definition{{}, {bare("b_id")}, bare("b"), {bare("id")}}));
    }
    void tablesOfMysql()
    {
        const auto read = only<create_table>("CREATE TABLE `my table` (`id` INTEGER UNSIGNED NOT NULL "
                                             "AUTO_INCREMENT, `t` TEXT, PRIMARY KEY (`id`, `t`(255)))");
        QCOMPARE(read.table, ticked("my table"));
        QVERIFY((read.columns[0] ==
                 column_definition{ticked("id"), "INTEGER UNSIGNED", true, false, true, false}));
        QVERIFY(read.key);
        QVERIFY((*read.key == key_definition{{}, {{ticked("id"), 0}, {ticked("t"), 255}}}));
    }
    void tablesOfPostgresql()
    {
        const auto read =
            only<create_table>("CREATE TABLE a (id BIGSERIAL NOT NULL PRIMARY KEY) WITH (OIDS = FALSE);");
        QVERIFY((read.columns ==
                 std::vector{column_definition{bare("id"), "BIGSERIAL", true, true, false, false}}));
    }
    void tablesOfSqlServerAndOracle()
    {
        const auto read =
            only<create_table>("CREATE TABLE a (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), y INT, "
                               "CONSTRAINT pk_a_id_y PRIMARY KEY (id, y));");
        QVERIFY(read.columns[0].counted);
        QVERIFY((*read.key == key_definition{bare("pk_a_id_y"), {{bare("id"), 0}, {bare("y"), 0}}}));
    }
    void tablesWithoutColumnsAndColumnsWithoutTypes()
    {
        QVERIFY(only<create_table>("CREATE TABLE bare ();").columns.empty());
        const auto read = only<create_table>("CREATE TABLE IF NOT EXISTS a (x INTEGER, ref )");
        QVERIFY(read.ifNotExists);
        QVERIFY((read.columns[1] == column_definition{bare("ref"), {}, false, false, false, false}));
    }
    void aColumnCanBeNamedConstraint()
    {
        const auto read = only<create_table>("CREATE TABLE a (x INTEGER, constraint TEXT)");
        QVERIFY(
            (read.columns[1] == column_definition{bare("constraint"), "TEXT", false, false, false, false}));
    }
    void namesThatNoDatabaseTakesStayWhole()
    {
        QCOMPARE(only<drop_table>("DROP TABLE my-table").table, bare("my-table"));
        QCOMPARE(only<drop_table>("DROP TABLE shop.a").table, bare("shop.a"));
        QCOMPARE(only<create_table>("CREATE TABLE a (lat|lon FLOAT)").columns[0].name, bare("lat|lon"));
    }
    void renamedTables()
    {
        const auto mysql = only<rename_table>("RENAME TABLE `a` TO `b`;");
        QCOMPARE(mysql.from, ticked("a"));
        QCOMPARE(mysql.to, ticked("b"));
        const auto other = only<rename_table>("ALTER TABLE a RENAME TO b;");
        QCOMPARE(other.from, bare("a"));
        QCOMPARE(other.to, bare("b"));
        const auto procedure = only<rename_table>("EXEC sp_rename 'a', 'b';");
        QCOMPARE(procedure.from, bracketed("a"));
        QCOMPARE(procedure.to, bracketed("b"));
    }
    void addedColumns()
    {
        const auto read = only<add_column>("ALTER TABLE `a` ADD COLUMN `x` VARCHAR(80) NOT NULL UNIQUE;");
        QCOMPARE(read.table, ticked("a"));
        QVERIFY((read.definition == column_definition{ticked("x"), "VARCHAR(80)", true, false, false, true}));
        QCOMPARE(only<add_column>("ALTER TABLE a ADD x NUMBER(1);").definition.name, bare("x"));
        QVERIFY(only<add_column>("ALTER TABLE a ADD COLUMN IF NOT EXISTS x INT").ifNotExists);
    }
    void droppedColumns()
    {
        const auto read = only<drop_column>("ALTER TABLE a DROP COLUMN x;");
        QCOMPARE(read.column, bare("x"));
        QVERIFY(!read.ifExists);
        QVERIFY(only<drop_column>("alter table a drop column if exists x;").ifExists);
    }
    void renamedColumns()
    {
        const auto read = only<rename_column>("ALTER TABLE a RENAME COLUMN x TO y;");
        QCOMPARE(read.from, bare("x"));
        QCOMPARE(read.to, bare("y"));
        const auto procedure = only<rename_column>("EXEC sp_rename 'shop.a.x', 'y', 'COLUMN';");
        QCOMPARE(procedure.table, bare("shop.a"));
        QCOMPARE(procedure.from, bracketed("x"));
        QCOMPARE(procedure.to, bracketed("y"));
        const auto changed = only<change_column>("ALTER TABLE `a` CHANGE `x` `y` INTEGER NOT NULL;");
        QCOMPARE(changed.from, ticked("x"));
        QVERIFY((changed.definition == column_definition{ticked("y"), "INTEGER", true, false, false, false}));
    }
    void indexes()
    {
        const auto made = only<create_index>("CREATE UNIQUE INDEX i ON `a` (`x`(255), `y`);");
        QVERIFY(made.unique);
        QCOMPARE(made.index, bare("i"));
        QVERIFY((made.parts == std::vector<named_part>{{ticked("x"), 255}, {ticked("y"), 0}}));
        QVERIFY(!only<create_index>("CREATE INDEX IF NOT EXISTS i ON a (x)").unique);
        QVERIFY(!only<drop_index>("DROP INDEX i;").table);
        QCOMPARE(*only<drop_index>("DROP INDEX i ON `a`;").table, ticked("a"));
        QVERIFY(only<drop_index>("DROP INDEX IF EXISTS i").ifExists);
        QCOMPARE(only<drop_index>("DROP INDEX a.i;").index, bare("a.i"));
    }
    void foreignKeys()
    {
        const auto made = only<add_foreign_key>("ALTER TABLE a ADD CONSTRAINT fk FOREIGN KEY (x, y) "
                                                "REFERENCES b (p, q);");
        QVERIFY(
            (made.reference ==
             reference_definition{bare("fk"), {bare("x"), bare("y")}, bare("b"), {bare("p"), bare("q")}}));
        QVERIFY(only<add_foreign_key>("ALTER TABLE a ADD CONSTRAINT fk FOREIGN KEY (x) REFERENCES b ()")
                    .reference.targetColumns.empty());
        QVERIFY(!only<drop_constraint>("ALTER TABLE a DROP CONSTRAINT fk;").asForeignKey);
        QVERIFY(only<drop_constraint>("ALTER TABLE a DROP FOREIGN KEY fk;").asForeignKey);
        QVERIFY(only<drop_constraint>("ALTER TABLE a DROP CONSTRAINT IF EXISTS fk;").ifExists);
    }
    void sequencesAndTriggersOfOracle()
    {
        const auto read = readStatements("CREATE TABLE a (id NUMBER(10) NOT NULL PRIMARY KEY);\n"
                                         "CREATE SEQUENCE seq_inc_a START WITH 1 INCREMENT BY 1;\n"
                                         "CREATE OR REPLACE TRIGGER trigger_inc_a\n"
                                         "\tBEFORE INSERT OR UPDATE OF id ON a\n"
                                         "\tFOR EACH ROW\n\tBEGIN\n"
                                         "\t\tSELECT seq_inc_a.NEXTVAL INTO :NEW.id FROM DUAL;\n"
                                         "\tEND;\n\t/\n\n"
                                         "DROP TABLE b;\n");
        QCOMPARE(read.size(), 4U);
        QVERIFY(std::holds_alternative<create_table>(read[0].asked));
        QCOMPARE(std::get<create_sequence>(read[1].asked).sequence, bare("seq_inc_a"));
        QCOMPARE(std::get<create_trigger>(read[2].asked).trigger, bare("trigger_inc_a"));
        QCOMPARE(std::get<create_trigger>(read[2].asked).table, bare("a"));
        QVERIFY((std::get<create_trigger>(read[2].asked).columns == std::vector<identifier>{bare("id")}));
        QVERIFY((only<create_trigger>("CREATE TRIGGER t BEFORE INSERT OR UPDATE OF x, y ON a BEGIN END;")
                     .columns == std::vector<identifier>{bare("x"), bare("y")}));
        QVERIFY(only<create_trigger>("CREATE TRIGGER t AFTER UPDATE OF x ON a BEGIN END;").columns.empty());
        QCOMPARE(only<create_trigger>("CREATE TRIGGER t AFTER UPDATE OF x ON a BEGIN END;").table, bare("a"));
        QVERIFY(read[2].text.endsWith("END;"));
        QVERIFY(std::holds_alternative<drop_table>(read[3].asked));
    }
    void whatChangesNothing()
    {
        only<no_change>("PRAGMA foreign_keys = ON;");
        only<no_change>("BEGIN TRANSACTION;");
        only<no_change>("END TRANSACTION;");
        only<no_change>("COMMIT");
    }
    void severalStatementsInOneText()
    {
        const auto read = readStatements("-- one; two\nDROP TABLE a; /* three; */ DROP TABLE b;;\n");
        QCOMPARE(read.size(), 2U);
        QCOMPARE(read[0].text, QString("DROP TABLE a"));
        QCOMPARE(read[0].position, 12);
        QCOMPARE(read[1].text, QString("DROP TABLE b"));
        QVERIFY(readStatements("  \n-- nothing at all").empty());
        QVERIFY(readStatements({}).empty());
    }
    void quotationsHoldWhateverTheyHold()
    {
        QCOMPARE(only<drop_table>("DROP TABLE \"a;\"\"b\"").table, (identifier{"a;\"b", u'"'}));
        QCOMPARE(only<drop_table>("DROP TABLE [a b]").table, (identifier{"a b", u'['}));
        const auto read = only<create_table>("CREATE TABLE a (x ENUM('y,','n)'))");
        QCOMPARE(read.columns[0].type, QString("ENUM('y,','n)')"));
    }
    void formsOfRepairs()
    {
        const auto key = only<add_key>("ALTER TABLE a ADD CONSTRAINT k PRIMARY KEY (x, y)");
        QVERIFY(key.isPrimary);
        QCOMPARE(key.key.name, bare("k"));
        QCOMPARE(key.key.parts.size(), 2U);
        QVERIFY(only<add_key>("ALTER TABLE `a` ADD PRIMARY KEY (`x`)").key.name.text.isEmpty());
        const auto unique = only<add_key>("ALTER TABLE a ADD UNIQUE INDEX u (x)");
        QVERIFY(!unique.isPrimary);
        QCOMPARE(unique.key.name, bare("u"));
        QCOMPARE(only<drop_key>("ALTER TABLE a DROP PRIMARY KEY").table, bare("a"));
        const auto constraint = only<drop_unique>("ALTER TABLE a DROP UNIQUE (x, y)");
        QCOMPARE(constraint.table, bare("a"));
        QCOMPARE(constraint.columns.size(), 2U);
        QCOMPARE(constraint.columns.back().column, bare("y"));
        QCOMPARE(only<drop_column>("ALTER TABLE a DROP unique").column, bare("unique"));
        const auto index = only<rename_index>("ALTER TABLE a RENAME INDEX i TO j");
        QCOMPARE(index.table, std::optional(bare("a")));
        QCOMPARE(index.to, bare("j"));
        QVERIFY(!only<rename_index>("ALTER INDEX i RENAME TO j").table);
        QCOMPARE(only<rename_column>("ALTER TABLE a RENAME index TO j").from, bare("index"));
    }
    void columnsThatAreChangedInPlace()
    {
        const auto type = only<alter_column>("ALTER TABLE a ALTER COLUMN x TYPE VARCHAR(20) USING x::text");
        QCOMPARE(type.type, QString("VARCHAR(20)"));
        QVERIFY(type.isConverted && !type.notNull);
        QCOMPARE(only<alter_column>("ALTER TABLE a ALTER x SET NOT NULL").notNull, std::optional(true));
        QCOMPARE(only<alter_column>("ALTER TABLE a ALTER x DROP NOT NULL").notNull, std::optional(false));
        QVERIFY(only<alter_column>("ALTER TABLE a ALTER x SET DEFAULT 5").type.isEmpty());
        const auto restated = only<change_column>("ALTER TABLE a MODIFY x BIGINT NOT NULL");
        QCOMPARE(restated.from, bare("x"));
        QCOMPARE(restated.definition.name, bare("x"));
        QVERIFY(restated.definition.notNull);
        QVERIFY(only<add_column>("ALTER TABLE a ADD COLUMN x INT NOT NULL DEFAULT 5").definition.hasDefault);
        const auto reference = only<add_foreign_key>(
            "ALTER TABLE a ADD CONSTRAINT f FOREIGN KEY (x) REFERENCES b (y) ON DELETE SET NULL");
        QCOMPARE(reference.reference.target, bare("b"));
    }
    void rowsChangeNoCatalogue()
    {
        for (const char * text : {"UPDATE a SET x = 1", "INSERT INTO a VALUES (1, ')')", "DELETE FROM a",
                                  "SET FOREIGN_KEY_CHECKS = 0", "SELECT 1"}) {
            only<no_change>(text);
        }
    }
    void whatTheExporterWroteIsReadOrBroken()
    {
        const QString text = "CREATE INDEX idx_my a ON my a (x)";
        QVERIFY(!readStatements(text).front().isCutShort);
        QVERIFY(readStatements(text, writer::exporter).front().isCutShort);
        QVERIFY(!readStatements("DROP TABLE a", writer::exporter).front().isCutShort);
    }
    void whatIsUnknownSaysSo()
    {
        const auto read = readStatements("GRANT SELECT\n ON a TO b; DROP TABLE a");
        QCOMPARE(read.size(), 2U);
        QCOMPARE(std::get<unknown_statement>(read[0].asked).beginning, QString("GRANT SELECT ON"));
        QVERIFY(std::holds_alternative<drop_table>(read[1].asked));
    }
    void formsThatAreNotOursAreUnknown_data()
    {
        QTest::addColumn<QString>("text");
        for (const char * text : {"CREATE VIEW v AS SELECT 1",
                                  "DROP TABLE a CASCADE",
                                  "DROP VIEW v",
                                  "ALTER TABLE a ADD CHECK (x > 0)",
                                  "CREATE TABLE a (x INTEGER, UNIQUE (x))",
                                  "CREATE TABLE a (x INTEGER) ENGINE=InnoDB",
                                  "CREATE TABLE a AS SELECT 1",
                                  "CREATE INDEX i ON a (lower(x))",
                                  "DROP TABLE `s`.`a`",
                                  "CREATE",
                                  "DROP TABLE",
                                  "ALTER TABLE a",
                                  "CREATE SEQUENCE s CACHE 10",
                                  "EXEC sp_help 'a'",
                                  "CREATE TABLE a (x INTEGER",
                                  "CREATE TABLE a (PRIMARY KEY (x), PRIMARY KEY (y))",
                                  "CREATE TABLE a (x INTEGER, CONSTRAINT 'k' PRIMARY KEY (x))",
                                  "ALTER TABLE a ADD CONSTRAINT 'f' FOREIGN KEY (x) REFERENCES b (y)",
                                  "CREATE TABLE a (x INTEGER) WITH (FILLFACTOR = 9)",
                                  "ALTER TABLE a ADD CONSTRAINT f FOREIGN KEY (x) REFERENCES b (y) ON DELETE",
                                  "ALTER TABLE a ADD CONSTRAINT c CHECK (x > 0)",
                                  "ALTER TABLE a ALTER COLUMN x",
                                  "CREATE TABLE a (x INTEGER DEFAULT)"}) {
            QTest::newRow(text) << QString(text);
        }
    }
    void formsThatAreNotOursAreUnknown()
    {
        QFETCH(QString, text);
        QVERIFY(isUnknown(text));
    }
    void aQuotationWithoutEndCutsTheStatementShort()
    {
        const auto read = readStatements("CREATE TABLE `a` (`id` INTEGER, `x`y` INTEGER);\n");
        QCOMPARE(read.size(), 1U);
        QVERIFY(read[0].isCutShort);
        const auto & asked = std::get<create_table>(read[0].asked);
        QCOMPARE(asked.columns.size(), 2U);
        QCOMPARE(asked.columns[1].name, ticked("x"));
        QCOMPARE(asked.columns[1].type, QString("y"));
        QVERIFY(!readStatements("DROP TABLE a").front().isCutShort);
    }
    void wordsOfATypeInQuotationMarks()
    {
        // Two columns whose names have a grave accent: for SQLite the second is part of the first one's type.
        const QString text = "CREATE TABLE `a` (`x`y` INTEGER(3) NOT NULL,\n  `z`w` BIGINT NOT NULL)";
        const auto read = statement_reader(*factsOf(u"sqlite")).read(text, writer::exporter);
        QCOMPARE(read.size(), 1U);
        QVERIFY(!read[0].isCutShort);
        const auto & asked = std::get<create_table>(read[0].asked);
        QCOMPARE(asked.columns.size(), 1U);
        QVERIFY((asked.columns[0] == column_definition{ticked("x"), "y` INTEGER(3) NOT NULL,\n  `z`w` BIGINT",
                                                       true, false, false, false}));
        for (const QString & other :
             {QStringLiteral("mariadb"), QStringLiteral("mysql"), QStringLiteral("postgresql"),
              QStringLiteral("oracle"), QStringLiteral("mssqlserver")}) {
            QVERIFY2(statement_reader(*factsOf(other)).read(text, writer::exporter).front().isCutShort,
                     other.toUtf8().constData());
        }
        QVERIFY(readStatements(text, writer::exporter).front().isCutShort);
    }
    void aDefaultHasNoQuotationOfAType()
    {
        const auto read = statement_reader(*factsOf(u"sqlite"))
                              .read("CREATE TABLE a (x INTEGER DEFAULT 1 `y`)", writer::exporter);
        QVERIFY(read.front().isCutShort);
    }
    void anyTextIsRead()
    {
        // Whatever a custom script writes: it ends, and what is not blank is in some statement.
        for (const char * text :
             {";", ";;;", "(", ")))", "'", "`", "\"", "[", "/", "\n/\n", "--", "/*", "CREATE TABLE (",
              "ALTER TABLE a ADD", "CREATE OR REPLACE TRIGGER", "EXEC sp_rename 'a',", "\u00e9"}) {
            const QString given = QString::fromUtf8(text);
            for (const statement & read : readStatements(given)) {
                QVERIFY2(!read.text.isEmpty() && given.contains(read.text), text);
            }
        }
    }
};

QTEST_APPLESS_MAIN(tst_statement_reader)
#include "tst_statement_reader.moc"
