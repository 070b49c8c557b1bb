#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QHash>

namespace zeltools::declarativestatemachine
{

/// The states and transitions of a description with those of its child states, numbered from 0 in
/// the order in which they stand in its text: a state comes before its children. The description
/// must outlive the index.
class DescriptionIndex
{
public:
    struct State
    {
        const StateDescription* description;
        int parent; ///< the number of the state around it, -1 for a state of the machine itself
        bool isFinal;
        int firstTransition;
        int end;          ///< its descendants have the numbers between its own and this one
        int initialChild; ///< see initialChildOf()
        bool hasGuardedTimeout = false;
    };
    struct Transition
    {
        const TransitionDescription* description;
        int source;
        int target; ///< -1 for a transition without a target, and if no state has its name
    };

    explicit DescriptionIndex(const StateMachineDescription& description);

    const std::vector<State>& states() const { return m_states; }
    const std::vector<Transition>& transitions() const { return m_transitions; }

    const State& state(int number) const { return m_states[size_t(number)]; }
    const Transition& transition(int number) const { return m_transitions[size_t(number)]; }
    int parentOf(int number) const { return state(number).parent; }
    bool isParallel(int number) const
    {
        return state(number).description->kind == StateDescription::Parallel;
    }
    bool hasChildren(int number) const { return state(number).end > number + 1; }
    /// Whether the inner state is the outer one or a descendant of it.
    bool contains(int outer, int inner) const { return outer <= inner && inner < state(outer).end; }
    const QString& nameOf(int number) const { return state(number).description->name; }
    /// The state to which transitions of that name lead, which is the last one with the name; -1 if
    /// no state has it.
    int indexOf(const QString& name) const { return m_numbers.value(name, -1); }
    /// The child that is entered together with the state: the first one that is not a history; -1
    /// if there is none. For -1 it is the initial state of the machine.
    int initialChildOf(int number) const
    {
        return number < 0 ? m_initialState : state(number).initialChild;
    }

private:
    void addStates(const std::vector<StateDescription>& states);
    void addRelations();
    void addTransitions();

    std::vector<State> m_states;
    std::vector<Transition> m_transitions;
    QHash<QString, int> m_numbers;
    int m_initialState = -1;
};

} // namespace zeltools::declarativestatemachine
