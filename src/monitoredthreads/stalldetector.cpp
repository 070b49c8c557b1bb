#include "monitoredthreads/stalldetector_p.h"

#include <algorithm>

namespace monitored_threads
{

using State = Monitor::State;

const char* stateText(State state)
{
    switch (state) {
    case State::OnTime:
        return "on time";
    case State::Late:
        return "late";
    case State::Stalled:
        return "stalled";
    case State::Paused:
        return "paused";
    }
    return "";
}

StallDetector::StallDetector(const Monitor& monitor, const Limits& limits)
    : m_monitor(monitor)
    , m_limits(limits)
{
}

void StallDetector::setLimits(const Limits& limits)
{
    const std::lock_guard<std::mutex> lock(MonitorSlots::mutex());
    m_limits = limits;
    for (int place = 0; place < MonitorSlots::count; ++place) {
        if (MonitorSlots::all()[size_t(place)].state == State::OnTime)
            m_records[size_t(place)].silent_ms = 0;
    }
}

StallDetector::Look StallDetector::look(qint64 now_ms)
{
    const std::lock_guard<std::mutex> lock(MonitorSlots::mutex());
    const qint64 elapsed_ms =
        m_looked_ms < 0 ? 0 : std::min(now_ms - m_looked_ms, 2 * m_limits.interval_ms);
    m_looked_ms = now_ms;
    const int late = m_late;
    const int stalled = m_stalled;
    Look look;
    for (int place = 0; place < MonitorSlots::count; ++place)
        observe(place, now_ms, elapsed_ms, look);
    const auto count = [this](State state) {
        const auto& all = MonitorSlots::all();
        return int(std::count_if(all.begin(), all.end(), [&](const MonitorSlot& slot) {
            return slot.registration != 0 && slot.monitor == &m_monitor && slot.state == state;
        }));
    };
    m_late = count(State::Late);
    m_stalled = count(State::Stalled);
    look.hasChanged = !look.changes.empty() || m_late != late || m_stalled != stalled;
    return look;
}

void StallDetector::observe(int place, qint64 now_ms, qint64 elapsed_ms, Look& look)
{
    MonitorSlot& slot = MonitorSlots::all()[size_t(place)];
    Record& record = m_records[size_t(place)];
    const quint64 registration = slot.monitor == &m_monitor ? slot.registration.load() : quint64(0);
    look.hasOtherItems = look.hasOtherItems || registration != record.registration;
    if (registration == 0) {
        record.registration = 0;
        return;
    }
    const qint64 ticked_ms = slot.ticked_ms;
    qint64 silent_ms = record.silent_ms + elapsed_ms;
    if (record.registration != registration) {
        record = Record();
        record.registration = registration;
        silent_ms = 0;
    } else if (record.ticked_ms != ticked_ms) {
        silent_ms = std::clamp(now_ms - ticked_ms, qint64(0), elapsed_ms);
    }
    const State before = slot.state;
    const State after = stateOf(slot, record, silent_ms, now_ms);
    if (before != after) {
        const bool isWorse = after == State::Late || after == State::Stalled;
        const std::chrono::milliseconds time(isWorse ? silent_ms : record.silent_ms);
        look.changes.push_back({place, record.registration, QString::fromUtf8(slot.name),
                                slot.thread, before, after, time,
                                isLogged(record, before, after, now_ms)});
        m_recoveries += before == State::Stalled;
        record.callStack.clear();
    }
    record.ticked_ms = ticked_ms;
    record.silent_ms = after == State::Paused ? 0 : silent_ms;
    slot.state = after;
}

// A stall ends only with a tick or a pause, also if the limits have become longer.
State StallDetector::stateOf(const MonitorSlot& slot, const Record& record, qint64 silent_ms,
                             qint64 now_ms) const
{
    if (slot.pausedUntil_ms > now_ms)
        return State::Paused;
    if (slot.state == State::Stalled)
        return slot.ticked_ms == record.ticked_ms ? State::Stalled : State::OnTime;
    if (silent_ms >= m_limits.stalled_ms)
        return State::Stalled;
    return silent_ms >= m_limits.late_ms ? State::Late : State::OnTime;
}

// The end of a stall is logged if its begin was.
bool StallDetector::isLogged(Record& record, State before, State after, qint64 now_ms)
{
    if (after == State::Late)
        return record.lateLines.isDue(now_ms);
    if (after == State::Stalled)
        return record.isStallLogged = record.stalledLines.isDue(now_ms);
    return before == State::Stalled && record.isStallLogged;
}

bool StallDetector::isStill(const Change& change) const
{
    const std::lock_guard<std::mutex> lock(MonitorSlots::mutex());
    const MonitorSlot& slot = MonitorSlots::all()[size_t(change.slot)];
    return slot.registration == change.registration && slot.state == change.after;
}

void StallDetector::setCallStack(const Change& change, const QStringList& callStack)
{
    const std::lock_guard<std::mutex> lock(MonitorSlots::mutex());
    const MonitorSlot& slot = MonitorSlots::all()[size_t(change.slot)];
    if (slot.registration == change.registration && slot.state == State::Stalled)
        m_records[size_t(change.slot)].callStack = callStack;
}

QVector<Monitor::Item> StallDetector::items(qint64 now_ms) const
{
    const std::lock_guard<std::mutex> lock(MonitorSlots::mutex());
    QVector<Monitor::Item> items;
    for (int place = 0; place < MonitorSlots::count; ++place) {
        const MonitorSlot& slot = MonitorSlots::all()[size_t(place)];
        if (slot.registration != 0 && slot.monitor == &m_monitor)
            items.append(item(slot, m_records[size_t(place)], now_ms));
    }
    return items;
}

// The time since the tick is the real one without the pause, since a watchdog needs it. The state
// follows from the counted time, in which a process that was stopped does no harm.
Monitor::Item StallDetector::item(const MonitorSlot& slot, const Record& record,
                                  qint64 now_ms) const
{
    const qint64 began_ms = std::max<qint64>(slot.ticked_ms, slot.pausedUntil_ms);
    const qint64 since_ms = std::max<qint64>(now_ms - began_ms, 0);
    const bool isKnown = record.registration == slot.registration;
    const qint64 silent_ms = (isKnown ? record.silent_ms : 0) + now_ms - m_looked_ms;
    const State state = m_looked_ms < 0
                            ? slot.state.load()
                            : stateOf(slot, record, std::min(since_ms, silent_ms), now_ms);
    return {QString::fromUtf8(slot.name), slot.thread, state, std::chrono::milliseconds(since_ms),
            isKnown && state == State::Stalled ? record.callStack : QStringList()};
}

} // namespace monitored_threads
