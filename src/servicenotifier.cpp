#include "servicenotifier.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "servicesocket_p.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

#include <unistd.h>

namespace zeltools
{

namespace
{

using std::chrono::milliseconds;

void logWarning(const QString& text)
{
    LogFormatter(LogLevel::Warning).log(Log::Global).noquote() << text;
}

// Returns the whole positive number that the variable has, or else 0. Any other value is a Warning.
qint64 positiveNumber(const char* variable)
{
    const QByteArray value = qgetenv(variable);
    const qint64 number = value.toLongLong();
    if (number > 0 || value.isEmpty())
        return std::max<qint64>(number, 0);
    logWarning(
        QStringLiteral("The watchdog of the service manager is off, since %1 is not a positive "
                       "number: \"%2\"")
            .arg(QLatin1String(variable), QString::fromLocal8Bit(value)));
    return 0;
}

milliseconds patience(std::chrono::microseconds period)
{
    constexpr milliseconds longest(100);
    if (period.count() == 0)
        return longest;
    return std::clamp(std::chrono::duration_cast<milliseconds>(period / 4), milliseconds(1),
                      longest);
}

} // namespace

ServiceNotifier::ServiceNotifier(Warn warn)
    : m_warn(warn ? std::move(warn) : logWarning)
    , m_socketName(qgetenv("NOTIFY_SOCKET"))
{
    readWatchdogPeriod();
}

void ServiceNotifier::readWatchdogPeriod()
{
    constexpr std::chrono::microseconds longest = std::chrono::hours(24);
    const std::chrono::microseconds period(positiveNumber("WATCHDOG_USEC"));
    if (period.count() == 0)
        return;
    const bool isForThisProcess =
        !qEnvironmentVariableIsSet("WATCHDOG_PID") || positiveNumber("WATCHDOG_PID") == ::getpid();
    if (!isForThisProcess)
        return;
    if (!hasManager()) {
        logWarning(
            QStringLiteral("The watchdog of the service manager is off, since WATCHDOG_USEC is "
                           "set without NOTIFY_SOCKET"));
        return;
    }
    m_watchdogPeriod = std::min(period, longest);
}

bool ServiceNotifier::ready()
{
    return send("READY=1");
}

bool ServiceNotifier::stopping()
{
    return send("STOPPING=1");
}

bool ServiceNotifier::status(const QString& text)
{
    // A line feed would begin another message, and systemd drops a datagram of more than 4096
    // bytes.
    constexpr int mostCharacters = 1000;
    QString line = text.left(mostCharacters);
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    std::replace_if(line.begin(), line.end(), isControl, QLatin1Char(' '));
    return send("STATUS=" + line.toUtf8());
}

bool ServiceNotifier::feed()
{
    return send("WATCHDOG=1");
}

bool ServiceNotifier::expire()
{
    return send("WATCHDOG=trigger");
}

bool ServiceNotifier::send(const QByteArray& message)
{
    if (!hasManager())
        return false;
    const int error = servicesocket::send(m_socketName, message, patience(m_watchdogPeriod));
    const bool isRepeated = m_hasWarned.exchange(error != 0);
    if (error != 0 && !isRepeated)
        m_warn(QStringLiteral("The service manager cannot be told \"%1\" at %2: %3")
                   .arg(QString::fromUtf8(message), QString::fromLocal8Bit(m_socketName),
                        qt_error_string(error)));
    return error == 0;
}

} // namespace zeltools
