#pragma once

#include <zeltools/system/datetimemanager.h>
#include <zeltools/zeltools_export.h>

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QString>
#include <qqml.h>

namespace zeltools::quick
{

/// The date and time for a screen, and the way to set them from there. It follows the ticks of a
/// DateTimeManager: each full minute, each new time and each new time zone, whoever has set it.
///
/// The two methods that set something need Access::Operator and write an event line when they have
/// done so. They block while the zone is switched. Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT Clock : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Clock)
    /// The application's own manager. Without one, or when it is destroyed, the clock is that of
    /// the system.
    Q_PROPERTY(zeltools::system::DateTimeManager* dateTimeManager READ dateTimeManager WRITE
                   setDateTimeManager NOTIFY dateTimeManagerChanged)
    /// The date and the time of the clock in its local time.
    Q_PROPERTY(QDateTime dateTime READ dateTime NOTIFY dateTimeChanged)
    /// The name of the zone of the system, such as "Europe/Rome".
    Q_PROPERTY(QString timeZone READ timeZone NOTIFY dateTimeChanged)
    /// The offset of the local time in the form "UTC+05:30".
    Q_PROPERTY(QString offsetText READ offsetText NOTIFY dateTimeChanged)

public:
    explicit Clock(QObject* parent = nullptr);
    ~Clock() override;

    system::DateTimeManager* dateTimeManager() const { return m_manager; }
    void setDateTimeManager(zeltools::system::DateTimeManager* manager);

    QDateTime dateTime() const;
    QString timeZone() const;
    QString offsetText() const;

    /// Sets the clock and requests that the hardware clock be written. Returns the reason for the
    /// user if the clock does not show the new time afterwards, otherwise an empty text. On the
    /// desktop, nothing sets the clock of the system.
    Q_INVOKABLE QString set(const QDateTime& dateTime);
    /// Switches the zone of the system, for example to "Europe/Rome". Returns an empty text or the
    /// reason for the user.
    Q_INVOKABLE QString setTimeZone(const QString& timeZone);

Q_SIGNALS:
    void dateTimeManagerChanged();
    void dateTimeChanged();

private:
    system::DateTimeManager* source() const;
    void follow();

    QPointer<system::DateTimeManager> m_manager;
};

} // namespace zeltools::quick
