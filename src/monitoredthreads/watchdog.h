#pragma once

#include <zeltools/hardwarewatchdog.h>
#include <zeltools/machine.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/servicenotifier.h>
#include <zeltools/zeltools_export.h>

#include <QSemaphore>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace monitored_threads
{

class BackgroundWork;

/// Feeds a watchdog above this process while no thread has stalled, so that a process that hangs is
/// ended and started again. The watchdog is that of systemd if systemd watches this process
/// (zeltools::ServiceNotifier), otherwise on the board the device (zeltools::HardwareWatchdog).
///
/// A thread of its own asks the Monitor twenty times in each period of the watchdog, at least every
/// second, and feeds at half the period. While a thread or item has stalled it feeds nothing. Once
/// the last tick, or the end of a pause after it, is a whole period ago, the thread makes the
/// watchdog expire, since the last feed was later. The process thus ends at most 1.1 periods after
/// the last tick, but never before the Monitor says that it has stalled: the limit for that
/// (Monitor::setLimits()) should be shorter than the period. If it ticks again before, the watchdog
/// is fed at once. The thread never waits for the log: another one writes the lines.
///
/// systemd also gets messages about the start and the end, and as status the name of the thread or
/// item that is late or has stalled. If the Monitor is switched off, the watchdog only notices a
/// process that hangs as a whole.
///
/// Create it in the main thread. One thread at a time may call the functions. In a forked child
/// process the watchdog of the parent is left alone.
class ZELTOOLS_EXPORT Watchdog
{
public:
    /// For Monitor::instance() on this machine.
    Watchdog();
    /// Calls stop().
    ~Watchdog();
    Q_DISABLE_COPY(Watchdog)

    /// Tells systemd that the process has started, and begins to feed. Call it when the application
    /// works, after Monitor::startMonitoringPeriod(). The limit is for the device only; that of
    /// systemd is in the unit (WatchdogSec).
    ///
    /// Returns whether there is a watchdog; an Info line gives its period. Without one, systemd
    /// still gets the other messages. A device that cannot be started is an Error line. Further
    /// calls only return the same.
    bool start(std::chrono::seconds deviceLimit = std::chrono::seconds(30));
    /// Tells systemd that the process ends, and stops the device. It returns within a second, also
    /// if systemd does not read or the log blocks.
    void stop();

protected:
    /// Gives the threads and items whose states decide whether the watchdog is fed.
    using Items = std::function<QVector<Monitor::Item>()>;
    /// Constructs a watchdog for another machine and other items.
    Watchdog(const zeltools::Machine& machine, Items items);

private:
    using Clock = std::chrono::steady_clock;

    std::chrono::microseconds startPeriod(std::chrono::seconds deviceLimit);
    void startThread();
    void leaveToParent();
    void logLater(void (*log)(const QString&), const QString& text);
    bool usesDevice() const { return m_device.timeLimit().count() > 0; }
    void run();
    void look();
    void feedIfDue();
    void expireIfDue(std::chrono::milliseconds sinceTick);
    void tell(const Monitor::Item& worst);

    const bool m_isBoard;
    const Items m_items;
    std::unique_ptr<BackgroundWork> m_lines;              // while started
    std::unique_ptr<zeltools::ServiceNotifier> m_manager; // while started
    zeltools::HardwareWatchdog m_device;
    std::chrono::microseconds m_period{0};
    pid_t m_process = 0; // the one that has started it
    std::unique_ptr<std::thread> m_thread;
    QSemaphore m_stop;
    // The thread uses these alone while it runs.
    Clock::time_point m_fed;
    bool m_hasExpired = false;
    Monitor::Item m_told;
};

} // namespace monitored_threads
