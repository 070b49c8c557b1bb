#include "system/datetimemanager.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system/clockwatch_p.h"
#include "system/zonewatch_p.h"

#include <QLocale>

#include <cerrno>
#include <cstring>

#include <time.h>

// Declared in the source, so that a host may declare it as well.
Q_DECLARE_METATYPE(std::chrono::milliseconds)

namespace zeltools::system
{

namespace
{

constexpr int s_minute_s = 60;

// The text that QDateTime prints, with English names: Qt 5 takes the names from the language of
// the system.
QString toEnglish(const QDateTime& dateTime)
{
    const QLatin1Char space(' ');
    const QDate date = dateTime.date();
    const QString text = date.toString(); // the names, the day and the year
    const auto namesSize = text.lastIndexOf(space, text.lastIndexOf(space) - 1) + 1;
    return QLocale::c().toString(date, QStringLiteral("ddd MMM ")) +
           dateTime.toString().mid(namesSize);
}

QString setSystemClock(const QDateTime& dateTime)
{
    if (!dateTime.isValid())
        return QStringLiteral("no valid date and time");
    const qint64 time_ms = dateTime.toMSecsSinceEpoch();
    constexpr int ms_ns = 1000000;
    const timespec time{static_cast<time_t>(time_ms / 1000),
                        static_cast<long>(time_ms % 1000 * ms_ns)};
    if (time.tv_sec != time_ms / 1000) // A time_t of 32 bits ends in 2038.
        return QString::fromLocal8Bit(std::strerror(EOVERFLOW));
    if (::clock_settime(CLOCK_REALTIME, &time) == 0)
        return QString();
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

DateTimeManager::DateTimeManager(QObject* parent)
    : DateTimeManager(Machine(), parent)
{
}

DateTimeManager::DateTimeManager(const Machine& machine, QObject* parent)
    : DateTimeManager(machine.isBoard ? setSystemClock : nullptr, parent)
{
    m_isBoard = machine.isBoard;
    m_clockWatch = std::make_unique<ClockWatch>();
    connect(m_clockWatch.get(), &ClockWatch::clockSet, this, &DateTimeManager::startMinute);
    m_zoneWatch = std::make_unique<ZoneWatch>(machine);
    connect(m_zoneWatch.get(), &ZoneWatch::zoneChanged, &m_timeZoneHelper,
            &TimeZoneHelper::currentTimeZoneChanged);
}

DateTimeManager::DateTimeManager(ClockSetter setClock, QObject* parent)
    : QObject(parent)
    , m_setClock(setClock)
{
    qRegisterMetaType<std::chrono::milliseconds>("std::chrono::milliseconds");
    // A coarser timer may fire before the full minute, and the clock would show the old minute.
    m_minuteTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_timeZoneHelper, &TimeZoneHelper::currentTimeZoneChanged, this, [this] {
        if (m_zoneWatch)
            m_zoneWatch->forget();
        Q_EMIT dateTimeChanged();
    });
    connect(&m_minuteTimer, &QTimer::timeout, this, &DateTimeManager::startMinute);
    // Summer time may have begun or ended.
    connect(this, &DateTimeManager::dateTimeChanged, &m_timeZoneHelper,
            &TimeZoneHelper::offsetMinutesChanged);
    // Runs later, when currentDateTime() calls the function of the derived class.
    QTimer::singleShot(0, this, &DateTimeManager::restartMinuteTimer);
}

DateTimeManager::~DateTimeManager() = default;

QDateTime DateTimeManager::currentDateTime() const
{
    return QDateTime::currentDateTime();
}

void DateTimeManager::restartMinuteTimer()
{
    const int second = currentDateTime().time().second();
    m_minuteTimer.start(std::chrono::seconds(s_minute_s - second % s_minute_s));
}

void DateTimeManager::startMinute()
{
    restartMinuteTimer();
    Q_EMIT dateTimeChanged();
}

void DateTimeManager::setLocalDateTime(int year, int month, int day, int hour, int minute,
                                       int second, bool syncRtc)
{
    setDateTime(QDateTime(QDate(year, month, day), QTime(hour, minute, second)), syncRtc);
}

void DateTimeManager::setDateTime(const QDateTime& dateTime, bool syncRtc)
{
    trySetDateTime(dateTime, syncRtc);
}

bool DateTimeManager::trySetDateTime(const QDateTime& dateTime, bool syncRtc)
{
    LogFormatter(LogLevel::Info).log(Log::Machine).noquote()
        << "setDateTime, dateTime:" << toEnglish(dateTime) << ", syncRtc:" << syncRtc;
    const std::chrono::milliseconds newMinusOld(dateTime.toMSecsSinceEpoch() -
                                                QDateTime::currentMSecsSinceEpoch());
    const bool isSet = moveClock(dateTime);
    if (m_clockWatch)
        m_clockWatch->forget(); // The signals below announce the change.
    restartMinuteTimer();
    Q_EMIT dateTimeSet(newMinusOld);
    Q_EMIT dateTimeChanged();
    if (syncRtc)
        Q_EMIT writeDateTimeToRtc(dateTime.toUTC());
    return isSet;
}

bool DateTimeManager::moveClock(const QDateTime& dateTime)
{
    if (m_setClock == nullptr) {
        LogFormatter(LogLevel::Info).log(Log::Machine)
            << (m_isBoard ? "(doing nothing for a simulated clock)" : "(doing nothing on desktop)");
        return false;
    }
    const QString failure = m_setClock(dateTime);
    if (failure.isEmpty())
        return true;
    LogFormatter(LogLevel::Error).log(Log::Machine).noquote()
        << "void zeltools::system::DateTimeManager::setDateTime(const QDateTime&, bool)"
        << "Failed to set the clock:" << failure;
    return false;
}

int DateTimeManager::currentLocalYear() const
{
    return QDate::currentDate().year();
}

int DateTimeManager::currentLocalMonth() const
{
    return QDate::currentDate().month();
}

int DateTimeManager::currentLocalDay() const
{
    return QDate::currentDate().day();
}

int DateTimeManager::currentLocalHour() const
{
    return QTime::currentTime().hour();
}

int DateTimeManager::currentLocalMinute() const
{
    return QTime::currentTime().minute();
}

int DateTimeManager::currentLocalSecond() const
{
    return QTime::currentTime().second();
}

} // namespace zeltools::system
