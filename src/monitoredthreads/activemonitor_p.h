#pragma once

#include "monitoredthreads/backgroundwork_p.h"
#include "monitoredthreads/kernelfailures_p.h"
#include "monitoredthreads/stalldetector_p.h"

#include <condition_variable>
#include <optional>
#include <thread>

namespace monitored_threads
{

/// The parts of a Monitor that is switched on, with its functions.
///
/// It has three threads, since a thread of the application may stall with a lock of the log or of
/// the loader held. The first only looks and sets the states, and takes no such lock. The second
/// takes call stacks and emits signals. The third logs.
class ActiveMonitor
{
public:
    explicit ActiveMonitor(Monitor& monitor);
    /// Ends the threads. It waits for the receivers of the signals, but not for the log.
    ~ActiveMonitor();
    Q_DISABLE_COPY(ActiveMonitor)

    bool isOfThisProcess() const { return m_process == getpid(); }
    StallDetector& detector() { return m_detector; }
    KernelFailures& kernelFailures() { return m_kernelFailures; }

    std::chrono::milliseconds tickPeriod() const { return std::chrono::milliseconds(m_period_ms); }
    void setTickPeriod(std::chrono::milliseconds period);
    void setLimits(std::chrono::milliseconds late, std::chrono::milliseconds stalled);
    void start();

    bool registerThread(const QString& name);
    /// As MonitorSlots::take(), with a Warning the first time that no slot is free.
    MonitorSlot* registerItem(const QString& name);
    void checkKernelLine(const QString& line);

private:
    using Change = StallDetector::Change;
    using ChosenLimits = std::pair<std::chrono::milliseconds, std::chrono::milliseconds>;

    StallDetector::Limits limits() const;
    void run();
    void check();
    void report(const StallDetector::Look& look);
    void emitChange(const Change& change, const QStringList& callStack);
    void warnOfLackingSlots(const QString& name);

    Monitor& m_monitor;
    const pid_t m_process = getpid();
    std::atomic<qint64> m_period_ms{1000};
    std::optional<ChosenLimits> m_chosenLimits;
    StallDetector m_detector;
    KernelFailures m_kernelFailures;
    std::atomic<bool> m_hasWarnedOfSlots{false};
    BackgroundWork m_signals{"Monitor signals"};
    BackgroundWork m_lines{"Monitor log"};

    std::mutex m_mutex; // of the chosen limits and the thread that looks
    std::condition_variable m_wake;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace monitored_threads
