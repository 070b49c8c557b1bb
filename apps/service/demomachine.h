#pragma once

#include "coffeemachine.h"

#include <zeltools/monitoredthreads/mainthreadmonitoredtimer.h>
#include <zeltools/monitoredthreads/monitoredqthread.h>

#include <QString>

/// The machine that the screen shows: the library as a host starts it, with its folders below one
/// folder, and a coffee machine at work. There is one in a process, in the main thread.
class DemoMachine
{
public:
    /// Starts the library: switches, log files, crash reports and the watch over the threads. The
    /// folder must exist.
    DemoMachine(const QString& folder, std::chrono::milliseconds pace);
    ~DemoMachine();
    Q_DISABLE_COPY(DemoMachine)

    CoffeeMachine& coffeeMachine() { return *m_coffeeMachine; }
    QString crashFolder() const { return m_folder + QLatin1String("crashes"); }
    /// Takes the place of a removable medium for support bundles.
    QString bundleFolder() const { return m_folder + QLatin1String("stick"); }

private:
    void startLogging();
    void startWatch();

    const QString m_folder; // with "/" at the end
    monitored_threads::MonitoredQThread m_boiler;
    monitored_threads::MonitoredQThread m_grinder;
    std::unique_ptr<monitored_threads::MainThreadMonitoredTimer> m_mainThread;
    std::unique_ptr<CoffeeMachine> m_coffeeMachine;
};
