#include "fakeclock.h"
#include "support.h"
#include "support/machines.h"
#include "system/ntp.h"
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

using namespace std::chrono_literals;
using fakeclock::advance;
using namespace zeltools::system;
using zeltools::system::service::Ntp;

using Client = support::Opened<Ntp>;

/// The files of the machine are in a folder of each test's own.
class TestTimeServices : public QObject
{
    Q_OBJECT

    const QHostAddress m_unreachable{"192.0.2.1"};
    support::LineRecorder m_recorder;
    bool m_hasNetwork = false;
    std::unique_ptr<QTemporaryDir> m_folder;
    zeltools::Machine m_machine;
    std::list<support::Opened<PackagesManager>> m_packages; // the last is that of the test
    QStringList m_commands;

    static void write(const QString& file, const QByteArray& content = {})
    {
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        support::writeFile(file, content);
    }
    void writeTimedatectl(const QByteArray& script) const
    {
        write(m_folder->filePath("timedatectl"), "#!/bin/sh\n" + script);
        QFile::setPermissions(m_folder->filePath("timedatectl"), QFile::ReadUser | QFile::ExeUser);
    }
    /// Keeps the command and, except for the exit code, does to the files what the machine would
    /// do.
    bool run(const QString& command)
    {
        m_commands += QString(command).remove(m_folder->path());
        if (command.endsWith("defaults"))
            write(m_machine.ntpStartLink);
        else if (command.endsWith("remove"))
            QFile::remove(m_machine.ntpStartLink);
        else if (command.contains("set-ntp"))
            writeTimedatectl(command.endsWith("true") ? "echo NTP service: active; exit 3" : "");
        if (!command.startsWith("ln "))
            return false;
        const bool isDone = QProcess::execute("/bin/sh", {"-c", command}) == 0;
        qputenv("TZ", QFile::symLinkTarget(m_machine.localTimeFile).toUtf8().right(12));
        return isDone;
    }
    Client* client(const QHostAddress& server)
    {
        return new Client(server, m_packages.back(), m_machine);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_hasNetwork = ::unshare(CLONE_NEWNET) == 0 &&
                       QProcess::execute("ip", {"link", "set", "lo", "up"}) == 0;
    }
    void init()
    {
        if (!m_hasNetwork && qstrncmp(QTest::currentTestFunction(), "client", 6) == 0)
            QSKIP("needs a network of its own");
        m_folder = std::make_unique<QTemporaryDir>();
        m_machine = support::machine(true);
        for (QString* file :
             {&m_machine.zoneInfoDir, &m_machine.localTimeFile, &m_machine.timeZoneFile,
              &m_machine.ntpConfigurationFile, &m_machine.ntpInitScript, &m_machine.ntpStartLink,
              &m_machine.timeSyncConfigurationFile, &m_machine.ntpStateFile})
            file->prepend(m_folder->path());
        m_packages.emplace_back(m_machine);
        writeTimedatectl("");
        write(m_machine.ntpStateFile);
        qputenv("PATH", m_folder->path().toUtf8() + ":/usr/sbin:/usr/bin:/sbin:/bin");
        m_commands.clear();
        WindowsTools::setCommandRunner([this](const QString& command, const QString&, int* code) {
            *code = 3;
            return run(command);
        });
        m_recorder.take();
    }
    void cleanup() { WindowsTools::setCommandRunner({}); }

    void switchesThePackage_data()
    {
        QTest::addColumn<QByteArray>("configuration"); // of the package ntp
        QTest::addColumn<QString>("commands");         // off as it is, on and off
        const QString bySync = "timedatectl set-ntp false|timedatectl set-ntp true|"
                               "timedatectl set-ntp false";
        QTest::newRow("ntp") << QByteArray("x\n server 0.pool.ntp.org iburst")
                             << "update-rc.d -f ntpd remove|/etc/init.d/ntpd stop|"
                                "update-rc.d -f ntpd defaults|/etc/init.d/ntpd start|"
                                "update-rc.d -f ntpd remove|/etc/init.d/ntpd stop";
        QTest::newRow("ntp with another server") << QByteArray("server pool.ntp.org\n") << bySync;
        QTest::newRow("no ntp") << QByteArray() << bySync;
    }
    void switchesThePackage()
    {
        QFETCH(QByteArray, configuration);
        write(m_machine.timeSyncConfigurationFile);
        if (!configuration.isEmpty()) {
            write(m_machine.ntpInitScript);
            write(m_machine.ntpConfigurationFile, configuration);
        }
        Client ntp(m_unreachable, m_packages.back(), m_machine);
        const QSignalSpy changes(&ntp, &Service::enableChanged);
        for (const bool isOn : {true, false}) {
            ntp.enable(isOn);
            QCOMPARE(ntp.enabled(), isOn);
        }
        QCOMPARE(changes.size(), 2);
        QTEST(m_commands.join('|'), "commands");
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
        writeTimedatectl("echo NTP service: active; exec sleep 300");
        QVERIFY(!timeSyncState(500ms));
        writeTimedatectl("exec yes NTP service: active");
        QVERIFY(!timeSyncState(10min));
        const support::EnvironmentGuard path("PATH", ""); // now there is none
        QVERIFY(!timeSyncState(10min));
        const QRegularExpression line("Failed to run timedatectl: \"(?!Unknown error)");
        QCOMPARE(m_recorder.takeMessages().filter(line).size(), 3);
    }

    void clientRemembersWhetherItIsOn()
    {
        const auto isOn = [this] { return std::unique_ptr<Ntp>(client(m_unreachable))->enabled(); };
        const auto enable = [this](bool on) {
            std::unique_ptr<Ntp>(client(m_unreachable))->enable(on);
        };
        for (const bool on : {true, false}) {
            enable(on);
            QCOMPARE(isOn(), on);
        }
        write(m_machine.ntpStateFile, "1\n"); // not from this client
        QVERIFY(!isOn());

        write(m_machine.ntpStateFile, "1");
        const std::filesystem::path file(m_machine.ntpStateFile.toStdString());
        std::filesystem::create_hard_link(file, file.string() + ".kept");
        QVERIFY(isOn());
        QCOMPARE(std::filesystem::hard_link_count(file), 2U); // was not written
        const rlimit none{0, RLIM_INFINITY}, unlimited{RLIM_INFINITY, RLIM_INFINITY};
        ::signal(SIGXFSZ, SIG_IGN); // so that a write fails as on a full disk
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &none) == 0);
        enable(false);
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &unlimited) == 0);
        QCOMPARE(m_recorder.takeMessages().filter("File too large").size(), 1);
        QVERIFY(isOn());
    }

    void clientAsksEveryHour()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        Client ntp(QHostAddress::LocalHost, m_packages.back(), m_machine);
        QStringList times;
        connect(&ntp, &Ntp::currentTime, [&](auto time) { times += time.toString(Qt::ISODate); });
        ntp.refresh(); // not yet
        ntp.enable(true);
        ntp.enable(true);
        QNetworkDatagram request;
        for (int hour = 0; hour < 4; ++hour) { // never an answer
            advance(1min);
            request = peer.receiveDatagram();
            QCOMPARE(request.data(), QByteArray(48, '\0').replace(0, 1, "\xE3"));
            advance(58min);
            QVERIFY(!peer.hasPendingDatagrams());
            advance(hour < 3 ? 1min : 0s);
        }
        const auto answer = QByteArray(9000, 1).replace(40, 4, QByteArray::fromHex("e93c7f00"));
        for (const int size : {0, 47, 49, 9000, 48, 48})
            peer.writeDatagram(request.makeReply(answer.left(size)));
        peer.writeDatagram(request.makeReply(QByteArray(48, '\0'))); // it does not know the time
        QUdpSocket stranger;
        QVERIFY(stranger.bind(QHostAddress("127.0.0.2"), 123));
        stranger.writeDatagram(answer.left(48), request.senderAddress(), request.senderPort());
        advance(0s);
        ntp.enable(false);
        peer.writeDatagram(request.makeReply(answer.left(48))); // too late
        advance(2h);
        QCOMPARE(times.join(' '), "2024-01-01T00:00:00Z 2024-01-01T00:00:00Z");
        QVERIFY(!peer.hasPendingDatagrams());
    }

    void clientIsManagedAndRetriesFourTimes()
    {
        ServiceManager& services = ServiceManager::instance();
        QVERIFY(support::throws<std::out_of_range>([&] { services.refresh(Service::Ntp); }));
        services.add(std::unique_ptr<Service>(client(m_unreachable)));
        const QPointer<Ntp> second = client(m_unreachable);
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
        for (const bool on : {false, true, false}) // it does not retry then
            services.enable(Service::Ntp, on);
        QCOMPARE(failures(5min), 1);
    }

    void clientMayBeDeletedByItsListener()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        QPointer<Ntp> ntp = client(QHostAddress::LocalHost);
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
            QSKIP("needs chrony, which ./dev test fetches", SkipAll);
        const QString configuration = m_folder->filePath("chrony.conf");
        write(configuration,
              "local stratum 1\nallow\ncmdport 0\npidfile " + m_folder->filePath("pid").toUtf8());
        QProcess server;
        // -x: it must not touch the clock of the machine
        server.start(CHRONYD, {"-d", "-x", "-u", "root", "-f", configuration});
        Client ntp(QHostAddress::LocalHost, m_packages.back(), m_machine);
        const QSignalSpy times(&ntp, &Ntp::currentTime);
        ntp.enable(true);
        QTRY_VERIFY_WITH_TIMEOUT((ntp.refresh(), !times.isEmpty()), 30000);
        QVERIFY(qAbs(times[0][0].toDateTime().secsTo(QDateTime::currentDateTime())) < 10);
        server.close();
    }

    void listsTimeZones()
    {
        QVERIFY(TimeZoneHelper::timeZones().size() > 300);
        const QDir zones(m_machine.zoneInfoDir);
        for (const char* file : {"UTC", "Europe/Rome", "Europe/Athens", "Asia/Tokyo",
                                 "America/Argentina/Salta", "Mars/Olympus"})
            write(zones.filePath(file));
        QVERIFY(zones.mkpath("Europe/London") &&
                QFile::link("Rome", zones.filePath("Europe/Paris")));
        QVERIFY(QFile::link("nowhere", zones.filePath("Europe/Berlin")));
        const support::EnvironmentGuard guard("TZ", "<-0330>3:30");
        const support::Opened<TimeZoneHelper> helper(m_machine, m_packages.back());
        const QStringList found =
            ZoneDatabase(m_machine).timeZones() + helper.areas() + helper.locations("Europe") +
            helper.locations("europe") +
            QStringList{QString::number(helper.timeZoneOffset().count()),
                        helper.area("America/Argentina/Salta"), helper.location("UTC")};
        QCOMPARE(found.join(' '), "Asia/Tokyo Europe/Athens Europe/Paris Europe/Rome Asia Europe "
                                  "Athens Paris Rome -3  ");
    }

    void switchesTheTimeZone_data()
    {
        QTest::addColumn<QString>("zone");
        QTest::addColumn<QString>("outcome"); // commands, the last line and how many signals
        const QString to = R"(Changed Timezone from "Africa/Tunis" offset: 1 into "Asia/Kolkata" )";
        QTest::newRow("links") << "Asia/Kolkata"
                               << "ln -fs /usr/share/zoneinfo/Asia/Kolkata /etc/localtime|echo "
                                  "\"Asia/Kolkata\" > /etc/timezone|" +
                                      to + "offset: 5|1";
        QTest::newRow("timesyncd, fails")
            << "Asia/Kolkata"
            << "timedatectl set-timezone Asia/Kolkata|" + to + "offset: 1|1";
        QTest::newRow("current") << "Africa/Tunis"
                                 << "|0";
        for (const char* zone :
             {"Mars/Olympus", "Europe", "../zoneinfo/Asia/Kolkata", "$(reboot)", "localtime"})
            QTest::newRow(zone)
                << zone
                << QString("Not existing zone info file: /usr/share/zoneinfo/%1|0").arg(zone);
        QTest::newRow("no tzdata")
            << "Asia/Kolkata"
            << "Missing tzdata package! Basalt does not support timezones!|0";
    }
    void switchesTheTimeZone()
    {
        QFETCH(QString, zone);
        const QByteArray row = QTest::currentDataTag();
        const QDir zones(m_machine.zoneInfoDir);
        write(m_machine.localTimeFile); // and its folder
        QVERIFY(QFile::remove(m_machine.localTimeFile));
        for (const char* file : {"Africa/Tunis", "Asia/Kolkata", "Europe/Rome", "$(reboot)"})
            write(zones.filePath(file));
        QVERIFY(QFile::link(m_machine.localTimeFile, zones.filePath("localtime")));
        if (row != "no tzdata")
            QVERIFY(QFile::link(zones.filePath("Africa/Tunis"), m_machine.localTimeFile));
        if (row.startsWith("timesyncd"))
            write(m_machine.timeSyncConfigurationFile);
        const support::EnvironmentGuard guard("TZ", "Africa/Tunis");
        support::Opened<TimeZoneHelper> helper(m_machine, m_packages.back());
        const QSignalSpy changes(&helper, &TimeZoneHelper::currentTimeZoneChanged);
        helper.setCurrentTimeZone(zone);
        m_commands += m_recorder.takeMessages().join("").section("const QString&) ", 1);
        const QString outcome = m_commands.join('|').remove(m_folder->path());
        QTEST(outcome + QString("|%1").arg(changes.size()), "outcome");
    }
};

QTEST_GUILESS_MAIN(TestTimeServices)
#include "tst_timeservices.moc"
