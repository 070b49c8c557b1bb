#include "declarativestatemachine/descriptionindex_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

DescriptionIndex::DescriptionIndex(const StateMachineDescription& description)
{
    addStates(description.states);
    addRelations();
    addTransitions();
}

// The states that are still to be numbered are on a stack of its own, with the next one on top, so
// that deep descriptions need no deep calls.
void DescriptionIndex::addStates(const std::vector<StateDescription>& states)
{
    std::vector<State> open;
    const auto push = [&open](const std::vector<StateDescription>& children, int parent) {
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            open.push_back({&*child, parent, child->kind == StateDescription::Final, 0, 0, -1});
    };
    push(states, -1);
    if (states.size() > 1)
        open.front().isFinal = true;
    while (!open.empty()) {
        const State state = open.back();
        open.pop_back();
        const int number = static_cast<int>(m_states.size());
        m_states.push_back(state);
        m_numbers.insert(state.description->name, number);
        push(state.description->states, number);
    }
}

// From the last state to the first one, so that all descendants come before a state, and the first
// child of several is the last to be written.
void DescriptionIndex::addRelations()
{
    for (int number = static_cast<int>(m_states.size()) - 1; number >= 0; --number) {
        State& state = m_states[size_t(number)];
        state.end = std::max(state.end, number + 1);
        State* const parent = state.parent < 0 ? nullptr : &m_states[size_t(state.parent)];
        if (parent != nullptr)
            parent->end = std::max(parent->end, state.end);
        if (!state.description->isHistory())
            (parent != nullptr ? parent->initialChild : m_initialState) = number;
    }
}

void DescriptionIndex::addTransitions()
{
    for (size_t i = 0; i < m_states.size(); ++i) {
        m_states[i].firstTransition = static_cast<int>(m_transitions.size());
        for (const TransitionDescription& transition : m_states[i].description->transitions) {
            const int target = transition.isTargetless ? -1 : indexOf(transition.targetState);
            m_transitions.push_back({&transition, static_cast<int>(i), target});
            if (transition.type == TransitionDescription::Timeout && transition.hasGuard())
                m_states[i].hasGuardedTimeout = true;
        }
    }
}

} // namespace zeltools::declarativestatemachine
