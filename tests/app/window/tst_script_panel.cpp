// The scripts of an export, as a person chooses, reads, searches and copies them.

#include "app/window/export/script_panel.h"

#include "app/window/export/sql_highlighter.h"

#include "app/window/contrast.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolTip>
#include <QVBoxLayout>

using app::script_panel;

namespace {

/// The panel in a window, with scripts in a folder.
struct fixture
{
    explicit fixture(bool show = true)
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        panel.resize(700, 400);
        if (show) {
            panel.show();
            if (!QTest::qWaitForWindowActive(&panel)) {
                qFatal("the panel does not show");
            }
        }
    }
    /// Writes a file and returns its path.
    [[nodiscard]] QString write(const QString & name, const QByteArray & bytes) const
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(path));
        }
        return path;
    }
    void open(const QByteArray & bytes)
    {
        panel.setScripts({write(QStringLiteral("a_sqlite_db_schema_full.sql"), bytes)});
    }
    /// Three scripts: "full", "v1" and "v1 to v2".
    void openThree()
    {
        panel.setScripts(
            {write(QStringLiteral("a_sqlite_db_schema_full.sql"), "CREATE TABLE full;\n"),
             write(QStringLiteral("a_sqlite_db_schema_v1.sql"), "CREATE TABLE first;\n"),
             write(QStringLiteral("a_sqlite_db_schema_v1_to_v2.sql"), "ALTER TABLE first;\nTABLE\n")});
    }
    template <class W>
    [[nodiscard]] W * child(const char * name) const
    {
        W * const w = panel.findChild<W *>(QString::fromLatin1(name));
        if (!w) {
            qFatal("no widget %s", name);
        }
        return w;
    }
    [[nodiscard]] QTabWidget * tabs() const { return child<QTabWidget>("m_tabScripts"); }
    [[nodiscard]] QComboBox * names() const { return child<QComboBox>("m_cboScript"); }
    [[nodiscard]] QLineEdit * field() const { return child<QLineEdit>("m_txtFind"); }
    [[nodiscard]] QString found() const { return child<QLabel>("m_lblFound")->text(); }
    /// A widget of the script in front.
    template <class W>
    [[nodiscard]] W * front(const char * name) const
    {
        W * const w = tabs()->currentWidget()->findChild<W *>(QString::fromLatin1(name));
        if (!w) {
            qFatal("no widget %s in front", name);
        }
        return w;
    }
    [[nodiscard]] QPlainTextEdit * text() const { return front<QPlainTextEdit>("m_txtScript"); }
    [[nodiscard]] bool isRead(int tab) const
    {
        return tabs()->widget(tab)->findChild<QPlainTextEdit *>(QStringLiteral("m_txtScript")) != nullptr;
    }
    void click(const char * name) const { QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton); }
    /// The key to whatever has the focus.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void type(const char * keys)
    {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(keys));
    }
    /// What is selected in the script in front, with where it begins.
    [[nodiscard]] QString selected() const
    {
        const QTextCursor cursor = text()->textCursor();
        return QStringLiteral("%1 %2").arg(cursor.selectionStart()).arg(cursor.selectedText());
    }
    /// What is marked in the script in front: the places, and * where it stands out.
    [[nodiscard]] QStringList marks() const
    {
        (void)text()->grab(); // marks are made when the text is drawn
        QStringList result;
        const QColor highlight = text()->palette().color(QPalette::Active, QPalette::Highlight);
        for (const QTextEdit::ExtraSelection & mark : text()->extraSelections()) {
            result.append(QStringLiteral("%1 %2%3")
                              .arg(mark.cursor.selectionStart())
                              .arg(mark.cursor.selectedText(), mark.format.background().color() == highlight
                                                                   ? QStringLiteral("*")
                                                                   : QString()));
        }
        return result;
    }

    QTemporaryDir folder;
    script_panel panel;
};

QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

/// The colours in a line of a text.
QStringList colorsOf(const QPlainTextEdit & text, int line)
{
    QStringList result;
    for (const QTextLayout::FormatRange & range :
         text.document()->findBlockByNumber(line).layout()->formats()) {
        result.append(range.format.foreground().color().name());
    }
    return result;
}

} // namespace

class tst_script_panel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void isEmptyAtFirst();
    void namesTabs_data();
    void namesTabs();
    void showsFirstInFront();
    void replacesScripts();
    void becomesEmptyAgain();
    void choosesByName();
    void namesAreTheOneChoice();
    void switchesByKeys();
    void readsWhenFirstShown();
    void readsNothingThatNobodySees();
    void tellsFileAndSize_data();
    void tellsFileAndSize();
    void elidesALongPath();
    void readsUtf8();
    void tellsOfOtherBytes();
    void isForReading();
    void numbersLines();
    void wrapsLines();
    void colorsWhatIsInView();
    void colorsByTheDatabase();
    void changesColorsWithThePalette();
    void tellsOfAMissingFile();
    void tellsOfAFolder();
    void showsTheFirstPartOfAHugeFile();
    void showsAllOfALargeFile();
    void cutsALineWithoutEnd();
    void tellsThatALineIsPartlyPlain();
    void copiesTheScript();
    void tellsWhatTakesValuesAway();
    void opensTheFolder();

    void findsWhileTyping();
    void findsOnAndBack_data();
    void findsOnAndBack();
    void findsFromTheCursor();
    void findsByButtons();
    void matchesCase();
    void tellsThatThereIsNoMatch();
    void tellsNothingForNothing();
    void marksAllMatches();
    void marksWhatComesIntoView();
    void bringsTheMatchIntoView();
    void looksForTheSelection();
    void closesTheSearch();
    void closesTheSearchByItsButton();
    void goesOnAfterTheSearchWasClosed();
    void findNextAsksForAText();
    void searchesTheTabInFront();
    void findsNothingInNothing();
    void isUsableByTab();
    void everythingHasAName();
};

void tst_script_panel::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    qApp->setStyle(QStyleFactory::create(QStringLiteral("fusion")));
}

void tst_script_panel::isEmptyAtFirst()
{
    const fixture f;
    QVERIFY(f.child<QLabel>("m_lblEmpty")->isVisible());
    QCOMPARE(f.child<QLabel>("m_lblEmpty")->text(), QStringLiteral("The scripts of an export appear here"));
    QVERIFY(!f.child<QPushButton>("m_btnOpenFolder")->isEnabled());
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    QVERIFY(!f.names()->isEnabled());
    QCOMPARE(f.panel.scripts(), QStringList());
}

void tst_script_panel::namesTabs_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tab");
    const auto row = [](const char * file, const char * name, const char * tab) {
        QTest::newRow(file) << QString::fromUtf8(file) << QString::fromUtf8(name) << QString::fromUtf8(tab);
    };
    row("shop_mysql_db_schema_full.sql", "full", "full");
    row("shop_mysql_db_schema_v1.sql", "v1", "v1");
    row("shop_mysql_db_schema_v1_to_v2.sql", "v1 to v2", "v1 to v2");
    row("a_db_schema_b_mysql_db_schema_full.sql", "full", "full");
    row("shop_mysql_db_schema.sql", "shop_mysql_db_schema.sql", "shop_mysql_db_schema.sql");
    row("shop_mysql_db_schema_.sql", "shop_mysql_db_schema_.sql", "shop_mysql_db_schema_.sql");
    row("_db_schema_full.sql", "_db_schema_full.sql", "_db_schema_full.sql");
    row("shop_mysql_db_schema_full.txt", "shop_mysql_db_schema_full.txt", "shop_mysql_db_schema_full.txt");
    row("R&D.sql", "R&D.sql", "R&&D.sql");
    row("a_db_schema_R&D.sql", "R&D", "R&&D");
}

void tst_script_panel::namesTabs()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    QFETCH(QString, tab);
    fixture f;
    const QString path = f.write(file, "x");
    f.panel.setScripts({path});
    QCOMPARE(f.tabs()->tabText(0), tab);
    QCOMPARE(f.names()->itemText(0), name);
    QCOMPARE(f.tabs()->tabToolTip(0), "<qt>" + path.toHtmlEscaped() + "</qt>");
    QCOMPARE(f.names()->itemData(0, Qt::ToolTipRole).toString(), "<qt>" + path.toHtmlEscaped() + "</qt>");
}

void tst_script_panel::showsFirstInFront()
{
    fixture f;
    f.openThree();
    QVERIFY(!f.child<QLabel>("m_lblEmpty")->isVisible());
    QCOMPARE(f.panel.scripts().size(), 3);
    QCOMPARE(f.panel.scripts().constLast(),
             f.folder.filePath(QStringLiteral("a_sqlite_db_schema_v1_to_v2.sql")));
    QCOMPARE(f.tabs()->count(), 3);
    QCOMPARE(f.tabs()->currentIndex(), 0);
    QCOMPARE(f.tabs()->tabText(2), QStringLiteral("v1 to v2"));
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("CREATE TABLE full;\n"));
    QVERIFY(f.child<QPushButton>("m_btnOpenFolder")->isEnabled());
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    QVERIFY(f.names()->isEnabled());
}

void tst_script_panel::replacesScripts()
{
    fixture f;
    f.openThree();
    f.tabs()->setCurrentIndex(2);
    f.openThree();
    QCOMPARE(f.tabs()->count(), 3);
    QCOMPARE(f.names()->count(), 3);
    QCOMPARE(f.tabs()->currentIndex(), 0);
    QCOMPARE(f.names()->currentIndex(), 0);
    QVERIFY(f.isRead(0));
    QVERIFY(!f.isRead(1));
    QVERIFY(!f.isRead(2));
    f.open("DROP TABLE other;");
    QCOMPARE(f.tabs()->count(), 1);
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("DROP TABLE other;"));
}

void tst_script_panel::becomesEmptyAgain()
{
    fixture f;
    f.openThree();
    f.panel.find();
    f.panel.setScripts({});
    QVERIFY(f.child<QLabel>("m_lblEmpty")->isVisible());
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    QVERIFY(!f.field()->isVisible());
    QCOMPARE(f.names()->count(), 0);
    QCOMPARE(f.panel.scripts(), QStringList());
}

void tst_script_panel::choosesByName()
{
    fixture f;
    f.openThree();
    f.names()->setFocus();
    fixture::press(Qt::Key_Down);
    fixture::press(Qt::Key_Down);
    QCOMPARE(f.tabs()->currentIndex(), 2);
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("ALTER TABLE first;\nTABLE\n"));
}

void tst_script_panel::namesAreTheOneChoice()
{
    fixture f;
    f.openThree();
    QVERIFY(!f.tabs()->tabBar()->isVisible());
    f.names()->setFocus();
    fixture::press(Qt::Key_Down);
    QCOMPARE(f.names()->currentText(), QStringLiteral("v1"));
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("CREATE TABLE first;\n"));
}

void tst_script_panel::switchesByKeys()
{
    fixture f;
    f.openThree();
    f.text()->setFocus();
    fixture::press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(f.tabs()->currentIndex(), 1);
    QVERIFY(f.panel.isAncestorOf(QApplication::focusWidget()));
    fixture::press(Qt::Key_PageDown, Qt::ControlModifier);
    fixture::press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(f.tabs()->currentIndex(), 0);
    fixture::press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(f.tabs()->currentIndex(), 2);
    fixture::press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(f.tabs()->currentIndex(), 1);
    fixture::press(Qt::Key_PageUp); // alone it moves in the text
    QCOMPARE(f.tabs()->currentIndex(), 1);

    f.panel.setScripts({});
    QTest::keyClick(&f.panel, Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(f.tabs()->count(), 0);
}

void tst_script_panel::readsWhenFirstShown()
{
    fixture f;
    f.openThree();
    (void)f.write(QStringLiteral("a_sqlite_db_schema_v1.sql"), "changed before\n");
    f.tabs()->setCurrentIndex(1);
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("changed before\n"));
    (void)f.write(QStringLiteral("a_sqlite_db_schema_v1.sql"), "changed after\n");
    f.tabs()->setCurrentIndex(0);
    f.tabs()->setCurrentIndex(1);
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("changed before\n"));
    QVERIFY(!f.isRead(2));
}

void tst_script_panel::readsNothingThatNobodySees()
{
    fixture f(false);
    f.openThree();
    QVERIFY(!f.isRead(0));
    QCOMPARE(f.tabs()->count(), 3);
    f.panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.panel));
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("CREATE TABLE full;\n"));
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
}

void tst_script_panel::tellsFileAndSize_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("size");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("0 lines, 0 bytes");
    QTest::newRow("one") << QByteArray("a\n") << QStringLiteral("1 line, 2 bytes");
    QTest::newRow("one without end") << QByteArray("a") << QStringLiteral("1 line, 1 bytes");
    QTest::newRow("two") << QByteArray("a\nb") << QStringLiteral("2 lines, 3 bytes");
    QTest::newRow("line ends of Windows") << QByteArray("a\r\nb\r\n") << QStringLiteral("2 lines, 6 bytes");
    QTest::newRow("bytes, not characters") << QByteArray("\xc3\xa4") << QStringLiteral("1 line, 2 bytes");
    QTest::newRow("many") << QByteArray("abc\n").repeated(1500) << QStringLiteral("1,500 lines, 5.9 kB");
}

void tst_script_panel::tellsFileAndSize()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, size);
    fixture f;
    f.panel.resize(1600, 300);
    f.open(bytes);
    QCOMPARE(f.front<QLabel>("m_lblSize")->text(), size);
    auto * const path = f.front<QLineEdit>("m_txtFile");
    QTRY_COMPARE(path->text(), QDir::toNativeSeparators(f.panel.scripts().constFirst()));
    QVERIFY(path->isReadOnly());
    QVERIFY(!f.front<QLabel>("m_lblNote")->isVisible());
}

void tst_script_panel::elidesALongPath()
{
    fixture f;
    const QString path = f.write(QString(120, QLatin1Char('x')) + QStringLiteral(".sql"), "a");
    f.panel.setScripts({path});
    auto * const field = f.front<QLineEdit>("m_txtFile");
    QTRY_VERIFY(field->text().contains(QChar(0x2026)));
    QVERIFY(field->text().endsWith(QStringLiteral("xx.sql")));
    QCOMPARE(field->toolTip(), "<qt>" + path.toHtmlEscaped() + "</qt>");
    field->setFocus(Qt::TabFocusReason);
    QCOMPARE(field->text(), path);
    fixture::press(Qt::Key_A, Qt::ControlModifier);
    fixture::press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), path);
    f.text()->setFocus();
    QVERIFY(field->text().contains(QChar(0x2026)));
}

void tst_script_panel::readsUtf8()
{
    fixture f;
    f.open("\xef\xbb\xbfgr\xc3\xb6\xc3\x9f"
           "e \xe2\x82\xac\r\nb");
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("größe €\nb"));
    QVERIFY(!f.front<QLabel>("m_lblNote")->isVisible());
}

void tst_script_panel::tellsOfOtherBytes()
{
    const QString note = QStringLiteral("The file has bytes that are not UTF-8. They are shown as \ufffd.");
    fixture f;
    f.open("gr\xf6sse");
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("gr\ufffdsse"));
    QVERIFY(f.front<QLabel>("m_lblNote")->isVisible());
    QCOMPARE(f.front<QLabel>("m_lblNote")->text(), note);
    f.open("cut off: \xc3");
    QCOMPARE(f.front<QLabel>("m_lblNote")->text(), note);
}

void tst_script_panel::isForReading()
{
    fixture f;
    f.open("CREATE\nTABLE");
    QVERIFY(f.text()->isReadOnly());
    QVERIFY(f.text()->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
    QVERIFY(f.text()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QVERIFY(f.text()->tabChangesFocus());
    QVERIFY(QFontInfo(f.text()->font()).fixedPitch());
    f.text()->setFocus();
    fixture::type("x");
    fixture::press(Qt::Key_Delete);
    QCOMPARE(f.text()->toPlainText(), QStringLiteral("CREATE\nTABLE"));
    fixture::press(Qt::Key_End, Qt::ShiftModifier);
    fixture::press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), QStringLiteral("CREATE"));
}

void tst_script_panel::numbersLines()
{
    fixture f;
    f.open("a\nb\nc");
    const int margin = f.text()->viewport()->x();
    QVERIFY(margin > f.text()->fontMetrics().horizontalAdvance(QStringLiteral("999")));
    const QImage image = f.text()->grab(QRect(2, 2, margin - 4, f.text()->height() - 20)).toImage();
    const int line = f.text()->fontMetrics().height();
    const auto inkIn = [&image](int top, int bottom) {
        int ink = 0;
        for (int y = top; y < std::min(bottom, image.height()); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ink += image.pixel(x, y) != image.pixel(0, 0) ? 1 : 0;
            }
        }
        return ink;
    };
    QVERIFY(inkIn(0, line) > 0);
    QVERIFY(inkIn(0, 3 * line) > 2 * inkIn(0, line));
    QCOMPARE(inkIn(4 * line, image.height()), 0); // no number where there is no line
    f.open(QByteArray("a\n").repeated(10'000));
    QVERIFY(f.text()->viewport()->x() > margin);
}

void tst_script_panel::wrapsLines()
{
    fixture f;
    f.panel.setScripts({f.write(QStringLiteral("a.sql"), QByteArray("word ").repeated(500)),
                        f.write(QStringLiteral("b.sql"), QByteArray("word ").repeated(500)),
                        f.write(QStringLiteral("c.sql"), QByteArray("word ").repeated(500))});
    f.tabs()->setCurrentIndex(1);
    f.tabs()->setCurrentIndex(0);
    QCOMPARE(f.text()->lineWrapMode(), QPlainTextEdit::NoWrap);
    QTRY_VERIFY(f.text()->horizontalScrollBar()->maximum() > 0);
    auto * const wrap = f.child<QCheckBox>("m_chkWrap");
    QTest::keyClick(wrap, Qt::Key_Space);
    for (int tab = 0; tab < 3; ++tab) { // the third is read only now
        f.tabs()->setCurrentIndex(tab);
        QCOMPARE(f.text()->lineWrapMode(), QPlainTextEdit::WidgetWidth);
        QTRY_COMPARE(f.text()->horizontalScrollBar()->maximum(), 0);
    }
    QTest::keyClick(wrap, Qt::Key_Space);
    QCOMPARE(f.text()->lineWrapMode(), QPlainTextEdit::NoWrap);
}

void tst_script_panel::colorsWhatIsInView()
{
    fixture f;
    f.open(QByteArray("DROP TABLE a;\n").repeated(5'000));
    (void)f.text()->grab();
    const QString keyword = app::sqlColor(app::sql_kind::keyword, f.text()->palette()).name();
    const QStringList expected{keyword, keyword};
    QCOMPARE(colorsOf(*f.text(), 0), expected);
    const int inView = f.text()->viewport()->height() / f.text()->fontMetrics().lineSpacing();
    QCOMPARE(colorsOf(*f.text(), inView - 1), expected);
    QCOMPARE(colorsOf(*f.text(), 4'000), QStringList());
    f.text()->verticalScrollBar()->setValue(4'000);
    (void)f.text()->grab();
    QCOMPARE(colorsOf(*f.text(), 4'000), expected);
    QCOMPARE(colorsOf(*f.text(), 4'000 + inView - 1), expected);
    QCOMPARE(colorsOf(*f.text(), 2'000), QStringList());
    // More of it with the same first line.
    QCOMPARE(colorsOf(*f.text(), 4'000 + inView + 5), QStringList());
    f.panel.resize(700, 400 + 10 * f.text()->fontMetrics().lineSpacing());
    (void)f.text()->grab();
    QCOMPARE(colorsOf(*f.text(), 4'000 + inView + 5), expected);
}

void tst_script_panel::colorsByTheDatabase()
{
    fixture f;
    const QByteArray script("'\\' DROP"); // all of it a string where \ escapes
    f.panel.setScripts({f.write(QStringLiteral("a_mysql_db_schema_full.sql"), script),
                        f.write(QStringLiteral("a_sqlite_db_schema_full.sql"), script)});
    (void)f.text()->grab();
    QCOMPARE(colorsOf(*f.text(), 0).size(), 1);
    f.tabs()->setCurrentIndex(1);
    (void)f.text()->grab();
    QCOMPARE(colorsOf(*f.text(), 0).size(), 2);
}

void tst_script_panel::changesColorsWithThePalette()
{
    fixture f;
    f.open("DROP and DROP again");
    f.panel.find();
    fixture::type("DROP");
    (void)f.text()->grab();
    const QString light = colorsOf(*f.text(), 0).constFirst();
    const QColor lightMark = f.text()->extraSelections().constLast().format.background().color();
    const QPalette dark = test::paletteOn(QColor(0x1e, 0x1e, 0x1e));
    f.panel.setPalette(dark);
    (void)f.text()->grab();
    QVERIFY(colorsOf(*f.text(), 0).constFirst() != light);
    QCOMPARE(colorsOf(*f.text(), 0).constFirst(), app::sqlColor(app::sql_kind::keyword, dark).name());
    const QColor darkMark = f.text()->extraSelections().constLast().format.background().color();
    for (const app::sql_kind kind :
         {app::sql_kind::keyword, app::sql_kind::type, app::sql_kind::string, app::sql_kind::identifier,
          app::sql_kind::number, app::sql_kind::comment}) {
        QVERIFY(test::contrast(app::sqlColor(kind, dark), darkMark) >= 3);
        QVERIFY(test::contrast(app::sqlColor(kind, test::paletteOn(Qt::white)), lightMark) >= 3);
    }
}

void tst_script_panel::tellsOfAMissingFile()
{
    fixture f;
    f.panel.setScripts(
        {f.folder.filePath(QStringLiteral("gone.sql")), f.write(QStringLiteral("b.sql"), "b")});
    QVERIFY(f.front<QLabel>("m_lblProblem")->isVisible());
    QCOMPARE(f.front<QLabel>("m_lblProblem")->text(),
             QStringLiteral("The file is not there. It may have been moved or deleted."));
    QVERIFY(!f.text()->isVisible());
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    QVERIFY(f.child<QPushButton>("m_btnOpenFolder")->isEnabled());
    f.panel.find();
    fixture::type("a");
    QCOMPARE(f.found(), QStringLiteral("No match"));
    f.tabs()->setCurrentIndex(1);
    QVERIFY(f.text()->isVisible());
    QVERIFY(!f.front<QLabel>("m_lblProblem")->isVisible());
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
}

void tst_script_panel::tellsOfAFolder()
{
    fixture f;
    f.panel.setScripts({f.folder.path()});
    QCOMPARE(f.front<QLabel>("m_lblProblem")->text(),
             QStringLiteral("This is a folder or a special file, not a script."));
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
}

void tst_script_panel::showsTheFirstPartOfAHugeFile()
{
    // 90 lines of 400,001 bytes, more than 32 MB; ä is two bytes.
    const QByteArray line = QByteArray("\xc3\xa4").repeated(200'000) + '\n';
    fixture f;
    f.open(line.repeated(90));
    QCOMPARE(f.front<QLabel>("m_lblNote")->text(),
             QStringLiteral("The script is very large. Only the first 31.7 MB of 34.3 MB are shown here.\n"
                            "Only the first 50,000 characters of a line are coloured."));
    // 83 times 400,001 bytes are the lines that are whole in 33,554,432 bytes.
    QCOMPARE(f.text()->document()->characterCount() - 1, 83 * 200'001);
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    QCOMPARE(f.front<QLabel>("m_lblSize")->text(), QStringLiteral("83 lines, 34.3 MB"));
}

void tst_script_panel::showsAllOfALargeFile()
{
    const QByteArray line(32'767, 'x');
    fixture f;
    f.open((line + '\n').repeated(1024)); // 32 MB to the byte
    QVERIFY(!f.front<QLabel>("m_lblNote")->isVisible());
    QCOMPARE(f.text()->blockCount(), 1025);
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
}

void tst_script_panel::cutsALineWithoutEnd()
{
    fixture f;
    f.open("first\n" + QByteArray(500'001, 'x') + "\nmiddle\n" + QByteArray(700'000, 'y') + "\nlast");
    const QString text = f.text()->toPlainText();
    QCOMPARE(text, QStringLiteral("first\n") + QString(500'000, QLatin1Char('x')) +
                       QStringLiteral("\nmiddle\n") + QString(500'000, QLatin1Char('y')) +
                       QStringLiteral("\nlast"));
    QCOMPARE(f.front<QLabel>("m_lblNote")->text(),
             QStringLiteral("Lines of more than 500,000 characters are cut off here.\n"
                            "Only the first 50,000 characters of a line are coloured."));
    QVERIFY(!f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    f.panel.find(); // the places are those of what is shown
    fixture::type("last");
    QCOMPARE(f.text()->textCursor().selectedText(), QStringLiteral("last"));
    f.open(QByteArray(500'000, 'x'));
    QCOMPARE(f.text()->document()->characterCount() - 1, 500'000);
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
}

void tst_script_panel::tellsThatALineIsPartlyPlain()
{
    fixture f;
    f.open(QByteArray(50'001, 'x'));
    QCOMPARE(f.front<QLabel>("m_lblNote")->text(),
             QStringLiteral("Only the first 50,000 characters of a line are coloured."));
    QVERIFY(f.child<QPushButton>("m_btnCopyScript")->isEnabled());
    f.open(QByteArray(50'000, 'x'));
    QVERIFY(!f.front<QLabel>("m_lblNote")->isVisible());
}

void tst_script_panel::copiesTheScript()
{
    fixture f;
    f.open("a\xc2\xa0"
           "b\n\n\tc\n");
    f.click("m_btnCopyScript");
    QCOMPARE(clipboard(), QStringLiteral("a\u00a0b\n\n\tc\n")); // the text field would give a common blank
    f.openThree();
    f.tabs()->setCurrentIndex(1);
    f.click("m_btnCopyScript");
    QCOMPARE(clipboard(), QStringLiteral("CREATE TABLE first;\n"));
}

void tst_script_panel::tellsWhatTakesValuesAway()
{
    fixture f;
    f.open("CREATE TABLE a;\nDROP TABLE b;\n");
    const auto tipAt = [&f](int line) {
        QTextCursor cursor(f.text()->document()->findBlockByNumber(line));
        const QPoint place = f.text()->cursorRect(cursor).center();
        QHelpEvent event(QEvent::ToolTip, place, f.text()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(f.text()->viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    QCOMPARE(tipAt(1), QStringLiteral("This statement takes values or a table away"));
    QTRY_COMPARE(tipAt(0), QString());
}

void tst_script_panel::opensTheFolder()
{
    fixture f;
    QVERIFY(QDir(f.folder.path()).mkdir(QStringLiteral("below")));
    f.panel.setScripts({f.write(QStringLiteral("a.sql"), "a"), f.write(QStringLiteral("below/b.sql"), "b")});
    QSignalSpy asked(&f.panel, &script_panel::openFolderRequested);
    f.click("m_btnOpenFolder");
    f.tabs()->setCurrentIndex(1);
    QTest::keyClick(f.child<QPushButton>("m_btnOpenFolder"), Qt::Key_Space);
    QCOMPARE(asked.size(), 2);
    QCOMPARE(asked.at(0).constFirst().toString(), f.folder.path());
    QCOMPARE(asked.at(1).constFirst().toString(), f.folder.filePath(QStringLiteral("below")));
}

void tst_script_panel::findsWhileTyping()
{
    fixture f;
    f.open("abc ab abc");
    f.text()->setFocus();
    QVERIFY(!f.field()->isVisible());
    fixture::press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(f.field()->isVisible());
    QVERIFY(f.field()->hasFocus());
    fixture::type("ab");
    QCOMPARE(f.found(), QStringLiteral("1 of 3"));
    QCOMPARE(f.selected(), QStringLiteral("0 ab"));
    fixture::type("c");
    QCOMPARE(f.found(), QStringLiteral("1 of 2"));
    QCOMPARE(f.selected(), QStringLiteral("0 abc")); // not on to the next
    QVERIFY(f.field()->hasFocus());
    fixture::press(Qt::Key_End);
    fixture::press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(f.field()->selectedText(), QStringLiteral("abc")); // the next that is typed replaces it
}

void tst_script_panel::findsOnAndBack_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("inText");
    QTest::newRow("F3 in the field") << Qt::Key_F3 << false;
    QTest::newRow("F3 in the text") << Qt::Key_F3 << true;
    QTest::newRow("Return") << Qt::Key_Return << false;
    QTest::newRow("Enter") << Qt::Key_Enter << false;
}

void tst_script_panel::findsOnAndBack()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, inText);
    fixture f;
    f.open("ab\nab\nab");
    f.panel.find();
    fixture::type("ab");
    if (inText) {
        f.text()->setFocus();
    }
    const QWidget * const focus = QApplication::focusWidget();
    fixture::press(key);
    QCOMPARE(f.found(), QStringLiteral("2 of 3"));
    QCOMPARE(f.selected(), QStringLiteral("3 ab"));
    fixture::press(key);
    fixture::press(key);
    QCOMPARE(f.found(), QStringLiteral("1 of 3")); // round the end
    QCOMPARE(f.selected(), QStringLiteral("0 ab"));
    fixture::press(key, Qt::ShiftModifier);
    QCOMPARE(f.found(), QStringLiteral("3 of 3"));
    fixture::press(key, Qt::ShiftModifier);
    QCOMPARE(f.found(), QStringLiteral("2 of 3"));
    QCOMPARE(f.selected(), QStringLiteral("3 ab"));
    QCOMPARE(QApplication::focusWidget(), focus);
}

void tst_script_panel::findsFromTheCursor()
{
    fixture f;
    f.open("ab ab ab ab");
    f.text()->setFocus();
    for (int i = 0; i < 4; ++i) {
        fixture::press(Qt::Key_Right);
    }
    f.panel.find();
    fixture::type("ab");
    QCOMPARE(f.selected(), QStringLiteral("6 ab"));
    QCOMPARE(f.found(), QStringLiteral("3 of 4"));
    f.text()->moveCursor(QTextCursor::Start);
    f.panel.findNext();
    QCOMPARE(f.found(), QStringLiteral("1 of 4"));
    f.text()->moveCursor(QTextCursor::End);
    f.panel.findNext();
    QCOMPARE(f.found(), QStringLiteral("1 of 4"));
    f.text()->moveCursor(QTextCursor::End);
    f.panel.findPrevious();
    QCOMPARE(f.found(), QStringLiteral("4 of 4"));
}

void tst_script_panel::findsByButtons()
{
    fixture f;
    f.open("ab ab ab");
    f.panel.find();
    fixture::type("ab");
    f.click("m_btnNext");
    QCOMPARE(f.found(), QStringLiteral("2 of 3"));
    f.click("m_btnPrevious");
    f.click("m_btnPrevious");
    QCOMPARE(f.found(), QStringLiteral("3 of 3"));
    f.child<QPushButton>("m_btnPrevious")->setFocus();
    fixture::press(Qt::Key_Return); // goes on in the field only
    QCOMPARE(f.found(), QStringLiteral("3 of 3"));
    fixture::press(Qt::Key_Space);
    QCOMPARE(f.found(), QStringLiteral("2 of 3"));
}

void tst_script_panel::matchesCase()
{
    fixture f;
    f.open("Ab ab AB ab");
    f.panel.find();
    fixture::type("ab");
    QCOMPARE(f.found(), QStringLiteral("1 of 4"));
    QTest::keyClick(f.child<QCheckBox>("m_chkCase"), Qt::Key_Space);
    QCOMPARE(f.found(), QStringLiteral("1 of 2"));
    QCOMPARE(f.selected(), QStringLiteral("3 ab"));
    QTest::keyClick(f.child<QCheckBox>("m_chkCase"), Qt::Key_Space);
    QCOMPARE(f.found(), QStringLiteral("2 of 4"));
}

void tst_script_panel::tellsThatThereIsNoMatch()
{
    fixture f;
    f.open("abc");
    f.panel.find();
    fixture::type("abx");
    QCOMPARE(f.found(), QStringLiteral("No match"));
    QCOMPARE(f.marks(), QStringList());
    f.panel.findNext();
    f.panel.findPrevious();
    QCOMPARE(f.found(), QStringLiteral("No match"));
    f.open("a.c");
    f.field()->setText(QStringLiteral("a.c")); // no pattern
    QCOMPARE(f.found(), QStringLiteral("1 of 1"));
    f.field()->setText(QStringLiteral("..."));
    QCOMPARE(f.found(), QStringLiteral("No match"));
}

void tst_script_panel::tellsNothingForNothing()
{
    fixture f;
    f.open("abc");
    f.panel.find();
    QCOMPARE(f.found(), QString());
    fixture::type("b");
    fixture::press(Qt::Key_Backspace);
    QCOMPARE(f.found(), QString());
    QCOMPARE(f.marks(), QStringList());
}

void tst_script_panel::marksAllMatches()
{
    fixture f;
    f.open("aa aaa\r\nAA");
    f.panel.find();
    fixture::type("aa");
    QCOMPARE(f.marks(),
             (QStringList{QStringLiteral("0 aa*"), QStringLiteral("3 aa"), QStringLiteral("7 AA")}));
    f.panel.findNext();
    QCOMPARE(f.marks(),
             (QStringList{QStringLiteral("0 aa"), QStringLiteral("3 aa*"), QStringLiteral("7 AA")}));
}

void tst_script_panel::marksWhatComesIntoView()
{
    fixture f;
    f.open(QByteArray("ab\n").repeated(3'000));
    f.panel.find();
    fixture::type("ab");
    QCOMPARE(f.found(), QStringLiteral("1 of 3,000"));
    const QStringList first = f.marks();
    QCOMPARE(first.constFirst(), QStringLiteral("0 ab*"));
    QVERIFY(first.size() < 200);
    f.text()->verticalScrollBar()->setValue(1'000);
    QCOMPARE(f.marks().constFirst(), QStringLiteral("3000 ab"));
    // A line may hold any number.
    f.open(QByteArray("ab ").repeated(3'000));
    QCOMPARE(f.found(), QStringLiteral("3,000 matches"));
    QCOMPARE(f.marks().size(), 2'000);
}

void tst_script_panel::bringsTheMatchIntoView()
{
    fixture f;
    f.open(QByteArray("x\n").repeated(1'000) + "here\n" + QByteArray("x\n").repeated(1'000));
    f.panel.find();
    fixture::type("here");
    const QRect place = f.text()->cursorRect();
    QVERIFY(f.text()->viewport()->rect().contains(place));
    QVERIFY(place.top() > f.text()->viewport()->height() / 4); // with lines before and after
    QVERIFY(place.bottom() < f.text()->viewport()->height() * 3 / 4);
    QCOMPARE(f.marks(), QStringList{QStringLiteral("2000 here*")});
}

void tst_script_panel::looksForTheSelection()
{
    fixture f;
    f.open("one two\none two");
    f.text()->setFocus();
    fixture::press(Qt::Key_Right, Qt::ControlModifier);
    fixture::press(Qt::Key_End, Qt::ShiftModifier);
    fixture::press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(f.field()->text(), QStringLiteral("two"));
    QCOMPARE(f.field()->selectedText(), QStringLiteral("two")); // typing replaces it
    QCOMPARE(f.found(), QStringLiteral("1 of 2"));
    QCOMPARE(f.selected(), QStringLiteral("4 two"));
    f.text()->selectAll();
    f.panel.find();
    QCOMPARE(f.field()->text(), QStringLiteral("two")); // lines are not looked for
}

void tst_script_panel::closesTheSearch()
{
    fixture f;
    f.openThree();
    f.panel.find();
    fixture::type("table");
    f.tabs()->setCurrentIndex(1);
    QCOMPARE(f.marks().size(), 1);
    f.field()->setFocus();
    fixture::press(Qt::Key_Escape);
    QVERIFY(!f.field()->isVisible());
    QVERIFY(f.text()->hasFocus());
    QCOMPARE(f.marks(), QStringList());
    f.tabs()->setCurrentIndex(0);
    QCOMPARE(f.marks(), QStringList());

    f.panel.find();
    f.text()->setFocus();
    fixture::press(Qt::Key_Escape); // from the text as well
    QVERIFY(!f.field()->isVisible());
}

void tst_script_panel::closesTheSearchByItsButton()
{
    fixture f;
    f.open("a");
    f.panel.find();
    f.click("m_btnCloseFind");
    QVERIFY(!f.field()->isVisible());
    QVERIFY(f.text()->hasFocus());
}

void tst_script_panel::goesOnAfterTheSearchWasClosed()
{
    fixture f;
    f.open("ab ab ab");
    f.panel.find();
    fixture::type("ab");
    fixture::press(Qt::Key_Escape);
    fixture::press(Qt::Key_F3);
    QVERIFY(f.field()->isVisible());
    QVERIFY(f.text()->hasFocus());
    QCOMPARE(f.found(), QStringLiteral("2 of 3"));
    fixture::press(Qt::Key_Escape);
    fixture::press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(f.found(), QStringLiteral("1 of 3"));
}

void tst_script_panel::findNextAsksForAText()
{
    fixture f;
    f.open("a");
    f.panel.findNext();
    QVERIFY(f.field()->isVisible());
    QVERIFY(f.field()->hasFocus());
    fixture::press(Qt::Key_Escape);
    f.panel.findPrevious();
    QVERIFY(f.field()->hasFocus());
}

void tst_script_panel::searchesTheTabInFront()
{
    fixture f;
    f.openThree();
    f.panel.find();
    fixture::type("table");
    QCOMPARE(f.found(), QStringLiteral("1 of 1"));
    fixture::press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(f.tabs()->currentIndex(), 2);
    QVERIFY(f.field()->hasFocus());
    QCOMPARE(f.found(), QStringLiteral("2 matches"));
    QCOMPARE(f.marks(), (QStringList{QStringLiteral("6 TABLE"), QStringLiteral("19 TABLE")}));
    fixture::press(Qt::Key_F3);
    QCOMPARE(f.found(), QStringLiteral("1 of 2"));
    f.tabs()->setCurrentIndex(1);
    QCOMPARE(f.found(), QStringLiteral("1 match"));
}

void tst_script_panel::findsNothingInNothing()
{
    fixture f;
    f.panel.find();
    f.panel.findNext();
    f.panel.findPrevious();
    QVERIFY(!f.field()->isVisible());
    QTest::keyClick(&f.panel, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(&f.panel, Qt::Key_F3);
    QVERIFY(!f.field()->isVisible());
}

void tst_script_panel::isUsableByTab()
{
    QWidget window;
    auto * const layout = new QVBoxLayout(&window);
    auto * const panel = new script_panel;
    auto * const after = new QLineEdit;
    layout->addWidget(panel);
    layout->addWidget(after);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    panel->setScripts(
        {QStringLiteral(KORVANE_SOURCE_DIR "/tests/plugin/builder/golden/shop_mysql_db_schema_full.sql")});
    panel->find();
    panel->findChild<QComboBox *>(QStringLiteral("m_cboScript"))->setFocus();
    QStringList stops;
    for (int i = 0; i < 20 && !after->hasFocus(); ++i) {
        stops.append(QApplication::focusWidget()->objectName());
        fixture::press(Qt::Key_Tab);
    }
    QCOMPARE(stops.join(QLatin1Char(' ')),
             QStringLiteral("m_cboScript m_chkWrap m_btnCopyScript m_btnOpenFolder m_txtFile "
                            "m_txtScript m_txtFind m_btnPrevious m_btnNext m_chkCase m_btnCloseFind"));
}

void tst_script_panel::everythingHasAName()
{
    fixture f;
    f.open("a");
    QCOMPARE(f.names()->accessibleName(), QStringLiteral("Script"));
    QCOMPARE(f.child<QCheckBox>("m_chkWrap")->accessibleName(), QStringLiteral("Wrap long lines"));
    QCOMPARE(f.child<QPushButton>("m_btnCopyScript")->accessibleName(),
             QStringLiteral("Copy the whole script"));
    QCOMPARE(f.child<QPushButton>("m_btnOpenFolder")->accessibleName(),
             QStringLiteral("Open the folder where the script is"));
    QCOMPARE(f.tabs()->accessibleName(), QStringLiteral("Scripts"));
    QCOMPARE(f.front<QLineEdit>("m_txtFile")->accessibleName(), QStringLiteral("File of the script"));
    QCOMPARE(f.front<QLineEdit>("m_txtFile")->accessibleDescription(), f.panel.scripts().constFirst());
    QCOMPARE(f.text()->accessibleName(), QStringLiteral("Script a_sqlite_db_schema_full.sql"));
    QCOMPARE(f.field()->accessibleName(), QStringLiteral("Text to find"));
    QCOMPARE(f.child<QCheckBox>("m_chkCase")->accessibleName(), QStringLiteral("Match case"));
    QCOMPARE(f.child<QPushButton>("m_btnNext")->accessibleName(), QStringLiteral("Next match (F3)"));
    QCOMPARE(f.child<QPushButton>("m_btnPrevious")->accessibleName(),
             QStringLiteral("Previous match (Shift+F3)"));
    QCOMPARE(f.child<QPushButton>("m_btnCloseFind")->accessibleName(),
             QStringLiteral("Close the search (Escape)"));
}

QTEST_MAIN(tst_script_panel)
#include "tst_script_panel.moc"
