#include "boardwatchdog_p.h"
#include "crashsimulator/crashsimulator.h"
#include "filedescriptor.h"
#include "logging/log.h"
#include "logging/logformatter.h"
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
#include <sys/wait.h>

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
    explicit Manager(const QByteArray& period_us, bool isAbstract = false)
        : m_name((isAbstract ? '@' : '/') + m_dir.path().mid(1).toLocal8Bit() + "/notify")
        , m_period("WATCHDOG_USEC", period_us)
    {
        sockaddr_un address{AF_UNIX, {}};
        memcpy(address.sun_path + isAbstract, m_name.data() + isAbstract, size_t(m_name.size()));
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

/// Runs for watchdogfaults.py: the main thread works for a quarter of the period and stalls, at
/// will with the log locked, in a line to standard error that nobody reads. The next feed follows
/// before the monitor can tell, so the watchdog must be made to expire in time.
static int stall(bool isInLog)
{
    static support::Opened<Monitor> monitor(true);
    const auto period = ServiceNotifier().watchdogPeriod() / 1ms * 1ms;
    monitor.setThreadsTickPeriod(50ms);
    monitor.setLimits(100ms, period * 35 / 100);
    const support::Opened<monitored_threads::MainThreadMonitoredTimer> timer(monitor);
    monitor.startMonitoringPeriod();
    Watchdog watchdog(zeltools::Machine(), [] { return monitor.items(); });
    watchdog.start();
    QTimer::singleShot(period / 4, [isInLog] {
        printf("%lld\n", (long long)(std::chrono::steady_clock::now().time_since_epoch() / 1ms));
        fflush(stdout);
        if (!isInLog)
            crash_simulator::CrashSimulator(nullptr).simulateStallMainThread();
        for (;;)
            LogFormatter(LogLevel::Info).log(Log::Global) << QString(1000, 'x');
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

    // This is the first test, so its first message waits for libsystemd, which may be hidden.
    void doesNotWaitForAStuckManager()
    {
        const Manager manager("200000");
        ServiceNotifier notifier;
        QElapsedTimer timer;
        timer.start();
        while (notifier.feed()) {
        }
        QVERIFY(!notifier.feed() && timer.elapsed() < 400);
        QCOMPARE(m_recorder.takeMessages().size(), 1);
        Watchdog watchdog(zeltools::Machine(), [] { return QVector<Monitor::Item>(); });
        QVERIFY(watchdog.start());
        watchdog.stop();
        QVERIFY2(timer.elapsed() < 1200, qPrintable(QString::number(timer.elapsed())));
        manager.take();
        QTRY_VERIFY(notifier.ready());
    }

    void tellsTheManager()
    {
        for (const bool isAbstract : {false, true}) {
            const Manager manager("", isAbstract);
            ServiceNotifier notifier;
            QVERIFY(notifier.ready() && notifier.status("a\n\033\u20AC") &&
                    notifier.status(QString(5000, QChar(0x20AC))) && notifier.stopping());
            QCOMPARE(manager.take(), "READY=1|STATUS=a  €|STATUS=" +
                                         QByteArray("€").repeated(1000) + "|STOPPING=1|");
        }
    }

    void refusesNonsense_data()
    {
        QTest::addColumn<QByteArray>("socket");
        QTest::addColumn<QByteArray>("period_us");
        QTest::addColumn<QByteArray>("pid");
        QTest::addColumn<QString>("message"); // a pattern for the only line
        const QByteArray own = QByteArray::number(getpid());
        const auto row = [](const char* name, const QByteArray& socket, const QByteArray& period_us,
                            const QByteArray& pid, const char* message) {
            QTest::newRow(name) << socket << period_us << pid << message;
        };
        row("without a manager nothing is sent", "", "", own, "^$");
        row("no such socket", "/no/such", "5000000", own, "\"READY=1\" at /no/such: No");
        row("a name without a slash", "nonsense", "5000000", own, "at nonsense: ");
        row("an abstract socket without a name", "@", "", own, "at @: ");
        row("a name that is too long", QByteArray(5000, '/'), "", own, "//: ");
        row("a period with a unit", "", "30s", own, "WATCHDOG_USEC .*: \"30s\"");
        row("a period of 0", "", "0", own, "WATCHDOG_USEC .*: \"0\"");
        row("a period with 20 digits", "", QByteArray(20, '9'), own, "WATCHDOG_USEC .*: \"9{20}\"");
        row("a period without a socket", "", "5000000", own, "without NOTIFY_SOCKET");
        row("another process is watched", "", "5000000", QByteArray::number(getpid() + 1), "^$");
        row("a process id of letters", "", "5000000", "me", "WATCHDOG_PID .*: \"me\"");
    }
    void refusesNonsense()
    {
        QFETCH(QByteArray, socket);
        QFETCH(QByteArray, period_us);
        QFETCH(QByteArray, pid);
        const EnvironmentGuard socketGuard("NOTIFY_SOCKET", socket);
        const EnvironmentGuard periodGuard("WATCHDOG_USEC", period_us);
        const EnvironmentGuard pidGuard("WATCHDOG_PID", pid);
        ServiceNotifier notifier;
        QCOMPARE(notifier.watchdogPeriod(), socket.isEmpty() ? 0us : period_us.toInt() * 1us);
        QVERIFY(!notifier.ready() && !notifier.feed());
        const QString lines = m_recorder.takeMessages().join('|');
        QFETCH(QString, message);
        QVERIFY2(!lines.contains('|') && lines.contains(QRegularExpression(message)),
                 qPrintable(lines));
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
        const QStringList lines = m_recorder.takeMessages();
        QCOMPARE(lines.filter("does not tell its time limit; it is taken for 15 s").size(), 2);
        QCOMPARE(
            lines.filter("cannot").join('|').remove("The watchdog /"),
            QString("no/such cannot be started: No such file or directory|dev/full cannot be "
                    "fed: No space left on device|dev/full cannot be stopped: No space left on "
                    "device"));
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
        QTest::addColumn<QByteArray>("period_us");
        QTest::addColumn<QByteArray>("fed"); // into the socket and into the device
        QTest::addColumn<QString>("message");
        const QString started = " is started with a limit of %1 s, 15 s were asked for";
        QTest::newRow("none on the desktop")
            << false << QByteArray("5000000") << QByteArray(" ")
            << "There is no watchdog to be started with a limit of 15 s";
        QTest::newRow("systemd's on the board")
            << true << QByteArray("2500000") << QByteArray("WATCHDOG=1|WATCHDOG=1| ")
            << "The watchdog of the service manager" + started.arg(2.5);
        QTest::newRow("the device on a board without systemd")
            << true << QByteArray() << QByteArray(" \0", 2)
            << "The watchdog of the machine" + started.arg(15);
    }
    void choosesTheWatchdog()
    {
        QFETCH(bool, isBoard);
        QFETCH(QByteArray, period_us);
        QFETCH(QByteArray, fed);
        const Manager manager(period_us);
        zeltools::Machine machine = support::machine(isBoard);
        machine.watchdogDevice = m_device;
        zeltools::BoardWatchdog watchdog(machine);
        watchdog.feed();
        QCOMPARE(watchdog.start(15s), isBoard);
        watchdog.feed();
        QCOMPARE(manager.take() + ' ' + support::readFile(m_device), fed);
        QTEST(m_recorder.takeMessages().last(), "message");
        QVERIFY(!watchdog.start(0s));
        watchdog.feed(); // systemd still waits for it
        QCOMPARE(manager.take().isEmpty(), fed.startsWith(' '));
        Watchdog watching(machine, [] { return QVector<Monitor::Item>(); });
        QVERIFY(watching.start(1s));
        const pid_t child = fork();
        if (child == 0) {
            alarm(10);
            watching.stop(); // neither waits for the parent's thread nor stops its watchdog
            _exit(0);
        }
        int status = -1;
        QVERIFY(waitpid(child, &status, 0) == child && status == 0);
        watching.stop();
        const bool usesDevice = support::readFile(m_device) == QByteArray("\0V", 2);
        QVERIFY(manager.take().contains("WATCHDOG=1") != usesDevice);
    }

    void feedsWhileNothingHasStalled_data()
    {
        QTest::addColumn<QVector<Monitor::Item>>("items");
        QTest::addColumn<QByteArray>("told");
        const Monitor::Item slow{"Slow", 2, State::Late, 200ms, {}};
        const Monitor::Item slower{"Slower", 3, State::Late, 300ms, {}};
        const Monitor::Item hung{"Hung", 4, State::Stalled, 100ms, {}};
        const Monitor::Item dead{"Dead", 5, State::Stalled, 500ms, {}};
        const auto row = [](const char* name, const QByteArray& told,
                            const QVector<Monitor::Item>& items) {
            QTest::newRow(name) << items << told + "STOPPING=1|";
        };
        row("feeds during a pause", "WATCHDOG=1|", {{"Paused", 6, State::Paused, 9000ms, {}}});
        row("names the latest", "WATCHDOG=1|STATUS=Slower is late|", {slower, slow});
        row("a stall ends the feeding", "STATUS=Hung has stalled|", {slower, hung});
        row("the longest stall counts", "WATCHDOG=trigger|STATUS=Dead has stalled|",
            {hung, dead, slow});
        row("only a stall ends the feeding", "WATCHDOG=1|",
            {{"Slow", 7, State::OnTime, 600ms, {}}});
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
        told.replace("WATCHDOG=1|", "").replace("READY=1|", feeds > 0 ? "WATCHDOG=1|" : "");
        QTEST(told, "told");
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
        QCOMPARE(m_recorder.takeMessages().filter("is not fed: Grinder has stalled").size(), 1);
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc == 2 && QByteArray(argv[1]).startsWith("--stall"))
        return stall(qstrcmp(argv[1], "--stall-in-log") == 0);
    TestWatchdog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_watchdog.moc"
