#include "fixedclock.h"

#include <atomic>

#include <dlfcn.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

namespace
{

constexpr qint64 s_second_ms = 1000;
constexpr qint64 s_millisecond_ns = 1000000;
constexpr qint64 s_millisecond_us = 1000;

constexpr qint64 s_uptime_ms = 273840 * s_second_ms; // 3 days, 4 hours and 4 minutes

std::atomic<qint64> s_time_ms{0}; // since 1970; 0 while the clock runs

bool isMainThread()
{
    return syscall(SYS_gettid) == getpid();
}

bool isFixed(clockid_t clock)
{
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE || clock == CLOCK_BOOTTIME ||
           (clock == CLOCK_MONOTONIC && isMainThread());
}

timespec now(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return time;
}

} // namespace

void fixedclock::set(const QDateTime& time)
{
    s_time_ms = time.toMSecsSinceEpoch();
}

void fixedclock::advance(qint64 milliseconds)
{
    s_time_ms += milliseconds;
}

// The whole process uses these functions in place of those of the C library.

extern "C" __attribute__((visibility("default"))) int clock_gettime(clockid_t clock,
                                                                    timespec* time) noexcept
{
    static const auto ofLibrary =
        reinterpret_cast<decltype(&::clock_gettime)>(dlsym(RTLD_NEXT, "clock_gettime"));
    const qint64 time_ms = clock == CLOCK_BOOTTIME ? s_uptime_ms : qint64(s_time_ms);
    if (s_time_ms == 0 || !isFixed(clock))
        return ofLibrary(clock, time);
    time->tv_sec = time_ms / s_second_ms;
    time->tv_nsec = time_ms % s_second_ms * s_millisecond_ns;
    return 0;
}

extern "C" __attribute__((visibility("default"))) int gettimeofday(timeval* time, void*) noexcept
{
    const timespec current = now(CLOCK_REALTIME);
    time->tv_sec = current.tv_sec;
    time->tv_usec = current.tv_nsec / s_millisecond_us;
    return 0;
}

extern "C" __attribute__((visibility("default"))) time_t time(time_t* time) noexcept
{
    const timespec current = now(CLOCK_REALTIME);
    if (time != nullptr)
        *time = current.tv_sec;
    return current.tv_sec;
}
