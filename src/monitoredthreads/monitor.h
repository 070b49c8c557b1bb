#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>

#include <chrono>

namespace monitored_threads
{

/// The watchdog of the application's threads, which is switched off: threads register and tick as
/// if they were watched, nothing is kept, and there is never a stalled thread or a kernel failure
/// to report. All but instance() may be called from any thread.
class ZELTOOLS_EXPORT Monitor : public QObject
{
    Q_OBJECT

public:
    /// The one monitor, created by the first call, which must come from the main thread, and never
    /// destroyed.
    static Monitor* instance();
    ~Monitor() override;

    bool isEnabled() { return false; }

    /// How often a thread ticks: once a second, whatever is set.
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
    /// For dmesg::Dmesg::newLine().
    void onDmesgNewLine(const QString&) {}

private:
    Monitor();
};

} // namespace monitored_threads
