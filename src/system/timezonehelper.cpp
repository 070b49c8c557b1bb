#include "system/timezonehelper.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "system.h"
#include "system/packagesmanager.h"
#include "windowstools.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTimeZone>

// Here, so that a host may declare it as well.
Q_DECLARE_METATYPE(std::chrono::hours)

namespace zeltools::system
{

namespace
{

QString zoneInfoDir()
{
    return QStringLiteral("/usr/share/zoneinfo");
}

struct Zone
{
    QString area;
    QString location;
};

// Both empty unless the name has exactly two parts.
Zone zoneOf(const QString& timeZone)
{
    const QStringList parts = timeZone.split(QDir::separator());
    return parts.size() == 2 ? Zone{parts[0], parts[1]} : Zone{};
}

// The path without links above its last name.
QString placeOf(const QFileInfo& file)
{
    return QFileInfo(file.path()).canonicalFilePath() + QLatin1Char('/') + file.fileName();
}

// Such a zone file ("localtime" in some images) would make /etc/localtime a link to itself.
bool leadsThroughLocalTime(const QString& zoneFile)
{
    const QString localTime = placeOf(QFileInfo(QStringLiteral("/etc/localtime")));
    QFileInfo file(placeOf(QFileInfo(zoneFile)));
    while (file.isSymLink() && file.filePath() != localTime)
        file.setFile(placeOf(QFileInfo(file.symLinkTarget())));
    return file.filePath() == localTime;
}

// The name goes into a shell command and into a path, which must not lead out of the database.
bool isZone(const QString& timeZone, const QString& path)
{
    static const QRegularExpression form(QStringLiteral(R"(\A[\w+-]+(/[\w+-]+)*\z)"));
    return form.match(timeZone).hasMatch() && System::fileExists(path) &&
           !leadsThroughLocalTime(path);
}

LogFormatter logLine(LogLevel::Level level)
{
    return LogFormatter(level).log(Log::SystemTimeZoneHelper)
           << "void zeltools::system::TimeZoneHelper::setCurrentTimeZone(const QString&)";
}

void switchZone(const QString& timeZone, const QString& path)
{
    if (PackagesManager::packageAvailable(PackagesManager::TimeSync)) {
        WindowsTools::runCommand(QStringLiteral("timedatectl set-timezone %1").arg(timeZone));
        return;
    }
    WindowsTools::runCommand(QStringLiteral("ln -fs %1 /etc/localtime").arg(path));
    WindowsTools::runCommand(QStringLiteral("echo \"%1\" > /etc/timezone").arg(timeZone));
}

} // namespace

TimeZoneHelper::TimeZoneHelper(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<std::chrono::hours>("std::chrono::hours");
}

TimeZoneHelper::~TimeZoneHelper() = default;

std::chrono::hours TimeZoneHelper::timeZoneOffset() const
{
    const std::chrono::seconds offset(QDateTime::currentDateTime().offsetFromUtc());
    return std::chrono::duration_cast<std::chrono::hours>(offset);
}

QStringList TimeZoneHelper::areas() const
{
    QStringList areas;
    const QStringList zones = timeZones();
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
    const QStringList zones = timeZones();
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
    QMap<QString, QSet<QString>> known;
    const QList<QByteArray> ids = QTimeZone::availableTimeZoneIds();
    for (const QByteArray& id : ids) {
        const QStringList parts = QString::fromUtf8(id).split(QDir::separator());
        if (parts.size() >= 2)
            known[parts[0]].insert(parts[1]);
    }
    QStringList zones;
    for (auto area = known.cbegin(); area != known.cend(); ++area) {
        const QDir folder(zoneInfoDir() + QLatin1Char('/') + area.key());
        const QStringList files = folder.entryList(QDir::Files, QDir::Unsorted);
        for (const QString& file : files) {
            if (area->contains(file))
                zones.append(area.key().isEmpty() ? file : area.key() + QDir::separator() + file);
        }
    }
    zones.sort();
    return zones;
}

QString TimeZoneHelper::currentTimeZone() const
{
    return QString::fromUtf8(QTimeZone::systemTimeZoneId());
}

void TimeZoneHelper::setCurrentTimeZone(const QString& timeZone)
{
    const QString before = currentTimeZone();
    if (timeZone == before)
        return;
    const QString path = QStringLiteral("%1/%2").arg(zoneInfoDir(), timeZone);
    if (!PackagesManager::packageAvailable(PackagesManager::Tzdata)) {
        logLine(LogLevel::Error) << "Missing tzdata package! Basalt does not support timezones!";
        return;
    }
    if (!isZone(timeZone, path)) {
        logLine(LogLevel::Error).noquote()
            << QString(QLatin1String("Not existing zone info file: ") + path);
        return;
    }
    const std::chrono::hours offsetBefore = timeZoneOffset();
    switchZone(timeZone, path);
    logLine(LogLevel::Info) << "Changed Timezone from" << before
                            << "offset:" << offsetBefore.count() << "into" << timeZone
                            << "offset:" << timeZoneOffset().count();
    Q_EMIT currentTimeZoneChanged();
}

} // namespace zeltools::system
