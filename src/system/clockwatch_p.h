#pragma once

#include "filedescriptor.h"

#include <QSocketNotifier>

#include <memory>

namespace zeltools::system
{

/// Notices immediately that the system clock was set, by this program or by another one. The end of
/// a suspension counts as well. A time service that only slows the clock down or speeds it up is
/// not noticed.
///
/// An object belongs to one thread with an event loop. If the kernel offers no descriptor, that is
/// a Warning, and nothing is noticed.
class ClockWatch : public QObject
{
    Q_OBJECT

public:
    ClockWatch();
    ~ClockWatch() override;

    /// Prevents the signal for everything that has happened until now.
    void forget() { wasSet(); }

Q_SIGNALS:
    void clockSet();

private:
    bool wasSet();

    const FileDescriptor m_timer;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace zeltools::system
