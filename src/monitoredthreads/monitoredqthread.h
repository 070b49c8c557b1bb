#pragma once

#include <zeltools/zeltools_export.h>

#include <QThread>

#include <atomic>
#include <memory>

class QTimer;

namespace monitored_threads
{

class Monitor;

/// The source of a thread's ticks: its own code (Off) or its event loop (On).
enum class AutoTick { Off = 0, On = 1 };

/// A thread that the Monitor watches under a name while it runs, also if run() is overridden. Its
/// code calls Monitor::tickFromCurrentThread() in each tick period, or with AutoTick::On a timer
/// does so as long as the event loop runs. An overflow of its stack gives a crash report
/// (zeltools::CrashReports). If the Monitor is switched off, it is a plain thread.
class ZELTOOLS_EXPORT MonitoredQThread : public QThread
{
    Q_OBJECT

public:
    /// The name appears in log lines and in the list of the monitor.
    MonitoredQThread(const QString& name, AutoTick autoTick);
    ~MonitoredQThread() override;

protected:
    /// Registers the thread with another monitor.
    MonitoredQThread(const QString& name, AutoTick autoTick, Monitor& monitor);

private:
    // Called in the new thread.
    void begin(const QString& name, AutoTick autoTick);
    void end();

    Monitor& m_monitor;
    std::unique_ptr<QTimer> m_timer;
    // Orders the thread before the destructor. Waiting for the thread does so, too, but the thread
    // sanitizer does not see that inside Qt.
    std::atomic<bool> m_hasEnded{false};
};

} // namespace monitored_threads
