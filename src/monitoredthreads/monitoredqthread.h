#pragma once

#include <zeltools/zeltools_export.h>

#include <QThread>

namespace monitored_threads
{

/// The source of a thread's ticks: its own code (Off) or its event loop (On).
enum class AutoTick { Off = 0, On = 1 };

/// A thread for the Monitor to watch. It is a plain thread, because the Monitor is switched off.
class ZELTOOLS_EXPORT MonitoredQThread : public QThread
{
    Q_OBJECT

public:
    MonitoredQThread(const QString& name, AutoTick autoTick);
    ~MonitoredQThread() override;
};

} // namespace monitored_threads
