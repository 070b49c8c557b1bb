#include "monitoredthreads/monitor.h"

#include "monitoredthreads/activemonitor_p.h"
#include <zeltools/platform.h>

#include <QCoreApplication>

#include <algorithm>

namespace monitored_threads
{

Monitor* Monitor::instance()
{
    static auto* const monitor = new Monitor(platform::isMonitoring);
    return monitor;
}

// The receiver of kernel log lines belongs to the main thread, whichever thread comes first.
Monitor::Monitor(bool isActive)
    : m_active(isActive ? std::make_unique<ActiveMonitor>(*this) : nullptr)
{
    qRegisterMetaType<std::chrono::milliseconds>("std::chrono::milliseconds");
    if (auto* const application = QCoreApplication::instance())
        moveToThread(application->thread());
}

Monitor::~Monitor() = default;

ActiveMonitor* Monitor::active() const
{
    return m_active != nullptr && m_active->isOfThisProcess() ? m_active.get() : nullptr;
}

bool Monitor::isEnabled()
{
    return active() != nullptr;
}

std::chrono::milliseconds Monitor::threadsTickPeriod() const
{
    return m_active != nullptr ? m_active->tickPeriod() : std::chrono::seconds(1);
}

void Monitor::setThreadsTickPeriod(std::chrono::milliseconds period)
{
    if (auto* const monitor = active())
        monitor->setTickPeriod(period);
}

void Monitor::setLimits(std::chrono::milliseconds late, std::chrono::milliseconds stalled)
{
    if (auto* const monitor = active())
        monitor->setLimits(late, stalled);
}

void Monitor::startMonitoringPeriod()
{
    if (auto* const monitor = active())
        monitor->start();
}

bool Monitor::registerCurrentThread(const QString& name)
{
    auto* const monitor = active();
    return monitor != nullptr && monitor->registerThread(name);
}

void Monitor::unregisterCurrentThread()
{
    if (MonitorSlots::ofThread(this) != nullptr)
        MonitorSlots::releaseOfThread();
}

// It does not ask for active(), which is a system call; a thread has no slot of a monitor that is
// switched off, and the ticks of a forked child process harm nobody.
void Monitor::tickFromCurrentThread()
{
    MonitorSlots::tickFromThread(this);
}

void Monitor::pauseCurrentThreadMonitoring(std::chrono::milliseconds time)
{
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24 * 365);
    const auto bounded = std::clamp(time, std::chrono::milliseconds(0), longest);
    if (MonitorSlot* const slot = MonitorSlots::ofThread(this))
        slot->pausedUntil_ms = monitorNow_ms() + bounded.count();
}

bool Monitor::hasLateThread()
{
    auto* const monitor = active();
    return monitor != nullptr && monitor->detector().hasLate();
}

bool Monitor::hasStalledThread()
{
    auto* const monitor = active();
    return monitor != nullptr && monitor->detector().hasStalled();
}

int Monitor::recoveriesCount()
{
    auto* const monitor = active();
    return monitor != nullptr ? monitor->detector().recoveriesCount() : 0;
}

int Monitor::registeredItemsCount()
{
    return int(items().size());
}

QString Monitor::registeredItemsStatusString(const QString& separator)
{
    const QVector<Item> all = items();
    QStringList texts;
    for (const Item& item : all)
        texts.append(QStringLiteral("%1: %2, %3 ms")
                         .arg(item.name, QLatin1String(stateText(item.state)),
                              QString::number(item.sinceTick.count())));
    return texts.join(separator);
}

QVector<Monitor::Item> Monitor::items() const
{
    auto* const monitor = active();
    return monitor != nullptr ? monitor->detector().items(monitorNow_ms()) : QVector<Item>();
}

void Monitor::registerKernelFailureStrings(const QStringList& texts)
{
    if (auto* const monitor = active())
        monitor->kernelFailures().add(texts);
}

bool Monitor::hasKernelFailure()
{
    auto* const monitor = active();
    return monitor != nullptr && monitor->kernelFailures().hasMatched();
}

void Monitor::onDmesgNewLine(const QString& line)
{
    auto* const monitor = active();
    if (monitor != nullptr)
        monitor->checkKernelLine(line);
}

} // namespace monitored_threads
