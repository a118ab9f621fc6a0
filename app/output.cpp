#include "app/output.h"

#include "app/command.h"

#include "zk/visible_text.h"

#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace app {

namespace {

/// The first error of standard output, as errno tells it.
int outputError = 0;

/// What was done and told on standard output, which may not have taken it.
QString doneText;

bool areResultsAlone = false;

/// Passwords that the program was given on its command line, between the signs that they stand between there.
QStringList & secrets()
{
    static QStringList all;
    return all;
}

void note(bool written)
{
    if (!written && outputError == 0) {
        outputError = errno;
    }
}

} // namespace

QString oneLine(const QString & text)
{
    return zk::visibleLine(text.trimmed());
}

void printLine(const QString & text)
{
    printBytes(text.toUtf8() + '\n');
}

void printBytes(const QByteArray & bytes)
{
    if (outputError == 0) {
        note(std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) ==
             static_cast<size_t>(bytes.size()));
    }
}

void printDone(const QString & text)
{
    if (!areResultsAlone) {
        doneText = oneLine(text);
        printLine(doneText);
    }
}

void printNotice(const QString & text)
{
    if (!areResultsAlone) {
        printLine(oneLine(text));
    }
}

void printHint(const QString & text)
{
    if (!areResultsAlone) {
        printError(text);
    }
}

void printResultsOnly()
{
    areResultsAlone = true;
}

bool areResultsPrintedAlone()
{
    return areResultsAlone;
}

void printError(const QString & text)
{
    // In a terminal both go to one place, and an error belongs after the progress that led to it.
    note(std::fflush(stdout) == 0);
    QString line = oneLine(text);
    for (const QString & each : std::as_const(secrets())) {
        line.replace(each, QLatin1String(":***@"));
    }
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

void leaveOutOfErrors(const QString & password)
{
    if (!password.isEmpty()) {
        secrets() += QLatin1Char(':') + password + QLatin1Char('@');
    }
}

int failed(const QString & text)
{
    printError(text);
    return Failed;
}

void holdStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            // The lowest free number is taken, which is this one; opened for what it is not used for.
            (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

void sendOutput()
{
    note(std::fflush(stdout) == 0);
}

int finishOutput(int status)
{
    sendOutput();
    if (outputError == 0 || outputError == EPIPE) {
        return status;
    }
    const QString reason = QString::fromLocal8Bit(std::strerror(outputError));
    printError(
        doneText.isEmpty()
            ? QStringLiteral("Standard output: ") + reason
            : QStringLiteral("%1; only telling it on standard output failed (%2)").arg(doneText, reason));
    return status == Done ? Failed : status;
}

} // namespace app
