#include "fakeclock.h"
#include "support.h"
#include "system/ntp.h"
#include "system/packagesmanager.h"
#include "system/servicemanager.h"
#include "system/timedatectl_p.h"
#include "system/timezonehelper.h"
#include "windowstools.h"

#include <QNetworkDatagram>
#include <QtTest>

#include <sched.h>

using namespace std::chrono_literals;
using fakeclock::advance;
using zeltools::system::service::Ntp;

namespace zeltools::system
{

/// Has an /etc, a /usr/share/zel, a zone database and a network of its own, of which the rest of
/// the machine sees nothing. Commands are those in /etc/bin and the machine's.
class TestTimeServices : public QObject
{
    Q_OBJECT

    // In /etc. The packages are looked for anew after it.
    static void shell(const QString& commands)
    {
        const QString prologue = "cd /etc; script() { printf '#!/bin/sh\n[ $1 = status ] || echo "
                                 "${0##*/} $* >>/etc/ran\n%s' \"$2\" >$1; chmod +x $1; };";
        QCOMPARE(QProcess::execute("/bin/sh", {"-ec", prologue + commands}), 0);
        PackagesManager::s_availability = {};
    }

    const QHostAddress m_unreachable{"192.0.2.1"};
    support::LineRecorder m_recorder;

private Q_SLOTS:
    void initTestCase()
    {
        if (::unshare(CLONE_NEWNS | CLONE_NEWNET) != 0)
            QSKIP("needs namespaces of mounts and network", SkipAll);
        shell("mount --make-rprivate /; mount -t tmpfs none /etc; mkdir /etc/kept;"
              "mount --bind /usr/share/zoneinfo /etc/kept; mount -t tmpfs none /usr/share;"
              "mkdir /usr/share/zel /usr/share/zoneinfo; ip link set lo up;"
              "mount --move /etc/kept /usr/share/zoneinfo");
        qputenv("PATH", "/etc/bin:" + qgetenv("PATH"));
        qunsetenv("TZ");
    }
    void init()
    {
        shell("mount -t tmpfs none /etc; mount -t tmpfs none /usr/share/zel; cd /etc;"
              "mkdir bin init.d systemd rc2.d");
        PackagesManager::instance().m_isBoard = true;
        m_recorder.take();
    }

    void switchesThePackage()
    {
        const auto ran = [this](const QString& image) { // off, as it is, then on and off again
            init();
            shell(image);
            Ntp ntp(QHostAddress::LocalHost);
            const QSignalSpy changes(&ntp, &Service::enableChanged);
            for (const bool isOn : {true, false}) {
                ntp.enable(isOn);
                QTest::qCompare(ntp.enabled(), isOn, "enabled()", "isOn", __FILE__, __LINE__);
            }
            PackagesManager::instance().m_isBoard = false;
            ntp.enable(true); // runs nothing on the desktop
            ntp.enabled();
            const QString messages = m_recorder.takeMessages().join("");
            return support::readFile("/etc/ran") + char('0' + messages.count("with exit code 3")) +
                   char('0' + changes.size()) + char('0' + messages.count("Would run"));
        };
        const QString ntp =
            "script bin/update-rc.d '[ $3 = defaults ] && touch /etc/rc2.d/S20ntpd ||"
            "rm -f /etc/rc2.d/*'; script init.d/ntpd 'exit 3';"
            "printf 'x\n server 0.pool.ntp.org iburst' >ntp.conf;";
        const QString sync =
            ">systemd/timesyncd.conf; script bin/timedatectl '[ $1 = status ] || echo"
            " $2 >$0.on; ! grep -q true $0.on || echo NTP service: active; exit 3';";
        const QByteArray bySync = "timedatectl set-ntp false\ntimedatectl set-ntp true\n"
                                  "timedatectl set-ntp false\n332";
        QCOMPARE(ran(ntp + sync), "update-rc.d -f ntpd remove\nntpd stop\n"
                                  "update-rc.d -f ntpd defaults\nntpd start\n"
                                  "update-rc.d -f ntpd remove\nntpd stop\n332");
        QCOMPARE(ran(sync), bySync);
        QCOMPARE(ran(ntp + sync + "echo server pool.ntp.org >ntp.conf"), bySync);
    }

    void doesNotWaitForeverForTimedatectl()
    {
        shell("script bin/timedatectl 'echo NTP service: active; exec sleep 300'");
        QVERIFY(!timeSyncState(500ms));
        shell("script bin/timedatectl 'exec yes NTP service: active'");
        QVERIFY(!timeSyncState(10min));
        const support::EnvironmentGuard path("PATH", ""); // now there is none
        QVERIFY(!timeSyncState(10min));
        const QRegularExpression line("Failed to run timedatectl: \"(?!Unknown error)");
        QCOMPARE(m_recorder.takeMessages().filter(line).size(), 3);
    }

    void remembersWhetherTheClientIsOn()
    {
        for (const bool isOn : {true, false}) {
            Ntp(m_unreachable).enable(isOn);
            QCOMPARE(Ntp(m_unreachable).enabled(), isOn);
        }
        shell("echo 1 >/usr/share/zel/ntp"); // not by this client
        QVERIFY(!Ntp(m_unreachable).enabled());

        shell("cd /usr/share/zel; printf 1 >ntp; ln ntp kept");
        QVERIFY(Ntp(m_unreachable).enabled());
        shell("[ /usr/share/zel/ntp -ef /usr/share/zel/kept ];" // was not written
              "mount -t tmpfs -o nr_inodes=2 none /usr/share/zel; printf 1 >/usr/share/zel/ntp");
        m_recorder.take();
        Ntp(m_unreachable).enable(false);
        QCOMPARE(m_recorder.takeMessages().filter("No space left on device").size(), 1);
        QVERIFY(Ntp(m_unreachable).enabled());
    }

    void asksEveryHourAndHears()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        Ntp ntp(QHostAddress::LocalHost);
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

    void isManagedAndRetriesFourTimes()
    {
        ServiceManager& services = ServiceManager::instance();
        QVERIFY(support::throws<std::out_of_range>([&] { services.refresh(Service::Ntp); }));
        services.add(std::make_unique<Ntp>(m_unreachable));
        const QPointer<Ntp> second = new Ntp(m_unreachable);
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

    void mayBeDeletedByItsListener()
    {
        QUdpSocket peer;
        QVERIFY(peer.bind(QHostAddress::LocalHost, 123));
        QPointer<Ntp> ntp = new Ntp(QHostAddress::LocalHost);
        connect(ntp, &Ntp::currentTime, [&] { delete ntp; });
        ntp->enable(true);
        QTRY_VERIFY(peer.hasPendingDatagrams());
        peer.writeDatagram(peer.receiveDatagram().makeReply(QByteArray(48, 1)));
        QTRY_VERIFY(!ntp);
        advance(0s);
    }

    void hearsARealServer()
    {
        if (!QFile::exists(CHRONYD))
            QSKIP("needs chrony, which ./dev test fetches", SkipAll);
        shell("echo root:x:0:0::/: >passwd;"
              "printf 'local stratum 1\nallow\ncmdport 0\npidfile /etc/pid' >chrony.conf");
        QProcess server;
        // -x: it must not touch the clock of the machine
        server.start(CHRONYD, {"-d", "-x", "-u", "root", "-f", "/etc/chrony.conf"});
        Ntp ntp(QHostAddress::LocalHost);
        const QSignalSpy times(&ntp, &Ntp::currentTime);
        ntp.enable(true);
        QTRY_VERIFY_WITH_TIMEOUT((ntp.refresh(), !times.isEmpty()), 30000);
        QVERIFY(qAbs(times[0][0].toDateTime().secsTo(QDateTime::currentDateTime())) < 10);
        server.close();
    }

    void listsTimeZones()
    {
        QVERIFY(TimeZoneHelper::timeZones().size() > 300);
        shell("mount -t tmpfs none /usr/share/zoneinfo; cd /usr/share/zoneinfo; mkdir -p Asia Mars"
              " Europe/London America/Argentina; touch UTC Europe/Rome Europe/Athens Asia/Tokyo"
              " America/Argentina/Salta Mars/Olympus; cd Europe; ln -s Rome Paris; ln -s x Berlin");
        const TimeZoneHelper helper;
        QStringList found = TimeZoneHelper::timeZones() + helper.areas() +
                            helper.locations("Europe") + helper.locations("europe");
        shell("umount /usr/share/zoneinfo");
        const support::EnvironmentGuard guard("TZ", "<-0330>3:30");
        found += QString::number(helper.timeZoneOffset().count());
        found += helper.area("America/Argentina/Salta") + helper.location("UTC");
        QCOMPARE(found.join(' '), "Asia/Tokyo Europe/Athens Europe/Paris Europe/Rome Asia Europe "
                                  "Athens Paris Rome -3 ");
    }

    void switchesTheTimeZone()
    {
        QString done; // commands, the last line and how many signals
        const auto outcome = [&](const QString& zone, const QString& fault = ":") {
            init();
            shell("ln -s /usr/share/zoneinfo/Africa/Tunis localtime;" + fault);
            TimeZoneHelper helper;
            const QSignalSpy changes(&helper, &TimeZoneHelper::currentTimeZoneChanged);
            helper.setCurrentTimeZone(zone);
            done += m_recorder.takeMessages().join("").section("const QString&) ", 1);
            return std::exchange(done, {}) + QString("|%1").arg(changes.size());
        };
        WindowsTools::setCommandRunner([&](const QString& command, const QString&, int*) {
            done += command + '|';
            return QProcess::execute("/bin/sh", {"-c", command}) == 0;
        });
        const QString to = R"(Changed Timezone from "Africa/Tunis" offset: 1 into "Asia/Kolkata" )";
        const QString links = "ln -fs /usr/share/zoneinfo/Asia/Kolkata /etc/localtime|echo "
                              "\"Asia/Kolkata\" > /etc/timezone|" +
                              to;
        QCOMPARE(outcome("Asia/Kolkata"), links + "offset: 5|1");
        QCOMPARE(outcome("Asia/Kolkata", "mount -o remount,ro /etc"), links + "offset: 1|1");
        QCOMPARE(outcome("Asia/Kolkata", ">systemd/timesyncd.conf; script bin/timedatectl false"),
                 "timedatectl set-timezone Asia/Kolkata|" + to + "offset: 1|1");
        QCOMPARE(outcome("Africa/Tunis"), "|0");
        for (const char* zone :
             {"Mars/Olympus", "Europe", "../zoneinfo/Europe/Rome", "$(reboot)", "localtime"})
            QCOMPARE(outcome(zone),
                     QString("Not existing zone info file: /usr/share/zoneinfo/%1|0").arg(zone));
        QVERIFY(outcome("Europe/Rome", "rm localtime")
                    .endsWith("Missing tzdata package! Basalt does not support timezones!|0"));
        WindowsTools::setCommandRunner({});
    }
};

} // namespace zeltools::system

QTEST_GUILESS_MAIN(zeltools::system::TestTimeServices)
#include "tst_timeservices.moc"
