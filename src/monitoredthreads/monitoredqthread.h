#pragma once

#include <zeltools/zeltools_export.h>

#include <QThread>

namespace monitored_threads
{

/// Who ticks for a thread: its own code, or the event loop that it runs.
enum class AutoTick { Off = 0, On = 1 };

/// A thread that the Monitor would watch, were it not switched off: a plain thread.
class ZELTOOLS_EXPORT MonitoredQThread : public QThread
{
    Q_OBJECT

public:
    MonitoredQThread(const QString& name, AutoTick autoTick);
    ~MonitoredQThread() override;
};

} // namespace monitored_threads
