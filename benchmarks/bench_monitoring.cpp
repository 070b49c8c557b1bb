// The cost of a tick, by which a thread reports to the monitor that it works.

#include "ratiotable.h"
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/monitoredthreads/monitoreditem.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QMutex>
#include <QThread>

#include <time.h>

using monitored_threads::Monitor;

namespace
{

// Switched on in any build, and checking all the time.
class ActiveMonitor : public Monitor
{
public:
    ActiveMonitor()
        : Monitor(true)
    {
        startMonitoringPeriod();
    }
};

ActiveMonitor& monitor()
{
    static ActiveMonitor active;
    return active;
}

class Item : public monitored_threads::MonitoredItem
{
public:
    Item()
        : MonitoredItem(nullptr, QStringLiteral("Item"), monitor())
    {
    }
};

// The ticks as a host would write them without the monitor.
class TickTable
{
public:
    void tick()
    {
        const QMutexLocker locker(&m_mutex);
        m_ticks[QThread::currentThreadId()].start();
    }

private:
    QMutex m_mutex;
    QHash<Qt::HANDLE, QElapsedTimer> m_ticks;
};

void tickThread(benchmark::State& state)
{
    const bool isRegistered = monitor().registerCurrentThread(QStringLiteral("Bench"));
    if (!isRegistered)
        state.SkipWithError("the thread is not registered");
    repeat(state, [] { monitor().tickFromCurrentThread(); });
    monitor().unregisterCurrentThread();
}

void tickUnregistered(benchmark::State& state)
{
    repeat(state, [] { monitor().tickFromCurrentThread(); });
}

void tickItem(benchmark::State& state)
{
    Item item;
    repeat(state, [&] { item.tick(); });
}

void tickTable(benchmark::State& state)
{
    static TickTable table;
    repeat(state, [] { table.tick(); });
}

auto readClock(clockid_t clock)
{
    return [clock](benchmark::State& state) {
        timespec now;
        repeat(state, [&] {
            clock_gettime(clock, &now);
            benchmark::DoNotOptimize(now);
        });
    };
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    add("A tick/ZelTools", tickThread);
    add("A tick/ZelTools, of an item", tickItem);
    add("A tick/ZelTools, thread not registered", tickUnregistered);
    add("A tick/QMutex, QHash, QElapsedTimer", tickTable);
    add("A tick/CLOCK_MONOTONIC alone", readClock(CLOCK_MONOTONIC));
    add("A tick/CLOCK_MONOTONIC_COARSE alone", readClock(CLOCK_MONOTONIC_COARSE));
    add("A tick in four threads at once/ZelTools", tickThread)->Threads(4)->UseRealTime();
    add("A tick in four threads at once/QMutex, QHash, QElapsedTimer", tickTable)
        ->Threads(4)
        ->UseRealTime();
    return RatioTable::run(argc, argv);
}
