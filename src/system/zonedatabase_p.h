#pragma once

#include <QStringList>

namespace zeltools
{
struct Machine;
}

namespace zeltools::system
{

/// The files of the time zones on a machine, and the links that select one of them.
class ZoneDatabase
{
public:
    explicit ZoneDatabase(const Machine& machine);

    /// The list that TimeZoneHelper::timeZones() describes.
    QStringList timeZones() const;
    QString file(const QString& timeZone) const;
    /// Whether the name has the form of a zone and its file exists. The file must not be a link to
    /// /etc/localtime, which would become a link to itself.
    bool contains(const QString& timeZone) const;
    /// Whether /etc/localtime leads to the file of the zone.
    bool isCurrent(const QString& timeZone) const;
    /// The commands that make a zone the zone of the system.
    QStringList switchCommands(const QString& timeZone, bool hasTimeSync) const;

private:
    QString m_zoneInfoDir;
    QString m_localTimeFile;
    QString m_timeZoneFile;
};

} // namespace zeltools::system
