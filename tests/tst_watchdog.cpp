#include "boardwatchdog_p.h"
#include "filedescriptor.h"
#include "hardwarewatchdog.h"
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
using support::EnvironmentGuard;
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
        QTRY_COMPARE(manager.take(), QByteArray("READY=1"));
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
};

QTEST_GUILESS_MAIN(TestWatchdog)
#include "tst_watchdog.moc"
