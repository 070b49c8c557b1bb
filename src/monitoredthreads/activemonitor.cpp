#include "monitoredthreads/activemonitor_p.h"

#include "crashreports/crashreports.h"
#include "crashreports/threadstack.h"
#include "monitoredthreads/log.h"
#include "monitoredthreads/statelines_p.h"
#include "monitoredthreads/threadsreport_p.h"
#include "signalsblocked.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include <pthread.h>

namespace monitored_threads
{

using State = Monitor::State;
using std::chrono::milliseconds;

namespace
{

constexpr int s_checksPerPeriod = 4;

} // namespace

ActiveMonitor::ActiveMonitor(Monitor& monitor)
    : m_monitor(monitor)
    , m_detector(monitor, limits())
{
}

ActiveMonitor::~ActiveMonitor()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
    while (!m_signals.end(std::chrono::hours(1))) {
    }
    m_lines.end(std::chrono::seconds(1));
}

StallDetector::Limits ActiveMonitor::limits() const
{
    const milliseconds period = tickPeriod();
    const auto [late, stalled] = m_chosenLimits.value_or(ChosenLimits(2 * period, 5 * period));
    return {(period / s_checksPerPeriod).count(), late.count(), std::max(late, stalled).count()};
}

void ActiveMonitor::setTickPeriod(milliseconds period)
{
    constexpr milliseconds shortest(20);
    constexpr milliseconds longest = std::chrono::hours(24);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_period_ms = std::clamp(period, shortest, longest).count();
        m_detector.setLimits(limits());
    }
    m_wake.notify_all();
    Q_EMIT m_monitor.threadsTickPeriodChanged();
}

void ActiveMonitor::setLimits(milliseconds late, milliseconds stalled)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_chosenLimits = {late, stalled};
    m_detector.setLimits(limits());
}

// The first call stack loads the unwinder. Done at the start, it does not have to wait for a thread
// that has stalled with a lock of the loader held.
void ActiveMonitor::start()
{
    QString error;
    bool canTell = true;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_thread.joinable())
            return;
        zeltools::CrashReports::addSection("threads", writeMonitoredThreads);
        canTell = m_signals.start() && m_lines.start();
        const zeltools::SignalsBlocked blocked;
        try {
            m_thread = std::thread(&ActiveMonitor::run, this);
            pthread_setname_np(m_thread.native_handle(), "Thread monitor");
        } catch (const std::system_error& failure) {
            error = QString::fromLocal8Bit(failure.what());
        }
    }
    if (!error.isEmpty())
        log::warning(QStringLiteral("No thread is monitored: ") + error);
    else if (!canTell)
        log::warning(QStringLiteral("The system has no thread to tell of stalls"));
    m_signals.post([] { zeltools::ThreadStack::of(gettid()); });
}

void ActiveMonitor::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_isStopping) {
        lock.unlock();
        check();
        lock.lock();
        if (!m_isStopping)
            m_wake.wait_for(lock, tickPeriod() / s_checksPerPeriod);
    }
}

void ActiveMonitor::check()
{
    StallDetector::Look look = m_detector.look(monitorNow_ms());
    if (look.hasChanged || look.hasOtherItems)
        m_signals.post([this, look = std::move(look)] { report(look); });
}

// A thread that works again in the meantime is not interrupted for its call stack.
void ActiveMonitor::report(const StallDetector::Look& look)
{
    for (const Change& change : look.changes) {
        QStringList callStack;
        if (change.after == State::Stalled && change.thread != 0 && m_detector.isStill(change))
            callStack = zeltools::ThreadStack::of(change.thread).described();
        m_detector.setCallStack(change, callStack);
        emitChange(change, callStack);
        if (change.isLogged)
            m_lines.post([change, callStack] { logStateChange(change, callStack); });
    }
    if (look.hasChanged)
        Q_EMIT m_monitor.stateChanged();
    if (look.hasOtherItems)
        Q_EMIT m_monitor.itemsChanged();
}

void ActiveMonitor::emitChange(const Change& change, const QStringList& callStack)
{
    if (change.after == State::Late)
        Q_EMIT m_monitor.threadLate(change.name, change.sinceTick);
    else if (change.after == State::Stalled)
        Q_EMIT m_monitor.threadStalled(change.name, change.sinceTick, callStack);
    else if (change.before == State::Stalled)
        Q_EMIT m_monitor.threadRecovered(change.name, change.sinceTick);
}

bool ActiveMonitor::registerThread(const QString& name)
{
    if (MonitorSlots::isThreadRegistered())
        return false;
    const bool isRegistered = MonitorSlots::takeForThread(&m_monitor, name);
    if (!isRegistered)
        warnOfLackingSlots(name);
    return isRegistered;
}

MonitorSlot* ActiveMonitor::registerItem(const QString& name)
{
    MonitorSlot* const slot = MonitorSlots::take(&m_monitor, name, 0);
    if (slot == nullptr)
        warnOfLackingSlots(name);
    return slot;
}

void ActiveMonitor::warnOfLackingSlots(const QString& name)
{
    if (!m_hasWarnedOfSlots.exchange(true))
        log::warning(QStringLiteral("%1 threads and items are monitored, which is the limit; "
                                    "\"%2\" and further ones are not")
                         .arg(MonitorSlots::count)
                         .arg(name));
}

void ActiveMonitor::checkKernelLine(const QString& line)
{
    using Match = KernelFailures::Match;
    const Match match = m_kernelFailures.match(line, monitorNow_ms());
    if (match == Match::None)
        return;
    if (match == Match::First)
        Q_EMIT m_monitor.kernelFailureChanged();
    Q_EMIT m_monitor.kernelFailure(line);
    if (match != Match::FurtherUnlogged)
        log::warning(QStringLiteral("The kernel reports a failure: ") + line);
}

} // namespace monitored_threads
