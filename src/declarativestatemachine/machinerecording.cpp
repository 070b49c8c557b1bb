#include "declarativestatemachine/machinerecording.h"

#include "declarativestatemachine/recordingtext_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

using Microseconds = std::chrono::microseconds;
using Entry = MachineRecording::Entry;
using State = MachineRecording::State;

/// Follows the entries and calls `leave(state, since, until)` for each time that a state was
/// active. It accepts any order of entries, since a recording may be forged.
class ActiveStates
{
public:
    explicit ActiveStates(const MachineRecording& recording)
    {
        for (const MachineRecording::ActiveState& active : recording.activeBefore)
            enter(active.state, active.since);
    }

    template <typename Leave>
    void follow(const Entry& entry, const Leave& leave)
    {
        const State& state = entry.transition.source;
        switch (entry.kind) {
        case Entry::Started:
        case Entry::Stopped: // A machine that is stopped does not leave its states.
            leaveAll(entry.time, leave);
            break;
        case Entry::Entered:
            enter(state, entry.time);
            break;
        case Entry::Left:
            if (m_since.contains(state))
                leave(state, m_since.take(state).time, entry.time);
            break;
        case Entry::Guard:
        case Entry::Fired:
            break;
        }
    }

    template <typename Leave>
    void leaveAll(Microseconds until, const Leave& leave)
    {
        for (auto active = m_since.cbegin(); active != m_since.cend(); ++active)
            leave(active.key(), active->time, until);
        m_since.clear();
    }

    QVector<MachineRecording::ActiveState> inOrder() const
    {
        QVector<MachineRecording::ActiveState> states;
        for (auto active = m_since.cbegin(); active != m_since.cend(); ++active)
            states.append({active.key(), active->time});
        std::sort(states.begin(), states.end(), [this](const auto& a, const auto& b) {
            return m_since[a.state].order < m_since[b.state].order;
        });
        return states;
    }

private:
    struct Since
    {
        Microseconds time;
        int order;
    };

    void enter(const State& state, Microseconds time)
    {
        if (!m_since.contains(state))
            m_since.insert(state, {time, m_entered++});
    }

    QMap<State, Since> m_since;
    int m_entered = 0;
};

} // namespace

MachineRecording withoutOldest(const MachineRecording& recording, int count)
{
    MachineRecording rest = recording;
    ActiveStates active(recording);
    for (int i = 0; i < count; ++i) {
        const Entry& entry = recording.entries[i];
        active.follow(entry, [](const auto&...) {});
        if (entry.kind == Entry::Started || entry.kind == Entry::Stopped)
            rest.wasRunning = entry.kind == Entry::Started;
    }
    rest.activeBefore = active.inOrder();
    rest.dropped += count;
    rest.entries.remove(0, count);
    return rest;
}

QVector<State> MachineRecording::currentStates() const
{
    ActiveStates active(*this);
    for (const Entry& entry : entries)
        active.follow(entry, [](const auto&...) {});
    QVector<State> states;
    const QVector<ActiveState> present = active.inOrder();
    for (const ActiveState& each : present)
        states.append(each.state);
    return states;
}

QMap<State, Microseconds> MachineRecording::timesSpent() const
{
    QMap<State, Microseconds> times;
    const auto add = [&times](const State& state, Microseconds since, Microseconds until) {
        times[state] += until - since;
    };
    ActiveStates active(*this);
    for (const Entry& entry : entries)
        active.follow(entry, add);
    active.leaveAll(duration, add);
    return times;
}

QMap<MachineRecording::Transition, int> MachineRecording::timesFired() const
{
    QMap<Transition, int> times;
    for (const Entry& entry : entries) {
        if (entry.kind == Entry::Fired)
            ++times[entry.transition];
    }
    return times;
}

} // namespace zeltools::declarativestatemachine
