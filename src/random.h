#pragma once

#include <zeltools/zeltools_export.h>

#include <mutex>
#include <random>
#include <type_traits>

namespace utils
{

/// The only engine of the process, seeded on first use. It is not locked: hold randomMutex() to
/// draw from it directly while other threads may draw.
ZELTOOLS_EXPORT std::mt19937& randomGenerator();
/// The mutex that randomTypeDistributed() holds while it draws; it is not recursive.
ZELTOOLS_EXPORT std::mutex& randomMutex();

/// A uniformly distributed value in [min, max]. Any thread may call it.
template <typename T, T min, T max>
T randomTypeDistributed()
{
    // The standard library has no distribution of characters.
    using Number = std::conditional_t<sizeof(T) == 1, int, T>;
    const std::lock_guard locker(randomMutex());
    static std::uniform_int_distribution<Number> distribution(min, max);
    return static_cast<T>(distribution(randomGenerator()));
}

extern template ZELTOOLS_EXPORT char randomTypeDistributed<char, 0, 127>();
extern template ZELTOOLS_EXPORT int randomTypeDistributed<int, 0, 2147483647>();

} // namespace utils
