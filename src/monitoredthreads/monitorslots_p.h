#pragma once

#include "monitoredthreads/monitor.h"

#include <array>
#include <atomic>
#include <mutex>

#include <time.h>
#include <unistd.h>

namespace monitored_threads
{

/// The milliseconds of the monitor. The clock is read in a few nanoseconds, has a resolution of a
/// few milliseconds and stands still while the machine is suspended.
inline qint64 monitorNow_ms()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

/// The record of a registered thread or item. It fills cache lines of its own, so that
/// threads that tick do not slow each other down.
struct alignas(128) MonitorSlot
{
    static constexpr int nameSize_B = 64; ///< with the byte 0 at the end

    void tick() { ticked_ms.store(monitorNow_ms(), std::memory_order_relaxed); }

    /// The number of the registration, which is never used twice; 0 while the slot is free. It
    /// changes under the mutex, and last when the slot is taken.
    std::atomic<quint64> registration{0};
    std::atomic<const Monitor*> monitor{nullptr};
    std::atomic<qint64> ticked_ms{0};
    std::atomic<qint64> pausedUntil_ms{0};
    std::atomic<Monitor::State> state{Monitor::State::OnTime}; ///< as of the last check
    std::atomic<qint32> thread{0};                             ///< 0 for an item
    char name[nameSize_B] = {};                                ///< UTF-8
    pid_t process = 0;
};

/// The slots of all monitors of the process, in memory of their own that lives as long as the
/// process, so that a crash report can be written from them.
class MonitorSlots
{
public:
    static constexpr int count = 128;

    MonitorSlots() = delete;

    static std::array<MonitorSlot, count>& all();
    /// Held while a slot is taken or released. Whoever holds it may read the names.
    static std::mutex& mutex();

    /// Takes a slot, whose first tick is this moment. Returns null if all slots are taken.
    static MonitorSlot* take(const Monitor* monitor, const QString& name, qint32 thread);
    /// Does nothing in a forked child process, where the mutex may be locked for ever.
    static void release(MonitorSlot* slot);

    /// Takes a slot for the calling thread until the thread ends.
    static bool takeForThread(const Monitor* monitor, const QString& name);
    static void releaseOfThread();
    /// Whether the calling thread has a slot, of whichever monitor.
    static bool isThreadRegistered();
    /// The slot of the calling thread, or null if it has none of this monitor.
    static MonitorSlot* ofThread(const Monitor* monitor);
    static void tickFromThread(const Monitor* monitor);
};

} // namespace monitored_threads
