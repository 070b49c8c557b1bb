#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>

#include <chrono>

namespace monitored_threads
{

/// The watchdog of the application's threads, which is switched off. Threads register and tick as
/// if they were watched, but the monitor keeps nothing and never reports a stalled thread or a
/// kernel failure. Any thread may call all functions but instance().
class ZELTOOLS_EXPORT Monitor : public QObject
{
    Q_OBJECT

public:
    /// The only monitor, created by the first call and never destroyed. The first call must come
    /// from the main thread.
    static Monitor* instance();
    ~Monitor() override;

    bool isEnabled() { return false; }

    /// The tick period of threads, which is always one second.
    std::chrono::milliseconds threadsTickPeriod() const { return std::chrono::seconds(1); }
    void setThreadsTickPeriod(std::chrono::milliseconds) {}
    void startMonitoringPeriod() {}
    void tickFromCurrentThread() {}
    void pauseCurrentThreadMonitoring(std::chrono::milliseconds) {}

    bool hasStalledThread() { return false; }
    int registeredItemsCount() { return 0; }
    QString registeredItemsStatusString(const QString&) { return {}; }

    void registerKernelFailureStrings(const QStringList&) {}
    bool hasKernelFailure() { return false; }

public Q_SLOTS:
    /// A slot for dmesg::Dmesg::newLine().
    void onDmesgNewLine(const QString&) {}

private:
    Monitor();
};

} // namespace monitored_threads
