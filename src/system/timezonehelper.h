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
    // In QML, a property hides the method of the same name, so that it has another name than
    // currentTimeZone().
    Q_PROPERTY(QString timeZone READ currentTimeZone NOTIFY currentTimeZoneChanged)
    Q_PROPERTY(int offsetMinutes READ offsetMinutes NOTIFY offsetMinutesChanged)

public:
    explicit TimeZoneHelper(QObject* parent = nullptr);
    ~TimeZoneHelper() override;

    /// The current offset from UTC to local time, truncated to whole hours: +5:30 gives 5, -3:30
    /// gives -3.
    Q_INVOKABLE std::chrono::hours timeZoneOffset() const;

    /// The current offset from UTC to local time in minutes, for QML.
    int offsetMinutes() const;

    /// The areas of timeZones() in the same order, without duplicates.
    Q_INVOKABLE QStringList areas() const;
    /// The locations of timeZones() in exactly this area.
    Q_INVOKABLE QStringList locations(const QString& area) const;

    /// The first part of a name, "Europe" of "Europe/Rome". It is empty for names with fewer or
    /// more than two parts, such as "UTC" and "America/Argentina/Salta".
    Q_INVOKABLE QString area(const QString& timeZone) const;
    /// The second part, "Rome" of "Europe/Rome"; empty for the same names.
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
    /// Announces a possible change of offsetMinutes(): the zone was switched or, in the helper of a
    /// DateTimeManager, a minute has passed.
    void offsetMinutesChanged();

protected:
    /// Constructs a helper for another machine. The manager must outlive it.
    TimeZoneHelper(const Machine& machine, const PackagesManager& packages,
                   QObject* parent = nullptr);

private:
    const std::unique_ptr<const ZoneDatabase> m_zones;
    const PackagesManager& m_packages;
};

} // namespace zeltools::system
