#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <thread>
#include <vector>

#include <time.h>

/// Threads that call a logger by the clock, each 1000 times a second, and measure every call. They
/// are a part of bench_stall, which stops the storage meanwhile and reads what is printed here.
namespace stall
{

constexpr int threadsCount = 8;
constexpr int callsPerThread = 4000;
constexpr int64_t period_ns = 1000000;

inline int64_t now_ns()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * INT64_C(1000000000) + now.tv_nsec;
}

struct Times
{
    std::vector<int64_t> calls_ns; ///< from the call to its return
    std::vector<int64_t> waits_ns; ///< from the moment at which the call is due to its return
};

template <typename Work>
void callByTheClock(int64_t start_ns, Times& times, Work& work)
{
    for (int call = 0; call < callsPerThread; ++call) {
        const int64_t due_ns = start_ns + call * period_ns;
        const timespec due{due_ns / 1000000000, due_ns % 1000000000};
        while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &due, nullptr) != 0) {
        }
        const int64_t begin_ns = now_ns();
        work();
        const int64_t end_ns = now_ns();
        times.calls_ns.push_back(end_ns - begin_ns);
        times.waits_ns.push_back(end_ns - due_ns);
    }
}

inline void printQuantiles(std::vector<int64_t>& values_ns)
{
    std::sort(values_ns.begin(), values_ns.end());
    for (const double quantile : {0.5, 0.99, 0.9999})
        std::printf("%.1f ", values_ns[size_t(quantile * (values_ns.size() - 1))] / 1000.0);
    std::printf("%.1f ", values_ns.back() / 1000.0);
}

/// Prints "started", runs the threads, and prints the median, 99 %, 99.99 % and the maximum of the
/// calls and then those of the waits, in microseconds.
template <typename Work>
void run(Work work)
{
    std::vector<Times> times(threadsCount);
    std::vector<std::thread> threads;
    const int64_t start_ns = now_ns() + 100 * period_ns;
    for (int thread = 0; thread < threadsCount; ++thread) {
        times[thread].calls_ns.reserve(callsPerThread);
        times[thread].waits_ns.reserve(callsPerThread);
        threads.emplace_back(callByTheClock<Work>, start_ns + thread * period_ns / threadsCount,
                             std::ref(times[thread]), std::ref(work));
    }
    std::printf("started\n");
    std::fflush(stdout);
    for (std::thread& thread : threads)
        thread.join();

    Times all;
    for (const Times& one : times) {
        all.calls_ns.insert(all.calls_ns.end(), one.calls_ns.begin(), one.calls_ns.end());
        all.waits_ns.insert(all.waits_ns.end(), one.waits_ns.begin(), one.waits_ns.end());
    }
    printQuantiles(all.calls_ns);
    printQuantiles(all.waits_ns);
}

} // namespace stall
