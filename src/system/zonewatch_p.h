#pragma once

#include "filedescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>

namespace zeltools
{
struct Machine;
}

namespace zeltools::system
{

/// Notices that the time zone of the system was switched, by this program or by another one. It
/// watches the folder of /etc/localtime and /etc/timezone, because these files are replaced, and
/// compares the zone shortly afterwards, because one switch changes several files. A change that is
/// hidden behind a further link, and a switch that has no effect because TZ is set in the
/// environment, are not noticed.
///
/// An object belongs to one thread with an event loop. If the kernel offers no descriptor or the
/// folder cannot be watched, that is a Warning, and nothing is noticed.
class ZoneWatch : public QObject
{
    Q_OBJECT

public:
    explicit ZoneWatch(const Machine& machine);
    ~ZoneWatch() override;

    /// Prevents the signal for everything that has happened until now.
    void forget();

Q_SIGNALS:
    void zoneChanged();

private:
    void watch();
    void compare();

    const FileDescriptor m_folder;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_settling;
    QByteArray m_zone;
};

} // namespace zeltools::system
