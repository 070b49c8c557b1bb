#include "monitoredthreads/watchdog.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "monitoredthreads/backgroundwork_p.h"
#include "monitoredthreads/log.h"
#include "signalsblocked.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include <pthread.h>
#include <unistd.h>

namespace monitored_threads
{

namespace
{

using std::chrono::milliseconds;
using zeltools::HardwareWatchdog;

// The worst is that which has not ticked for the longest time among those in the worst state.
// The name is empty if all are on time or paused.
Monitor::Item worstOf(const QVector<Monitor::Item>& items)
{
    const auto badness = [](const Monitor::Item& item) {
        return item.state == Monitor::State::Stalled ? 2 : item.state == Monitor::State::Late;
    };
    Monitor::Item worst;
    for (const Monitor::Item& item : items) {
        if (std::pair(badness(item), item.sinceTick) > std::pair(badness(worst), worst.sinceTick))
            worst = item;
    }
    return badness(worst) == 0 ? Monitor::Item() : worst;
}

void logError(const QString& text)
{
    LogFormatter(LogLevel::Error).log(Log::Global).noquote() << text;
}

milliseconds lookInterval(std::chrono::microseconds period)
{
    constexpr milliseconds longest(1000);
    if (period.count() == 0)
        return longest;
    return std::clamp(std::chrono::duration_cast<milliseconds>(period / 20), milliseconds(1),
                      longest);
}

// The looks come at intervals. The nearest one to the due time is taken rather than the next.
std::chrono::microseconds tolerance(std::chrono::microseconds period)
{
    return lookInterval(period) / 2;
}

} // namespace

Watchdog::Watchdog()
    : Watchdog(zeltools::Machine(), [monitor = Monitor::instance()] { return monitor->items(); })
{
}

Watchdog::Watchdog(const zeltools::Machine& machine, Items items)
    : m_isBoard(machine.isBoard)
    , m_items(std::move(items))
    , m_device(machine.watchdogDevice, [this](const QString& text) { logLater(logError, text); })
{
}

Watchdog::~Watchdog()
{
    stop();
}

bool Watchdog::start(std::chrono::seconds deviceLimit)
{
    if (m_manager != nullptr)
        return m_period.count() > 0;
    m_process = getpid();
    m_lines = std::make_unique<BackgroundWork>("Watchdog log");
    m_manager = std::make_unique<zeltools::ServiceNotifier>(
        [this](const QString& text) { logLater(log::warning, text); });
    if (m_manager->hasManager() || m_isBoard)
        m_lines->start();
    m_manager->ready();
    m_period = startPeriod(deviceLimit);
    m_fed = Clock::now() - m_period;
    m_hasExpired = false;
    m_told = {};
    if (m_manager->hasManager() || usesDevice())
        startThread();
    return m_period.count() > 0;
}

void Watchdog::startThread()
{
    const zeltools::SignalsBlocked blocked;
    try {
        m_thread = std::make_unique<std::thread>(&Watchdog::run, this);
        pthread_setname_np(m_thread->native_handle(), "Watchdog");
    } catch (const std::system_error& error) {
        log::warning(QLatin1String("The watchdog is not fed: ") +
                     QString::fromLocal8Bit(error.what()));
    }
}

std::chrono::microseconds Watchdog::startPeriod(std::chrono::seconds deviceLimit)
{
    std::chrono::microseconds period = m_manager->watchdogPeriod();
    if (period.count() == 0 && m_isBoard) {
        m_device.start(deviceLimit);
        period = m_device.timeLimit();
    }
    log::info(period.count() == 0 ? QStringLiteral("No watchdog watches this process")
                                  : QStringLiteral("The watchdog is fed; its period is %1 s")
                                        .arg(std::chrono::duration<double>(period).count()));
    return period;
}

void Watchdog::stop()
{
    if (m_manager == nullptr)
        return;
    if (m_process != getpid())
        return leaveToParent();
    if (m_thread != nullptr) {
        m_stop.release();
        m_thread->join();
        m_thread.reset();
    }
    m_manager->stopping();
    m_manager.reset();
    m_device.stop();
    m_lines->end(milliseconds(500));
    m_lines.reset();
}

// A forked child process has neither the thread nor the watchdog of its parent.
void Watchdog::leaveToParent()
{
    static_cast<void>(m_thread.release()); // can neither be joined nor destroyed
    m_manager.reset();
    m_device.stop();
    m_lines.reset();
}

void Watchdog::logLater(void (*log)(const QString&), const QString& text)
{
    m_lines->post([=] { log(text); });
}

void Watchdog::run()
{
    const auto interval_ms = static_cast<int>(lookInterval(m_period).count());
    do
        look();
    while (!m_stop.tryAcquire(1, interval_ms));
}

void Watchdog::look()
{
    const Monitor::Item worst = worstOf(m_items());
    if (worst.state == Monitor::State::Stalled)
        expireIfDue(worst.sinceTick);
    else
        feedIfDue();
    tell(worst);
}

void Watchdog::feedIfDue()
{
    const auto now = Clock::now();
    if (m_period.count() == 0 || m_hasExpired || now < m_fed + m_period / 2 - tolerance(m_period))
        return;
    if (usesDevice() ? m_device.feed() : m_manager->feed())
        m_fed = now;
}

// From then on nothing is fed, so that the end is certain.
void Watchdog::expireIfDue(milliseconds sinceTick)
{
    const auto due = usesDevice() ? m_period - HardwareWatchdog::expiryDelay : m_period;
    if (m_period.count() == 0 || m_hasExpired || sinceTick < due - tolerance(m_period))
        return;
    m_hasExpired = true;
    if (usesDevice())
        m_device.expire();
    else
        m_manager->expire();
}

void Watchdog::tell(const Monitor::Item& worst)
{
    if (worst.name == m_told.name && worst.state == m_told.state)
        return;
    const bool hasStalled = worst.state == Monitor::State::Stalled;
    const QString status = worst.name.isEmpty() ? QStringLiteral("All threads are on time")
                           : hasStalled         ? worst.name + QLatin1String(" has stalled")
                                                : worst.name + QLatin1String(" is late");
    m_manager->status(status);
    if (m_period.count() > 0 && hasStalled)
        logLater(log::warning, QLatin1String("The watchdog is not fed: ") + status);
    else if (m_period.count() > 0 && m_told.state == Monitor::State::Stalled)
        logLater(log::info, QLatin1String("The watchdog is fed again: ") + status);
    m_told = worst;
}

} // namespace monitored_threads
