#pragma once

#include <cstddef>
#include <vector>

namespace zeltools::declarativestatemachine
{

class DescriptionIndex;

/// Follows a description without running it: which states are entered with which ones, and where
/// transitions lead. Guards may have any result. States and transitions have the numbers of the
/// index, which must outlive the graph. All functions are linear in their number.
class EntryGraph
{
public:
    /// Some states, in the order of their numbers.
    using States = std::vector<int>;

    /// `isUsable` says of each transition whether it leads to its target if it is triggered.
    EntryGraph(const DescriptionIndex& index, const std::vector<bool>& isUsable);

    bool canBeReached(int state) const { return m_isReachable[std::size_t(state)]; }
    /// Whether a transition of the state, of one around it, of one in it or of one that is active
    /// beside it in a parallel state leads out of the state.
    bool canBeLeft(int state) const { return m_canBeLeft[std::size_t(state)]; }
    /// The states of each circle of direct transitions without guards: the machine never leaves it.
    const std::vector<States>& endlessCircles() const { return m_endlessCircles; }
    /// The states of each other circle of direct transitions, where guards decide.
    const std::vector<States>& guardedCircles() const { return m_guardedCircles; }

private:
    // A state has two nodes. The first one stands for being active, the second one for being
    // entered together with its initial children.
    using Edges = std::vector<std::vector<int>>;

    int entry(int state) const { return m_states + state; }
    bool mayLead(int transition) const;
    Edges entryEdges() const;
    int entryOfHistory(int state) const;
    void findReachable();
    void findLeavable();
    void addDirectEdges(Edges& edges, int state, bool withGuards) const;
    void addEntryFrom(Edges& edges, int source, int target) const;
    std::vector<States> findCircles(bool withGuards) const;

    const DescriptionIndex& m_index;
    const std::vector<bool>& m_isUsable;
    const int m_states;
    std::vector<bool> m_isReachable;
    std::vector<bool> m_canBeLeft;
    std::vector<States> m_endlessCircles;
    std::vector<States> m_guardedCircles;
};

} // namespace zeltools::declarativestatemachine
