#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>

#include <chrono>

namespace zeltools::system
{

/// For the user interface: the time zones that the machine can use, grouped by area, and the one in
/// force, which it also switches.
///
/// A zone is named as in the time zone database, "Europe/Rome" with the area "Europe" and the
/// location "Rome". Nothing is kept: each answer is worked out when asked for. Logs under
/// Log::SystemTimeZoneHelper.
class ZELTOOLS_EXPORT TimeZoneHelper : public QObject
{
    Q_OBJECT

public:
    explicit TimeZoneHelper(QObject* parent = nullptr);
    ~TimeZoneHelper() override;

    /// From UTC to local time at this moment, cut to whole hours toward zero: +5:30 gives 5, -3:30
    /// gives -3.
    Q_INVOKABLE std::chrono::hours timeZoneOffset() const;

    /// The areas of timeZones() in its order, each once.
    Q_INVOKABLE QStringList areas() const;
    /// The locations of timeZones() in exactly this area.
    Q_INVOKABLE QStringList locations(const QString& area) const;

    /// Empty unless the name has two parts: "UTC" and "America/Argentina/Salta" have neither.
    Q_INVOKABLE QString area(const QString& timeZone) const;
    Q_INVOKABLE QString location(const QString& timeZone) const;

    /// The zones to choose from, sorted: those of two parts that Qt knows and that have a file
    /// below /usr/share/zoneinfo. Empty on a machine without these files.
    Q_INVOKABLE static QStringList timeZones();

    /// As the system has it. TZ in the environment of this process comes first, and then
    /// setCurrentTimeZone() has no effect in it.
    Q_INVOKABLE QString currentTimeZone() const;
    /// Switches the zone of the system, on the desktop too, and emits the signal; for the current
    /// one it does nothing.
    /// A machine without time zones is refused with an Error line, and so is a zone that has no
    /// file or whose file is a link to /etc/localtime.
    ///
    /// Blocks while commands run (see WindowsTools). Their failure is not noticed here; the Info
    /// line has the offset before and after, which shows it.
    Q_INVOKABLE void setCurrentTimeZone(const QString& timeZone);

Q_SIGNALS:
    void currentTimeZoneChanged();
};

} // namespace zeltools::system
