#include "declarativestatemachine/entrygraph_p.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/stronglyconnected_p.h"

#include <algorithm>
#include <set>

namespace zeltools::declarativestatemachine
{

namespace
{

// The number of states around a target that are followed; deeper circles are not found.
constexpr int s_longestWalk = 100;

} // namespace

EntryGraph::EntryGraph(const DescriptionIndex& index, const std::vector<bool>& isUsable)
    : m_index(index)
    , m_isUsable(isUsable)
    , m_states(static_cast<int>(index.states().size()))
    , m_isReachable(index.states().size())
    , m_canBeLeft(index.states().size())
{
    findReachable();
    findLeavable();
    m_endlessCircles = findCircles(false);
    std::set<int> endless;
    for (const States& circle : m_endlessCircles)
        endless.insert(circle.begin(), circle.end());
    for (States& circle : findCircles(true)) {
        if (std::none_of(circle.begin(), circle.end(),
                         [&endless](int state) { return endless.count(state) > 0; }))
            m_guardedCircles.push_back(std::move(circle));
    }
}

// Final states have no transitions, and those of a history only say where it leads.
bool EntryGraph::mayLead(int transition) const
{
    const DescriptionIndex::Transition& record = m_index.transitions()[size_t(transition)];
    const DescriptionIndex::State& source = m_index.state(record.source);
    return m_isUsable[size_t(transition)] && record.target >= 0 && !source.isFinal &&
           !source.description->isHistory();
}

EntryGraph::Edges EntryGraph::entryEdges() const
{
    Edges edges(size_t(m_states) * 2);
    for (int state = 0; state < m_states; ++state) {
        const DescriptionIndex::State& record = m_index.state(state);
        std::vector<int>& targets = edges[size_t(entry(state))];
        targets.push_back(state);
        const int first = record.description->isHistory() ? entryOfHistory(state)
                          : record.isFinal                ? -1
                                                          : m_index.initialChildOf(state);
        if (first >= 0 && !m_index.isParallel(state))
            targets.push_back(entry(first));
        if (record.parent >= 0 && m_index.isParallel(record.parent) &&
            !record.description->isHistory())
            edges[size_t(record.parent)].push_back(entry(state));
    }
    return edges;
}

int EntryGraph::entryOfHistory(int state) const
{
    const DescriptionIndex::State& record = m_index.state(state);
    for (size_t i = 0; i < record.description->transitions.size(); ++i) {
        if (record.description->transitions[i].type == TransitionDescription::Direct)
            return m_index.transitions()[size_t(record.firstTransition) + i].target;
    }
    return m_index.initialChildOf(record.parent);
}

void EntryGraph::findReachable()
{
    Edges edges = entryEdges();
    for (int state = 0; state < m_states; ++state) {
        if (m_index.state(state).parent >= 0)
            edges[size_t(state)].push_back(m_index.state(state).parent);
    }
    for (size_t i = 0; i < m_isUsable.size(); ++i) {
        const DescriptionIndex::Transition& transition = m_index.transitions()[i];
        if (mayLead(static_cast<int>(i)))
            edges[size_t(transition.source)].push_back(entry(transition.target));
    }
    std::vector<bool> isSeen(edges.size());
    std::vector<int> open;
    if (m_index.initialChildOf(-1) >= 0)
        open.push_back(entry(m_index.initialChildOf(-1)));
    while (!open.empty()) {
        const size_t node = size_t(open.back());
        open.pop_back();
        if (!isSeen[node])
            open.insert(open.end(), edges[node].begin(), edges[node].end());
        isSeen[node] = true;
    }
    std::copy_n(isSeen.begin(), m_states, m_isReachable.begin());
}

// The lowest and the highest target tell whether one of many is outside of a state, since a state
// and its descendants have consecutive numbers.
void EntryGraph::findLeavable()
{
    struct Targets
    {
        void add(const Targets& other)
        {
            lowest = std::min(lowest, other.lowest);
            highest = std::max(highest, other.highest);
        }
        int lowest;
        int highest;
    };
    std::vector<Targets> own(size_t(m_states), Targets{m_states, -1});
    for (size_t i = 0; i < m_isUsable.size(); ++i) {
        const DescriptionIndex::Transition& transition = m_index.transitions()[i];
        if (mayLead(static_cast<int>(i)))
            own[size_t(transition.source)].add({transition.target, transition.target});
    }
    const auto isOutside = [this](const Targets& targets, int state) {
        return targets.lowest < state || targets.highest >= m_index.state(state).end;
    };
    std::vector<Targets> all = own; // of the state, those in it and those around it
    for (int state = m_states - 1; state >= 0; --state) {
        const int parent = m_index.state(state).parent;
        if (parent < 0)
            continue;
        all[size_t(parent)].add(all[size_t(state)]);
        // A transition out of one child of a parallel state leaves the others too.
        if (m_index.isParallel(parent) && isOutside(all[size_t(state)], state))
            own[size_t(parent)].add(all[size_t(state)]);
    }
    for (int state = 0; state < m_states; ++state) {
        const int parent = m_index.state(state).parent;
        if (parent >= 0) {
            own[size_t(state)].add(own[size_t(parent)]);
            all[size_t(state)].add(own[size_t(parent)]);
        }
        m_canBeLeft[size_t(state)] = isOutside(all[size_t(state)], state);
    }
}

// A direct transition without a guard is the last one that may be taken.
void EntryGraph::addDirectEdges(Edges& edges, int state, bool withGuards) const
{
    const DescriptionIndex::State& record = m_index.state(state);
    for (size_t i = 0; i < record.description->transitions.size(); ++i) {
        const TransitionDescription& transition = record.description->transitions[i];
        if (transition.type != TransitionDescription::Direct)
            continue;
        const int number = record.firstTransition + static_cast<int>(i);
        if (transition.hasGuard() && !withGuards)
            return;
        if (mayLead(number))
            addEntryFrom(edges, state, m_index.transitions()[size_t(number)].target);
        if (!transition.hasGuard())
            return;
    }
}

// A transition enters its target, and the states around it that are not also around the source. It
// also leaves and enters a parallel state when it leads from one of its children to another one.
void EntryGraph::addEntryFrom(Edges& edges, int source, int target) const
{
    std::vector<int>& targets = edges[size_t(source)];
    targets.push_back(entry(target));
    int around = m_index.state(target).parent;
    for (int steps = 0; around >= 0 && steps < s_longestWalk; ++steps) {
        if (around != source && m_index.contains(around, source) && !m_index.isParallel(around))
            break;
        targets.push_back(around);
        around = m_index.state(around).parent;
    }
}

std::vector<EntryGraph::States> EntryGraph::findCircles(bool withGuards) const
{
    Edges edges = entryEdges();
    std::vector<size_t> indirect;
    for (int state = 0; state < m_states; ++state) {
        indirect.push_back(edges[size_t(state)].size());
        if (canBeReached(state))
            addDirectEdges(edges, state, withGuards);
    }
    std::vector<States> circles;
    for (const std::vector<int>& group : findConnectedGroups(edges)) {
        States circle;
        std::copy_if(group.begin(), group.end(), std::back_inserter(circle), [&](int node) {
            return node < m_states && edges[size_t(node)].size() > indirect[size_t(node)];
        });
        std::sort(circle.begin(), circle.end());
        if (!circle.empty())
            circles.push_back(std::move(circle));
    }
    return circles;
}

} // namespace zeltools::declarativestatemachine
