// The messages of an export, as a person reads, filters and copies them.

#include "app/window/export/message_list.h"
#include "app/window/export/message_panel.h"

#include "app/window/contrast.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QTest>
#include <QVBoxLayout>

using app::message_kind;
using app::message_list;
using app::message_panel;

namespace {

enum message_type
{
    Progress = 1,
    Warning = 2,
    Error = 3
};

/// The panel in a window, as a person has it.
struct fixture
{
    fixture()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
        panel.resize(700, 240);
        panel.show();
        if (!QTest::qWaitForWindowExposed(&panel)) {
            qFatal("the panel does not show");
        }
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
    [[nodiscard]] QListView * list() const { return child<QListView>("m_lstMessages"); }
    [[nodiscard]] QProgressBar * bar() const { return child<QProgressBar>("m_barProgress"); }
    [[nodiscard]] QString counts() const { return child<QLabel>("m_lblCounts")->text(); }
    [[nodiscard]] int rows() const { return list()->model()->rowCount(); }
    [[nodiscard]] QVariant data(int row, int role) const { return list()->model()->index(row, 0).data(role); }
    [[nodiscard]] QString text(int row) const { return data(row, Qt::DisplayRole).toString(); }
    /// All rows; the time of a heading as "TIME".
    [[nodiscard]] QStringList texts() const
    {
        static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d  "));
        QStringList result;
        for (int row = 0; row < rows(); ++row) {
            result.append(text(row).replace(time, QStringLiteral("TIME ")));
        }
        return result;
    }
    void click(const char * name) const { QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton); }
    void selectErrorsOnly() const { QTest::keyClick(child<QCheckBox>("m_chkErrorsOnly"), Qt::Key_Space); }
    /// One run with a message of each type.
    void runOfAll(bool ok = true)
    {
        panel.begin(QStringLiteral("Export"));
        panel.addMessage(QStringLiteral("going on"), Progress);
        panel.addMessage(QStringLiteral("look here"), Warning);
        panel.addMessage(QStringLiteral("went wrong"), Error);
        panel.end(ok, QStringLiteral("over"));
    }
    /// `count` messages, "message 0" and so on, as rows.
    void fill(int count)
    {
        for (int i = 0; i < count; ++i) {
            panel.addMessage(QStringLiteral("message %1").arg(i), Progress);
        }
        const int expected = count;
        QTRY_COMPARE(rows(), expected);
    }
    [[nodiscard]] QImage image(const QRect & place) const
    {
        return list()->viewport()->grab(place).toImage().convertToFormat(QImage::Format_RGB32);
    }

    message_panel panel;
};

QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

/// Whether something in the picture is nearly of `color`.
bool hasColor(const QImage & image, const QColor & color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (std::abs(c.red() - color.red()) + std::abs(c.green() - color.green()) +
                    std::abs(c.blue() - color.blue()) <
                40) {
                return true;
            }
        }
    }
    return false;
}

bool isPlain(const QImage & image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

class tst_message_panel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void isQuietAtFirst();
    void beginsARun();
    void showsMessagesSoon();
    void showsMessagesAtTheEnd();
    void endsWell();
    void endsBadly();
    void endsWithoutAText();
    void countsTheRunOnly();
    void tellsCounts_data();
    void tellsCounts();
    void takesUnknownTypesAsProgress();
    void showsProgress();
    void drawsWholePercentsOnly();
    void keepsARunOnOneRow_data();
    void keepsARunOnOneRow();
    void cutsLongMessages();
    void namesErrorsInWords();
    void coloursAreLegible();
    void drawsKinds_data();
    void drawsKinds();
    void elidesWhatHasNoRoom();
    void showsErrorsOnly();
    void errorsOnlyByTheMenu();
    void copiesSelectedRows();
    void copiesNothingWithoutSelection();
    void copyWinsOverTheWindow();
    void copiesByTheMenu();
    void copiesAll();
    void copiesWhatIsShown();
    void clears();
    void clearsDuringARun();
    void clearsByTheMenu();
    void followsTheEnd();
    void staysWhereThePersonReads();
    void staysWhileLinesAreDropped();
    void tabLeavesTheList();
    void everythingHasAName();
    void listDropsTheOldest();
    void listFlushesWhatIsMuch();
    void listForgetsWhatWasHeldBack();
};

void tst_message_panel::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    qApp->setStyle(QStyleFactory::create(QStringLiteral("fusion")));
}

void tst_message_panel::isQuietAtFirst()
{
    const fixture f;
    QCOMPARE(f.rows(), 0);
    QCOMPARE(f.counts(), QStringLiteral("No messages"));
    QVERIFY(f.bar()->isHidden());
    QCOMPARE(f.panel.messageCount(), 0);
    QCOMPARE(f.panel.errorCount(), 0);
}

void tst_message_panel::beginsARun()
{
    fixture f;
    const QTime before = QTime::currentTime();
    f.panel.begin(QStringLiteral("Export of shop"));
    QCOMPARE(f.rows(), 1);
    const QString heading = f.text(0);
    QCOMPARE(heading.mid(8), QStringLiteral("  Export of shop"));
    const QTime told = QTime::fromString(heading.left(8), QStringLiteral("HH:mm:ss"));
    QVERIFY(told.isValid());
    // Midnight may lie between.
    QVERIFY(told >= QTime(before.hour(), before.minute(), before.second()) || told < before);
    QVERIFY(f.bar()->isVisible());
    QCOMPARE(f.bar()->minimum(), 0);
    QCOMPARE(f.bar()->maximum(), 0); // busy
    QCOMPARE(f.panel.messageCount(), 0);
}

void tst_message_panel::showsMessagesSoon()
{
    fixture f;
    f.panel.begin(QStringLiteral("Export"));
    QSignalSpy inserted(f.list()->model(), &QAbstractItemModel::rowsInserted);
    f.panel.addMessage(QStringLiteral("first"), Progress);
    f.panel.addMessage(QStringLiteral("second"), Progress);
    f.panel.addMessage(QStringLiteral("third"), Error);
    QCOMPARE(f.rows(), 1); // a row each time would hold up the export
    QCOMPARE(f.panel.messageCount(), 3);
    QCOMPARE(f.panel.errorCount(), 1);
    QTRY_COMPARE(f.rows(), 4);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(f.texts(), (QStringList{QStringLiteral("TIME Export"), QStringLiteral("first"),
                                     QStringLiteral("second"), QStringLiteral("third")}));
    QCOMPARE(f.counts(), QStringLiteral("3 messages, 1 error"));
    f.panel.addMessage(QStringLiteral("fourth"), Progress);
    QTRY_COMPARE(f.rows(), 5);
}

void tst_message_panel::showsMessagesAtTheEnd()
{
    fixture f;
    f.runOfAll();
    QCOMPARE(f.texts(), (QStringList{QStringLiteral("TIME Export"), QStringLiteral("going on"),
                                     QStringLiteral("look here"), QStringLiteral("went wrong"),
                                     QStringLiteral("over")}));
}

void tst_message_panel::endsWell()
{
    fixture f;
    f.panel.begin(QStringLiteral("Export"));
    f.panel.setProgress(3, 8);
    f.panel.end(true, QStringLiteral("2 scripts written"));
    QCOMPARE(f.text(1), QStringLiteral("2 scripts written"));
    QCOMPARE(f.data(1, Qt::AccessibleTextRole).toString(), QStringLiteral("2 scripts written"));
    QCOMPARE(f.panel.errorCount(), 0);
    // A full bar with a word on it looks like a button.
    QVERIFY(!f.bar()->isVisible());
    QVERIFY(f.child<QLabel>("m_lblDone")->isVisible());
    QCOMPARE(f.child<QLabel>("m_lblDone")->text(), QStringLiteral("Done"));
    f.panel.begin(QStringLiteral("Again"));
    QVERIFY(f.bar()->isVisible());
    QVERIFY(!f.child<QLabel>("m_lblDone")->isVisible());
}

void tst_message_panel::endsBadly()
{
    fixture f;
    f.panel.begin(QStringLiteral("Export"));
    f.panel.setProgress(3, 8);
    f.panel.end(false, QStringLiteral("the disk is full"));
    QCOMPARE(f.text(1), QStringLiteral("the disk is full"));
    QCOMPARE(f.data(1, Qt::AccessibleTextRole).toString(), QStringLiteral("Error: the disk is full"));
    QCOMPARE(f.panel.errorCount(), 1);
    QCOMPARE(f.panel.messageCount(), 0);
    QCOMPARE(f.counts(), QStringLiteral("0 messages, 1 error"));
    QCOMPARE(f.bar()->value(), 3); // how far it came
    QCOMPARE(f.bar()->maximum(), 8);
    QCOMPARE(f.bar()->text(), QStringLiteral("Failed"));
    QVERIFY(f.bar()->palette().color(QPalette::Highlight).red() > 0xa0);

    f.panel.begin(QStringLiteral("Again"));
    f.panel.setProgress(1, 2);
    QCOMPARE(f.bar()->text(), QStringLiteral("50 %"));
    QCOMPARE(f.bar()->palette().color(QPalette::Highlight), f.panel.palette().color(QPalette::Highlight));

    f.panel.begin(QStringLiteral("Without a total"));
    f.panel.end(false, QStringLiteral("no"));
    QVERIFY(f.bar()->maximum() > 0); // a bar that is busy shows no text, and never rests
    QCOMPARE(f.bar()->text(), QStringLiteral("Failed"));
}

void tst_message_panel::endsWithoutAText()
{
    fixture f;
    f.panel.end(true, {});
    f.panel.end(false, {});
    QCOMPARE(f.texts(), (QStringList{QStringLiteral("Done"), QStringLiteral("Failed")}));
}

void tst_message_panel::countsTheRunOnly()
{
    fixture f;
    f.runOfAll(false);
    QCOMPARE(f.counts(), QStringLiteral("3 messages, 2 errors"));
    f.panel.begin(QStringLiteral("Again"));
    QCOMPARE(f.panel.messageCount(), 0);
    QCOMPARE(f.panel.errorCount(), 0);
    QCOMPARE(f.counts(), QStringLiteral("No messages"));
    f.panel.addMessage(QStringLiteral("new"), Progress);
    f.panel.end(true, QStringLiteral("fine"));
    QCOMPARE(f.counts(), QStringLiteral("1 message, no errors"));
    QCOMPARE(f.rows(), 8); // what the first run said is still there
    QCOMPARE(f.text(3), QStringLiteral("went wrong"));
}

void tst_message_panel::tellsCounts_data()
{
    QTest::addColumn<int>("messages");
    QTest::addColumn<int>("errors");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one") << 1 << 0 << QStringLiteral("1 message, no errors");
    QTest::newRow("one error") << 1 << 1 << QStringLiteral("1 message, 1 error");
    QTest::newRow("two") << 2 << 2 << QStringLiteral("2 messages, 2 errors");
    QTest::newRow("many") << 1234 << 2 << QStringLiteral("1,234 messages, 2 errors");
    QTest::newRow("many errors") << 1234 << 1001 << QStringLiteral("1,234 messages, 1,001 errors");
}

void tst_message_panel::tellsCounts()
{
    QFETCH(int, messages);
    QFETCH(int, errors);
    QFETCH(QString, expected);
    fixture f;
    for (int i = 0; i < messages; ++i) {
        f.panel.addMessage(QStringLiteral("x"), i < errors ? Error : Progress);
    }
    QCOMPARE(f.panel.messageCount(), messages);
    QCOMPARE(f.panel.errorCount(), errors);
    QTRY_COMPARE(f.counts(), expected);
}

void tst_message_panel::takesUnknownTypesAsProgress()
{
    fixture f;
    f.panel.addMessage(QStringLiteral("x"), 0);
    f.panel.addMessage(QStringLiteral("y"), 4);
    QCOMPARE(f.panel.errorCount(), 0);
    QTRY_COMPARE(f.rows(), 2);
    QCOMPARE(f.data(1, Qt::AccessibleTextRole).toString(), QStringLiteral("y"));
}

void tst_message_panel::showsProgress()
{
    fixture f;
    f.panel.begin(QStringLiteral("Export"));
    f.panel.setProgress(37, 100);
    QCOMPARE(f.bar()->text(), QStringLiteral("37 %"));
    f.panel.setProgress(2, 3);
    QCOMPARE(f.bar()->value(), 2);
    QCOMPARE(f.bar()->text(), QStringLiteral("66 %"));
    f.panel.setProgress(7, 3);
    QCOMPARE(f.bar()->value(), 3);
    f.panel.setProgress(-1, 3);
    QCOMPARE(f.bar()->value(), 0);
    f.panel.setProgress(5, 0);
    QCOMPARE(f.bar()->maximum(), 0);
    f.panel.setProgress(2'000'000'000, 2'100'000'000);
    QCOMPARE(f.bar()->text(), QStringLiteral("95 %"));
    f.panel.setProgress(1, -5);
    QCOMPARE(f.bar()->maximum(), 0);
}

void tst_message_panel::drawsWholePercentsOnly()
{
    fixture f;
    f.panel.setProgress(370, 1000);
    QSignalSpy changed(f.bar(), &QProgressBar::valueChanged);
    for (int i = 370; i < 380; ++i) {
        f.panel.setProgress(i, 1000);
    }
    QCOMPARE(changed.size(), 0);
    f.panel.setProgress(380, 1000);
    QCOMPARE(f.bar()->value(), 380);
    f.panel.setProgress(760, 2000); // as many percent, but of another total
    QCOMPARE(f.bar()->maximum(), 2000);
    f.panel.setProgress(2000, 2000);
    QCOMPARE(f.bar()->value(), 2000);
}

void tst_message_panel::keepsARunOnOneRow_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("tip");
    const auto row = [](const char * name, const QString & message, const char * text, const char * tip) {
        QTest::newRow(name)
            << message << QString::fromUtf8(text)
            << QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(QString::fromUtf8(tip));
    };
    row("line feed", QStringLiteral("Error loading :\nno table"), "Error loading : no table",
        "Error loading :\nno table");
    row("line end of Windows", QStringLiteral("a\r\nb"), "a b", "a \nb");
    row("at the end", QStringLiteral("a\n"), "a", "a");
    row("marks", QStringLiteral("<b>5 & 6</b>"), "<b>5 & 6</b>", "&lt;b&gt;5 &amp; 6&lt;/b&gt;");
    row("control characters", QStringLiteral("a\tb\x1b[31mc"), "a b [31mc", "a b [31mc");
    row("null", QStringLiteral("a") + QChar(0) + QStringLiteral("b"), "a b", "a b");
}

void tst_message_panel::keepsARunOnOneRow()
{
    QFETCH(QString, message);
    QFETCH(QString, row);
    QFETCH(QString, tip);
    fixture f;
    f.panel.addMessage(message, Progress);
    QTRY_COMPARE(f.rows(), 1);
    QCOMPARE(f.text(0), row);
    QCOMPARE(f.data(0, Qt::ToolTipRole).toString(), tip);
    f.click("m_btnCopyAll");
    QCOMPARE(clipboard(), message);
}

void tst_message_panel::cutsLongMessages()
{
    fixture f;
    const QString message = QString(3'000, QLatin1Char('x')) + QString(3'000, QLatin1Char('y'));
    f.panel.addMessage(message, Progress);
    QTRY_COMPARE(f.rows(), 1);
    QCOMPARE(f.text(0), QString(1'000, QLatin1Char('x')) + QStringLiteral("…"));
    QVERIFY(f.data(0, Qt::ToolTipRole).toString().contains(QStringLiteral("xy")));
    QVERIFY(f.data(0, Qt::ToolTipRole)
                .toString()
                .contains(QString(1'000, QLatin1Char('y')) + QStringLiteral("…</p>")));
    f.click("m_btnCopyAll");
    QCOMPARE(clipboard(), message);
}

void tst_message_panel::namesErrorsInWords()
{
    fixture f;
    f.runOfAll();
    QCOMPARE(f.data(1, Qt::AccessibleTextRole).toString(), QStringLiteral("going on"));
    QCOMPARE(f.data(2, Qt::AccessibleTextRole).toString(), QStringLiteral("Warning: look here"));
    QCOMPARE(f.data(3, Qt::AccessibleTextRole).toString(), QStringLiteral("Error: went wrong"));
    QCOMPARE(f.data(4, Qt::AccessibleTextRole).toString(), QStringLiteral("over"));
    f.panel.addFinding(QStringLiteral("good to know"), app::message_kind::note, {});
    f.panel.addFinding(QStringLiteral("as it is"), app::message_kind::accepted, {});
    f.panel.end(true, QStringLiteral("over"));
    QCOMPARE(f.data(5, Qt::AccessibleTextRole).toString(), QStringLiteral("Note: good to know"));
    QCOMPARE(f.data(6, Qt::AccessibleTextRole).toString(), QStringLiteral("Accepted: as it is"));
}

void tst_message_panel::coloursAreLegible()
{
    for (const QColor & base : {QColor(0xff, 0xff, 0xff), QColor(0xf4, 0xf4, 0xf0), QColor(0x1e, 0x1e, 0x1e),
                                QColor(0x2d, 0x2d, 0x30)}) {
        const QPalette palette = test::paletteOn(base);
        QVERIFY(test::contrast(app::messageColor(message_kind::error, palette), base) >= 4.5);
        QVERIFY(test::contrast(app::messageColor(message_kind::warning, palette), base) >= 4.5);
        QVERIFY(!app::messageColor(message_kind::progress, palette).isValid());
    }
}

void tst_message_panel::drawsKinds_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("error");
    QTest::addColumn<QColor>("warning");
    QTest::newRow("light") << QColor(Qt::white) << QColor(0xb0, 0x00, 0x20) << QColor(0x80, 0x54, 0x00);
    QTest::newRow("dark") << QColor(0x1e, 0x1e, 0x1e) << QColor(0xff, 0x8a, 0x80) << QColor(0xff, 0xcc, 0x66);
}

void tst_message_panel::drawsKinds()
{
    QFETCH(QColor, base);
    QFETCH(QColor, error);
    QFETCH(QColor, warning);
    fixture f;
    f.panel.begin(QStringLiteral("HHH"));
    f.panel.addMessage(QStringLiteral("HHH"), Progress);
    f.panel.addMessage(QStringLiteral("HHH"), Warning);
    f.panel.addMessage(QStringLiteral("HHH"), Error);
    f.panel.end(true, QStringLiteral("HHH"));
    f.panel.setPalette(test::paletteOn(base)); // afterwards, as when the desktop becomes dark at night
    const auto picture = [&f](int row) {
        QRect place = f.list()->visualRect(f.list()->model()->index(row, 0));
        place.setWidth(20);
        return f.image(place);
    };
    const auto text = [&f](int row) {
        return f.image(f.list()->visualRect(f.list()->model()->index(row, 0)).adjusted(22, 0, 0, 0));
    };
    QVERIFY(isPlain(picture(1)));
    QVERIFY(!isPlain(picture(2)));
    QVERIFY(!isPlain(picture(3)));
    QVERIFY(!isPlain(picture(4)));
    QVERIFY(picture(2) != picture(3));
    QVERIFY(!isPlain(picture(0))); // a heading begins at the left
    QVERIFY(hasColor(text(1), f.panel.palette().color(QPalette::Text)));
    QVERIFY(hasColor(text(2), warning));
    QVERIFY(hasColor(text(3), error));
    QVERIFY(!hasColor(text(1), error));
    QVERIFY(text(1) != text(4)); // bold
}

void tst_message_panel::elidesWhatHasNoRoom()
{
    fixture f;
    f.panel.addMessage(QString(900, QLatin1Char('H')), Progress);
    f.panel.addMessage(QStringLiteral("H"), Progress);
    QTRY_COMPARE(f.rows(), 2);
    QVERIFY(!f.list()->horizontalScrollBar()->isVisible());
    QCOMPARE(f.list()->visualRect(f.list()->model()->index(0, 0)).width(), f.list()->viewport()->width());
    QCOMPARE(f.list()->visualRect(f.list()->model()->index(1, 0)).width(), f.list()->viewport()->width());
}

void tst_message_panel::showsErrorsOnly()
{
    fixture f;
    f.runOfAll(false);
    f.selectErrorsOnly();
    QCOMPARE(f.texts(), (QStringList{QStringLiteral("TIME Export"), QStringLiteral("went wrong"),
                                     QStringLiteral("over")}));
    f.panel.begin(QStringLiteral("Again"));
    f.panel.addMessage(QStringLiteral("fine"), Progress);
    f.panel.addMessage(QStringLiteral("careful"), Warning);
    f.panel.addMessage(QStringLiteral("bad"), Error);
    f.panel.end(true, QStringLiteral("done"));
    QCOMPARE(f.texts().mid(3), (QStringList{QStringLiteral("TIME Again"), QStringLiteral("bad")}));
    f.selectErrorsOnly();
    QCOMPARE(f.rows(), 10);
}

void tst_message_panel::errorsOnlyByTheMenu()
{
    fixture f;
    f.runOfAll();
    auto * const action = f.child<QAction>("m_actErrorsOnly");
    action->trigger();
    QCOMPARE(f.rows(), 2);
    QVERIFY(f.child<QCheckBox>("m_chkErrorsOnly")->isChecked());
    f.selectErrorsOnly();
    QVERIFY(!action->isChecked());
}

void tst_message_panel::copiesSelectedRows()
{
    fixture f;
    f.runOfAll();
    const auto place = [&f](int row) {
        return f.list()->visualRect(f.list()->model()->index(row, 0)).center();
    };
    QTest::mouseClick(f.list()->viewport(), Qt::LeftButton, {}, place(3));
    QTest::mouseClick(f.list()->viewport(), Qt::LeftButton, Qt::ControlModifier, place(1));
    QTest::keyClick(f.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), QStringLiteral("going on\nError: went wrong"));

    // By the keyboard alone.
    QTest::keyClick(f.list(), Qt::Key_Home);
    QTest::keyClick(f.list(), Qt::Key_Down);
    QTest::keyClick(f.list(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(f.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), QStringLiteral("going on\nWarning: look here"));
    QTest::keyClick(f.list(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(f.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard().split(QLatin1Char('\n')).size(), 5);
}

void tst_message_panel::copiesNothingWithoutSelection()
{
    fixture f;
    f.runOfAll();
    QTest::keyClick(f.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), QStringLiteral("before"));
}

void tst_message_panel::copyWinsOverTheWindow()
{
    QMainWindow window;
    auto * const panel = new message_panel;
    window.setCentralWidget(panel);
    QAction other(QStringLiteral("Copy"));
    other.setShortcut(QKeySequence::Copy);
    window.addAction(&other);
    QSignalSpy triggered(&other, &QAction::triggered);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    panel->end(true, QStringLiteral("the last"));
    auto * const list = panel->findChild<QListView *>(QStringLiteral("m_lstMessages"));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
    list->selectAll();
    QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), QStringLiteral("the last"));
    QCOMPARE(triggered.size(), 0);
}

void tst_message_panel::copiesByTheMenu()
{
    fixture f;
    f.runOfAll();
    f.list()->setCurrentIndex(f.list()->model()->index(2, 0));
    const QList<QAction *> actions = f.list()->actions();
    QStringList texts;
    for (const QAction * const action : actions) {
        texts.append(action->text());
    }
    QCOMPARE(texts, (QStringList{QStringLiteral("Copy\tCtrl+C"), QStringLiteral("Copy all"),
                                 QStringLiteral("Errors only"), QStringLiteral("Clear")}));
    QCOMPARE(f.list()->contextMenuPolicy(), Qt::ActionsContextMenu);
    f.child<QAction>("m_actCopy")->trigger();
    QCOMPARE(clipboard(), QStringLiteral("Warning: look here"));
    f.child<QAction>("m_actCopyAll")->trigger();
    QVERIFY(clipboard().endsWith(QStringLiteral("going on\nWarning: look here\nError: went wrong\nover")));
}

void tst_message_panel::copiesAll()
{
    fixture f;
    f.panel.addMessage(QStringLiteral("a"), Progress);
    f.panel.addMessage(QStringLiteral("b"), Warning);
    f.click("m_btnCopyAll"); // before they are rows
    QCOMPARE(clipboard(), QStringLiteral("a\nWarning: b"));
}

void tst_message_panel::copiesWhatIsShown()
{
    fixture f;
    f.panel.addMessage(QStringLiteral("a"), Progress);
    f.panel.addMessage(QStringLiteral("b"), Error);
    f.selectErrorsOnly();
    f.click("m_btnCopyAll");
    QCOMPARE(clipboard(), QStringLiteral("Error: b"));
}

void tst_message_panel::clears()
{
    fixture f;
    f.runOfAll(false);
    f.panel.addMessage(QStringLiteral("held back"), Progress);
    f.click("m_btnClear");
    QCOMPARE(f.rows(), 0);
    QCOMPARE(f.panel.messageCount(), 0);
    QCOMPARE(f.panel.errorCount(), 0);
    QCOMPARE(f.counts(), QStringLiteral("No messages"));
    QVERIFY(f.bar()->isHidden());
    f.panel.addMessage(QStringLiteral("new"), Progress);
    QTRY_COMPARE(f.texts(), QStringList{QStringLiteral("new")});
}

void tst_message_panel::clearsDuringARun()
{
    fixture f;
    f.panel.begin(QStringLiteral("Export"));
    f.panel.setProgress(1, 4);
    f.panel.clear();
    QVERIFY(f.bar()->isVisible());
    QCOMPARE(f.bar()->text(), QStringLiteral("25 %"));
}

void tst_message_panel::clearsByTheMenu()
{
    fixture f;
    f.runOfAll();
    f.child<QAction>("m_actClear")->trigger();
    QCOMPARE(f.rows(), 0);
}

void tst_message_panel::followsTheEnd()
{
    fixture f;
    f.fill(100);
    QScrollBar * const bar = f.list()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    f.panel.resize(700, 150);
    QTRY_VERIFY(bar->value() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    const int before = bar->maximum();
    f.panel.addMessage(QStringLiteral("one more"), Progress);
    QTRY_VERIFY(bar->maximum() > before);
    QCOMPARE(bar->value(), bar->maximum());
    f.selectErrorsOnly();
    f.selectErrorsOnly();
    QTRY_VERIFY(bar->maximum() > before);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_message_panel::staysWhereThePersonReads()
{
    fixture f;
    f.fill(100);
    QScrollBar * const bar = f.list()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTest::keyClick(f.list(), Qt::Key_Home);
    QTRY_COMPARE(bar->value(), 0);
    int maximum = bar->maximum();
    f.panel.addMessage(QStringLiteral("one more"), Progress);
    QTRY_VERIFY(bar->maximum() > maximum);
    QCOMPARE(bar->value(), 0);

    QTest::keyClick(f.list(), Qt::Key_End);
    QTRY_COMPARE(bar->value(), bar->maximum());
    maximum = bar->maximum();
    f.panel.addMessage(QStringLiteral("another"), Progress);
    QTRY_VERIFY(bar->maximum() > maximum);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_message_panel::staysWhileLinesAreDropped()
{
    fixture f;
    f.fill(message_list::DefaultLimit);
    f.list()->scrollTo(f.list()->model()->index(150'000, 0), QAbstractItemView::PositionAtTop);
    f.list()->verticalScrollBar()->setValue(f.list()->verticalScrollBar()->value() + 3);
    const auto top = [&f] { return f.list()->indexAt(QPoint(0, 0)); };
    QCOMPARE(top().data().toString(), QStringLiteral("message 150000"));
    QCOMPARE(f.list()->visualRect(top()).top(), -3);
    f.panel.addMessage(QStringLiteral("one too many"), Progress);
    QTRY_VERIFY(f.rows() < message_list::DefaultLimit);
    QCOMPARE(f.text(0), QStringLiteral("20,002 older lines were dropped"));
    QCOMPARE(top().data().toString(), QStringLiteral("message 150000"));
    QCOMPARE(f.list()->visualRect(top()).top(), -3);
    QCOMPARE(f.panel.messageCount(), 200'001);

    // And who follows the end goes on to.
    f.list()->scrollToBottom();
    for (int i = 0; i < 30'000; ++i) {
        f.panel.addMessage(QStringLiteral("x"), Progress);
    }
    f.panel.end(true, QStringLiteral("the very last"));
    QScrollBar * const bar = f.list()->verticalScrollBar();
    const QPoint bottom(0, f.list()->viewport()->height() - 2);
    QTRY_COMPARE(f.list()->indexAt(bottom).data().toString(), QStringLiteral("the very last"));
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_message_panel::tabLeavesTheList()
{
    QWidget window;
    auto * const layout = new QVBoxLayout(&window);
    auto * const panel = new message_panel;
    auto * const after = new QLineEdit;
    layout->addWidget(panel);
    layout->addWidget(after);
    panel->end(true, QStringLiteral("x"));
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    panel->findChild<QCheckBox *>(QStringLiteral("m_chkErrorsOnly"))->setFocus();
    QStringList stops;
    for (int i = 0; i < 10 && !after->hasFocus(); ++i) {
        stops.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY2(after->hasFocus(), qPrintable(stops.join(QLatin1Char(' '))));
    QCOMPARE(stops.join(QLatin1Char(' ')),
             QStringLiteral("m_chkErrorsOnly m_btnCopyAll m_btnClear m_lstMessages"));
    stops.clear();
    QTest::keyClick(after, Qt::Key_Tab, Qt::ShiftModifier);
    for (const char * const name : {"m_lstMessages", "m_btnClear", "m_btnCopyAll", "m_chkErrorsOnly"}) {
        stops.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
        QVERIFY2(stops.contains(QString::fromLatin1(name)), name);
    }
}

void tst_message_panel::everythingHasAName()
{
    const fixture f;
    QCOMPARE(f.list()->accessibleName(), QStringLiteral("Messages"));
    QCOMPARE(f.bar()->accessibleName(), QStringLiteral("Progress"));
    QCOMPARE(f.child<QCheckBox>("m_chkErrorsOnly")->accessibleName(), QStringLiteral("Show errors only"));
    QCOMPARE(f.child<QPushButton>("m_btnCopyAll")->accessibleName(),
             QStringLiteral("Copy all messages shown"));
    QCOMPARE(f.child<QPushButton>("m_btnClear")->accessibleName(), QStringLiteral("Clear the messages"));
}

void tst_message_panel::listDropsTheOldest()
{
    message_list list(nullptr, 100);
    const QAbstractItemModelTester tester(&list);
    for (int i = 0; i < 100; ++i) {
        list.add(QString::number(i), message_kind::progress);
    }
    list.flush();
    QCOMPARE(list.rowCount(), 100);
    QCOMPARE(list.index(0).data().toString(), QStringLiteral("0"));
    list.add(QStringLiteral("100"), message_kind::progress);
    list.flush();
    // A tenth less than the limit, with the line that tells.
    QCOMPARE(list.rowCount(), 90);
    QCOMPARE(list.index(0).data().toString(), QStringLiteral("12 older lines were dropped"));
    QCOMPARE(list.index(1).data().toString(), QStringLiteral("12"));
    QCOMPARE(list.index(89).data().toString(), QStringLiteral("100"));

    QSignalSpy changed(&list, &QAbstractItemModel::dataChanged);
    for (int i = 101; i < 2'000; ++i) {
        list.add(QString::number(i), message_kind::progress);
        QVERIFY(list.rowCount() <= 100);
    }
    list.flush();
    const int dropped = 2'000 - (list.rowCount() - 1);
    QCOMPARE(list.index(0).data().toString(),
             QStringLiteral("%1 older lines were dropped").arg(QLocale().toString(dropped)));
    QCOMPARE(list.index(1).data().toString(), QString::number(dropped));
    QCOMPARE(list.index(list.rowCount() - 1).data().toString(), QStringLiteral("1999"));
    QVERIFY(!changed.isEmpty());
    QCOMPARE(changed.constFirst().at(0).toModelIndex(), list.index(0));

    list.clear();
    for (int i = 0; i < 101; ++i) {
        list.add(QString::number(i), message_kind::progress);
    }
    list.flush();
    QCOMPARE(list.index(0).data().toString(), QStringLiteral("12 older lines were dropped"));
}

void tst_message_panel::listFlushesWhatIsMuch()
{
    message_list list(nullptr, 100);
    for (int i = 0; i < 9; ++i) {
        list.add(QStringLiteral("x"), message_kind::progress);
    }
    QCOMPARE(list.rowCount(), 0);
    list.add(QStringLiteral("x"), message_kind::progress);
    QCOMPARE(list.rowCount(), 10); // though no event was handled
}

void tst_message_panel::listForgetsWhatWasHeldBack()
{
    message_list list;
    list.add(QStringLiteral("x"), message_kind::progress);
    list.clear();
    list.flush();
    QCOMPARE(list.rowCount(), 0);
}

QTEST_MAIN(tst_message_panel)
#include "tst_message_panel.moc"
