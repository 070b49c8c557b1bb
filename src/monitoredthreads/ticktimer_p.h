#pragma once

#include <QTimer>

namespace monitored_threads
{

class Monitor;

/// Ticks from the event loop of the thread that creates it, once in each tick period.
class TickTimer : public QTimer
{
public:
    explicit TickTimer(Monitor& monitor);
};

} // namespace monitored_threads
