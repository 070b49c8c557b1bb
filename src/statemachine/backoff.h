#pragma once

#include <zeltools/zeltools_export.h>

#include <chrono>

namespace tools
{

/// The pauses between the attempts of a request, so that a device that is busy is not flooded. Each
/// pause is `factor` times as long as the one before it, but none is longer than `maximum`:
/// {100ms, 2, 400ms} gives pauses of 100 ms, 200 ms, 400 ms, 400 ms and so on. By default there are
/// no pauses.
struct ZELTOOLS_EXPORT BackOff
{
    std::chrono::milliseconds firstPause{0}; ///< With 0 there are no pauses.
    double factor = 2;                       ///< How much longer each pause is than the one before.
    std::chrono::milliseconds maximum = std::chrono::minutes(1); ///< No pause is longer.

    /// Returns the pause after an attempt; the first attempt is 1. The pause is never negative.
    std::chrono::milliseconds pauseAfter(unsigned int attempt) const;
};

} // namespace tools
