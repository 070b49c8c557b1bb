#pragma once

#include <QTest>

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

/// The timers of the test that includes this follow advance(), so that no test waits for an hour.
/// Only those of the main thread: in another one Qt Test looks for functions that hang. The clock
/// of the machine is never set.
namespace fakeclock
{

inline std::chrono::seconds s_ahead{0};
inline qint64 s_set_ms = 0; // what the clock was last set to
inline bool s_isRefusing = false;

inline void advance(std::chrono::seconds time)
{
    s_ahead += time;
    QTest::qWait(20); // what is due now comes about
}

} // namespace fakeclock

// In place of the system's functions, for the library and Qt too.
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
    fakeclock::s_set_ms = time->tv_sec * 1000 + time->tv_nsec / 1000000;
    return 0;
}
