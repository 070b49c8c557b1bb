#pragma once

#include <algorithm>
#include <chrono>
#include <limits>

namespace tools
{

/// Returns the nearest interval that a QTimer accepts; the longest one is 24 days.
inline std::chrono::milliseconds timerInterval(std::chrono::milliseconds time)
{
    using std::chrono::milliseconds;
    return std::clamp(time, milliseconds(0), milliseconds(std::numeric_limits<int>::max()));
}

} // namespace tools
