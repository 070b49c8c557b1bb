#include "boardwatchdog_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

namespace zeltools
{

namespace
{

using std::chrono::microseconds;

QString inSeconds(microseconds time)
{
    return QString::number(std::chrono::duration<double>(time).count()) + QLatin1String(" s");
}

void logStart(const QString& whose, microseconds timeLimit, microseconds asked)
{
    LogFormatter(timeLimit < asked ? LogLevel::Warning : LogLevel::Info).log(Log::Global).noquote()
        << QStringLiteral("The watchdog of %1 is started with a limit of %2, %3 were asked for")
               .arg(whose, inSeconds(timeLimit), inSeconds(asked));
}

} // namespace

BoardWatchdog::BoardWatchdog(const Machine& machine)
    : m_isBoard(machine.isBoard)
    , m_device(machine.watchdogDevice)
{
}

bool BoardWatchdog::start(std::chrono::seconds timeLimit)
{
    if (m_isBoard)
        return startOnBoard(timeLimit);
    LogFormatter(LogLevel::Info).log(Log::Global).noquote()
        << QStringLiteral("There is no watchdog to be started with a limit of %1 s")
               .arg(timeLimit.count());
    return false;
}

bool BoardWatchdog::startOnBoard(std::chrono::seconds timeLimit)
{
    const QMutexLocker locker(&m_mutex);
    if (timeLimit.count() <= 0) {
        m_device.stop();
        return false;
    }
    m_manager.emplace();
    if (m_manager->watchdogPeriod().count() > 0) {
        logStart(QStringLiteral("the service manager"), m_manager->watchdogPeriod(), timeLimit);
        return m_manager->feed();
    }
    m_manager.reset();
    if (!m_device.start(timeLimit))
        return false;
    logStart(QStringLiteral("the machine"), m_device.timeLimit(), timeLimit);
    return true;
}

void BoardWatchdog::feed()
{
    const QMutexLocker locker(&m_mutex);
    if (m_manager)
        m_manager->feed();
    else
        m_device.feed();
}

} // namespace zeltools
