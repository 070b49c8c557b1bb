#include "declarativestatemachine/machinebuilder_p.h"

#include "declarativestatemachine/describedstate_p.h"
#include "declarativestatemachine/signalutils.h"
#include "logging/zelassert.h"

#include <QAbstractTransition>
#include <QFinalState>
#include <QHistoryState>
#include <QSignalTransition>
#include <QState>

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

void verify(bool holds, const char* expression, const QString& message, int line)
{
    if (!holds)
        printReleaseAssertMsg(expression, message, __FILE__, line);
}

// Building continues after a failed check.
void verifyTransition(const TransitionDescription& transition, const QString& source,
                      bool isSourceFinal, bool isTargetThere)
{
    verify(!isSourceFinal, "stateDescription.transitions.size() == 0",
           QStringLiteral("Attempting to add transitions from final state %1").arg(source),
           __LINE__);
    verify(isTargetThere || transition.isTargetless, "targetState != nullptr",
           QStringLiteral("Attempting to set a transition to undefined state %1")
               .arg(transition.targetState),
           __LINE__);
    if (transition.type == TransitionDescription::Signal) {
        verify(signalutils::classContainsSignal(transition.obj, transition.signal),
               "zeltools::signalutils::classContainsSignal(transitionDescription.obj, "
               "transitionDescription.signal)",
               QStringLiteral("Signal %1 does not exist").arg(QLatin1String(transition.signal)),
               __LINE__);
    }
}

} // namespace

void MachineBuilder::build()
{
    const int count = static_cast<int>(m_index.states().size());
    for (int i = 0; i < count; ++i)
        m_states.push_back(addState(i));
    for (int i = 0; i < count; ++i)
        setDefaultOf(i);
    for (int i = 0; i < static_cast<int>(m_index.transitions().size()); ++i)
        addTransition(i);
    m_machine.statesBuilt(m_states);
}

QAbstractState* MachineBuilder::addState(int number)
{
    const DescriptionIndex::State& state = m_index.state(number);
    const StateDescription& description = *state.description;
    QState* const parent =
        state.parent < 0 ? &m_machine : qobject_cast<QState*>(m_states[size_t(state.parent)]);
    if (parent == nullptr)
        return nullptr;
    verify(description.states.empty() || !(state.isFinal || description.isHistory()),
           "stateDescription.states.size() == 0",
           QStringLiteral("Attempting to add states to %1, which is final or a history")
               .arg(description.name),
           __LINE__);
    QAbstractState* const built = makeState(number, parent);
    const bool isInitial = parent->initialState() == nullptr &&
                           parent->childMode() == QState::ExclusiveStates &&
                           qobject_cast<QHistoryState*>(built) == nullptr;
    if (isInitial)
        parent->setInitialState(built);
    return built;
}

QAbstractState* MachineBuilder::makeState(int number, QState* parent)
{
    const StateDescription& description = *m_index.state(number).description;
    if (!m_index.state(number).isFinal && description.isHistory())
        return new QHistoryState(description.kind == StateDescription::DeepHistory
                                     ? QHistoryState::DeepHistory
                                     : QHistoryState::ShallowHistory,
                                 parent);
    if (m_index.state(number).isFinal)
        return new DescribedState<QFinalState>(m_machine, number, parent);
    auto* const state = new DescribedState<QState>(m_machine, number, parent);
    if (description.kind == StateDescription::Parallel)
        state->setChildMode(QState::ParallelStates);
    return state;
}

// A history that leads nowhere would stop the machine when it is entered, so it is left out.
void MachineBuilder::setDefaultOf(int history)
{
    auto* const built = qobject_cast<QHistoryState*>(m_states[size_t(history)]);
    if (built == nullptr)
        return;
    const int target = defaultOf(history);
    if (target < 0) {
        delete built;
        m_states[size_t(history)] = nullptr;
        return;
    }
    auto* const transition = new QSignalTransition;
    transition->setTargetState(m_states[size_t(target)]);
    built->setDefaultTransition(transition);
}

int MachineBuilder::defaultOf(int history) const
{
    const DescriptionIndex::State& state = m_index.state(history);
    const auto& transitions = state.description->transitions;
    const auto direct = std::find_if(transitions.begin(), transitions.end(), [](const auto& each) {
        return each.type == TransitionDescription::Direct;
    });
    const int target = direct == transitions.end() ? -1 : m_index.indexOf(direct->targetState);
    if (target < 0 || m_states[size_t(target)] == nullptr)
        return m_index.initialChildOf(state.parent);
    int around = m_index.state(target).parent;
    while (around >= 0 && around != state.parent)
        around = m_index.state(around).parent;
    const bool isUsable = around == state.parent && !m_index.state(target).description->isHistory();
    verify(isUsable, "historyDescription.parent.contains(targetState)",
           QStringLiteral("History %1 must lead to a state beside it, not to %2")
               .arg(state.description->name, direct->targetState),
           __LINE__);
    return isUsable ? target : m_index.initialChildOf(state.parent);
}

void MachineBuilder::addTransition(int number)
{
    const auto& [description, sourceNumber, targetNumber] = m_index.transition(number);
    QAbstractState* const source = m_states[size_t(sourceNumber)];
    QAbstractState* const target = targetNumber < 0 ? nullptr : m_states[size_t(targetNumber)];
    const QString& sourceName = m_index.nameOf(sourceNumber);
    verifyTransition(*description, sourceName, m_index.state(sourceNumber).isFinal,
                     target != nullptr);
    auto* const sourceState = qobject_cast<QState*>(source);
    QAbstractTransition* const transition =
        sourceState != nullptr ? m_machine.makeTransition(*description, number, sourceState)
                               : nullptr;
    if (transition == nullptr)
        return;
    transition->setTargetState(target);
    sourceState->addTransition(transition);
}

} // namespace zeltools::declarativestatemachine
