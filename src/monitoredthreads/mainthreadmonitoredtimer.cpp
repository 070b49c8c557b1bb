#include "monitoredthreads/mainthreadmonitoredtimer.h"

namespace monitored_threads
{

MainThreadMonitoredTimer::MainThreadMonitoredTimer() = default;
MainThreadMonitoredTimer::~MainThreadMonitoredTimer() = default;

} // namespace monitored_threads
