#include "monitoredthreads/ticktimer_p.h"

#include "monitoredthreads/monitor.h"

namespace monitored_threads
{

TickTimer::TickTimer(Monitor& monitor)
{
    const auto restart = [this, &monitor] { start(monitor.threadsTickPeriod()); };
    connect(this, &QTimer::timeout, this, [&monitor] { monitor.tickFromCurrentThread(); });
    connect(&monitor, &Monitor::threadsTickPeriodChanged, this, restart);
    restart();
}

} // namespace monitored_threads
