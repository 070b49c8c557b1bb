#pragma once

#include "quick/machinegraph_p.h"

#include <QMap>

#include <chrono>
#include <memory>
#include <vector>

namespace zeltools::quick
{

/// Where a machine is and which way it has taken: the present states with the time of their
/// entries, the states that were visited and how often each transition fired. States and
/// transitions are the numbers of the graph, which must not be too large.
class MachineTrack
{
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;
    using Recording = declarativestatemachine::MachineRecording;

    explicit MachineTrack(std::shared_ptr<const MachineGraph> graph);

    /// Counts what was recorded up to now.
    void read(const Recording& recording, Time now);
    /// The number of a transition of the recording, -1 if the graph has none of that name.
    int numberOf(const Recording::Transition& transition) const;
    void start() { ++m_starts; }
    /// The states that the transition leaves and enters again begin anew.
    void fire(int transition, Time now);
    /// States that become present while the machine is watched were entered now; those that are
    /// present when `isEntry` is false were entered earlier.
    void setPresent(const std::vector<int>& states, Time now, bool isEntry);

    bool isPresent(int state) const { return m_states[size_t(state)].isPresent; }
    bool isVisited(int state) const { return m_states[size_t(state)].isVisited; }
    int timesFired(int transition) const { return m_timesFired[size_t(transition)]; }
    /// How long the state has been present, or the least time if isTimeKnown() is false.
    std::chrono::milliseconds timeIn(int state, Time now) const;
    bool isTimeKnown(int state) const { return m_states[size_t(state)].isSinceKnown; }
    /// For each state, whether it was entered because it is the initial one of its parent.
    std::vector<bool> enteredByDefault() const;
    /// The present state without a present child that was entered last; -1 if there is none.
    int innermostState() const;

private:
    struct State
    {
        Time since;
        bool isPresent = false;
        bool isVisited = false;
        bool isSinceKnown = false;
    };

    const std::shared_ptr<const MachineGraph> m_graph;
    std::vector<State> m_states;
    std::vector<int> m_timesFired;
    QMap<Recording::State, int> m_numbers;
    std::vector<int> m_firstTransitions; // of each state, and one behind the last
    int m_starts = 0;
};

} // namespace zeltools::quick
