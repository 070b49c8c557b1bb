#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

#include <atomic>
#include <chrono>
#include <functional>

namespace zeltools
{

/// Reports the state of this process to the service manager above it (systemd), by the protocol of
/// sd_notify(3). The manager is found by the environment variables that it sets: NOTIFY_SOCKET, and
/// for its watchdog WATCHDOG_USEC and WATCHDOG_PID. Without NOTIFY_SOCKET there is no manager, and
/// every message returns false without a Warning.
///
/// A message waits a tenth of a second for a manager that does not read, at most a quarter of the
/// watchdog's period. A message that cannot be sent is one Warning under Log::Global, and the next
/// Warning comes only after a message has been sent again.
///
/// The variables are read by the constructor; a value that makes no sense is a Warning. Any thread
/// may call the other functions. With libsystemd each message reads the environment once more, so
/// that only WindowsTools::setEnv() and unsetEnv() may change it at the same time.
class ZELTOOLS_EXPORT ServiceNotifier
{
public:
    /// Receives the text of a Warning, in the thread that sends the message.
    using Warn = std::function<void(const QString& text)>;

    /// The function takes the place of the log for messages that cannot be sent. A thread that must
    /// not wait for the log gives one.
    explicit ServiceNotifier(Warn warn = {});
    Q_DISABLE_COPY(ServiceNotifier)

    /// Whether there is a manager.
    bool hasManager() const { return !m_socketName.isEmpty(); }
    /// The time after the last feed() at which the manager ends this process, at most a day. It is
    /// 0 if the manager watches nothing or another process.
    std::chrono::microseconds watchdogPeriod() const { return m_watchdogPeriod; }

    /// The process has started. Its watchdog begins.
    bool ready();
    /// The process ends in an orderly way. Its watchdog ends.
    bool stopping();
    /// Shows one line of text in `systemctl status`. Control characters become blanks, and the text
    /// is cut after 1000 characters.
    bool status(const QString& text);
    /// Feeds the watchdog of the manager.
    bool feed();
    /// Makes the watchdog expire now. A systemd older than version 243 ignores it.
    bool expire();

private:
    void readWatchdogPeriod();
    bool send(const QByteArray& message);

    const Warn m_warn;
    QByteArray m_socketName;
    std::chrono::microseconds m_watchdogPeriod{0};
    std::atomic<bool> m_hasWarned = false;
};

} // namespace zeltools
