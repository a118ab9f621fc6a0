#pragma once

#include <QHash>
#include <QProcess>
#include <QStringList>

namespace support {

/// What a process did; status -1 when it crashed or did not end.
struct program_result
{
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

/// Runs a program with `environment` added to the test's own, in which nothing of the host's is set.
inline program_result runProcess(const QString & program, const QStringList & arguments,
                                 const QHash<QString, QString> & environment, const QByteArray & input)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char * const name : {"KORVANE_PLUGIN_PATH", "KORVANE_SCRIPT_TIMEOUT_MS", "QT_LOGGING_RULES",
                                    "QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        variables.remove(QString::fromLatin1(name));
    }
    for (auto it = environment.constBegin(); it != environment.constEnd(); ++it) {
        variables.insert(it.key(), it.value());
    }
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    program_result result;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished(5000);
        result.errors = "the process did not end: " + process.readAllStandardError();
        return result;
    }
    result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

/// Runs the built host program.
inline program_result runProgram(const QStringList & arguments,
                                 const QHash<QString, QString> & environment = {},
                                 const QByteArray & input = {})
{
    return runProcess(QStringLiteral(KORVANE_PROGRAM), arguments, environment, input);
}

/// Runs a line of shell.
inline program_result runShell(const QString & line, const QHash<QString, QString> & environment)
{
    return runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line}, environment, {});
}

/// Runs the host program with a terminal as its input and output, on which `typed` is typed.
inline program_result runInTerminal(const QStringList & arguments,
                                    const QHash<QString, QString> & environment, const QByteArray & typed)
{
    QStringList quoted;
    for (const QString & argument : QStringList(QStringLiteral(KORVANE_PROGRAM)) + arguments) {
        quoted << QLatin1Char('\'') + argument + QLatin1Char('\'');
    }
    return runProcess(QStringLiteral("script"),
                      {QStringLiteral("-qec"), quoted.join(QLatin1Char(' ')), QStringLiteral("/dev/null")},
                      environment, typed);
}

} // namespace support
