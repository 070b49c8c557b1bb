#include "boardwatchdog_p.h"
#include "crashsimulator/crashsimulator.h"
#include "filedescriptor.h"
#include "monitoredthreads/mainthreadmonitoredtimer.h"
#include "monitoredthreads/watchdog.h"
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

using namespace std::chrono_literals;
using monitored_threads::Monitor;
using State = monitored_threads::Monitor::State;
using Watchdog = support::Opened<monitored_threads::Watchdog>;
using support::EnvironmentGuard;
using zeltools::HardwareWatchdog;
using zeltools::ServiceNotifier;

Q_DECLARE_METATYPE(Monitor::Item)

/// The socket of a service manager, with the variables that the manager sets.
class Manager
{
public:
    explicit Manager(const QByteArray& period_us, const QByteArray& socketName = "")
        : m_name(socketName.isEmpty() ? m_dir.filePath("notify").toLocal8Bit() : socketName)
        , m_period("WATCHDOG_USEC", period_us)
    {
        sockaddr_un address{AF_UNIX, {}};
        memcpy(address.sun_path, m_name.constData(), size_t(m_name.size()));
        address.sun_path[0] = m_name[0] == '@' ? '\0' : m_name[0];
        const auto size = socklen_t(offsetof(sockaddr_un, sun_path) + size_t(m_name.size()));
        if (bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size) != 0)
            qFatal("%s cannot be bound", m_name.constData());
    }

    /// All messages so far, each with a "|" after it.
    QByteArray take() const
    {
        QByteArray messages;
        char piece[5000];
        for (ssize_t size; (size = recv(m_socket, piece, sizeof piece, MSG_DONTWAIT)) > 0;)
            messages += QByteArray(piece, int(size)) + '|';
        return messages;
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_name;
    EnvironmentGuard m_variable{"NOTIFY_SOCKET", m_name};
    EnvironmentGuard m_period;
    zeltools::FileDescriptor m_socket{socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

/// Runs for watchdogfaults.py: the main thread works for a quarter of the period and stalls. The
/// next feed follows before the monitor can tell, so the watchdog must be made to expire in time.
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
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        puts(qPrintable(QString::number(now / 1ms)));
        fflush(stdout);
        crash_simulator::CrashSimulator(nullptr).simulateStallMainThread();
    });
    return QCoreApplication::exec();
}

class TestWatchdog : public QObject
{
    Q_OBJECT

    support::LineRecorder m_recorder;
    QTemporaryDir m_dir;
    const QString m_device = m_dir.filePath("watchdog"); // a file that stands for it

private Q_SLOTS:
    void init()
    {
        m_recorder.take();
        support::writeFile(m_device, "");
    }

    void tellsTheManager()
    {
        for (const QByteArray& name : {QByteArray(), "@zeltools-" + QByteArray::number(getpid())}) {
            const Manager manager("", name);
            ServiceNotifier notifier;
            QVERIFY(notifier.ready() && notifier.status("a\n\033\u20AC") &&
                    notifier.status(QString(5000, QChar(0x20AC))) && notifier.stopping());
            QCOMPARE(manager.take(), "READY=1|STATUS=a  €|STATUS=" +
                                         QByteArray("€").repeated(1000) + "|STOPPING=1|");
        }
    }

    void refusesNonsense_data()
    {
        QTest::addColumn<QByteArray>("period_us");
        QTest::addColumn<QByteArray>("pid");
        QTest::addColumn<int>("expected_us");
        QTest::addColumn<QString>("message"); // a pattern for the only line
        const QByteArray own = QByteArray::number(getpid());
        const auto row = [](const char* socket, const QByteArray& usec, const QByteArray& pid,
                            int expected, const char* message) {
            QTest::addRow("%s", socket) << usec << pid << expected << message;
        };
        row("", "", own, 0, "^$");
        row("/no/such", "5000000", own, 5000000, "\"READY=1\" at /no/such: No such file");
        row("nonsense", "5000000", own, 5000000, "at nonsense: ");
        row("@", "", "", 0, "at @: ");
        row(QByteArray(5000, '/'), "", "", 0, "//: ");
        row("", "30s", own, 0, "WATCHDOG_USEC .*: \"30s\"");
        row("", "0", own, 0, "WATCHDOG_USEC .*: \"0\"");
        row("", "99999999999999999999", own, 0, "WATCHDOG_USEC .*: \"9{20}\"");
        row("", "5000000", own, 0, "without NOTIFY_SOCKET");
        row("", "5000000", "1", 0, "^$");
        row("", "5000000", "self", 0, "WATCHDOG_PID .*: \"self\"");
    }
    void refusesNonsense()
    {
        QFETCH(QByteArray, period_us);
        QFETCH(QByteArray, pid);
        const EnvironmentGuard socketGuard("NOTIFY_SOCKET", QTest::currentDataTag());
        const EnvironmentGuard periodGuard("WATCHDOG_USEC", period_us);
        const EnvironmentGuard pidGuard("WATCHDOG_PID", pid);
        ServiceNotifier notifier;
        QTEST(int(notifier.watchdogPeriod().count()), "expected_us");
        QVERIFY(!notifier.ready() && !notifier.feed());
        const QString lines = m_recorder.takeMessages().join('\n');
        QFETCH(QString, message);
        QVERIFY2(lines.count('\n') == 0 && lines.contains(QRegularExpression(message)),
                 qPrintable(lines));
    }

    void doesNotWaitForAStuckManager()
    {
        const Manager manager("200000");
        ServiceNotifier notifier;
        while (notifier.feed()) {
        }
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!notifier.feed() && timer.elapsed() < 200);
        QCOMPARE(m_recorder.takeMessages().size(), 1);
        Watchdog watchdog(zeltools::Machine(), [] { return QVector<Monitor::Item>(); });
        QVERIFY(watchdog.start());
        watchdog.stop();
        QVERIFY2(timer.elapsed() < 1200, qPrintable(QString::number(timer.elapsed())));
        manager.take();
        QTRY_VERIFY(notifier.ready());
    }

    void feedsTheDevice()
    {
        {
            HardwareWatchdog watchdog(m_device);
            QVERIFY(!watchdog.feed() && watchdog.start(15s) && watchdog.timeLimit() == 15s);
            QVERIFY(watchdog.feed());
            watchdog.expire();
            QVERIFY(!watchdog.feed());
        }
        QCOMPARE(support::readFile(m_device), QByteArray("\0V", 2));
        {
            HardwareWatchdog full("/dev/full");
            QVERIFY(!HardwareWatchdog("/no/such").start(15s));
            QVERIFY(full.start(15s) && !full.feed() && !full.feed());
        }
        const QString unknown = "%1 does not tell its time limit; it is taken for 15 s: "
                                "Inappropriate ioctl for device|The watchdog ";
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 "The watchdog " + unknown.arg(m_device) +
                     "/no/such cannot be started: No such file or directory|The watchdog " +
                     unknown.arg("/dev/full") +
                     "/dev/full cannot be fed: No space left on device|The watchdog "
                     "/dev/full cannot be stopped: No space left on device");
    }

    // A terminal in exclusive mode refuses a second opening just as a watchdog does. Only a thread
    // without privileges is refused.
    void isRefusedADeviceOfAnotherProcess()
    {
        const zeltools::FileDescriptor terminal(posix_openpt(O_RDWR | O_NOCTTY));
        QVERIFY(grantpt(terminal) == 0 && unlockpt(terminal) == 0);
        const QString name = ptsname(terminal);
        const zeltools::FileDescriptor holder(open(qPrintable(name), O_RDWR | O_NOCTTY));
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
        QTest::addColumn<QByteArray>("fed"); // into the socket and into the device
        QTest::addColumn<QString>("message");
        const QString started = "The watchdog of the %1 s, 15 s were asked for";
        QTest::newRow("5000000") << false << QByteArray(" ")
                                 << "There is no watchdog to be started with a limit of 15 s";
        QTest::newRow("2500000") << true << QByteArray("WATCHDOG=1|WATCHDOG=1| ")
                                 << started.arg("service manager is started with a limit of 2.5");
        QTest::newRow("") << true << QByteArray(" \0", 2)
                          << started.arg("machine is started with a limit of 15");
    }
    void choosesTheWatchdog()
    {
        QFETCH(bool, isBoard);
        const Manager manager(QTest::currentDataTag());
        zeltools::Machine machine = support::machine(isBoard);
        machine.watchdogDevice = m_device;
        zeltools::BoardWatchdog watchdog(machine);
        watchdog.feed();
        QCOMPARE(watchdog.start(15s), isBoard);
        watchdog.feed();
        QTEST(manager.take() + ' ' + support::readFile(m_device), "fed");
        QTEST(m_recorder.takeMessages().last(), "message");
        QVERIFY(!watchdog.start(0s));
        watchdog.feed();
        QVERIFY(manager.take().isEmpty());
    }

    void feedsWhileNothingHasStalled_data()
    {
        QTest::addColumn<QVector<Monitor::Item>>("items");
        QTest::addColumn<QByteArray>("told");
        const auto row = [](const QByteArray& told, const QVector<Monitor::Item>& items) {
            QTest::addRow("%s %d", told.data(), int(items.size())) << items << told;
        };
        const Monitor::Item calm{"Calm", 1, State::OnTime, 1ms, {}};
        const Monitor::Item slow{"Slow", 2, State::Late, 200ms, {}};
        const Monitor::Item slower{"Slower", 3, State::Late, 300ms, {}};
        const Monitor::Item hung{"Hung", 4, State::Stalled, 100ms, {}};
        const Monitor::Item dead{"Dead", 5, State::Stalled, 500ms, {}};
        const Monitor::Item paused{"Paused", 6, State::Paused, 9000ms, {}};
        const Monitor::Item unseen{"Unseen", 7, State::OnTime, 600ms, {}};
        row("WATCHDOG=1|", {});
        row("WATCHDOG=1|", {calm, paused});
        row("WATCHDOG=1|STATUS=Slower is late|", {calm, slower, slow});
        row("STATUS=Hung has stalled|", {slower, hung, calm});
        row("WATCHDOG=trigger|STATUS=Dead has stalled|", {hung, dead, slow});
        row("", {calm, unseen}); // the monitor hangs itself
    }
    void feedsWhileNothingHasStalled()
    {
        QFETCH(QVector<Monitor::Item>, items);
        const Manager manager("500000");
        Watchdog watchdog(zeltools::Machine(), [&] { return items; });
        QVERIFY(watchdog.start());
        QTest::qWait(1000);
        watchdog.stop();
        QByteArray told = manager.take();
        const auto feeds = told.count("WATCHDOG=1|"); // at half the period 4 or 5 when idle
        QVERIFY2(feeds == 0 || (feeds >= 3 && feeds <= 6), told);
        if (feeds > 0)
            told = told.replace("WATCHDOG=1|", "").replace("READY=1|", "READY=1|WATCHDOG=1|");
        QVERIFY2(told.startsWith("READY=1|") && told.endsWith("STOPPING=1|"), told);
        QTEST(told.mid(8, told.size() - 19), "told");
    }

    void feedsAgainAfterAStall()
    {
        const Manager manager("60000000");
        std::atomic<State> state = State::Stalled;
        Watchdog watchdog(zeltools::Machine(), [&] {
            return QVector<Monitor::Item>{{"Grinder", 1, state, 100ms, {}}};
        });
        QVERIFY(watchdog.start());
        QByteArray told;
        QTRY_COMPARE(told += manager.take(), QByteArray("READY=1|STATUS=Grinder has stalled|"));
        state = State::OnTime;
        told.clear();
        QTRY_COMPARE(told += manager.take(),
                     QByteArray("WATCHDOG=1|STATUS=All threads are on time|"));
        watchdog.stop();
        QCOMPARE(m_recorder.takeMessages().join('|'),
                 QString("The watchdog is fed; its period is 60 s|The watchdog is not fed: Grinder "
                         "has stalled|The watchdog is fed again: All threads are on time"));
    }

    void feedsTheDeviceOfTheBoard()
    {
        const EnvironmentGuard none("NOTIFY_SOCKET", "");
        zeltools::Machine machine = support::machine(true);
        machine.watchdogDevice = m_device;
        Watchdog watchdog(machine, [] { return QVector<Monitor::Item>(); });
        QVERIFY(watchdog.start(1s));
        QTRY_COMPARE(support::readFile(m_device), QByteArray("\0\0", 2));
        watchdog.stop();
        QVERIFY(support::readFile(m_device).endsWith('V'));
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
