#include "dmesg/restarter_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

namespace dmesg
{

Restarter::Restarter(std::chrono::milliseconds firstDelay, QObject* parent)
    : QObject(parent)
    , m_first(firstDelay)
    , m_longest(60 * firstDelay)
    , m_next(firstDelay)
    , m_delay(this)
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &Restarter::due);
}

void Restarter::begin()
{
    m_next = m_first;
    m_isActive = true;
}

void Restarter::stop()
{
    m_isActive = false;
    m_delay.stop();
}

void Restarter::onEnd(const QString& reason)
{
    if (!m_isActive)
        return;
    if (m_running.hasExpired(m_longest.count()))
        m_next = m_first;
    LogFormatter(LogLevel::Warning).log(Log::Global).noquote().nospace()
        << "The kernel log is not followed: " << reason << "; next attempt in "
        << static_cast<double>(m_next.count()) / 1000 << " s";
    m_delay.start(m_next);
    m_next = qMin(2 * m_next, m_longest);
}

} // namespace dmesg
