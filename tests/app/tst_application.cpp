// The application object that a command gets, by what it needs around it.

#include "app/command.h"
#include "app/program/application.h"

#include <QApplication>
#include <QTest>

namespace {

int oneArgument = 1;
char programName[] = "korvane";
char * arguments[] = {programName, nullptr};

QStringList heard;

void hear(QtMsgType, const QMessageLogContext &, const QString & text)
{
    heard << text;
}

/// What reaches who listened before the application was made, of these warnings.
QStringList heardOf(const QStringList & warnings, app::surroundings needed)
{
    const QtMessageHandler before = qInstallMessageHandler(&hear);
    const auto application = app::makeApplication(oneArgument, arguments, needed);
    heard.clear(); // what Qt says of this machine meanwhile
    for (const QString & warning : warnings) {
        qWarning("%s", qPrintable(warning));
    }
    qInstallMessageHandler(before);
    return heard;
}

} // namespace

class tst_application : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication::setQuitOnLastWindowClosed(true); // as it is in a program that begins
    }

    void aConsoleNeedsNoWindows()
    {
        const auto application = app::makeApplication(oneArgument, arguments, app::surroundings::console);
        QVERIFY(application);
        QVERIFY(!qobject_cast<QGuiApplication *>(application.get()));
    }
    void pluginsGetWidgetsOnNoDisplay()
    {
        const auto application = app::makeApplication(oneArgument, arguments, app::surroundings::plugins);
        QVERIFY(qobject_cast<QApplication *>(application.get()));
        QCOMPARE(QGuiApplication::platformName(), QString("minimal"));
        QVERIFY(!QApplication::quitOnLastWindowClosed());
    }
    void theWindowIsOnTheDisplayOfTheEnvironment()
    {
        const auto application = app::makeApplication(oneArgument, arguments, app::surroundings::window);
        QVERIFY(qobject_cast<QApplication *>(application.get()));
        QCOMPARE(QGuiApplication::platformName(), QString("offscreen"));
        QVERIFY(QApplication::quitOnLastWindowClosed());
        QCOMPARE(QCoreApplication::organizationName(), QString("korvane"));
        QCOMPARE(QCoreApplication::applicationName(), QString("korvane"));
        QCOMPARE(QCoreApplication::applicationVersion(), QString(KORVANE_TESTED_VERSION));
        QCOMPARE(QGuiApplication::desktopFileName(), QString("korvane"));
    }
    void aCommandKeepsToItselfWhatQtSaysOfTheSession()
    {
        const QStringList warnings = {"QStandardPaths: XDG_RUNTIME_DIR not set", "of another kind",
                                      "This plugin does not support raise()"};
        QCOMPARE(heardOf(warnings, app::surroundings::plugins), QStringList("of another kind"));
        QCOMPARE(heardOf(warnings, app::surroundings::window), warnings);
        QCOMPARE(heardOf(warnings, app::surroundings::console), warnings);
    }
    void whichDisplayThereIs_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("none") << QByteArray("HOME") << QByteArray("/") << false;
        QTest::newRow("Qt's own") << QByteArray("QT_QPA_PLATFORM") << QByteArray("offscreen") << true;
        QTest::newRow("X11") << QByteArray("DISPLAY") << QByteArray(":0") << true;
        QTest::newRow("X11, empty") << QByteArray("DISPLAY") << QByteArray("") << false;
        QTest::newRow("Wayland") << QByteArray("WAYLAND_DISPLAY") << QByteArray("wayland-0") << true;
        QTest::newRow("Wayland, empty") << QByteArray("WAYLAND_DISPLAY") << QByteArray("") << false;
    }
    void whichDisplayThereIs()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        QFETCH(bool, expected);
        for (const char * name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
            qunsetenv(name);
        }
        const QByteArray before = qgetenv(variable.constData());
        qputenv(variable.constData(), value);
        QCOMPARE(app::hasDisplay(), expected);
        qputenv(variable.constData(), before);
    }
};

QTEST_APPLESS_MAIN(tst_application)
#include "tst_application.moc"
