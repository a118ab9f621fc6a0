#pragma once

#include "app/diagram/diagram_geometry.h"

#include <QObject>
#include <QProcess>
#include <QTimer>

namespace app {

/// Lays diagrams out with dot, a program of its own, and in a grid where that cannot be had. One request at
/// a time: a new one takes the place of the former.
class diagram_layout : public QObject
{
    Q_OBJECT

public:
    explicit diagram_layout(QObject * parent = nullptr);
    ~diagram_layout() override;

    /// Name or path of dot's program; "dot" unless it is set.
    void setProgram(const QString & program) { m_sProgram = program; }
    /// How long dot may take, in milliseconds; 10,000 unless it is set. While dot runs, from now on.
    void setTimeLimit(int milliseconds) { m_limit.setInterval(milliseconds); }

    /// Begins with `request`; finished() tells its places, never before this returns.
    void start(const diagram_request & request);
    /// Ends what is under way; it will not be told.
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_bRunning; }

Q_SIGNALS:
    void finished(const app::diagram_places & places);

private:
    void startProcess(const QString & program);
    void takeError(const QProcess * process, QProcess::ProcessError error);
    void readOutput();
    void takeEnd(int status, QProcess::ExitStatus how);
    void tell(const diagram_places & places);
    /// Falls back on the grid; `reason` is a sentence without its end.
    void useGrid(const QString & reason);
    void dropProcess();

    QString m_sProgram = QStringLiteral("dot");
    QTimer m_limit;
    QTimer m_next; // does what needs no process as soon as the caller is done
    diagram_request m_request;
    QProcess * m_pProcess = nullptr;
    QByteArray m_output;
    bool m_bRunning = false;
};

} // namespace app
