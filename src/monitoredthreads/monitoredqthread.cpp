#include "monitoredthreads/monitoredqthread.h"

namespace monitored_threads
{

MonitoredQThread::MonitoredQThread(const QString&, AutoTick) {}

MonitoredQThread::~MonitoredQThread() = default;

} // namespace monitored_threads
