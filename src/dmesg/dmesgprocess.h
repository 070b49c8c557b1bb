#pragma once

#include <zeltools/system.h>

#include <QDeadlineTimer>
#include <QObject>
#include <QProcess>
#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>

class TestDiagnostics;

namespace dmesg
{

class LineCutter;

/// Runs a process in a thread of its own and hands on the lines that it prints, without white space
/// at both ends. What it prints to standard error becomes Info lines; all log lines go to
/// `Log::Global`. A process that has ended is not started again.
///
/// Memory is bounded: no more than 8 MiB of a line that does not end are kept, then they are handed
/// on as a line of their own. A line that is unfinished when the process ends is lost.
///
/// The process has TERM=dumb in its environment, since nobody looks at its output on a terminal:
/// `dmesg` then leaves its colours out. It gets SIGTERM if the application ends without stopping
/// it.
///
/// There must be an application object for the process to be started and its output to be read.
/// isRunning(), start() and stop() may be called from any thread; the destructor from any but the
/// own one.
class ZELTOOLS_EXPORT DmesgProcess : public QObject
{
    Q_OBJECT

public:
    DmesgProcess();
    /// Stops the process as stopSlot() does, if it is running.
    ~DmesgProcess() override;

    /// Block until the slot has run in the own thread, so that no lock may be held that a receiver
    /// of newLines() takes. In the own thread (a directly connected receiver) the slot is called at
    /// once.
    void start();
    void stop();
    bool isRunning() const;
    /// Only while the process is not running.
    void setCommand(const System::Command& command);

Q_SIGNALS:
    /// What one piece of output completes, which may be no line at all. Emitted in the own thread.
    void newLines(const QStringList& lines);
    void startSignal();
    void stopSignal();

public Q_SLOTS:
    // In the own thread.

    /// An Error line when the process is running already or cannot be started.
    void startSlot();
    /// Sends SIGTERM and waits for the end up to 30 seconds, then sends SIGKILL. Lines are handed
    /// on meanwhile. An Error line when the process is not running.
    void stopSlot();
    void onProcessStdoutReadyRead();
    void onProcessStderrReadyRead();
    void onProcessFinished(int exitCode);

private:
    friend class ::TestDiagnostics;

    explicit DmesgProcess(std::chrono::milliseconds patience);

    void killIfOverdue();
    void killProcess();

    const int m_patience_ms;
    QProcess* m_process;
    QThread m_thread;
    // Of the process; it changes in the own thread alone.
    std::atomic<QProcess::ProcessState> m_state{QProcess::NotRunning};
    // Orders what the thread did before the destructor, as waiting for it does, for the thread
    // sanitizer too, which does not see inside Qt.
    std::atomic<bool> m_hasEnded{false};
    QDeadlineTimer m_deadline{QDeadlineTimer::Forever};
    std::unique_ptr<LineCutter> m_output;
    std::unique_ptr<LineCutter> m_errors;
};

} // namespace dmesg
