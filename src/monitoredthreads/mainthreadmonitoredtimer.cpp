#include "monitoredthreads/mainthreadmonitoredtimer.h"

#include "monitoredthreads/monitor.h"
#include "monitoredthreads/ticktimer_p.h"

namespace monitored_threads
{

MainThreadMonitoredTimer::MainThreadMonitoredTimer()
    : MainThreadMonitoredTimer(*Monitor::instance())
{
}

MainThreadMonitoredTimer::MainThreadMonitoredTimer(Monitor& monitor)
    : m_monitor(monitor)
{
    if (m_monitor.registerCurrentThread(QStringLiteral("Main thread")))
        m_timer = std::make_unique<TickTimer>(m_monitor);
}

MainThreadMonitoredTimer::~MainThreadMonitoredTimer()
{
    if (m_timer != nullptr)
        m_monitor.unregisterCurrentThread();
}

} // namespace monitored_threads
