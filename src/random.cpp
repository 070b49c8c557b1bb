#include "random.h"

#include <stdexcept>

namespace
{

std::mt19937::result_type seed()
{
    try {
        return std::random_device("mt19937")();
    } catch (const std::runtime_error&) { // a token that this standard library does not know
        return std::random_device()();
    }
}

} // namespace

namespace utils
{

std::mt19937& randomGenerator()
{
    static std::mt19937 generator(seed());
    return generator;
}

std::mutex& randomMutex()
{
    static std::mutex mutex;
    return mutex;
}

template char randomTypeDistributed<char, 0, 127>();
template int randomTypeDistributed<int, 0, 2147483647>();

} // namespace utils
