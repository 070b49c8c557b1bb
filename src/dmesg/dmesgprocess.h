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

class KmsgFollower;
class LineCutter;
class ReplayFilter;
class Restarter;

/// Runs a process in a thread of its own and emits the lines of its standard output without white
/// space at both ends. Its standard error becomes Info lines; all log lines are under
/// `Log::Global`. A process that has ended is started again only after setRestarting().
///
/// Instead of running a process, it can read the kernel log from its device; see
/// setKernelDevice().
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

    /// @{
    /// Run the slots in the object's own thread and wait for them, so that the caller must not hold
    /// a lock that a receiver of newLines() takes. Called from that thread (in a directly connected
    /// receiver), the slot runs immediately.
    void start();
    void stop();
    /// @}
    /// Whether the process runs, the device is read, or one of them will be started again.
    bool isRunning() const;
    /// Sets the command. Call it only while the process is not running.
    void setCommand(const System::Command& command);
    /// Sets whether a process that ends by itself or cannot be started is started again until
    /// stop(), after 1, 2, 4 ... 60 seconds, and after 1 second once it has run for a minute. Each
    /// end is a Warning. It is off by default. Call it only while the process is not running.
    ///
    /// A restarted `dmesg --follow` prints the kernel's whole memory again. Up to the last line
    /// seen, these lines are not emitted; the others come when the process has printed nothing for
    /// half a second, or after five seconds if it prints without such a pause. If the last line
    /// seen is not among them, all are emitted, and a Warning says that lines may be missing. At
    /// most 8 Mi characters are held back.
    void setRestarting(bool isRestarting) { m_isRestarting = isRestarting; }
    /// Sets a file such as /dev/kmsg that start() reads instead of running the command (see
    /// KmsgReader); an empty name, the default, means the command. The lines have the form of
    /// `dmesg --ctime`. Overwritten and malformed records are Warnings; the device started again
    /// repeats no line. Call it only while the process is not running.
    void setKernelDevice(const QString& file) { m_kernelDevice = file; }

Q_SIGNALS:
    /// Emits the lines that one piece of output completes, which may be none. Emitted in the
    /// object's own thread.
    void newLines(const QStringList& lines);
    /// @{
    /// Carry start() and stop() to the object's own thread. They are for the class itself.
    void startSignal();
    void stopSignal();
    /// @}
    /// Announces that isRunning() may have changed. Emitted in the object's own thread.
    void runningChanged();

public Q_SLOTS:
    // These slots run in the object's own thread.

    /// Starts the process. A process that is running or cannot be started is an Error line, and so
    /// is a device that cannot be read.
    void startSlot();
    /// Sends SIGTERM, waits up to 30 seconds for the end, then sends SIGKILL. Lines are emitted
    /// meanwhile. A process that is not running is an Error line. A device is closed at once.
    void stopSlot();
    /// @{
    /// Connected to the process by the class; public for tests that stand in for the process.
    void onProcessStdoutReadyRead();
    void onProcessStderrReadyRead();
    void onProcessFinished(int exitCode);
    /// @}

protected:
    /// Constructs a process that gets SIGKILL after another time, and that is restarted after
    /// multiples of another delay than a second.
    explicit DmesgProcess(std::chrono::milliseconds patience,
                          std::chrono::milliseconds firstRestart = std::chrono::seconds(1));

private:
    QString launch();
    void relaunch();
    void onEnded(const QString& reason);
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
    KmsgFollower* m_follower;
    ReplayFilter* m_replay;
    Restarter* m_restarter;
    bool m_isRestarting = false;
    QString m_kernelDevice;
};

} // namespace dmesg
