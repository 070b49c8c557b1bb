#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace monitored_threads
{

/// Would tick for the main thread while it lives, were the Monitor not switched off.
class ZELTOOLS_EXPORT MainThreadMonitoredTimer : public QObject
{
    Q_OBJECT

public:
    MainThreadMonitoredTimer();
    ~MainThreadMonitoredTimer() override;
};

} // namespace monitored_threads
