#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>
#include <QVector>

#include <chrono>
#include <memory>

namespace monitored_threads
{

class ActiveMonitor;

/// The watchdog of the application's threads. Threads and items register under a name and tick; the
/// monitor reports those that have not ticked for too long, and kernel log lines that match a
/// failure text.
///
/// It works only in a library that was built for it (platform::isMonitoring). Otherwise, and in a
/// forked child process, every function does nothing and returns the value for "nothing is
/// watched".
///
/// Any thread may call all functions but instance(). A thread of the monitor checks four times in
/// each tick period and sets the states; neither the log nor a receiver can block it. A second one
/// takes the call stacks and emits the signals about threads, so that a directly connected receiver
/// also hears of a main thread that has stalled. Such a receiver delays the signals after it, and
/// the state may have changed again when it is called. Receivers in other threads get the signals
/// queued. A third thread logs.
class ZELTOOLS_EXPORT Monitor : public QObject
{
    Q_OBJECT
    /// Whether something is late or stalled.
    Q_PROPERTY(bool hasLateThread READ hasLateThread NOTIFY stateChanged)
    /// Whether a thread or item is stalled.
    Q_PROPERTY(bool hasStalledThread READ hasStalledThread NOTIFY stateChanged)
    /// How many stalled threads and items have begun to tick again since the start.
    Q_PROPERTY(int recoveriesCount READ recoveriesCount NOTIFY stateChanged)
    Q_PROPERTY(bool hasKernelFailure READ hasKernelFailure NOTIFY kernelFailureChanged)

public:
    /// OnTime, Late and Stalled follow from the time since the last tick, Paused from
    /// pauseCurrentThreadMonitoring().
    enum class State { OnTime, Late, Stalled, Paused };
    Q_ENUM(State)

    /// A registered thread or item.
    struct Item
    {
        QString name;                ///< The name of the registration.
        qint32 thread = 0;           ///< The kernel's id of the thread; 0 for a MonitoredItem.
        State state = State::OnTime; ///< The state when items() was called.
        /// The time since the last tick, or since the end of a pause after it.
        std::chrono::milliseconds sinceTick{0};
        QStringList callStack; ///< The calls of a stalled thread, once they are known; else empty.

        bool operator==(const Item& other) const
        {
            return name == other.name && thread == other.thread && state == other.state &&
                   sinceTick == other.sinceTick && callStack == other.callStack;
        }
    };

    /// The only monitor, created by the first call and never destroyed. The first call must come
    /// from the main thread.
    static Monitor* instance();
    ~Monitor() override;

    /// Whether anything is watched: not in a library that was built without monitoring, nor in a
    /// forked child process.
    Q_INVOKABLE bool isEnabled();

    /// How often a thread is to tick. It is one second by default, and always while switched off.
    std::chrono::milliseconds threadsTickPeriod() const;
    /// A period below 20 ms counts as 20 ms. Unless setLimits() was called, the limits follow. The
    /// time of threads that are on time starts again.
    void setThreadsTickPeriod(std::chrono::milliseconds period);
    /// Sets the time without a tick after which a thread is late, and after which it has stalled,
    /// which is at least as long. The defaults are 2 and 5 tick periods.
    void setLimits(std::chrono::milliseconds late, std::chrono::milliseconds stalled);

    /// Starts the checks, for which the event loop of the main thread should be about to run.
    /// Before this call nothing is late. Further calls do nothing.
    void startMonitoringPeriod();

    /// Registers the calling thread until it ends, calls unregisterCurrentThread() or the process
    /// ends. Of the name, 63 bytes of UTF-8 are kept. Returns false if the monitor is switched off,
    /// the thread is registered already, or 128 threads and items are (one Warning for the first).
    ///
    /// MonitoredQThread and MainThreadMonitoredTimer call it themselves.
    bool registerCurrentThread(const QString& name);
    /// Ends the registration of the calling thread; does nothing in a thread that is not
    /// registered.
    void unregisterCurrentThread();
    /// Reports that the calling thread works. It takes less than 50 ns and does nothing in a thread
    /// that is not registered.
    void tickFromCurrentThread();
    /// Excepts the calling thread from the checks for that time, which begins now; ticks do not end
    /// it. A time of 0 ends it.
    void pauseCurrentThreadMonitoring(std::chrono::milliseconds time);

    bool hasLateThread();
    bool hasStalledThread();
    int recoveriesCount();
    /// The number of registered threads and items.
    Q_INVOKABLE int registeredItemsCount();
    /// One text such as "Grinder: late, 2250 ms" for each thread and item, with the separator
    /// between them.
    Q_INVOKABLE QString registeredItemsStatusString(const QString& separator);
    /// All registered threads and items with their present states.
    QVector<Item> items() const;

    /// Adds texts; a kernel log line that contains one of them reports a failure. Case matters;
    /// empty texts are ignored.
    void registerKernelFailureStrings(const QStringList& texts);
    /// Whether a line has matched since the start of the process.
    bool hasKernelFailure();

public Q_SLOTS:
    /// A slot for dmesg::Dmesg::newLine().
    void onDmesgNewLine(const QString& line);

Q_SIGNALS:
    /// The time is the one since the last tick.
    void threadLate(const QString& name, std::chrono::milliseconds sinceTick);
    /// The call stack shows where the thread hangs, in the form of WindowsTools::callStack(). It is
    /// empty for an item and for a thread that does not answer.
    void threadStalled(const QString& name, std::chrono::milliseconds sinceTick,
                       const QStringList& callStack);
    /// A stalled thread has ticked or was paused. One that ends or is unregistered instead only
    /// changes the properties.
    void threadRecovered(const QString& name, std::chrono::milliseconds stalledFor);
    /// Follows these signals, and each other change of a state or a property.
    void stateChanged();
    /// Announces that a thread or item was registered, or that one is no longer. Emitted by the
    /// next check.
    void itemsChanged();
    /// Emitted for each line of the kernel log that names a failure, with the line.
    void kernelFailure(const QString& line);
    void kernelFailureChanged();
    /// Announces a change of the tick period of the threads.
    void threadsTickPeriodChanged();

protected:
    /// Constructs a monitor that is switched on or off in any build. It must outlive all that is
    /// registered with it.
    explicit Monitor(bool isActive);

private:
    friend class MonitoredItem;

    ActiveMonitor* active() const; // null if the monitor is switched off

    const std::unique_ptr<ActiveMonitor> m_active;
};

} // namespace monitored_threads
