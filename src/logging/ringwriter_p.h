#pragma once

#include "logging/ringplaces_p.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

/// The writer thread of buffered delivery, which delivers the lines of a ring and tells the losses.
/// One thread starts and ends it; any thread may call the other functions.
class RingWriter
{
public:
    /// The thread calls `damaged` and ends if somebody else has written to the ring.
    RingWriter(RingFile& ring, RingPlaces& places, SinkList& sinks, std::function<void()> damaged);

    /// Starts the thread. Returns false with the reason in `error`.
    bool start(QString& error);
    /// Ends the thread and waits for it.
    void end();
    /// Leaves the thread alone, which may wait for the storage for ever.
    void detach() { m_thread.detach(); }
    bool isEnded() const { return m_isEnded; }
    /// Whether the calling thread is a writer thread, which cannot wait for itself.
    static bool isHere();

    /// Makes the thread look into the ring now.
    void wake();
    /// The same if nobody has to make it: a writer that is awake looks by itself.
    void wakeFromLongSleep();

    /// Says that the ring has counted a loss.
    void noteLoss() { m_hasNewLosses = true; }
    /// Whether there are losses for which no line is in the ring yet.
    bool hasNewLosses() const { return m_hasNewLosses; }
    /// Makes the writer tell losses at once and not only every second.
    void hurry() { m_isInHurry = true; }

private:
    void run();
    void tellLosses();

    RingFile& m_ring;
    RingPlaces& m_places;
    SinkList& m_sinks;
    const std::function<void()> m_damaged;
    std::atomic<bool> m_hasNewLosses = false;
    std::atomic<bool> m_isInHurry = false;
    std::atomic<bool> m_isEnded = false;
    std::chrono::steady_clock::time_point m_lossesTold;
    std::thread m_thread;
};
