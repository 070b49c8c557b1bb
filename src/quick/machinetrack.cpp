#include "quick/machinetrack_p.h"

#include <algorithm>
#include <numeric>

namespace zeltools::quick
{

using std::chrono::milliseconds;
using Entry = declarativestatemachine::MachineRecording::Entry;

MachineTrack::MachineTrack(std::shared_ptr<const MachineGraph> graph)
    : m_graph(std::move(graph))
    , m_states(m_graph->states.size())
    , m_timesFired(m_graph->transitions.size())
    , m_firstTransitions(m_states.size() + 1)
{
    for (int i = 0; i < int(m_states.size()); ++i)
        m_numbers.insert(m_graph->states[size_t(i)].id, i);
    for (const MachineGraph::Transition& transition : m_graph->transitions)
        ++m_firstTransitions[size_t(transition.source) + 1];
    std::partial_sum(m_firstTransitions.begin(), m_firstTransitions.end(),
                     m_firstTransitions.begin());
}

int MachineTrack::numberOf(const Recording::Transition& transition) const
{
    const int source = m_numbers.value(transition.source, -1);
    if (source < 0 || transition.number < 1)
        return -1;
    const int number = m_firstTransitions[size_t(source)] + transition.number - 1;
    return number < m_firstTransitions[size_t(source) + 1] ? number : -1;
}

void MachineTrack::read(const Recording& recording, Time now)
{
    const auto enter = [&](const Recording::State& name, std::chrono::microseconds time) {
        const int number = m_numbers.value(name, -1);
        if (number < 0)
            return;
        State& state = m_states[size_t(number)];
        state.since = now - (recording.duration - time);
        state.isVisited = true;
        // A state that was present when the recording began has no other time than its beginning.
        state.isSinceKnown = time.count() > 0;
    };
    for (const Recording::ActiveState& active : recording.activeBefore)
        enter(active.state, active.since);
    for (const Entry& entry : recording.entries) {
        if (entry.kind == Entry::Started)
            ++m_starts;
        else if (entry.kind == Entry::Entered)
            enter(entry.transition.source, entry.time);
        else if (entry.kind == Entry::Fired && numberOf(entry.transition) >= 0)
            ++m_timesFired[size_t(numberOf(entry.transition))];
    }
}

void MachineTrack::fire(int transition, Time now)
{
    if (transition < 0 || transition >= int(m_timesFired.size()))
        return;
    ++m_timesFired[size_t(transition)];
    const MachineGraph::Transition& fired = m_graph->transitions[size_t(transition)];
    if (fired.target < 0)
        return;
    const int top = m_graph->contains(fired.source, fired.target) ? fired.source : fired.target;
    for (int i = top; i < m_graph->states[size_t(top)].end; ++i) {
        m_states[size_t(i)].since = now;
        m_states[size_t(i)].isSinceKnown = true;
    }
}

void MachineTrack::setPresent(const std::vector<int>& states, Time now, bool isEntry)
{
    std::vector<bool> isPresent(m_states.size());
    for (int number : states) {
        if (number < int(m_states.size()))
            isPresent[size_t(number)] = true;
    }
    for (size_t i = 0; i < m_states.size(); ++i) {
        State& state = m_states[i];
        if (isPresent[i] && !state.isPresent && (isEntry || !state.isVisited)) {
            state.since = now;
            state.isSinceKnown = isEntry;
        }
        state.isPresent = isPresent[i];
        state.isVisited = state.isVisited || isPresent[i];
    }
}

milliseconds MachineTrack::timeIn(int state, Time now) const
{
    return std::chrono::duration_cast<milliseconds>(now - m_states[size_t(state)].since);
}

// A parent has a smaller number than its children.
std::vector<bool> MachineTrack::enteredByDefault() const
{
    std::vector<bool> isEntered(m_states.size());
    std::vector<bool> isInitial(m_states.size());
    for (size_t i = 0; i < m_timesFired.size(); ++i) {
        const int target = m_graph->transitions[i].target;
        if (target >= 0 && m_timesFired[i] > 0)
            isEntered[size_t(target)] = true;
    }
    for (size_t i = 0; i < m_states.size(); ++i) {
        const int parent = m_graph->states[i].parent;
        const bool isFirst = (parent < 0 ? m_graph->initialState
                                         : m_graph->states[size_t(parent)].initialChild) == int(i);
        const bool isRegion =
            parent >= 0 && m_graph->states[size_t(parent)].kind == MachineGraph::Kind::Parallel;
        isInitial[i] =
            (isFirst || isRegion) && (parent < 0 ? m_starts > 0 : isEntered[size_t(parent)]);
        isEntered[i] = isEntered[i] || isInitial[i];
    }
    return isInitial;
}

int MachineTrack::innermostState() const
{
    int found = -1;
    for (int i = 0; i < int(m_states.size()); ++i) {
        if (!m_states[size_t(i)].isPresent)
            continue;
        const bool isDeeper = found >= 0 && m_graph->contains(found, i);
        if (found < 0 || isDeeper || m_states[size_t(i)].since > m_states[size_t(found)].since)
            found = i;
    }
    return found;
}

} // namespace zeltools::quick
