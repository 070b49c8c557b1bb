#include "crashreports/crashreportwriter.h"
#include "monitoredthreads/mainthreadmonitoredtimer.h"
#include "monitoredthreads/monitoreditem.h"
#include "monitoredthreads/monitoredqthread.h"
#include "monitoredthreads/stalldetector_p.h"
#include "monitoredthreads/threadsreport_p.h"
#include "support.h"
#include "support/machines.h"
#include <zeltools/platform.h>

#include <QtTest>

#include <thread>

#include <sys/wait.h>

using namespace monitored_threads;
using namespace std::chrono_literals;

using OpenMonitor = support::Opened<Monitor>;
using Thread = support::Opened<MonitoredQThread>;
using Item = support::Opened<MonitoredItem>;
using State = Monitor::State;

/// Stands still until it is released. It waits in a loop, since a call at the end of a function
/// could take its place on the stack.
Q_NEVER_INLINE void waitForBeans(QSemaphore& beans)
{
    while (!beans.tryAcquire(1, 60000)) {
    }
}

class TestMonitoring : public QObject
{
    Q_OBJECT

    support::LineRecorder m_recorder;

    // The signals of a monitor as text, from any thread.
    struct Events
    {
        explicit Events(Monitor& monitor)
        {
            connect(&monitor, &Monitor::threadLate, [&](const QString& name) {
                const QDeadlineTimer deadline(5s); // delays the signals, but not the checks
                while (!monitor.hasStalledThread() && !deadline.hasExpired())
                    QThread::msleep(1);
                isSlow = isSlow || deadline.hasExpired();
                add("late " + name, {});
            });
            connect(&monitor, &Monitor::threadRecovered,
                    [this](const QString& name) { add("recovered " + name, {}); });
            connect(&monitor, &Monitor::threadStalled,
                    [&](const QString& name, auto, const QStringList& calls) {
                        monitor.items(); // hangs if the monitor holds a lock
                        add("stalled " + name, calls);
                    });
        }
        void add(const QString& event, const QStringList& calls)
        {
            const QMutexLocker locker(&mutex);
            texts.append(event);
            if (!calls.isEmpty())
                stack = calls.join('|');
        }
        bool has(const QString& event)
        {
            const QMutexLocker locker(&mutex);
            return texts.contains(event);
        }
        std::atomic<bool> isSlow = false;
        QMutex mutex;
        QStringList texts;
        QString stack;
    };

private Q_SLOTS:
    void init() { m_recorder.take(); }

    void isInertWhenSwitchedOff()
    {
        QCOMPARE(Monitor::instance(), Monitor::instance());
        QCOMPARE(Monitor::instance()->isEnabled(), platform::isMonitoring);
        std::thread([this] { QCOMPARE(OpenMonitor(false).thread(), thread()); }).join();
        OpenMonitor monitor(false);
        const Item item(nullptr, "Item", monitor);
        const support::Opened<MainThreadMonitoredTimer> timer(monitor);
        Thread thread("Thread", AutoTick::On, monitor);
        std::atomic<int> countInThread = -1;
        connect(
            &thread, &QThread::finished, &thread,
            [&] { countInThread = monitor.registeredItemsCount(); }, Qt::DirectConnection);
        monitor.setThreadsTickPeriod(5s);
        monitor.setLimits(1ms, 1ms);
        monitor.startMonitoringPeriod();
        monitor.registerKernelFailureStrings({"panic"});
        monitor.onDmesgNewLine("panic");
        thread.start();
        thread.quit();
        QVERIFY(thread.wait() && thread.objectName().isEmpty());
        QVERIFY(!monitor.registerCurrentThread("Main"));
        monitor.tickFromCurrentThread();
        monitor.pauseCurrentThreadMonitoring(1s);
        QCOMPARE(monitor.threadsTickPeriod(), 1000ms);
        QVERIFY(countInThread == 0 && monitor.registeredItemsStatusString(",").isEmpty());
        QVERIFY(!monitor.hasStalledThread() && !monitor.hasLateThread());
        QVERIFY(!monitor.hasKernelFailure() && monitor.recoveriesCount() == 0);
    }

    void findsStalls_data()
    {
        QTest::addColumn<QString>("steps");   // a number of looks, one each 100 ms, or an event
        QTest::addColumn<QString>("changes"); // with "!" where they are logged
        const auto row = [](const char* name, const char* steps, const char* changes) {
            QTest::newRow(name) << steps << changes;
        };
        row("ticks in time", "8 tick 7 tick 7", "");
        row("late, stalled, recovered", "23 tick 3", "late 800!|stalled 2000!|on time 2200!");
        row("late for a moment", "9 tick 3", "late 800!|on time 800");
        row("few lines", "9 tick 8 tick 700 tick 8",
            "late 800!|on time 800|late 800|on time 800|late 800|stalled 2000!|on time "
            "70000!|late 800!");
        row("paused in time", "5 pause 30 8", "paused 400|on time 0|late 800!");
        row("paused when stalled", "22 pause 1", "late 800!|stalled 2000!|paused 2100!");
        row("a pause of no time ends the pause", "1 pause 3 resume 9",
            "paused 0|on time 0|late 800!");
        row("the pause does not count", "1 pause 3 show resume 2 show",
            "paused 0|paused 0|on time 0|on time 200");
        row("the looks end", "1 hang show", "stalled 20100");
        row("longer limits", "22 relax 1 tick 1", "late 800!|stalled 2000!|on time 2200!");
        row("the process was stopped", "6 stop 1 tick 7", "");
        row("stopped again and again", "2 stop 1 stop 1 stop 1 tick 3", "");
        row("stopped while stalled", "21 stop 1 tick 1", "late 800!|stalled 2000!|on time 2200!");
        row("ends", "9 end 1", "late 800!|gone");
        row("another thread in its slot", "22 end again 9",
            "late 800!|stalled 2000!|gone|late 800!");
    }
    void findsStalls()
    {
        QFETCH(QString, steps);
        OpenMonitor monitor(false); // only the owner of the slot
        StallDetector detector(monitor, {100, 800, 2000});
        qint64 now_ms = monitorNow_ms();
        MonitorSlot* slot = nullptr;
        QStringList changes;
        const auto look = [&] {
            now_ms += 100;
            const StallDetector::Look found = detector.look(now_ms);
            for (const auto& change : found.changes)
                changes += QString("%1 %2%3")
                               .arg(stateText(change.after))
                               .arg(change.sinceTick.count())
                               .arg(change.isLogged ? "!" : "");
            if (found.hasChanged && found.changes.empty())
                changes += "gone";
            const bool isStalled = slot->registration != 0 && slot->state == State::Stalled;
            QCOMPARE(detector.hasStalled(), isStalled);
        };
        const QMap<QString, std::function<void()>> events{
            {"again", [&] { slot = MonitorSlots::take(&monitor, "Pump", 0); }},
            {"end", [&] { MonitorSlots::release(slot); }},
            {"tick", [&] { slot->ticked_ms = now_ms; }},
            {"pause", [&] { slot->pausedUntil_ms = now_ms + 3000; }},
            {"resume", [&] { slot->pausedUntil_ms = now_ms; }},
            {"relax",
             [&] {
                 detector.setLimits({100, 9000, 9000});
             }},
            {"hang", [&] { now_ms += 20000; }},
            {"show",
             [&] {
                 const Monitor::Item item = detector.items(now_ms).value(0);
                 changes += stateText(item.state) + QString(" %1").arg(item.sinceTick.count());
             }},
            {"stop", [&] { now_ms += 100000; }},
        };
        events["again"]();
        slot->ticked_ms = now_ms;
        for (const QString& step : steps.split(' ')) {
            for (int i = 0; i < step.toInt(); ++i)
                look();
            if (step.toInt() == 0)
                events[step]();
        }
        MonitorSlots::release(slot);
        QTEST(changes.join('|'), "changes");
    }

    void showsWhereAThreadHangs()
    {
        OpenMonitor monitor(true);
        Events events(monitor);
        monitor.setThreadsTickPeriod(100ms);
        monitor.startMonitoringPeriod();
        QSemaphore beans;
        Thread grinder("Grinder", AutoTick::On, monitor);
        connect(
            &grinder, &QThread::started, &grinder, [&] { waitForBeans(beans); },
            Qt::DirectConnection);
        const Item item(nullptr, "Item", monitor); // nobody ticks it
        grinder.start();
        QTRY_VERIFY(events.has("stalled Grinder") && events.has("stalled Item"));
        QVERIFY(events.has("late Grinder") && !events.isSlow && monitor.hasStalledThread());
        QVERIFY2(events.stack.contains("waitForBeans(QSemaphore&)+"), qPrintable(events.stack));
        const auto items = monitor.items();
        QVERIFY(items.size() == 2 && items[0].thread == 0 && items[1].thread != getpid());
        QCOMPARE(items[1].callStack.join('|'), events.stack);
        QVERIFY(items[1].state == State::Stalled && items[1].sinceTick >= 500ms);
        QVERIFY(QRegularExpression("^Item: stalled, \\d+ ms;Grinder: stalled, \\d+ ms$")
                    .match(monitor.registeredItemsStatusString(";"))
                    .hasMatch());
        beans.release();
        QTRY_VERIFY(events.has("recovered Grinder"));
        QVERIFY(monitor.items()[1].callStack.isEmpty() && monitor.recoveriesCount() == 1);
        grinder.quit();
        QVERIFY(grinder.wait());
        QCOMPARE(monitor.registeredItemsCount(), 1);
        const auto logged = [&] { return m_recorder.takeMessages().join('|'); };
        QString lines;
        QTRY_VERIFY((lines += logged()).contains("Thread \"Grinder\" has recovered after "));
        QVERIFY2(lines.contains(QRegularExpression(
                     R"(Thread "Grinder" has stalled: no tick for \d+ ms\|#0 .*waitForBeans)")),
                 qPrintable(lines));
    }

    void noticesTheMainThread()
    {
        OpenMonitor monitor(true);
        monitor.setThreadsTickPeriod(50ms);
        monitor.startMonitoringPeriod();
        const support::Opened<MainThreadMonitoredTimer> timer(monitor);
        QTest::qWait(400); // longer than the limit
        const int before = monitor.recoveriesCount();
        const QDeadlineTimer deadline(10s);
        while (!monitor.hasStalledThread() && !deadline.hasExpired())
            QThread::msleep(1);
        QVERIFY(!deadline.hasExpired());
        QTRY_VERIFY(monitor.recoveriesCount() > before && !monitor.hasLateThread());
    }

    void endsWithTheThread()
    {
        OpenMonitor monitor(true);
        std::thread([&] {
            QVERIFY(monitor.registerCurrentThread("Plain") && !monitor.registerCurrentThread("2"));
            QCOMPARE(monitor.items().value(0).thread, gettid());
        }).join();
        QCOMPARE(monitor.registeredItemsCount(), 0);
    }

    void endsWithTheSlotsAndInAChild()
    {
        OpenMonitor monitor(true);
        std::vector<std::unique_ptr<Item>> items;
        for (int i = 0; i < MonitorSlots::count + 2; ++i)
            items.push_back(std::make_unique<Item>(nullptr, QString::number(i), monitor));
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 QString("128 threads and items are monitored, which is the limit; \"128\" and "
                         "further ones are not"));
        items.front().reset();
        const Item another(nullptr, "another", monitor);
        QCOMPARE(monitor.items().value(0).name, QString("another"));
        const pid_t child = fork();
        if (child == 0) {
            alarm(10);
            const std::lock_guard<std::mutex> lock(MonitorSlots::mutex()); // as a thread may
            items.clear();
            _exit(monitor.isEnabled() + monitor.registeredItemsCount() +
                  monitor.hasStalledThread());
        }
        int status = -1;
        QVERIFY(::waitpid(child, &status, 0) == child && status == 0);
    }

    void matchesKernelLines()
    {
        OpenMonitor monitor(true);
        QSignalSpy changed(&monitor, &Monitor::kernelFailureChanged);
        QSignalSpy failures(&monitor, &Monitor::kernelFailure);
        monitor.registerKernelFailureStrings({"I/O error", ""});
        monitor.registerKernelFailureStrings({"oom-killer"});
        monitor.onDmesgNewLine("usb 1-1: i/o Error");
        QVERIFY(failures.isEmpty() && !monitor.hasKernelFailure());
        for (const char* const line : {"mmc0: I/O error", "zel invoked oom-killer", "I/O error"})
            monitor.onDmesgNewLine(line);
        QVERIFY(failures.size() == 3 && changed.size() == 1 && monitor.hasKernelFailure());
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 QString("The kernel reports a failure: mmc0: I/O error"));
    }

    void writesTheThreadsToACrashReport()
    {
        OpenMonitor monitor(true);
        const Item odd(nullptr, "a|b", monitor);
        const Item longer(nullptr, QString(61, 'x') + "€€", monitor);
        QTemporaryFile file;
        QVERIFY(file.open());
        zeltools::CrashReportWriter writer(file.handle());
        writeMonitoredThreads(writer);
        writer.flush();
        const QString text = support::readFile(file.fileName());
        QVERIFY2(text.contains(QRegularExpression("^a/b\\|0\\|on time\\|\\d+\nx{61}\\|0\\|on "
                                                  "time\\|\\d+\n$")),
                 qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TestMonitoring)

#include "tst_monitoring.moc"
