#pragma once

#include <thread>
#include <vector>

namespace support
{

/// Threads that call a function with their number. The end of the object waits for them.
struct Threads : std::vector<std::thread>
{
    template <typename Run>
    Threads(int count, const Run& run)
    {
        for (int i = 0; i < count; ++i)
            emplace_back(run, i);
    }
    ~Threads()
    {
        for (std::thread& thread : *this)
            thread.join();
    }
};

/// Calls the function in so many threads, and waits for them.
template <typename Run>
void runInThreads(int count, const Run& run)
{
    const Threads threads(count, run);
}

} // namespace support
