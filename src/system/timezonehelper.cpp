#include "system/timezonehelper.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system/packagesmanager.h"
#include "system/zonedatabase_p.h"
#include "windowstools.h"

#include <QDateTime>
#include <QDir>
#include <QTimeZone>

// Declared in the source, so that a host may declare it as well.
Q_DECLARE_METATYPE(std::chrono::hours)

namespace zeltools::system
{

namespace
{

struct Zone
{
    QString area;
    QString location;
};

// Both parts are empty unless the name has exactly two.
Zone zoneOf(const QString& timeZone)
{
    const QStringList parts = timeZone.split(QDir::separator());
    return parts.size() == 2 ? Zone{parts[0], parts[1]} : Zone{};
}

LogFormatter logLine(LogLevel::Level level)
{
    return LogFormatter(level).log(Log::SystemTimeZoneHelper)
           << "void zeltools::system::TimeZoneHelper::setCurrentTimeZone(const QString&)";
}

} // namespace

TimeZoneHelper::TimeZoneHelper(QObject* parent)
    : TimeZoneHelper(Machine(), PackagesManager::instance(), parent)
{
}

TimeZoneHelper::TimeZoneHelper(const Machine& machine, const PackagesManager& packages,
                               QObject* parent)
    : QObject(parent)
    , m_zones(std::make_unique<const ZoneDatabase>(machine))
    , m_packages(packages)
{
    qRegisterMetaType<std::chrono::hours>("std::chrono::hours");
    connect(this, &TimeZoneHelper::currentTimeZoneChanged, this,
            &TimeZoneHelper::offsetMinutesChanged);
}

TimeZoneHelper::~TimeZoneHelper() = default;

std::chrono::hours TimeZoneHelper::timeZoneOffset() const
{
    const std::chrono::seconds offset(QDateTime::currentDateTime().offsetFromUtc());
    return std::chrono::duration_cast<std::chrono::hours>(offset);
}

int TimeZoneHelper::offsetMinutes() const
{
    constexpr int minute_s = 60;
    return QDateTime::currentDateTime().offsetFromUtc() / minute_s;
}

QStringList TimeZoneHelper::areas() const
{
    QStringList areas;
    const QStringList zones = m_zones->timeZones();
    for (const QString& zone : zones) {
        const QString area = zoneOf(zone).area;
        if (!area.isEmpty() && !areas.contains(area))
            areas.append(area);
    }
    return areas;
}

QStringList TimeZoneHelper::locations(const QString& area) const
{
    QStringList locations;
    const QStringList zones = m_zones->timeZones();
    for (const QString& name : zones) {
        const Zone zone = zoneOf(name);
        if (zone.area == area)
            locations.append(zone.location);
    }
    return locations;
}

QString TimeZoneHelper::area(const QString& timeZone) const
{
    return zoneOf(timeZone).area;
}

QString TimeZoneHelper::location(const QString& timeZone) const
{
    return zoneOf(timeZone).location;
}

QStringList TimeZoneHelper::timeZones()
{
    return ZoneDatabase(Machine()).timeZones();
}

QString TimeZoneHelper::currentTimeZone() const
{
    return QString::fromUtf8(QTimeZone::systemTimeZoneId());
}

void TimeZoneHelper::setCurrentTimeZone(const QString& timeZone)
{
    trySetCurrentTimeZone(timeZone);
}

bool TimeZoneHelper::trySetCurrentTimeZone(const QString& timeZone)
{
    const QString before = currentTimeZone();
    if (timeZone == before)
        return true;
    if (!m_packages.isAvailable(PackagesManager::Tzdata)) {
        logLine(LogLevel::Error) << "Missing tzdata package! Basalt does not support timezones!";
        return false;
    }
    if (!m_zones->contains(timeZone)) {
        logLine(LogLevel::Error).noquote()
            << QString(QLatin1String("Not existing zone info file: ") + m_zones->file(timeZone));
        return false;
    }
    const std::chrono::hours offsetBefore = timeZoneOffset();
    const bool hasTimeSync = m_packages.isAvailable(PackagesManager::TimeSync);
    const QStringList commands = m_zones->switchCommands(timeZone, hasTimeSync);
    for (const QString& command : commands)
        WindowsTools::runCommand(command);
    const bool isSwitched = m_zones->isCurrent(timeZone);
    logLine(LogLevel::Info) << "Changed Timezone from" << before
                            << "offset:" << offsetBefore.count() << "into" << timeZone
                            << "offset:" << timeZoneOffset().count();
    Q_EMIT currentTimeZoneChanged();
    return isSwitched;
}

} // namespace zeltools::system
