#include "fakeclock.h"
#include "support.h"
#include "support/machines.h"
#include "system/ntp.h"
#include "system/ntpstate_p.h"
#include "system/packagesmanager.h"
#include "system/servicemanager.h"
#include "system/timedatectl_p.h"
#include "system/timezonehelper.h"
#include "system/zonedatabase_p.h"
#include "windowstools.h"

#include <QNetworkDatagram>
#include <QtTest>

#include <filesystem>
#include <list>

#include <sched.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/timex.h>

using namespace std::chrono_literals;
using fakeclock::advance;
using namespace zeltools::system;
using zeltools::system::service::Ntp;

/// Each test has its own folder for the files of the machine.
class TestTimeServices : public QObject
{
    Q_OBJECT

    const QHostAddress m_unreachable{"192.0.2.1"};
    support::LineRecorder m_recorder;
    bool m_hasNetwork = false;
    std::unique_ptr<QTemporaryDir> m_folder;
    zeltools::Machine m_machine;
    std::list<support::Opened<PackagesManager>> m_packages; // the last one belongs to the test
    QStringList m_commands;

    static void write(const QString& file, const QByteArray& content = {})
    {
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        support::writeFile(file, content);
    }
    auto client(const QHostAddress& server)
    {
        return std::make_unique<support::Opened<Ntp>>(server, m_packages.back(), m_machine);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_hasNetwork = ::unshare(CLONE_NEWNET) == 0 &&
                       QProcess::execute("ip", {"link", "set", "lo", "up"}) == 0;
        const QFileInfo timedatectl(QFINDTESTDATA("timedatectl"));
        qputenv("PATH", timedatectl.path().toUtf8() + ':' + qgetenv("PATH"));
    }
    void init()
    {
        if (!m_hasNetwork && qstrncmp(QTest::currentTestFunction(), "client", 6) == 0)
            QSKIP("needs a network of its own", SkipSingle);
        m_folder = std::make_unique<QTemporaryDir>();
        m_machine = support::machine(true);
        for (QString* file :
             {&m_machine.zoneInfoDir, &m_machine.localTimeFile, &m_machine.timeZoneFile,
              &m_machine.ntpConfigurationFile, &m_machine.ntpInitScript, &m_machine.ntpStartLink,
              &m_machine.timeSyncConfigurationFile, &m_machine.ntpStateFile})
            file->prepend(m_folder->path());
        m_packages.emplace_back(m_machine);
        WindowsTools::setCommandRunner([this](QString command, const QString&, int* exitCode) {
            m_commands += command.remove(m_folder->path());
            if (command.startsWith("ln "))
                qputenv("TZ", "Asia/Kolkata");
            *exitCode = 3;
            return false;
        });
        m_commands.clear();
        m_recorder.take();
    }

    void switchesThePackage_data()
    {
        QTest::addColumn<QByteArray>("configuration"); // of the package ntp
        QTest::addColumn<QString>("commands");         // on as it is, then off
        const QString bySync = "timedatectl set-ntp true|timedatectl set-ntp false";
        QTest::newRow("ntp") << QByteArray("x\n server 0.pool.ntp.org iburst")
                             << "update-rc.d -f ntpd defaults|/etc/init.d/ntpd start|"
                                "update-rc.d -f ntpd remove|/etc/init.d/ntpd stop";
        QTest::newRow("ntp with another server") << QByteArray("server pool.ntp.org\n") << bySync;
    }
    void switchesThePackage()
    {
        QFETCH(QByteArray, configuration);
        qputenv("TIMEDATECTL", "echo NTP service: active; exit 3");
        for (const QString& file :
             {m_machine.ntpInitScript, m_machine.ntpStartLink, m_machine.timeSyncConfigurationFile})
            write(file);
        write(m_machine.ntpConfigurationFile, configuration);
        const auto ntp = client(m_unreachable);
        const QSignalSpy changes(ntp.get(), &Service::enableChanged);
        QVERIFY(ntp->enabled());
        ntp->enable(false);
        qputenv("TIMEDATECTL", "");
        QVERIFY(QFile::remove(m_machine.ntpStartLink) && !ntp->enabled());
        QCOMPARE(changes.size(), 1);
        QCOMPARE(m_recorder.takeMessages().filter("with exit code 3").size(), m_commands.size());

        m_machine.isBoard = false;
        support::Opened<PackagesManager> desktop(m_machine);
        desktop.setNtpEnabled(true);
        QVERIFY(!desktop.ntpEnabled());
        QCOMPARE(m_recorder.takeMessages().filter("Would run").size(), 2);
        QTEST(m_commands.join('|'), "commands");
    }

    void doesNotWaitForeverForTimedatectl()
    {
        qputenv("TIMEDATECTL", "echo NTP service: active; exec sleep 300");
        QVERIFY(!timeSyncState(500ms));
        qputenv("TIMEDATECTL", "exec yes NTP service: active");
        QVERIFY(!timeSyncState(10min));
        const support::EnvironmentGuard path("PATH", ""); // now there is no program
        QVERIFY(!timeSyncState(10min));
        const QRegularExpression line("Failed to run timedatectl: \"(?!Unknown error)");
        QCOMPARE(m_recorder.takeMessages().filter(line).size(), 3);
    }

    void keepsTheState()
    {
        const service::NtpState state(m_machine.ntpStateFile);
        state.save(true);
        QVERIFY(!QFile::exists(m_machine.ntpStateFile)); // without its folder
        write(m_machine.ntpStateFile, "1\n");            // from elsewhere
        QVERIFY(!state.isOn());
        state.save(true);
        const std::filesystem::path file(m_machine.ntpStateFile.toStdString());
        std::filesystem::create_hard_link(file, file.string() + ".kept");
        state.save(true);
        QCOMPARE(std::filesystem::hard_link_count(file), 2U); // was not written
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{0, RLIM_INFINITY}, unlimited{RLIM_INFINITY, RLIM_INFINITY};
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &none) == 0); // writing fails as on a full disk
        state.save(false);
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &unlimited) == 0 && state.isOn());
        QCOMPARE(m_recorder.takeMessages().filter("File too large").size(), 1);
        state.save(false);
        QCOMPARE(support::readFile(m_machine.ntpStateFile), QByteArray("0"));
    }

    void clientAsksEveryHourAndAgainWithoutAnAnswer()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        const auto ntp = client(QHostAddress::LocalHost);
        QStringList times;
        connect(ntp.get(), &Ntp::currentTime,
                [&](auto time) { times += time.toString(Qt::ISODate); });
        ntp->refresh(); // is not enabled yet
        ntp->enable(true);
        ntp->enable(true);
        const auto start = fakeclock::s_ahead;
        advance(0s);
        const QNetworkDatagram request = peer.receiveDatagram();
        QCOMPARE(request.data(), QByteArray(48, '\0').replace(0, 1, "\xE3"));
        const auto answer = [&](const char* seconds) {
            return request.makeReply(
                QByteArray(48, 1).replace(40, 4, QByteArray::fromHex(seconds)));
        };
        const QByteArray long_ = answer("e93c7f00").data().repeated(200);
        for (const int size : {0, 47, 49, 9000})
            peer.writeDatagram(request.makeReply(long_.left(size)));
        peer.writeDatagram(answer("00000000")); // without a time
        QUdpSocket stranger;
        QVERIFY(stranger.bind(QHostAddress("127.0.0.2"), 123));
        stranger.writeDatagram(long_.left(48), request.senderAddress(), request.senderPort());

        // The pauses are 30 s, 60 s and 120 s; each request is noticed 4 s after it is due.
        for (const auto time : {30s, 94s, 218s, 3600s, 3634s, 3698s, 3822s, 7200s}) {
            advance(start + time - 4s - fakeclock::s_ahead);
            QVERIFY(!peer.hasPendingDatagrams());
            advance(8s);
            QCOMPARE(peer.receiveDatagram().data().size(), 48);
            QVERIFY(!peer.hasPendingDatagrams());
        }
        for (const char* seconds : {"80000000", "e93c7f00", "00000001", "7fffffff"})
            peer.writeDatagram(answer(seconds));
        advance(0s);
        const QString lastAnswer = ntp->property("lastAnswer").toDateTime().toString(Qt::ISODate);
        advance(58min);
        QVERIFY(!peer.hasPendingDatagrams());
        ntp->enable(false);
        peer.writeDatagram(answer("e93c7f00")); // too late
        advance(2h);
        QCOMPARE(times.join(' '), "1968-01-20T03:14:08Z 2024-01-01T00:00:00Z "
                                  "2036-02-07T06:28:17Z 2104-02-26T09:42:23Z");
        QCOMPARE(lastAnswer, times.last());
        QVERIFY(!peer.hasPendingDatagrams());
    }

    void clientIsManagedAndRetriesFourTimes()
    {
        ServiceManager& services = ServiceManager::instance();
        QVERIFY(support::throws<std::out_of_range>([&] { services.refresh(Service::Ntp); }));
        services.add(client(m_unreachable));
        const QPointer<Ntp> second = client(m_unreachable).release();
        services.add(std::unique_ptr<Service>(second));
        QVERIFY(!second);

        const auto failures = [&](std::chrono::seconds time) {
            advance(time);
            return m_recorder.takeMessages().filter("NTP request transmission failed").size();
        };
        const QSignalSpy changes(&services, &ServiceManager::serviceStatusChanged);
        services.enable(Service::Ntp, true);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(failures(27s), 1);
        for (const int expected : {1, 1, 1, 1, 0, 0}) {
            QCOMPARE(failures(4s), expected);
            QCOMPARE(failures(27s), 0);
        }
        QCOMPARE(failures(1h), 1);
        for (const bool on : {false, true, false}) // a disabled client does not retry
            services.enable(Service::Ntp, on);
        QCOMPARE(failures(5min), 1);
        write(m_machine.ntpStateFile);
        client(m_unreachable)->enable(true);
        QVERIFY(client(m_unreachable)->enabled()); // restores the state of the last run
    }

    void clientMayBeDeletedByItsListener()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        QPointer<Ntp> ntp = client(QHostAddress::LocalHost).release();
        connect(ntp, &Ntp::currentTime, [&] { delete ntp; });
        ntp->enable(true);
        QTRY_VERIFY(peer.hasPendingDatagrams());
        peer.writeDatagram(peer.receiveDatagram().makeReply(QByteArray(48, 1)));
        QTRY_VERIFY(!ntp);
        advance(0s);
    }

    void clientHearsARealServer()
    {
        if (!QFile::exists(CHRONYD))
            QSKIP("needs chrony, which ./dev test fetches", SkipSingle);
        const QString configuration = m_folder->filePath("chrony.conf");
        write(configuration,
              "local stratum 1\nallow\ncmdport 0\npidfile " + m_folder->filePath("pid").toUtf8());
        QProcess server; // -x keeps it from the clock of the machine.
        server.start(CHRONYD, {"-d", "-x", "-u", "root", "-f", configuration});
        const auto ntp = client(QHostAddress::LocalHost);
        const QSignalSpy times(ntp.get(), &Ntp::currentTime);
        ntp->enable(true);
        QTRY_VERIFY_WITH_TIMEOUT((ntp->refresh(), !times.isEmpty()), 30000);
        QVERIFY(qAbs(times[0][0].toDateTime().secsTo(QDateTime::currentDateTime())) < 10);
        server.close();

        ntp->enable(false);
        timex before{};
        ::adjtimex(&before);
        const auto tellError = [](long error_us) { // as a time service does
            timex clock{};
            clock.modes = ADJ_MAXERROR;
            clock.maxerror = error_us;
            return ::adjtimex(&clock) >= 0;
        };
        if (!tellError(16000000))
            QSKIP("may not set the clock", SkipSingle);
        const auto atEnd = qScopeGuard([&] { tellError(before.maxerror); });
        QVERIFY(ntp->isClockSynchronized());
        advance(4s); // without the clock of the machine
        QVERIFY(!ntp->isClockSynchronized());
        QVERIFY(tellError(1000) && ntp->isClockSynchronized());
    }

    void findsZones()
    {
        const QDir zones(m_machine.zoneInfoDir);
        for (const char* file : {"UTC", "Europe/Rome", "Asia/Tokyo", "Mars/Olympus", "$(reboot)"})
            write(zones.filePath(file));
        write(m_machine.localTimeFile);
        QVERIFY(QFile::link("Rome", zones.filePath("Europe/Paris")));
        QVERIFY(QFile::link(m_machine.localTimeFile, zones.filePath("localtime")));
        const ZoneDatabase database(m_machine);
        for (const char* zone : {"Mars/Olympus", "UTC", "Europe/Paris"})
            QVERIFY2(database.contains(zone), zone);
        for (const char* zone : {"Mars/none", "Asia", "../zoneinfo/UTC", "$(reboot)", "localtime"})
            QVERIFY2(!database.contains(zone), zone);
        const support::EnvironmentGuard guard("TZ", "<-0330>3:30");
        const support::Opened<TimeZoneHelper> helper(m_machine, m_packages.back());
        const QStringList found =
            database.timeZones() + helper.areas() + helper.locations("Europe");
        QCOMPARE(found.join(' '), "Asia/Tokyo Europe/Paris Europe/Rome Asia Europe Paris Rome");
        QCOMPARE(helper.area("America/Argentina/Salta") + helper.location("UTC"), QString());
        QCOMPARE(helper.timeZoneOffset().count(), -3);
    }

    void switchesTheTimeZone()
    {
        const support::EnvironmentGuard guard("TZ", "Africa/Tunis");
        const auto outcome =
            [this](const QString& zone) { // commands, the last line and the signals
                m_commands.clear();
                m_packages.emplace_back(m_machine);
                support::Opened<TimeZoneHelper> helper(m_machine, m_packages.back());
                const QSignalSpy changes(&helper, &TimeZoneHelper::currentTimeZoneChanged);
                helper.setCurrentTimeZone(zone);
                m_commands += m_recorder.takeMessages().join("").section("const QString&) ", 1);
                return m_commands.join('|').remove(m_folder->path()) +
                       QString("|%1").arg(changes.size());
            };
        write(m_machine.zoneInfoDir + "/Asia/Kolkata");
        QCOMPARE(outcome("Asia/Kolkata"),
                 "Missing tzdata package! Basalt does not support timezones!|0");
        write(m_machine.localTimeFile);
        QCOMPARE(outcome("Mars/Olympus"),
                 "Not existing zone info file: /usr/share/zoneinfo/Mars/Olympus|0");
        const QString to = R"(Changed Timezone from "Africa/Tunis" offset: 1 into "Asia/Kolkata" )";
        write(m_machine.timeSyncConfigurationFile);
        QCOMPARE(outcome("Asia/Kolkata"),
                 "timedatectl set-timezone Asia/Kolkata|" + to + "offset: 1|1");
        QVERIFY(QFile::remove(m_machine.timeSyncConfigurationFile));
        QCOMPARE(outcome("Asia/Kolkata"), "ln -fs /usr/share/zoneinfo/Asia/Kolkata /etc/localtime|"
                                          "echo \"Asia/Kolkata\" > /etc/timezone|" +
                                              to + "offset: 5|1");
        QCOMPARE(outcome("Asia/Kolkata"), "|0"); // the current one
    }
};

QTEST_GUILESS_MAIN(TestTimeServices)
#include "tst_timeservices.moc"
