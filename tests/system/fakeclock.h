#pragma once

#include <QTest>

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

/// The timers of a test that includes this file follow advance(), so that no test waits for an
/// hour. Only the timers of the main thread do: in another thread, Qt Test watches for functions
/// that hang. The clock of the machine is only ever set to the time that it has.
namespace fakeclock
{

inline std::chrono::seconds s_ahead{0};
inline qint64 s_set_ms = 0; // the time to which the clock was last set
inline bool s_isRefusing = false;

inline void advance(std::chrono::seconds time)
{
    s_ahead += time;
    QTest::qWait(20);                        // runs the timers that are due now
    for (int turns = 0; turns < 10; ++turns) // and what they queue, also on a slow computer
        QCoreApplication::processEvents();
}

/// Sets the clock as another program would. Returns whether that is permitted.
inline bool touchSystemClock()
{
    timespec now;
    return ::syscall(SYS_clock_gettime, CLOCK_REALTIME, &now) == 0 &&
           ::syscall(SYS_clock_settime, CLOCK_REALTIME, &now) == 0;
}

} // namespace fakeclock

// These replace the system's functions, also for the library and Qt.
extern "C" Q_DECL_EXPORT int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const auto result = static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    if (clock == CLOCK_MONOTONIC && ::syscall(SYS_gettid) == ::getpid())
        time->tv_sec += fakeclock::s_ahead.count();
    return result;
}

extern "C" Q_DECL_EXPORT int clock_settime(clockid_t, const timespec* time) noexcept
{
    if (fakeclock::s_isRefusing) {
        errno = EPERM;
        return -1;
    }
    fakeclock::touchSystemClock();
    fakeclock::s_set_ms = time->tv_sec * 1000 + time->tv_nsec / 1000000;
    return 0;
}
