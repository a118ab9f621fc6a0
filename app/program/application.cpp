#include "app/program/application.h"

#include "app/command.h"
#include "app/output.h"

#include <QApplication>

#include <cstdlib>

namespace app {

namespace {

QtMessageHandler formerHandler = nullptr;

/// Drops what Qt says about the session and the display that a command does without, and about queries of a
/// connection that is lost: what a command writes to standard error is for its own failures.
void withoutComplaints(QtMsgType type, const QMessageLogContext & context, const QString & text)
{
    const bool isKnown = text.startsWith(QLatin1String("QStandardPaths: ")) ||
                         text.startsWith(QLatin1String("This plugin does not support ")) ||
                         text.startsWith(QLatin1String("Unable to free statement: "));
    if (!isKnown) {
        formerHandler(type, context, text);
    }
}

/// A display that cannot be reached ends the program inside Qt; the reason is told as all others are.
void displayComplaints(QtMsgType type, const QMessageLogContext & context, const QString & text)
{
    if (type == QtFatalMsg) {
        printError(noDisplayText());
        std::_Exit(Failed);
    }
    // Before that Qt tells the same in words of its own.
    if (!QByteArray(context.category).startsWith("qt.qpa")) {
        formerHandler(type, context, text);
    }
}

std::unique_ptr<QCoreApplication> makeWindowApplication(int & argc, char ** argv)
{
    formerHandler = qInstallMessageHandler(displayComplaints);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(formerHandler);
    // Under these names the window's layout and the recent files are kept.
    QCoreApplication::setOrganizationName(QStringLiteral("korvane"));
    QCoreApplication::setApplicationName(QStringLiteral("korvane"));
    QGuiApplication::setDesktopFileName(QStringLiteral("korvane"));
    return application;
}

/// Plug-ins use widgets, which need no display for a command: not even the one that the environment of the
/// person's desktop asks for, which may be out of reach.
std::unique_ptr<QCoreApplication> makeApplicationWithPlugins(int & argc, char ** argv)
{
    // Of the platforms without a display this one leaves the fonts alone until a window wants text.
    qputenv("QT_QPA_PLATFORM", "minimal");
    formerHandler = qInstallMessageHandler(withoutComplaints);
    auto application = std::make_unique<QApplication>(argc, argv);
    // A question is the only window there is while it is shown: answering it must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

} // namespace

QString noDisplayText()
{
    return QStringLiteral("The window needs a display and none was found; "
                          "'korvane --help' lists the commands that work without one");
}

bool hasDisplay()
{
#ifdef Q_OS_LINUX
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

std::unique_ptr<QCoreApplication> makeApplication(int & argc, char ** argv, surroundings needed)
{
    QCoreApplication::setApplicationVersion(QStringLiteral(KORVANE_VERSION));
    switch (needed) {
    case surroundings::window:
        return makeWindowApplication(argc, argv);
    case surroundings::plugins:
        return makeApplicationWithPlugins(argc, argv);
    case surroundings::console:
        break;
    }
    return std::make_unique<QCoreApplication>(argc, argv);
}

} // namespace app
