#pragma once

#include <zeltools/system/timezonehelper.h>

#include <QDateTime>
#include <QTimer>

#include <chrono>

namespace zeltools::system
{

/// The application's one source of "now": tells the date and time, ticks once at every full minute
/// so that clocks on screens can follow, and takes the requests to set the machine's clock.
///
/// Belongs to one thread with an event loop. Logs under Log::Machine.
class ZELTOOLS_EXPORT DateTimeManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(zeltools::system::TimeZoneHelper* timeZoneHelper READ timeZoneHelper CONSTANT)

public:
    explicit DateTimeManager(QObject* parent = nullptr);
    ~DateTimeManager() override;

    /// In local time.
    virtual QDateTime currentDateTime() const;
    /// Sets the clock of the system on the board, and none on the desktop, then emits the signals.
    /// They come also when the clock could not be set, which is an Error line, and for an invalid
    /// date and time, which no clock is set to. `syncRtc` asks for writeDateTimeToRtc().
    virtual void setDateTime(const QDateTime& dateTime, bool syncRtc);

    TimeZoneHelper* timeZoneHelper() { return &m_timeZoneHelper; }
    /// Makes the next tick come at the next full minute of currentDateTime(), or up to a second
    /// after it: milliseconds do not count.
    void restartMinuteTimer();

    Q_INVOKABLE void setLocalDateTime(int year, int month, int day, int hour, int minute,
                                      int second, bool syncRtc = true);
    /// The fields of the system's local time, whatever currentDateTime() tells.
    Q_INVOKABLE int currentLocalYear() const;
    Q_INVOKABLE int currentLocalMonth() const;
    Q_INVOKABLE int currentLocalDay() const;
    Q_INVOKABLE int currentLocalHour() const;
    Q_INVOKABLE int currentLocalMinute() const;
    Q_INVOKABLE int currentLocalSecond() const;

Q_SIGNALS:
    /// With the time asked for less the system's time before.
    void dateTimeSet(std::chrono::milliseconds newMinusOld);
    /// A minute is over, the time was set or the time zone has changed.
    void dateTimeChanged();
    /// To be written into the hardware clock, in UTC.
    void writeDateTimeToRtc(const QDateTime& dateTime);

protected:
    /// Sets the clock of the system, and returns an empty text or why it was not set.
    using ClockSetter = QString (*)(const QDateTime& dateTime);

    /// With another clock to set, or null for none.
    DateTimeManager(ClockSetter setClock, QObject* parent);

private:
    QTimer m_minuteTimer;
    TimeZoneHelper m_timeZoneHelper;
    ClockSetter m_setClock;
};

} // namespace zeltools::system
