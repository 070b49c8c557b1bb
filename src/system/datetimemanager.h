#pragma once

#include <zeltools/machine.h>
#include <zeltools/system/timezonehelper.h>

#include <QDateTime>
#include <QTimer>

#include <chrono>
#include <memory>

namespace zeltools::system
{

class ClockWatch;
class ZoneWatch;

/// The application's only source of the current date and time. It emits a signal at every full
/// minute, so that clocks on screens can follow, and handles requests to set the machine's clock.
/// It notices immediately if another program sets the system clock, and within a moment if one
/// switches the time zone.
///
/// An object belongs to one thread with an event loop and logs under Log::Machine.
class ZELTOOLS_EXPORT DateTimeManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(zeltools::system::TimeZoneHelper* timeZoneHelper READ timeZoneHelper CONSTANT)
    Q_PROPERTY(QDateTime currentDateTime READ currentDateTime NOTIFY dateTimeChanged)

public:
    explicit DateTimeManager(QObject* parent = nullptr);
    ~DateTimeManager() override;

    /// The current date and time in local time.
    virtual QDateTime currentDateTime() const;
    /// Does the same as trySetDateTime().
    virtual void setDateTime(const QDateTime& dateTime, bool syncRtc);

    /// The time zones of the system; the object belongs to the manager.
    TimeZoneHelper* timeZoneHelper() { return &m_timeZoneHelper; }
    /// Schedules the next tick for the next full minute of currentDateTime(). Milliseconds are
    /// ignored, so that it comes up to a second later.
    void restartMinuteTimer();

    /// Sets the local date and time from its fields, for QML, like setDateTime().
    Q_INVOKABLE void setLocalDateTime(int year, int month, int day, int hour, int minute,
                                      int second, bool syncRtc = true);
    /// @{
    /// A field of the system's local time, independent of currentDateTime().
    Q_INVOKABLE int currentLocalYear() const;
    Q_INVOKABLE int currentLocalMonth() const;
    Q_INVOKABLE int currentLocalDay() const;
    Q_INVOKABLE int currentLocalHour() const;
    Q_INVOKABLE int currentLocalMinute() const;
    Q_INVOKABLE int currentLocalSecond() const;
    /// @}

    /// Sets the system clock on the board, and no clock on the desktop, then emits the signals. It
    /// also emits them if the clock could not be set, which is an Error line, and for an invalid
    /// date and time, to which no clock is set. `syncRtc` requests writeDateTimeToRtc(). Returns
    /// whether the system clock was set, which is never so on the desktop.
    Q_INVOKABLE bool trySetDateTime(const QDateTime& dateTime, bool syncRtc);

Q_SIGNALS:
    /// Announces the difference between the requested time and the system's time before.
    void dateTimeSet(std::chrono::milliseconds newMinusOld);
    /// Announces a full minute, a new time or a new time zone, whoever has set it.
    void dateTimeChanged();
    /// Requests that the application write this time, in UTC, to the hardware clock.
    void writeDateTimeToRtc(const QDateTime& dateTime);

protected:
    /// A function that sets a clock and returns the reason of a failure, or an empty text.
    using ClockSetter = QString (*)(const QDateTime& dateTime);

    /// Constructs a manager that sets another clock, or none if the function is null, and does not
    /// follow what other programs do to the system.
    DateTimeManager(ClockSetter setClock, QObject* parent);
    /// Constructs a manager for another machine.
    DateTimeManager(const Machine& machine, QObject* parent);

private:
    bool moveClock(const QDateTime& dateTime);
    void startMinute();

    QTimer m_minuteTimer;
    TimeZoneHelper m_timeZoneHelper;
    ClockSetter m_setClock;
    bool m_isBoard = platform::isBoard;
    std::unique_ptr<ClockWatch> m_clockWatch;
    std::unique_ptr<ZoneWatch> m_zoneWatch;
};

} // namespace zeltools::system
