#include "fakeclock.h"
#include "support.h"
#include "support/machines.h"
#include "system/simulateddatetimemanager.h"
#include "windowstools.h"

#include <QtTest>

#include <dlfcn.h>
#include <sched.h>
#include <sys/mount.h>

using namespace std::chrono_literals;
using namespace zeltools::system;

// A locale with other digits and names. Qt reads it before the first test runs.
const bool s_isEgyptian = qputenv("LC_ALL", "ar_EG");

/// A board whose minute is always equally old.
struct BoardManager : DateTimeManager
{
    BoardManager()
        : DateTimeManager(support::machine(true), nullptr)
    {
        fakeclock::advance(0s); // starts it
    }
    QDateTime currentDateTime() const override { return {{2040, 1, 1}, {0, 0, 50}}; }
};

class TestDateTimeManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Without the replacement, the board's tests would set the clock of this machine.
        QCOMPARE(::dlsym(RTLD_DEFAULT, "clock_settime"), reinterpret_cast<void*>(&::clock_settime));
        qputenv("TZ", "Asia/Kolkata");
    }

    void followsTheSimulator()
    {
        SimulatedDateTimeManager manager("tcpserver/127.0.0.1/0");
        const QVector<QPair<QByteArray, QString>> rows{
            {"2030/07/01 00:00:00", "2030-07-01T00:00"},
            {{"2029/12/31 23:59:59\0x", 21}, "2030-01-01T00:00"},
            {"\xff garbage\n", ""},
            {"2030/01/02 10:15:40", "2030-01-02T10:15"}};
        for (const auto& [text, expected] : rows) {
            manager.processIncomingData(text);
            fakeclock::advance(2s);
            QCOMPARE(manager.currentDateTime().toString(Qt::ISODate).left(16), expected);
        }
        manager.setLocalDateTime(2031, 1, 1, 8, 30, 0); // moves no clock
        const QSignalSpy ticks(&manager, &DateTimeManager::dateTimeChanged);
        for (int minute = 0; minute < 3; ++minute) {
            fakeclock::advance(minute == 0 ? 8s : 50s);
            QCOMPARE(ticks.size(), minute);
            fakeclock::advance(10s);
            QCOMPARE(ticks.size(), minute + 1);
        }
        QCOMPARE(manager.currentDateTime().time().minute(), 18);
        QCOMPARE(fakeclock::s_set_ms, 0);
    }

    void setsTheClock_data() { support::addMachineRows(); }
    void setsTheClock()
    {
        QFETCH(bool, isBoard);
        fakeclock::s_set_ms = 0;
        fakeclock::s_isRefusing = false;
        support::Opened<DateTimeManager> manager(support::machine(isBoard), nullptr);
        const QDateTime dateTime({2040, 3, 1}, {8, 33, 1});
        const qint64 ahead_ms = QDateTime::currentDateTime().msecsTo(dateTime);
        QStringList events;
        support::LineRecorder recorder;
        connect(&manager, &DateTimeManager::dateTimeSet, [&](auto newMinusOld) {
            events += qAbs(newMinusOld.count() - ahead_ms) < 5000 ? "set" : "set otherwise";
        });
        connect(&manager, &DateTimeManager::dateTimeChanged, [&] { events += "changed"; });
        connect(&manager, &DateTimeManager::writeDateTimeToRtc,
                [&](const QDateTime& utc) { events += utc.toString(Qt::ISODate); });
        manager.setLocalDateTime(2040, 3, 1, 8, 33, 1);
        QCOMPARE(fakeclock::s_set_ms, isBoard ? dateTime.toMSecsSinceEpoch() : 0);
        QCOMPARE(recorder.takeMessages().join('|'),
                 QString("setDateTime, dateTime: Thu Mar 1 08:33:01 2040 , syncRtc: true") +
                     (isBoard ? "" : "|(doing nothing on desktop)"));
        fakeclock::s_isRefusing = true;
        manager.setDateTime(dateTime, false);
        manager.setDateTime(QDateTime(), false);
        Q_EMIT manager.timeZoneHelper()->currentTimeZoneChanged();
        QCOMPARE(events.join(' '), "set changed 2040-03-01T03:03:01Z set changed set otherwise "
                                   "changed changed");
        const QString failures = recorder.takeMessages().join('|');
        QCOMPARE(failures.contains("set the clock: Operation not permitted|"), isBoard);
        QCOMPARE(failures.endsWith("set the clock: no valid date and time"), isBoard);
    }

    void noticesThatTheClockWasSet()
    {
        if (!fakeclock::touchSystemClock())
            QSKIP("may not set the clock", SkipSingle);
        fakeclock::s_isRefusing = false;
        BoardManager manager;
        SimulatedDateTimeManager simulated("tcpserver/127.0.0.1/0");
        simulated.processIncomingData("2030/01/02 10:15:10");
        const QSignalSpy changes(&manager, &DateTimeManager::dateTimeChanged);
        const QSignalSpy simulatedChanges(&simulated, &DateTimeManager::dateTimeChanged);
        for (const int expected : {1, 2}) {
            fakeclock::advance(6s); // The minute would end after 10 s without a change.
            fakeclock::touchSystemClock();
            fakeclock::advance(0s);
            QCOMPARE(changes.size(), expected);
        }
        fakeclock::advance(10s);
        QCOMPARE(changes.size(), 3);
        QVERIFY(manager.trySetDateTime(QDateTime::currentDateTime(), false));
        fakeclock::advance(0s);
        QCOMPARE(changes.size(), 4);
        QVERIFY(!simulated.trySetDateTime(QDateTime::currentDateTime(), false));
        QCOMPARE(simulatedChanges.size(), 1);
        fakeclock::s_isRefusing = true;
        QVERIFY(!manager.trySetDateTime(QDateTime::currentDateTime(), false));
    }

    // Comes last, because /etc stays hidden.
    void noticesThatTheZoneWasSwitched()
    {
        const QTemporaryDir etc;
        const QByteArray folder = QFile::encodeName(etc.path());
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount(folder.constData(), "/etc", nullptr, MS_BIND, nullptr) != 0)
            QSKIP("needs a mount namespace of its own", SkipSingle);
        qunsetenv("TZ");
        QVERIFY(QFile::link("/usr/share/zoneinfo/Europe/Rome", "/etc/localtime"));
        BoardManager manager;
        TimeZoneHelper& zones = *manager.timeZoneHelper();
        const QSignalSpy changes(&manager, &DateTimeManager::dateTimeChanged);
        const auto changesAfter = [&](bool isDone) {
            fakeclock::advance(0s);
            fakeclock::advance(1s);
            return isDone ? changes.size() : -1;
        };
        QCOMPARE(changesAfter(QFile::link("/usr/share/zoneinfo/Asia/Tokyo", "/etc/new") &&
                              ::rename("/etc/new", "/etc/localtime") == 0),
                 1);
        QCOMPARE(zones.currentTimeZone(), "Asia/Tokyo");
        QCOMPARE(changesAfter(QFile::link("any", "/etc/other")), 1);
        QCOMPARE(changesAfter(zones.trySetCurrentTimeZone("Asia/Kolkata")), 2);
        QCOMPARE(changesAfter(!zones.trySetCurrentTimeZone("Mars/Olympus")), 2);
        WindowsTools::setCommandRunner([](const QString&, const QString&, int*) { return false; });
        QCOMPARE(changesAfter(!zones.trySetCurrentTimeZone("Asia/Tokyo")), 3);
    }
};

QTEST_GUILESS_MAIN(TestDateTimeManager)
#include "tst_datetimemanager.moc"
