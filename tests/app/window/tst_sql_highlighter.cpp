// What is told apart in SQL, and which lines of a script are coloured.

#include "app/window/export/sql_highlighter.h"

#include "app/window/contrast.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

using app::sql_dialect;
using app::sql_kind;
using app::sqlColor;
using app::sqlScan;

namespace {

const char * nameOf(sql_kind kind)
{
    switch (kind) {
    case sql_kind::keyword:
        return "keyword";
    case sql_kind::type:
        return "type";
    case sql_kind::string:
        return "string";
    case sql_kind::identifier:
        return "identifier";
    case sql_kind::number:
        return "number";
    case sql_kind::comment:
        return "comment";
    }
    return "";
}

/// The parts of a text of one or more lines, such as "keyword DROP"; the last line is what the text ends in.
QStringList partsOf(const QString & text, sql_dialect dialect)
{
    QStringList result;
    int state = 0;
    for (const QString & line : text.split(QLatin1Char('\n'))) {
        QList<app::sql_part> parts;
        const int before = state;
        state = sqlScan(line, dialect, before, &parts);
        if (sqlScan(line, dialect, before, nullptr) != state) {
            result.append(QStringLiteral("another state where no parts were asked for"));
        }
        for (const app::sql_part & part : parts) {
            result.append(QString::fromLatin1(nameOf(part.kind)) + QLatin1Char(' ') +
                          line.mid(part.start, part.length));
        }
    }
    result.append(state == 0 ? QStringLiteral("complete") : QStringLiteral("open"));
    return result;
}

const QList<sql_kind> AllKinds{sql_kind::keyword,    sql_kind::type,   sql_kind::string,
                               sql_kind::identifier, sql_kind::number, sql_kind::comment};

/// The stretches of a line that have a colour, as "start+length #colour".
QStringList formatsOf(const QTextDocument & document, int line)
{
    QStringList result;
    for (const QTextLayout::FormatRange & range : document.findBlockByNumber(line).layout()->formats()) {
        result.append(QStringLiteral("%1+%2 %3")
                          .arg(range.start)
                          .arg(range.length)
                          .arg(range.format.foreground().color().name()));
    }
    return result;
}

} // namespace

class tst_sql_highlighter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parts_data();
    void parts();
    void dialectOfFile_data();
    void dialectOfFile();
    void knowsTheWordsOfTheScripts();
    void coloursAreLegibleAndDistinct();
    void colorsOnlyWhatIsAskedFor();
    void readsOnFromLinesThatAreNotColored();
    void takesAnotherPalette();
    void leavesTheEndOfALongLinePlain();
    void asksForMoreThanThereIs();
    void statementsThatDestroyData_data();
    void statementsThatDestroyData();
};

void tst_sql_highlighter::parts_data()
{
    QTest::addColumn<sql_dialect>("dialect");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char * name, sql_dialect dialect, const char * text,
                        const QStringList & parts) {
        QTest::newRow(name) << dialect << QString::fromUtf8(text) << parts;
    };
    using enum sql_dialect;
    row("keywords and types", generic, "CREATE TABLE t (id INTEGER);",
        {"keyword CREATE", "keyword TABLE", "type INTEGER", "complete"});
    row("any case", generic, "Drop table x", {"keyword Drop", "keyword table", "complete"});
    row("a keyword within a word", generic, "droplet my_table tables TABLE_1 TABLE$ ÄTABLE", {"complete"});
    row("first and last of the lists", generic, "ACTION ZEROFILL BFILE YEAR",
        {"keyword ACTION", "keyword ZEROFILL", "type BFILE", "type YEAR", "complete"});
    row("names with dots", generic, "address.date, date.x, :NEW.key", {"complete"});
    row("a long name", generic, "UNIQUEIDENTIFIERUNIQUEIDENTIFIER", {"complete"});
    row("variables", mssqlserver, "DECLARE @table INT", {"keyword DECLARE", "type INT", "complete"});

    row("string", generic, "DEFAULT 'a b' NOT",
        {"keyword DEFAULT", "string 'a b'", "keyword NOT", "complete"});
    row("doubled quote", generic, "'it''s' NULL", {"string 'it'", "string 's'", "keyword NULL", "complete"});
    row("string over lines", generic, "'one\nDROP -- \"two\nend' DROP",
        {"string 'one", "string DROP -- \"two", "string end'", "keyword DROP", "complete"});
    row("doubled quote over lines", generic, "'a''\nDROP' IF",
        {"string 'a'", "string '", "string DROP'", "keyword IF", "complete"});
    row("string without an end", generic, "'abc\n\nDROP", {"string 'abc", "string DROP", "open"});
    row("backslash", generic, "'\\' DROP", {"string '\\'", "keyword DROP", "complete"});
    row("backslash in MySQL", mysql, "'\\' DROP' \"\\\"\" IF",
        {"string '\\' DROP'", "identifier \"\\\"\"", "keyword IF", "complete"});
    row("backslash in a MySQL name", mysql, "`\\` DROP", {"identifier `\\`", "keyword DROP", "complete"});
    row("backslash at the end of a line", mysql, "'a\\\nb' IF",
        {"string 'a\\", "string b'", "keyword IF", "complete"});

    row("quoted names", generic, "\"a 'b\" `c \"d` [e `f] IF",
        {"identifier \"a 'b\"", "identifier `c \"d`", "identifier [e `f]", "keyword IF", "complete"});
    row("quoted name over lines", generic, "\"a\nIF' b\" IF",
        {"identifier \"a", "identifier IF' b\"", "keyword IF", "complete"});
    row("back-quoted name over lines", mysql, "`a\nIF' b` IF",
        {"identifier `a", "identifier IF' b`", "keyword IF", "complete"});
    row("bracket without an end", mssqlserver, "[a 'b'\nDROP", {"string 'b'", "keyword DROP", "complete"});
    row("brackets in SQLite", sqlite, "[a 'b]", {"identifier [a 'b]", "complete"});
    row("brackets in SQL Server", mssqlserver, "[a 'b]", {"identifier [a 'b]", "complete"});
    row("brackets in PostgreSQL", postgresql, "INTEGER[3]", {"type INTEGER", "number 3", "complete"});
    row("brackets in Oracle", oracle, "[IF]", {"keyword IF", "complete"});
    row("brackets in MySQL", mysql, "[IF]", {"keyword IF", "complete"});

    row("numbers", generic, "12 3.5 1e5 0xFF (7) x1 1st 2_b -4",
        {"number 12", "number 3.5", "number 1e5", "number 0xFF", "number 7", "number 4", "complete"});

    row("line comment", generic, "DROP -- TABLE 'x\nIF",
        {"keyword DROP", "comment -- TABLE 'x", "keyword IF", "complete"});
    row("one dash", generic, "a - b", {"complete"});
    row("number sign", generic, "# IF", {"keyword IF", "complete"});
    row("number sign in MySQL", mysql, "DROP # IF", {"keyword DROP", "comment # IF", "complete"});
    row("comment", generic, "IF /* DROP 'x */ IF",
        {"keyword IF", "comment /* DROP 'x */", "keyword IF", "complete"});
    row("comment over lines", generic, "/* a\n-- b '\n*/ IF",
        {"comment /* a", "comment -- b '", "comment */", "keyword IF", "complete"});
    row("two comments", generic, "/* a */ IF /* b\n*/ IF",
        {"comment /* a */", "keyword IF", "comment /* b", "comment */", "keyword IF", "complete"});
    row("slash and star that overlap", generic, "/*/ IF", {"comment /*/ IF", "open"});
    row("comment without an end", generic, "/* a", {"comment /* a", "open"});
    row("comment in a comment", generic, "/* a /* b */ IF",
        {"comment /* a /* b */", "keyword IF", "complete"});
    row("nested in PostgreSQL", postgresql, "/* a /* b */ IF\n*/ IF",
        {"comment /* a /* b */ IF", "comment */", "keyword IF", "complete"});
    row("nested in SQL Server", mssqlserver, "/* /* /*\n*/ */ x */ IF",
        {"comment /* /* /*", "comment */ */ x */", "keyword IF", "complete"});
    row("nothing", generic, "", {"complete"});
    row("other scripts", generic, "CREATE TABLE größe_表 (😀 INT)",
        {"keyword CREATE", "keyword TABLE", "type INT", "complete"});
}

void tst_sql_highlighter::parts()
{
    QFETCH(sql_dialect, dialect);
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    QCOMPARE(partsOf(text, dialect), expected);
}

void tst_sql_highlighter::dialectOfFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<sql_dialect>("dialect");
    const auto row = [](const char * file, sql_dialect dialect) {
        QTest::newRow(file) << QString::fromLatin1(file) << dialect;
    };
    row("shop_default_db_schema_full.sql", sql_dialect::generic);
    row("shop_sqlite_db_schema_full.sql", sql_dialect::sqlite);
    row("shop_mysql_db_schema_v1.sql", sql_dialect::mysql);
    row("shop_postgresql_db_schema_v1_to_v2.sql", sql_dialect::postgresql);
    row("shop_oracle_db_schema_full.sql", sql_dialect::oracle);
    row("shop_mssqlserver_db_schema_full.sql", sql_dialect::mssqlserver);
    row("mysql.sql", sql_dialect::generic);
}

void tst_sql_highlighter::dialectOfFile()
{
    QFETCH(QString, file);
    QFETCH(sql_dialect, dialect);
    QCOMPARE(app::sqlDialectOf(file), dialect);
}

// Each word in capitals that the six databases get is a keyword or a type, and no quote is left open.
void tst_sql_highlighter::knowsTheWordsOfTheScripts()
{
    const QDir folder(QStringLiteral(KORVANE_SOURCE_DIR "/tests/plugin/builder/golden"));
    const QStringList files = folder.entryList({QStringLiteral("*.sql")});
    QCOMPARE(files.size(), 14);
    QSet<QString> unknown;
    for (const QString & name : files) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        int state = 0;
        for (QString line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
            QList<app::sql_part> parts;
            state = sqlScan(line, app::sqlDialectOf(name), state, &parts);
            QVERIFY2(state == 0, qPrintable(name + line));
            for (const app::sql_part & part : std::as_const(parts)) {
                line.replace(part.start, part.length, QString(part.length, QLatin1Char(' ')));
            }
            auto words = QRegularExpression(QStringLiteral("\\b[A-Z]{2,}\\b")).globalMatch(line);
            while (words.hasNext()) {
                unknown.insert(words.next().captured());
            }
        }
    }
    // What follows a dot, or comes before one.
    QCOMPARE(unknown, (QSet<QString>{QStringLiteral("NEW"), QStringLiteral("NEXTVAL")}));
}

void tst_sql_highlighter::coloursAreLegibleAndDistinct()
{
    for (const QColor & base : {QColor(0xff, 0xff, 0xff), QColor(0xf4, 0xf4, 0xf0), QColor(0x1e, 0x1e, 0x1e),
                                QColor(0x2d, 0x2d, 0x30)}) {
        const QPalette palette = test::paletteOn(base);
        QSet<QRgb> colors;
        for (const sql_kind kind : AllKinds) {
            const QColor color = sqlColor(kind, palette);
            QVERIFY2(test::contrast(color, base) >= 4.5, nameOf(kind));
            colors.insert(color.rgb());
        }
        QCOMPARE(colors.size(), AllKinds.size());
    }
}

void tst_sql_highlighter::colorsOnlyWhatIsAskedFor()
{
    QTextDocument document;
    app::sql_highlighter highlighter(&document, sql_dialect::generic, test::paletteOn(Qt::white));
    document.setPlainText(QStringLiteral("DROP TABLE a;\nDROP TABLE b;\nDROP TABLE c;\nDROP TABLE d;"));
    QCOMPARE(formatsOf(document, 0), QStringList());

    highlighter.colorLines(1, 2);
    const QString keyword = sqlColor(sql_kind::keyword, test::paletteOn(Qt::white)).name();
    const QStringList expected{QStringLiteral("0+4 ") + keyword, QStringLiteral("5+5 ") + keyword};
    QCOMPARE(formatsOf(document, 0), QStringList());
    QCOMPARE(formatsOf(document, 1), expected);
    QCOMPARE(formatsOf(document, 2), expected);
    QCOMPARE(formatsOf(document, 3), QStringList());

    highlighter.colorLines(3, 3);
    QCOMPARE(formatsOf(document, 2), expected);
    QCOMPARE(formatsOf(document, 3), expected);
}

void tst_sql_highlighter::readsOnFromLinesThatAreNotColored()
{
    QTextDocument document;
    app::sql_highlighter highlighter(&document, sql_dialect::postgresql, test::paletteOn(Qt::white));
    document.setPlainText(QStringLiteral("/* begins\n/* again\nIF */ IF\nIF */ IF"));
    highlighter.colorLines(3, 3);
    const QString comment = sqlColor(sql_kind::comment, test::paletteOn(Qt::white)).name();
    const QString keyword = sqlColor(sql_kind::keyword, test::paletteOn(Qt::white)).name();
    QCOMPARE(formatsOf(document, 3),
             (QStringList{QStringLiteral("0+5 ") + comment, QStringLiteral("6+2 ") + keyword}));
    highlighter.colorLines(2, 2);
    QCOMPARE(formatsOf(document, 2), QStringList{QStringLiteral("0+8 ") + comment});
}

void tst_sql_highlighter::takesAnotherPalette()
{
    const QPalette dark = test::paletteOn(QColor(0x1e, 0x1e, 0x1e));
    QTextDocument document;
    app::sql_highlighter highlighter(&document, sql_dialect::generic, test::paletteOn(Qt::white));
    document.setPlainText(QStringLiteral("DROP"));
    highlighter.colorLines(0, 0);
    highlighter.setPalette(dark);
    highlighter.colorLines(0, 0);
    QCOMPARE(formatsOf(document, 0),
             QStringList{QStringLiteral("0+4 ") + sqlColor(sql_kind::keyword, dark).name()});
    QVERIFY(sqlColor(sql_kind::keyword, dark) != sqlColor(sql_kind::keyword, test::paletteOn(Qt::white)));
}

void tst_sql_highlighter::leavesTheEndOfALongLinePlain()
{
    QTextDocument document;
    app::sql_highlighter highlighter(&document, sql_dialect::generic, test::paletteOn(Qt::white));
    const QString blanks(49'995, QLatin1Char(' '));
    document.setPlainText(blanks + QStringLiteral("'123456789' IF 'open\nIF' IF"));
    highlighter.colorLines(0, 1);
    const QString string = sqlColor(sql_kind::string, test::paletteOn(Qt::white)).name();
    QCOMPARE(formatsOf(document, 0), QStringList{QStringLiteral("49995+5 ") + string});
    // What it leaves plain it has read none the less.
    QCOMPARE(formatsOf(document, 1).constFirst(), QStringLiteral("0+3 ") + string);
}

void tst_sql_highlighter::asksForMoreThanThereIs()
{
    QTextDocument document;
    app::sql_highlighter highlighter(&document, sql_dialect::generic, test::paletteOn(Qt::white));
    document.setPlainText(QStringLiteral("IF\nIF"));
    highlighter.colorLines(-3, 99);
    QCOMPARE(formatsOf(document, 0).size(), 1);
    QCOMPARE(formatsOf(document, 1).size(), 1);
    highlighter.colorLines(5, 9);
    highlighter.colorLines(-9, -5);
    QCOMPARE(formatsOf(document, 1).size(), 1);
}

void tst_sql_highlighter::statementsThatDestroyData_data()
{
    QTest::addColumn<bool>("destroys");
    QTest::newRow("DROP TABLE t_gig;") << true;
    QTest::newRow("DROP TABLE IF EXISTS `t gig`;") << true;
    QTest::newRow("ALTER TABLE t_gig DROP COLUMN note;") << true;
    QTest::newRow("  alter table [a b] drop column [note];") << true;
    QTest::newRow("DELETE FROM t_gig;") << true;
    QTest::newRow("TRUNCATE TABLE t_gig;") << true;
    QTest::newRow("DROP INDEX idx_gig;") << false;
    QTest::newRow("ALTER TABLE t_gig DROP CONSTRAINT fk_gig;") << false;
    QTest::newRow("ALTER TABLE t_gig RENAME COLUMN drop_column TO x;") << false;
    QTest::newRow("CREATE TABLE t_gig (id INTEGER);") << false;
    QTest::newRow("--           Cannot DROP COLUMN 'note' for table 't_gig'") << false;
    QTest::newRow("") << false;
}

void tst_sql_highlighter::statementsThatDestroyData()
{
    QFETCH(bool, destroys);
    QCOMPARE(app::destroysData(QString::fromUtf8(QTest::currentDataTag())), destroys);
}

QTEST_MAIN(tst_sql_highlighter)
#include "tst_sql_highlighter.moc"
