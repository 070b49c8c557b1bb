#include "monitoredthreads/monitoredqthread.h"

#include "crashreports/crashreports.h"
#include "monitoredthreads/monitor.h"
#include "monitoredthreads/ticktimer_p.h"

namespace monitored_threads
{

MonitoredQThread::MonitoredQThread(const QString& name, AutoTick autoTick)
    : MonitoredQThread(name, autoTick, *Monitor::instance())
{
}

// The signals are emitted in the new thread, around run(). Receivers that connect later are called
// when the thread is registered already.
MonitoredQThread::MonitoredQThread(const QString& name, AutoTick autoTick, Monitor& monitor)
    : m_monitor(monitor)
{
    if (!monitor.isEnabled())
        return;
    setObjectName(name); // which becomes the kernel's name of the thread
    connect(
        this, &QThread::started, this, [=] { begin(name, autoTick); }, Qt::DirectConnection);
    connect(this, &QThread::finished, this, &MonitoredQThread::end, Qt::DirectConnection);
}

MonitoredQThread::~MonitoredQThread()
{
    static_cast<void>(m_hasEnded.load());
}

void MonitoredQThread::begin(const QString& name, AutoTick autoTick)
{
    zeltools::CrashReports::prepareThread();
    if (m_monitor.registerCurrentThread(name) && autoTick == AutoTick::On)
        m_timer = std::make_unique<TickTimer>(m_monitor);
}

void MonitoredQThread::end()
{
    m_timer.reset();
    m_monitor.unregisterCurrentThread();
    m_hasEnded = true;
}

} // namespace monitored_threads
