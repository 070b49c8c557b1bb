#pragma once

#include <zeltools/zeltools_export.h>

#include <mutex>
#include <random>
#include <type_traits>

namespace utils
{

/// The one engine of the process, seeded on first use. Not locked: who draws from it directly while
/// other threads may draw holds randomMutex().
ZELTOOLS_EXPORT std::mt19937& randomGenerator();
/// Held by randomTypeDistributed() while it draws; not recursive.
ZELTOOLS_EXPORT std::mutex& randomMutex();

/// A uniformly distributed value in [min, max]. Safe to call from any thread.
template <typename T, T min, T max>
T randomTypeDistributed()
{
    // The standard knows no distribution of characters.
    using Number = std::conditional_t<sizeof(T) == 1, int, T>;
    const std::lock_guard locker(randomMutex());
    static std::uniform_int_distribution<Number> distribution(min, max);
    return static_cast<T>(distribution(randomGenerator()));
}

extern template ZELTOOLS_EXPORT char randomTypeDistributed<char, 0, 127>();
extern template ZELTOOLS_EXPORT int randomTypeDistributed<int, 0, 2147483647>();

} // namespace utils
