#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace monitored_threads
{

/// A timer that ticks for the main thread while it lives. It does nothing, because the Monitor is
/// switched off.
class ZELTOOLS_EXPORT MainThreadMonitoredTimer : public QObject
{
    Q_OBJECT

public:
    MainThreadMonitoredTimer();
    ~MainThreadMonitoredTimer() override;
};

} // namespace monitored_threads
