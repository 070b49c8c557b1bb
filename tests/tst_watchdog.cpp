#include "boardwatchdog_p.h"
#include "crashsimulator/crashsimulator.h"
#include "filedescriptor.h"
#include "hardwarewatchdog.h"
#include "monitoredthreads/mainthreadmonitoredtimer.h"
#include "monitoredthreads/watchdog.h"
#include "servicenotifier.h"
#include "support.h"
#include "support/machines.h"

#include <QtTest>

#include <thread>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;
using monitored_threads::Monitor;
using support::EnvironmentGuard;
using State = monitored_threads::Monitor::State;
using Watchdog = support::Opened<monitored_threads::Watchdog>;
using zeltools::BoardWatchdog;
using zeltools::HardwareWatchdog;
using zeltools::ServiceNotifier;

/// The socket of a service manager, with the variables that the manager sets.
class Manager
{
public:
    explicit Manager(const QByteArray& socketName = "", const QByteArray& period_us = "")
        : m_name(socketName.isEmpty() ? m_dir.filePath("notify").toLocal8Bit() : socketName)
        , m_variable("NOTIFY_SOCKET", m_name)
        , m_period("WATCHDOG_USEC", period_us)
    {
        sockaddr_un address{AF_UNIX, {}};
        memcpy(address.sun_path, m_name.constData(), size_t(m_name.size()));
        address.sun_path[0] = m_name[0] == '@' ? '\0' : m_name[0];
        const auto size = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(m_name.size()));
        if (bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size) != 0)
            qFatal("%s cannot be bound", m_name.constData());
    }

    QByteArray take() const
    {
        char message[5000];
        const ssize_t size = recv(m_socket, message, sizeof message, MSG_DONTWAIT);
        return {message, int(std::max<ssize_t>(size, 0))};
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_name;
    EnvironmentGuard m_variable;
    EnvironmentGuard m_period;
    zeltools::FileDescriptor m_socket{socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

Q_DECLARE_METATYPE(Monitor::Item)

/// The clock of CLOCK_MONOTONIC, which all processes share.
static qint64 now_ms()
{
    return std::chrono::steady_clock::now().time_since_epoch() / 1ms;
}

/// Runs in a child process: its main thread works for a quarter of the period and stalls. The next
/// feed follows before the monitor can tell, so the watchdog must be made to expire in time.
static int stall()
{
    const auto period =
        std::chrono::duration_cast<std::chrono::milliseconds>(ServiceNotifier().watchdogPeriod());
    static support::Opened<Monitor> monitor(true);
    monitor.setThreadsTickPeriod(50ms);
    monitor.setLimits(100ms, period * 35 / 100);
    const support::Opened<monitored_threads::MainThreadMonitoredTimer> timer(monitor);
    monitor.startMonitoringPeriod();
    Watchdog watchdog(zeltools::Machine(), [] { return monitor.items(); });
    watchdog.start();
    QTimer::singleShot(period / 4, [] {
        printf("%lld\n", now_ms());
        fflush(stdout);
        crash_simulator::CrashSimulator(nullptr).simulateStallMainThread();
    });
    return QCoreApplication::exec();
}

class TestWatchdog : public QObject
{
    Q_OBJECT

    support::LineRecorder m_recorder;

private Q_SLOTS:
    void cleanup() { QCOMPARE(m_recorder.takeMessages(), QStringList()); }

    void tellsTheManager_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("a path") << QByteArray();
        QTest::newRow("abstract") << "@zeltools-" + QByteArray::number(getpid());
    }
    void tellsTheManager()
    {
        QFETCH(QByteArray, name);
        const Manager manager(name);
        ServiceNotifier notifier;
        QVERIFY(notifier.ready() && notifier.feed() && notifier.expire() && notifier.stopping());
        for (const char* message : {"READY=1", "WATCHDOG=1", "WATCHDOG=trigger", "STOPPING=1"})
            QCOMPARE(manager.take(), QByteArray(message));
        QVERIFY(notifier.status(QString::fromUtf8("Thread \"Mühle\n\0WATCHDOG=1\" is late", 35)));
        QCOMPARE(manager.take(), QByteArray("STATUS=Thread \"Mühle  WATCHDOG=1\" is late"));
        QVERIFY(notifier.status(QString(5000, QChar(0x20AC))));
        QCOMPARE(manager.take(), "STATUS=" + QByteArray("€").repeated(1000));
    }

    void refusesNonsense_data()
    {
        QTest::addColumn<QByteArray>("socket");
        QTest::addColumn<QByteArray>("usec");
        QTest::addColumn<QByteArray>("pid");
        QTest::addColumn<int>("period_us");
        QTest::addColumn<QString>("message"); // a pattern for the only line
        const QByteArray own = QByteArray::number(getpid());
        const auto row = [](const char* name, const QByteArray& socket, const QByteArray& usec,
                            const QByteArray& pid, int period, const char* message) {
            QTest::newRow(name) << socket << usec << pid << period << message;
        };
        row("nobody to tell", "", "", own, 0, "");
        row("no such socket", "/no/such", "5000000", own, 5000000, "/no/such: No such file");
        row("not a path", "nonsense", "5000000", own, 5000000, "\"READY=1\" at nonsense: ");
        row("an empty name", "@", "", "", 0, "at @: ");
        row("too long", QByteArray(5000, '/'), "", "", 0, "//: ");
        row("no number", "/", "30s", own, 0, "WATCHDOG_USEC .*: \"30s\"");
        row("no period", "/", "0", own, 0, "WATCHDOG_USEC .*: \"0\"");
        row("negative", "/", "-5", own, 0, "WATCHDOG_USEC .*: \"-5\"");
        row("too large", "/", "99999999999999999999", own, 0, "WATCHDOG_USEC .*: \"9{20}\"");
        row("no socket", "", "5000000", own, 0, "without NOTIFY_SOCKET");
        row("another process", "", "5000000", "1", 0, "");
        row("no process", "/", "5000000", "self", 0, "WATCHDOG_PID .*: \"self\"");
    }
    void refusesNonsense()
    {
        QFETCH(QByteArray, socket);
        QFETCH(QByteArray, usec);
        QFETCH(QByteArray, pid);
        QFETCH(QString, message);
        const EnvironmentGuard socketGuard("NOTIFY_SOCKET", socket);
        const EnvironmentGuard usecGuard("WATCHDOG_USEC", usec);
        const EnvironmentGuard pidGuard("WATCHDOG_PID", pid);
        ServiceNotifier notifier;
        QTEST(int(notifier.watchdogPeriod().count()), "period_us");
        if (socket != "/")
            QVERIFY(!notifier.ready() && !notifier.feed());
        const QStringList lines = m_recorder.takeMessages();
        QCOMPARE(lines.size(), message.isEmpty() ? 0 : 1);
        QVERIFY2(lines.join("").contains(QRegularExpression(message)), qPrintable(lines.join("")));
    }

    void doesNotWaitForAStuckManager()
    {
        const Manager manager("", "80000");
        ServiceNotifier notifier;
        int sent = 0;
        while (notifier.feed())
            ++sent;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!notifier.feed());
        QVERIFY2(timer.elapsed() < 80, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(m_recorder.takeMessages().size(), 1);
        while (sent-- > 0)
            QCOMPARE(manager.take(), QByteArray("WATCHDOG=1"));
        QTRY_VERIFY(notifier.ready());
    }

    void feedsTheDevice()
    {
        const QTemporaryDir dir;
        const QString device = dir.filePath("watchdog");
        support::writeFile(device, "");
        {
            HardwareWatchdog watchdog(device);
            QVERIFY(!watchdog.feed());
            QVERIFY(watchdog.start(15s) && watchdog.timeLimit() == 15s && watchdog.feed());
            watchdog.expire();
            QVERIFY(!watchdog.feed());
            watchdog.stop();
            QVERIFY(watchdog.timeLimit() == 0s && !watchdog.feed());
            QCOMPARE(support::readFile(device), QByteArray("\0V", 2));
            QVERIFY(watchdog.start(0s) && watchdog.timeLimit() == 1s);
            QVERIFY(watchdog.feed() && watchdog.feed());
        }
        QCOMPARE(support::readFile(device), QByteArray("\0\0V", 3));
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 QString("The watchdog %1 does not tell its time limit; it is taken for 15 s: "
                         "Inappropriate ioctl for device|The watchdog %1 does not tell its time "
                         "limit; it is taken for 1 s: Inappropriate ioctl for device")
                     .arg(device));
    }

    void saysWhyTheDeviceIsNotFed()
    {
        QVERIFY(!HardwareWatchdog("/no/such").start(15s));
        QCOMPARE(m_recorder.takeMessages().join(""),
                 QString("The watchdog /no/such cannot be started: No such file or directory"));
        {
            HardwareWatchdog full("/dev/full");
            QVERIFY(full.start(15s) && !full.feed() && !full.feed());
        }
        QCOMPARE(m_recorder.takeMessages().filter("No space left").join('|'),
                 QString("The watchdog /dev/full cannot be fed: No space left on device|The "
                         "watchdog /dev/full cannot be stopped: No space left on device"));
    }

    // A terminal in exclusive mode refuses a second opening just as a watchdog does. Only a thread
    // without privileges is refused.
    void isRefusedADeviceOfAnotherProcess()
    {
        const zeltools::FileDescriptor terminal(posix_openpt(O_RDWR | O_NOCTTY));
        QVERIFY(grantpt(terminal) == 0 && unlockpt(terminal) == 0);
        const char* const name = ptsname(terminal);
        const zeltools::FileDescriptor holder(open(name, O_RDWR | O_NOCTTY));
        QVERIFY(ioctl(holder, TIOCEXCL) == 0);
        bool isStarted = true;
        std::thread([&] {
            __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
            __user_cap_data_struct none[2] = {};
            syscall(SYS_capset, &header, none);
            isStarted = HardwareWatchdog(name).start(15s);
        }).join();
        QVERIFY(!isStarted);
        QCOMPARE(m_recorder.takeMessages().join(""),
                 QString("The watchdog %1 cannot be started: Another process holds it").arg(name));
    }

    void choosesTheWatchdog_data()
    {
        QTest::addColumn<bool>("isBoard");
        QTest::addColumn<QByteArray>("period_us");
        QTest::addColumn<QByteArray>("fed"); // into the socket and into the device
        QTest::addColumn<QString>("message");
        QTest::newRow("the desktop has none")
            << false << QByteArray("5000000") << QByteArray("|")
            << "There is no watchdog to be started with a limit of 15 s";
        QTest::newRow("that of the manager")
            << true << QByteArray("2500000") << QByteArray("WATCHDOG=1WATCHDOG=1|")
            << "The watchdog of the service manager is started with a limit of 2.5 s, 15 s were "
               "asked for";
        QTest::newRow("the device")
            << true << QByteArray() << QByteArray("|\0", 2)
            << "The watchdog of the machine is started with a limit of 15 s, 15 s were asked for";
    }
    void choosesTheWatchdog()
    {
        QFETCH(bool, isBoard);
        QFETCH(QByteArray, period_us);
        const Manager manager("", period_us);
        const QTemporaryDir dir;
        zeltools::Machine machine = support::machine(isBoard);
        machine.watchdogDevice = dir.filePath("watchdog");
        support::writeFile(machine.watchdogDevice, "");
        BoardWatchdog watchdog(machine);
        watchdog.feed();
        QCOMPARE(watchdog.start(15s), isBoard);
        watchdog.feed();
        const QByteArray told = manager.take() + manager.take();
        QTEST(told + '|' + support::readFile(machine.watchdogDevice), "fed");
        QTEST(m_recorder.takeMessages().last(), "message");
        QVERIFY(!isBoard || !watchdog.start(0s));
        watchdog.feed();
        QVERIFY(manager.take().isEmpty());
    }

    void feedsWhileNothingHasStalled_data()
    {
        QTest::addColumn<QVector<Monitor::Item>>("items");
        QTest::addColumn<QByteArray>("told"); // of repeated messages the first
        const auto row = [](const char* name, const QVector<Monitor::Item>& items,
                            const char* told) { QTest::newRow(name) << items << QByteArray(told); };
        const Monitor::Item calm{"Calm", 1, State::OnTime, 1ms, {}};
        const Monitor::Item slow{"Slow", 2, State::Late, 200ms, {}};
        const Monitor::Item slower{"Slower", 3, State::Late, 300ms, {}};
        const Monitor::Item hung{"Hung", 4, State::Stalled, 100ms, {}};
        const Monitor::Item dead{"Dead", 5, State::Stalled, 500ms, {}};
        const Monitor::Item paused{"Paused", 6, State::Paused, 9000ms, {}};
        const Monitor::Item unseen{"Unseen", 7, State::OnTime, 600ms, {}};
        row("nothing is watched", {}, "WATCHDOG=1|");
        row("all are on time", {calm, paused}, "WATCHDOG=1|");
        row("late", {calm, slower, slow}, "WATCHDOG=1|STATUS=Slower is late|");
        row("stalled", {slower, hung, calm}, "STATUS=Hung has stalled|");
        row("stalled for a period", {hung, dead, slow},
            "WATCHDOG=trigger|STATUS=Dead has stalled|");
        row("a monitor that hangs itself", {calm, unseen}, "");
    }
    void feedsWhileNothingHasStalled()
    {
        QFETCH(QVector<Monitor::Item>, items);
        const Manager manager("", "500000");
        Watchdog watchdog(zeltools::Machine(), [&] { return items; });
        QVERIFY(watchdog.start());
        QTest::qWait(1000);
        watchdog.stop();
        QByteArray told;
        int feeds = 0;
        for (QByteArray message; !(message = manager.take()).isEmpty();) {
            feeds += message == "WATCHDOG=1";
            if (!told.contains(message))
                told += message + '|';
        }
        QVERIFY2(told.startsWith("READY=1|") && told.endsWith("STOPPING=1|"), told);
        QTEST(told.mid(8, told.size() - 8 - 11), "told");
        // At half the period, these are 4 or 5 on an idle machine.
        QVERIFY2(feeds == 0 || (feeds >= 3 && feeds <= 6), qPrintable(QString::number(feeds)));
        m_recorder.takeMessages();
    }

    void feedsAgainAfterAStall()
    {
        const Manager manager("", "60000000");
        std::atomic<State> state = State::Stalled;
        Watchdog watchdog(zeltools::Machine(), [&] {
            return QVector<Monitor::Item>{{"Grinder", 1, state, 100ms, {}}};
        });
        QVERIFY(watchdog.start() && watchdog.start());
        QByteArray told;
        QTRY_COMPARE(told += manager.take(), QByteArray("READY=1STATUS=Grinder has stalled"));
        state = State::OnTime;
        told.clear();
        QTRY_COMPARE(told += manager.take(),
                     QByteArray("WATCHDOG=1STATUS=All threads are on time"));
        watchdog.stop();
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 QString("The watchdog is fed; its period is 60 s|The watchdog is not fed: Grinder "
                         "has stalled|The watchdog is fed again: All threads are on time"));
    }

    void feedsTheDeviceOfTheBoard()
    {
        const EnvironmentGuard none("NOTIFY_SOCKET", "");
        const QTemporaryDir dir;
        zeltools::Machine machine = support::machine(true);
        machine.watchdogDevice = dir.filePath("watchdog");
        Watchdog watchdog(machine, [] { return QVector<Monitor::Item>(); });
        QVERIFY(!watchdog.start());
        watchdog.stop();
        QVERIFY(m_recorder.takeMessages().first().contains("No such file"));
        support::writeFile(machine.watchdogDevice, "");
        QVERIFY(watchdog.start(1s));
        QTRY_COMPARE(support::readFile(machine.watchdogDevice), QByteArray("\0\0", 2));
        watchdog.stop();
        QCOMPARE(support::readFile(machine.watchdogDevice), QByteArray("\0\0V", 3));
        m_recorder.takeMessages();
    }

    void stopsUnderAStuckManager()
    {
        const Manager manager("", "200000");
        while (ServiceNotifier().feed()) {
        }
        Watchdog watchdog(zeltools::Machine(), [] { return QVector<Monitor::Item>(); });
        QElapsedTimer timer;
        timer.start();
        QVERIFY(watchdog.start());
        QTest::qWait(300);
        watchdog.stop();
        QVERIFY2(timer.elapsed() < 1300, qPrintable(QString::number(timer.elapsed())));
        m_recorder.takeMessages();
    }

    // The test is the manager and ends the child as systemd does.
    void endsAStalledProcessInTime()
    {
        constexpr qint64 period_ms = 4000;
        const Manager manager("", "4000000");
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {"--stall"});
        QVERIFY(child.waitForStarted());
        QByteArrayList told;
        qint64 fed_ms = now_ms() + 10000;
        while (now_ms() < fed_ms + period_ms && !told.contains("WATCHDOG=trigger")) {
            const QByteArray message = manager.take();
            if (message.isEmpty())
                QThread::msleep(1);
            else
                told.append(message);
            if (message == "WATCHDOG=1")
                fed_ms = now_ms();
        }
        const qint64 ended_ms = now_ms();
        child.kill();
        QVERIFY(child.waitForFinished());
        const qint64 stalled_ms = child.readAllStandardOutput().toLongLong();
        QVERIFY2(told.contains("STATUS=Main thread has stalled"), told.join('|'));
        QVERIFY(stalled_ms > 0 && fed_ms < stalled_ms + period_ms / 2);
        const QString times = QString("fed %1 ms, ended %2 ms after the stall")
                                  .arg(fed_ms - stalled_ms)
                                  .arg(ended_ms - stalled_ms);
        QVERIFY2(ended_ms > stalled_ms && ended_ms - stalled_ms <= period_ms * 11 / 10,
                 qPrintable(times));
        qInfo("%s", qPrintable(times));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--stall") == 0)
        return stall();
    TestWatchdog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_watchdog.moc"
