#include "monitoredthreads/monitor.h"

namespace monitored_threads
{

Monitor* Monitor::instance()
{
    static auto* const monitor = new Monitor;
    return monitor;
}

Monitor::Monitor()
{
    qRegisterMetaType<std::chrono::milliseconds>("std::chrono::milliseconds");
}

Monitor::~Monitor() = default;

} // namespace monitored_threads
