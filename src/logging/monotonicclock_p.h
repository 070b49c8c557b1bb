#pragma once

#include <QtGlobal>

#include <time.h>

/// The milliseconds since some moment, unaffected by changes of the time of day. The clock is read
/// fast and has a resolution of a few milliseconds.
inline qint64 monotonicMilliseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}
