#pragma once

#include <zeltools/system.h>

#include <QObject>
#include <QProcess>
#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>

namespace zeltools
{
class TimedProcess;
}

namespace dmesg
{

class LineCutter;

/// Runs a process in a thread of its own and emits the lines of its standard output without white
/// space at both ends. Its standard error becomes Info lines; all log lines are under
/// `Log::Global`. A process that has ended is not started again.
///
/// Memory is bounded: of a line that does not end, 8 MiB are kept and then emitted as a separate
/// line. A line that is unfinished when the process ends is lost.
///
/// The process has TERM=dumb in its environment, so that `dmesg` prints no colours. It gets SIGTERM
/// if the application ends without stopping it.
///
/// An application object must exist for the process to start and its output to be read. Any thread
/// may call isRunning(), start() and stop(), and any thread but the object's own may call the
/// destructor.
class ZELTOOLS_EXPORT DmesgProcess : public QObject
{
    Q_OBJECT

public:
    DmesgProcess();
    /// Stops the process as stopSlot() does, if it is running.
    ~DmesgProcess() override;

    /// Run the slots in the object's own thread and wait for them, so that the caller must not hold
    /// a lock that a receiver of newLines() takes. Called from that thread (in a directly connected
    /// receiver), the slot runs immediately.
    void start();
    void stop();
    bool isRunning() const;
    /// Sets the command. Call it only while the process is not running.
    void setCommand(const System::Command& command);

Q_SIGNALS:
    /// Emits the lines that one piece of output completes, which may be none. Emitted in the
    /// object's own thread.
    void newLines(const QStringList& lines);
    void startSignal();
    void stopSignal();

public Q_SLOTS:
    // These slots run in the object's own thread.

    /// Starts the process. A process that is running or cannot be started is an Error line.
    void startSlot();
    /// Sends SIGTERM, waits up to 30 seconds for the end, then sends SIGKILL. Lines are emitted
    /// meanwhile. A process that is not running is an Error line.
    void stopSlot();
    void onProcessStdoutReadyRead();
    void onProcessStderrReadyRead();
    void onProcessFinished(int exitCode);

protected:
    /// Constructs a process that gets SIGKILL after another time.
    explicit DmesgProcess(std::chrono::milliseconds patience);

private:
    void onOverdue();

    const std::chrono::milliseconds m_patience;
    zeltools::TimedProcess* m_process;
    QThread m_thread;
    // The state of the process, which only the object's own thread changes.
    std::atomic<QProcess::ProcessState> m_state{QProcess::NotRunning};
    // Orders the actions of the thread before the destructor. Waiting for the thread does so, too,
    // but the thread sanitizer does not see that inside Qt.
    std::atomic<bool> m_hasEnded{false};
    std::unique_ptr<LineCutter> m_output;
    std::unique_ptr<LineCutter> m_errors;
};

} // namespace dmesg
