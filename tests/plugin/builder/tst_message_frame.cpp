#include "plugin/builder/message_frame.h"

#include <QTest>

using plugin::message_frame;

/// Messages that are filled again and again.
class tst_message_frame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsThePlaces_data();
    void fillsThePlaces();
    void takesValuesAsTheyAre();
    void isFilledAgain();
    void isEmptyUntilItHasAText();
};

void tst_message_frame::fillsThePlaces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("filled");
    QTest::newRow("in order") << "%1 : '%2' (%3)"
                              << "one : 'two' (three)";
    QTest::newRow("another order") << "(%3) '%2' : %1."
                                   << "(three) 'two' : one.";
    QTest::newRow("side by side") << "%1%2%3"
                                  << "onetwothree";
    QTest::newRow("twice") << "%2 and %2"
                           << "two and two";
    QTest::newRow("no place") << "plain"
                              << "plain";
    QTest::newRow("no value") << "%1 %4 %9"
                              << "one  ";
    QTest::newRow("other signs") << "100 % of %1, %0 %x %"
                                 << "100 % of one, %0 %x %";
    QTest::newRow("nothing") << ""
                             << "";
}

void tst_message_frame::fillsThePlaces()
{
    QFETCH(QString, text);
    QTEST(message_frame(text).filled({"one", "two", "three"}), "filled");
}

void tst_message_frame::takesValuesAsTheyAre()
{
    QCOMPARE(message_frame("%1|%2|%3").filled({"%2", "%3", "größe %1"}), QString("%2|%3|größe %1"));
}

void tst_message_frame::isFilledAgain()
{
    const message_frame frame("<%1>");
    QCOMPARE(frame.filled({"a"}), QString("<a>"));
    QCOMPARE(frame.filled({"bc"}), QString("<bc>"));
    QCOMPARE(frame.filled({}), QString("<>"));
}

void tst_message_frame::isEmptyUntilItHasAText()
{
    QVERIFY(message_frame().isEmpty());
    QVERIFY(!message_frame("").isEmpty());
}

QTEST_APPLESS_MAIN(tst_message_frame)
#include "tst_message_frame.moc"
