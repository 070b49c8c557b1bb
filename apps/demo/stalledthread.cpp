#include "stalledthread.h"

#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/monitoredthreads/monitoredqthread.h>

#include <QSemaphore>

using monitored_threads::AutoTick;
using monitored_threads::Monitor;
using monitored_threads::MonitoredQThread;
using std::chrono::milliseconds;

// The function that hangs. It is visible outside of this file, so that the call stack has its name.
Q_NEVER_INLINE void waitForGrinderMotor(QSemaphore& motor);

void waitForGrinderMotor(QSemaphore& motor)
{
    // A call at the end of the function could take its place on the stack, hence a loop.
    constexpr int patience_ms = 60000;
    while (!motor.tryAcquire(1, patience_ms)) {
    }
}

namespace
{

// An application uses Monitor::instance(), which is switched off unless the library was built with
// ZELTOOLS_MONITORING.
class ActiveMonitor : public Monitor
{
public:
    ActiveMonitor()
        : Monitor(true)
    {
        setThreadsTickPeriod(milliseconds(100));
        startMonitoringPeriod();
    }
};

class DemoThread : public MonitoredQThread
{
public:
    DemoThread(const QString& name, Monitor& monitor)
        : MonitoredQThread(name, AutoTick::On, monitor)
    {
    }
    ~DemoThread() override
    {
        quit();
        wait();
    }
};

void printStates(Monitor& monitor, QTextStream& out)
{
    const QString begin = QStringLiteral("\n  ");
    out << begin << monitor.registeredItemsStatusString(begin) << '\n';
}

} // namespace

bool showStalledThread(QTextStream& out)
{
    QSemaphore stalled;
    QSemaphore recovered;
    QString callStack;
    ActiveMonitor monitor; // ends its thread before the others end
    QObject::connect(
        &monitor, &Monitor::threadStalled, &monitor,
        [&](const QString& name, milliseconds, const QStringList& calls) {
            if (name == QLatin1String("Grinder")) {
                callStack = QLatin1String("  ") + calls.join(QLatin1String("\n  "));
                stalled.release();
            }
        },
        Qt::DirectConnection);
    QObject::connect(
        &monitor, &Monitor::threadRecovered, &monitor, [&] { recovered.release(); },
        Qt::DirectConnection);
    QSemaphore motor;
    DemoThread boiler(QStringLiteral("Boiler"), monitor);
    DemoThread grinder(QStringLiteral("Grinder"), monitor);
    QObject::connect(
        &grinder, &QThread::started, &grinder, [&] { waitForGrinderMotor(motor); },
        Qt::DirectConnection);
    boiler.start();
    grinder.start();
    constexpr int patience_ms = 10000;
    const bool hasStalled = stalled.tryAcquire(1, patience_ms);
    out << "\nOne of two threads hangs:";
    printStates(monitor, out);
    out << "It stands here:\n" << callStack << "\nIt continues:";
    motor.release();
    const bool hasRecovered = recovered.tryAcquire(1, patience_ms);
    printStates(monitor, out);
    out.flush();
    return hasStalled && hasRecovered &&
           callStack.contains(QLatin1String("waitForGrinderMotor(QSemaphore&)+0x"));
}
