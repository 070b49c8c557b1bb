#include "hardwarewatchdog.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

constexpr char s_magicClose = 'V'; // any other byte feeds the device

void log(LogLevel::Level level, const QString& text)
{
    LogFormatter(level).log(Log::Global).noquote() << text;
}

} // namespace

HardwareWatchdog::HardwareWatchdog(const QString& device, Fail fail)
    : m_device(device)
    , m_fail(fail ? std::move(fail) : [](const QString& text) { log(LogLevel::Error, text); })
{
}

HardwareWatchdog::~HardwareWatchdog()
{
    stop();
}

bool HardwareWatchdog::open()
{
    m_descriptor = ::open(QFile::encodeName(m_device).constData(), O_WRONLY | O_CLOEXEC);
    m_process = ::getpid();
    if (m_descriptor >= 0)
        return true;
    const QString reason =
        errno == EBUSY ? QStringLiteral("Another process holds it") : qt_error_string(errno);
    log(LogLevel::Error,
        QStringLiteral("The watchdog %1 cannot be started: %2").arg(m_device, reason));
    return false;
}

bool HardwareWatchdog::isOpen() const
{
    return m_descriptor >= 0 && m_process == ::getpid();
}

bool HardwareWatchdog::start(std::chrono::seconds timeLimit)
{
    if (m_descriptor < 0 && !open())
        return false;
    constexpr qint64 longest_s = std::numeric_limits<int>::max();
    int limit_s = static_cast<int>(std::clamp<qint64>(timeLimit.count(), 1, longest_s));
    // A driver with a fixed time limit refuses the first call and answers the second.
    const bool isSet = ::ioctl(m_descriptor, WDIOC_SETTIMEOUT, &limit_s) == 0;
    const bool isKnown = ::ioctl(m_descriptor, WDIOC_GETTIMEOUT, &limit_s) == 0 || isSet;
    if (!isKnown)
        log(LogLevel::Warning,
            QStringLiteral("The watchdog %1 does not tell its time limit; it is taken for %2 s: %3")
                .arg(m_device)
                .arg(limit_s)
                .arg(qt_error_string(errno)));
    m_timeLimit = std::chrono::seconds(limit_s);
    return true;
}

bool HardwareWatchdog::feed()
{
    if (!isOpen() || m_isExpiring)
        return false;
    const bool isFed = write('\0');
    if (!isFed && !m_hasFailed)
        m_fail(QStringLiteral("The watchdog %1 cannot be fed: %2")
                   .arg(m_device, qt_error_string(errno)));
    m_hasFailed = !isFed;
    return isFed;
}

void HardwareWatchdog::expire()
{
    if (!isOpen())
        return;
    int shortest_s = static_cast<int>(expiryDelay.count());
    m_isExpiring = true;
    ::ioctl(m_descriptor, WDIOC_SETTIMEOUT, &shortest_s);
}

void HardwareWatchdog::stop()
{
    if (m_descriptor < 0)
        return;
    if (isOpen() && !write(s_magicClose))
        m_fail(QStringLiteral("The watchdog %1 cannot be stopped: %2")
                   .arg(m_device, qt_error_string(errno)));
    ::close(m_descriptor);
    m_descriptor = -1;
    m_timeLimit = std::chrono::seconds(0);
    m_isExpiring = false;
}

bool HardwareWatchdog::write(char byte)
{
    ssize_t count = -1;
    do {
        count = ::write(m_descriptor, &byte, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1;
}

} // namespace zeltools
