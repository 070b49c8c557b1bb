#pragma once

#include "monitoredthreads/linelimit_p.h"
#include "monitoredthreads/monitorslots_p.h"

#include <vector>

namespace monitored_threads
{

/// "on time", "late", "stalled" or "paused". Async-signal-safe.
const char* stateText(Monitor::State state);

/// Finds out which threads and items of a monitor are late or have stalled, from looks at their
/// slots at the times that the caller names.
///
/// It counts the time without a tick from look to look, and of the time between two looks at most
/// two intervals. When the looks themselves come late, because the process was stopped or got no
/// processor, no thread is blamed for a time in which it could not tick.
///
/// Any thread may call the functions.
class StallDetector
{
public:
    struct Limits
    {
        qint64 interval_ms;
        qint64 late_ms;
        qint64 stalled_ms;
    };
    struct Change
    {
        int slot;
        quint64 registration;
        QString name;
        qint32 thread;
        Monitor::State before;
        Monitor::State after;
        std::chrono::milliseconds sinceTick; ///< as counted
        bool isLogged;                       ///< not one of too many lines
    };
    struct Look
    {
        std::vector<Change> changes;
        bool hasChanged = false;    ///< also when something stalled is no longer registered
        bool hasOtherItems = false; ///< something was registered, or is no longer
    };

    StallDetector(const Monitor& monitor, const Limits& limits);

    /// Threads and items that are on time are counted from the next look.
    void setLimits(const Limits& limits);
    Look look(qint64 now_ms);
    /// Whether the thread or item is still in the state after the change.
    bool isStill(const Change& change) const;
    /// Keeps the call stack with the stalled thread, unless it has ended or ticked meanwhile.
    void setCallStack(const Change& change, const QStringList& callStack);

    /// The states at this time, also if the last look is long ago.
    QVector<Monitor::Item> items(qint64 now_ms) const;
    bool hasLate() const { return m_late + m_stalled > 0; }
    bool hasStalled() const { return m_stalled > 0; }
    int recoveriesCount() const { return m_recoveries; }

private:
    struct Record
    {
        quint64 registration = 0;
        qint64 ticked_ms = 0;
        qint64 silent_ms = 0; // the counted time without a tick
        QStringList callStack;
        LineLimit lateLines;
        LineLimit stalledLines;
        bool isStallLogged = false;
    };

    Monitor::State stateOf(const MonitorSlot& slot, const Record& record, qint64 silent_ms,
                           qint64 now_ms) const;
    Monitor::Item item(const MonitorSlot& slot, const Record& record, qint64 now_ms) const;
    void observe(int place, qint64 now_ms, qint64 elapsed_ms, Look& look);
    bool isLogged(Record& record, Monitor::State before, Monitor::State after, qint64 now_ms);

    const Monitor& m_monitor;
    // All below changes under the mutex of the slots.
    Limits m_limits;
    qint64 m_looked_ms = -1;
    std::array<Record, MonitorSlots::count> m_records;
    std::atomic<int> m_late{0};
    std::atomic<int> m_stalled{0};
    std::atomic<int> m_recoveries{0};
};

} // namespace monitored_threads
