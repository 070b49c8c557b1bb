#include "system/clockwatch_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QTimer>

#include <cerrno>
#include <limits>

#include <sys/timerfd.h>
#include <unistd.h>

namespace zeltools::system
{

// The kernel cancels this timer, which never expires, when the clock is set.
ClockWatch::ClockWatch()
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
    const itimerspec never{{}, {std::numeric_limits<time_t>::max(), 0}};
    if (m_timer < 0 || ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET,
                                         &never, nullptr) != 0) {
        LogFormatter(LogLevel::Warning).log(Log::Machine).noquote()
            << "Changes of the clock are not noticed:" << qt_error_string(errno);
        return;
    }
    // A notifier needs an event loop, but the timer already notices what happens before.
    QTimer::singleShot(0, this, [this] {
        m_notifier = std::make_unique<QSocketNotifier>(m_timer, QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
            if (wasSet())
                Q_EMIT clockSet();
        });
    });
}

ClockWatch::~ClockWatch() = default;

// Reading makes the timer ready for the next time.
bool ClockWatch::wasSet()
{
    quint64 expirations = 0;
    return ::read(m_timer, &expirations, sizeof expirations) < 0 && errno == ECANCELED;
}

} // namespace zeltools::system
