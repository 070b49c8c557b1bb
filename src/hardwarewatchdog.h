#pragma once

#include <zeltools/machine.h>
#include <zeltools/zeltools_export.h>

#include <QString>

#include <chrono>
#include <functional>

#include <sys/types.h>

namespace zeltools
{

/// A watchdog of the kernel: a device that restarts the machine when nobody feeds it for its time
/// limit. Opening it starts it. A process that ends without stop(), because it crashes or is
/// killed, leaves it running, and the machine restarts. Only one process at a time can hold it.
///
/// One thread at a time may call the functions. In a forked child process they only close the
/// device, which goes on watching the parent.
class ZELTOOLS_EXPORT HardwareWatchdog
{
public:
    /// The shortest time limit that drivers have.
    static constexpr std::chrono::seconds expiryDelay{1};

    /// Receives the reason of a failure.
    using Fail = std::function<void(const QString& text)>;

    /// The function takes the place of the log for failures of feed() and stop(). A thread that
    /// must not wait for the log gives one.
    explicit HardwareWatchdog(const QString& device = Machine().watchdogDevice, Fail fail = {});
    /// Calls stop().
    ~HardwareWatchdog();
    Q_DISABLE_COPY(HardwareWatchdog)

    /// Opens the device and asks its driver for the time limit. timeLimit() is the one that the
    /// driver has chosen, since drivers round and have limits of their own. A driver that cannot
    /// say it is taken to have the limit that was asked for, and logs a Warning.
    ///
    /// Returns false with one Error under Log::Global if the device cannot be opened, for example
    /// because another process holds it. A second call asks for another time limit.
    bool start(std::chrono::seconds timeLimit);
    /// 0 while the device is closed.
    std::chrono::seconds timeLimit() const { return m_timeLimit; }
    /// Restarts the time limit. Returns false if the device is closed or refuses it; the first
    /// refusal is an Error. After expire() it does nothing.
    bool feed();
    /// Shortens the time limit to the expiry delay. A driver that refuses this restarts the machine
    /// at the end of the time limit instead.
    void expire();
    /// Stops the device by the magic close and closes it. A driver that was built never to stop
    /// (CONFIG_WATCHDOG_NOWAYOUT) restarts the machine at the end of its time limit.
    void stop();

private:
    bool open();
    bool isOpen() const; // by this process
    bool write(char byte);

    const QString m_device;
    const Fail m_fail;
    pid_t m_process = 0; // the one that has opened it
    int m_descriptor = -1;
    std::chrono::seconds m_timeLimit{0};
    bool m_isExpiring = false;
    bool m_hasFailed = false;
};

} // namespace zeltools
