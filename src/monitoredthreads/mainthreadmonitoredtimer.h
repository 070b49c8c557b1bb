#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

#include <memory>

class QTimer;

namespace monitored_threads
{

class Monitor;

/// A timer that registers the main thread as "Main thread" and ticks for it while it lives, from
/// the event loop. It does nothing if the Monitor is switched off or the thread is registered
/// already. Create and destroy it in the main thread.
class ZELTOOLS_EXPORT MainThreadMonitoredTimer : public QObject
{
    Q_OBJECT

public:
    MainThreadMonitoredTimer();
    /// Removes the thread from the monitor if this object has registered it.
    ~MainThreadMonitoredTimer() override;

protected:
    /// Registers the thread with another monitor.
    explicit MainThreadMonitoredTimer(Monitor& monitor);

private:
    Monitor& m_monitor;
    std::unique_ptr<QTimer> m_timer; // null if the thread is not registered by this object
};

} // namespace monitored_threads
