#include "monitoredthreads/watchdog.h"

#include "monitoredthreads/log.h"

#include <algorithm>
#include <utility>

namespace monitored_threads
{

namespace
{

using std::chrono::milliseconds;
using zeltools::HardwareWatchdog;

// The worst is that which has not ticked for the longest time among those in the worst state.
// Whatever is on time or paused is left out; without any other the name is empty.
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
    , m_device(machine.watchdogDevice)
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
    m_manager = std::make_unique<zeltools::ServiceNotifier>();
    m_manager->ready();
    m_period = startPeriod(deviceLimit);
    m_fed = Clock::now() - m_period;
    m_hasExpired = false;
    m_told = {};
    if (m_manager->hasManager() || usesDevice()) {
        m_thread.reset(QThread::create([this] { run(); }));
        m_thread->setObjectName(QStringLiteral("Watchdog"));
        m_thread->start();
    }
    return m_period.count() > 0;
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
    if (m_thread != nullptr) {
        m_stop.release();
        m_thread->wait();
        m_thread.reset();
    }
    if (m_manager != nullptr)
        m_manager->stopping();
    m_manager.reset();
    m_device.stop();
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
    const QVector<Monitor::Item> items = m_items();
    const Monitor::Item worst = worstOf(items);
    // The thread of the monitor may hang as well, in a log file for example. Its states then stay
    // as they are, but the time since the tick does not.
    const auto isOverdue = [this](const Monitor::Item& item) {
        return item.state != Monitor::State::Paused && item.sinceTick >= m_period;
    };
    if (worst.state == Monitor::State::Stalled)
        expireIfDue(worst.sinceTick);
    else if (std::none_of(items.begin(), items.end(), isOverdue))
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
        log::warning(QLatin1String("The watchdog is not fed: ") + status);
    else if (m_period.count() > 0 && m_told.state == Monitor::State::Stalled)
        log::info(QLatin1String("The watchdog is fed again: ") + status);
    m_told = worst;
}

} // namespace monitored_threads
