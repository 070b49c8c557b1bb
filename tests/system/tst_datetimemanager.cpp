#include "fakeclock.h"
#include "platform.h"
#include "support.h"
#include "system/simulateddatetimemanager.h"

#include <QtTest>

#include <dlfcn.h>

using namespace std::chrono_literals;
using namespace zeltools::system;

class TestDateTimeManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Or else the board's build would set the clock of this machine.
        QCOMPARE(::dlsym(RTLD_DEFAULT, "clock_settime"), reinterpret_cast<void*>(&::clock_settime));
        qputenv("TZ", "Asia/Kolkata");
    }

    void followsTheSimulator()
    {
        SimulatedDateTimeManager manager("tcpserver/127.0.0.1/0");
        const QVector<QPair<QByteArray, QString>> rows{
            {"2030/07/01 00:00:00", "2030/07/01 00:00"},
            {{"2029/12/31 23:59:59\0x", 21}, "2030/01/01 00:00"},
            {"\xff garbage\n", ""},
            {"2030/01/02 10:15:40", "2030/01/02 10:15"}};
        for (const auto& [text, expected] : rows) {
            manager.processIncomingData(text);
            fakeclock::advance(2s);
            QCOMPARE(manager.currentDateTime().toString("yyyy/MM/dd hh:mm"), expected);
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

    void setsTheClock()
    {
        DateTimeManager manager;
        QSignalSpy set(&manager, &DateTimeManager::dateTimeSet);
        QSignalSpy changed(&manager, &DateTimeManager::dateTimeChanged);
        QSignalSpy rtc(&manager, &DateTimeManager::writeDateTimeToRtc);
        support::LineRecorder recorder;
        const QDateTime dateTime({2040, 3, 1}, {8, 33, 1});
        const qint64 ahead_ms = QDateTime::currentDateTime().msecsTo(dateTime);
        manager.setLocalDateTime(2040, 3, 1, 8, 33, 1);
        manager.setDateTime(QDateTime(), false); // sets no clock
        Q_EMIT manager.timeZoneHelper()->currentTimeZoneChanged();
        QVERIFY(set.size() == 2 && changed.size() == 3 && rtc.size() == 1);
        QVERIFY(qAbs(set[0][0].value<std::chrono::milliseconds>().count() - ahead_ms) < 5000);
        QCOMPARE(rtc[0][0].toDateTime().toString(Qt::ISODate), "2040-03-01T03:03:01Z");
        QCOMPARE(fakeclock::s_set_ms, platform::isBoard ? dateTime.toMSecsSinceEpoch() : 0);
        const QStringList lines = recorder.takeMessages();
        QCOMPARE(lines.first(), "setDateTime, dateTime: Thu Mar 1 08:33:01 2040 , syncRtc: true");
        QCOMPARE(lines.last(), platform::isBoard
                                   ? "void zeltools::system::DateTimeManager::setDateTime(const "
                                     "QDateTime&, bool) Failed to set the clock: no valid date and "
                                     "time"
                                   : "(doing nothing on desktop)");
    }
};

QTEST_GUILESS_MAIN(TestDateTimeManager)
#include "tst_datetimemanager.moc"
