#include "quick/machinegraph_p.h"

#include "declarativestatemachine/signalutils.h"
#include "quick/displaytext_p.h"
#include "quick/durationtext_p.h"

#include <QHash>

#include <algorithm>

namespace zeltools::quick
{

using declarativestatemachine::StateDescription;
using declarativestatemachine::TransitionDescription;

namespace
{

struct OpenState
{
    const StateDescription* description;
    int parent;
};

// The first one is on top.
void push(std::vector<OpenState>& open, const std::vector<StateDescription>& states, int parent)
{
    for (auto state = states.rbegin(); state != states.rend(); ++state)
        open.push_back({&*state, parent});
}

} // namespace

MachineGraph::MachineGraph(const Description& description)
{
    std::vector<OpenState> open;
    size_t transitionCount = 0;
    push(open, description.states, -1);
    while (!open.empty()) {
        const StateDescription& state = *open.back().description;
        open.pop_back();
        ++stateCount;
        transitionCount += state.transitions.size();
        push(open, state.states, -1);
    }
    if (stateCount <= maximumStates && transitionCount <= size_t(maximumTransitions))
        addStates(description);
}

void MachineGraph::addStates(const Description& description)
{
    std::vector<OpenState> open;
    std::vector<const StateDescription*> descriptions;
    QHash<QString, int> numbers; // of several states with a name, transitions lead to the last
    QHash<QString, int> copies;
    push(open, description.states, -1);
    while (!open.empty()) {
        const auto [state, parent] = open.back();
        open.pop_back();
        const int number = static_cast<int>(states.size());
        states.push_back({DisplayText::name(state->name, maximumName),
                          {state->name, ++copies[state->name]},
                          state->kind,
                          parent,
                          number + 1,
                          -1});
        descriptions.push_back(state);
        numbers.insert(state->name, number);
        push(open, state->states, number);
    }
    const auto last = std::find_if(states.rbegin(), states.rend(),
                                   [](const State& state) { return state.parent < 0; });
    if (description.states.size() > 1) // The last state of the machine is final by its place.
        last->kind = Kind::Final;
    addRelations();
    for (int number = 0; number < stateCount; ++number)
        addTransitions(*descriptions[size_t(number)], number, numbers);
}

void MachineGraph::addRelations()
{
    for (int number = stateCount - 1; number >= 0; --number) {
        const State& state = states[size_t(number)];
        if (state.parent >= 0)
            states[size_t(state.parent)].end =
                std::max(states[size_t(state.parent)].end, state.end);
        if (!state.isHistory())
            (state.parent < 0 ? initialState : states[size_t(state.parent)].initialChild) = number;
    }
}

void MachineGraph::addTransitions(const StateDescription& state, int number,
                                  const QHash<QString, int>& numbers)
{
    for (const TransitionDescription& transition : state.transitions) {
        const int target = transition.isTargetless ? -1 : numbers.value(transition.targetState, -1);
        const bool isMissing = target < 0 && !transition.isTargetless;
        // The object of the signal may be gone; its name is not needed.
        transitions.push_back(
            {number, target, transition.type,
             DisplayText::name(transition.description, maximumName),
             transition.type == TransitionDescription::Signal
                 ? DisplayText::name(
                       signalutils::classAndSignalName(nullptr, transition.signal, false),
                       maximumName)
                 : QString(),
             transition.timeout, transition.hasGuard(),
             isMissing ? DisplayText::name(transition.targetState, maximumName) : QString()});
    }
}

QString MachineGraph::Transition::text() const
{
    QString text = description.isEmpty() ? signal : description;
    if (text.isEmpty() && type == Type::Timeout)
        text = MachineGraph::tr("after %1").arg(durationText(timeout));
    if (isGuarded && description.isEmpty())
        text += QLatin1Char(' ') + MachineGraph::tr("[guard]");
    if (!missingTarget.isEmpty())
        text += QStringLiteral(" → %1?").arg(missingTarget);
    return text.trimmed();
}

} // namespace zeltools::quick
