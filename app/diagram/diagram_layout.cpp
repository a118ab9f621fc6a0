#include "app/diagram/diagram_layout.h"

#include "app/diagram/diagram_dot.h"
#include "app/diagram/diagram_grid.h"
#include "app/shown_text.h"

#include <QStandardPaths>

namespace app {

namespace {

constexpr int TimeLimit = 10000; // milliseconds
constexpr int EndLimit = 2000;   // milliseconds that a killed process may take to go
// An answer to the largest request has some hundred kilobytes; a program that writes on and on is not dot.
constexpr qsizetype LargestAnswer = qsizetype(64) * 1024 * 1024;

/// What a program said of its failure: the first line that is not empty, cut where it would be too long.
QString firstLineOf(const QByteArray & errors)
{
    const QString line = QString::fromLocal8Bit(errors).trimmed().section(QLatin1Char('\n'), 0, 0).trimmed();
    return shortened(line, 200);
}

} // namespace

diagram_layout::diagram_layout(QObject * parent) : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(TimeLimit);
    m_next.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        dropProcess();
        useGrid(tr("Graphviz (dot) took longer than %1 s").arg(m_limit.interval() / 1000.0));
    });
    connect(&m_next, &QTimer::timeout, this, [this] {
        if (m_request.lines.isEmpty()) {
            tell(gridLayout(m_request)); // nothing that a layout could make better
        } else {
            useGrid(tr("Graphviz (dot) is not installed; install Graphviz for a layout"));
        }
    });
}

diagram_layout::~diagram_layout()
{
    // Every process, those of former requests as well: ended first, so that none is waited for in vain.
    const QList<QProcess *> processes = findChildren<QProcess *>(Qt::FindDirectChildrenOnly);
    for (QProcess * const process : processes) {
        process->disconnect();
        process->kill();
    }
    for (QProcess * const process : processes) {
        process->waitForFinished(EndLimit);
    }
}

void diagram_layout::start(const diagram_request & request)
{
    cancel();
    m_request = request;
    m_bRunning = true;
    const QString program = request.lines.isEmpty() ? QString() : QStandardPaths::findExecutable(m_sProgram);
    if (program.isEmpty()) {
        m_next.start(0);
    } else {
        startProcess(program);
    }
}

void diagram_layout::startProcess(const QString & program)
{
    m_pProcess = new QProcess(this);
    m_output.clear();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // numbers with a point
    m_pProcess->setProcessEnvironment(environment);
    connect(m_pProcess, &QProcess::readyReadStandardOutput, this, &diagram_layout::readOutput);
    connect(m_pProcess, &QProcess::finished, this, &diagram_layout::takeEnd);
    connect(
        m_pProcess, &QProcess::errorOccurred, this,
        [this, process = m_pProcess](QProcess::ProcessError error) { takeError(process, error); },
        Qt::QueuedConnection); // it may come from within start()
    m_limit.start();
    m_pProcess->start(program, {QStringLiteral("-Tjson")});
    m_pProcess->write(dotText(m_request));
    m_pProcess->closeWriteChannel();
}

void diagram_layout::takeError(const QProcess * process, QProcess::ProcessError error)
{
    // Any other error is followed by the end of the process, which says more.
    if (process != m_pProcess || error != QProcess::FailedToStart) {
        return;
    }
    const QString reason = process->errorString();
    dropProcess();
    useGrid(tr("Graphviz (dot) could not be started (%1)").arg(reason));
}

void diagram_layout::readOutput()
{
    m_output += m_pProcess->readAllStandardOutput();
    if (m_output.size() > LargestAnswer) {
        dropProcess();
        useGrid(tr("Graphviz (dot) returned too much output"));
    }
}

void diagram_layout::takeEnd(int status, QProcess::ExitStatus how)
{
    m_output += m_pProcess->readAllStandardOutput();
    const QString errors = firstLineOf(m_pProcess->readAllStandardError());
    const QByteArray output = std::exchange(m_output, {});
    dropProcess();
    if (how == QProcess::CrashExit) {
        useGrid(tr("Graphviz (dot) crashed"));
    } else if (status != 0) {
        useGrid(errors.isEmpty()
                    ? tr("Graphviz (dot) failed with status %1").arg(status)
                    : tr("Graphviz (dot) failed with status %1 (%2)").arg(QString::number(status), errors));
    } else if (const auto places = readDotAnswer(m_request, output)) {
        tell(*places);
    } else {
        useGrid(tr("Graphviz (dot) returned a layout that could not be read"));
    }
}

void diagram_layout::cancel()
{
    m_bRunning = false;
    m_next.stop();
    dropProcess();
}

void diagram_layout::dropProcess()
{
    m_limit.stop();
    m_output.clear();
    QProcess * const process = std::exchange(m_pProcess, nullptr);
    if (!process) {
        return;
    }
    process->disconnect(this);
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    // Deleting it now would wait for its end.
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            process->deleteLater();
        }
    });
    process->kill();
}

void diagram_layout::useGrid(const QString & reason)
{
    diagram_places places = gridLayout(m_request);
    places.note = tr("%1. The entities are arranged in a grid").arg(reason);
    tell(places);
}

void diagram_layout::tell(const diagram_places & places)
{
    m_bRunning = false;
    Q_EMIT finished(places);
}

} // namespace app
