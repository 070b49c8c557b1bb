#pragma once

#include <zeltools/machine.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>

#include <chrono>
#include <memory>

namespace zeltools::system
{

class PackagesManager;
class ZoneDatabase;

/// Lists the time zones that the machine can use, grouped by area, for the user interface, and
/// reads and switches the current one.
///
/// Zones have the names of the time zone database: "Europe/Rome" has the area "Europe" and the
/// location "Rome". The class keeps no results and determines each one when it is called. It logs
/// under Log::SystemTimeZoneHelper.
class ZELTOOLS_EXPORT TimeZoneHelper : public QObject
{
    Q_OBJECT

public:
    explicit TimeZoneHelper(QObject* parent = nullptr);
    ~TimeZoneHelper() override;

    /// The current offset from UTC to local time, truncated to whole hours: +5:30 gives 5, -3:30
    /// gives -3.
    Q_INVOKABLE std::chrono::hours timeZoneOffset() const;

    /// The areas of timeZones() in the same order, without duplicates.
    Q_INVOKABLE QStringList areas() const;
    /// The locations of timeZones() in exactly this area.
    Q_INVOKABLE QStringList locations(const QString& area) const;

    /// The two parts of a name. The results are empty for names with fewer or more parts, such as
    /// "UTC" and "America/Argentina/Salta".
    Q_INVOKABLE QString area(const QString& timeZone) const;
    Q_INVOKABLE QString location(const QString& timeZone) const;

    /// The sorted zones to choose from: those of two parts that Qt knows and that have a file below
    /// /usr/share/zoneinfo. Empty on a machine without these files.
    Q_INVOKABLE static QStringList timeZones();

    /// The zone of the system. If TZ is set in the environment of this process, it takes
    /// precedence, and setCurrentTimeZone() has no effect in this process.
    Q_INVOKABLE QString currentTimeZone() const;
    /// Does the same as trySetCurrentTimeZone().
    Q_INVOKABLE void setCurrentTimeZone(const QString& timeZone);
    /// Switches the zone of the system, also on the desktop, and emits the signal. It does nothing
    /// for the current zone. It refuses, with an Error line, a machine without time zones, a zone
    /// without a file, and a zone whose file is a link to /etc/localtime.
    ///
    /// The call blocks while commands run (see WindowsTools). If they fail, it still emits the
    /// signal; an Info line has the offsets before and after. Returns true if /etc/localtime leads
    /// to the zone afterwards, or if it was the current one already.
    Q_INVOKABLE bool trySetCurrentTimeZone(const QString& timeZone);

Q_SIGNALS:
    void currentTimeZoneChanged();

protected:
    /// Constructs a helper for another machine. The manager must outlive it.
    TimeZoneHelper(const Machine& machine, const PackagesManager& packages,
                   QObject* parent = nullptr);

private:
    const std::unique_ptr<const ZoneDatabase> m_zones;
    const PackagesManager& m_packages;
};

} // namespace zeltools::system
