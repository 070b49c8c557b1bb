#include "statemachine/backoff.h"

#include <cmath>

namespace tools
{

std::chrono::milliseconds BackOff::pauseAfter(unsigned int attempt) const
{
    using std::chrono::milliseconds;
    if (attempt == 0 || firstPause.count() <= 0 || maximum.count() <= 0)
        return milliseconds(0);
    const double pause_ms = static_cast<double>(firstPause.count()) * std::pow(factor, attempt - 1);
    if (pause_ms < 0)
        return milliseconds(0);
    // Infinity and a factor that is not a number give the maximum.
    const bool isShort = pause_ms < static_cast<double>(maximum.count());
    return isShort ? milliseconds(std::llround(pause_ms)) : maximum;
}

} // namespace tools
