#include "declarativestatemachine/innermachine_p.h"

#include "declarativestatemachine/delayedtransition.h"
#include "declarativestatemachine/guardedsignaltransition.h"
#include "declarativestatemachine/signalutils.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"

#include <QFinalState>
#include <QSignalTransition>
#include <QState>

namespace zeltools::declarativestatemachine
{

namespace
{

QString firedText(const TransitionDescription& transition, const QString& source)
{
    const QString& target = transition.targetState;
    switch (transition.type) {
    case TransitionDescription::Direct:
        return QStringLiteral(" ^ Transition from %1 to %2 triggered (direct)").arg(source, target);
    case TransitionDescription::Timeout:
        return QStringLiteral(" ^ Transition from %1 to %2 trigerred (timeout %3ms)")
            .arg(source, target, QString::number(transition.timeout.count()));
    case TransitionDescription::Signal:
        return QStringLiteral(" ^ Transition from %1 to %2 triggered, signal %3")
            .arg(source, target,
                 signalutils::classAndSignalName(transition.obj, transition.signal, false));
    }
    return {};
}

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
    verify(isTargetThere, "targetState != nullptr",
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

InnerMachine::InnerMachine(const LogModule& module)
    : m_module(module)
{
}

InnerMachine::~InnerMachine() = default;

void InnerMachine::abandon()
{
    if (m_runningCalls == 0) {
        delete this;
        return;
    }
    stop();
    m_isAbandoned = true;
}

void InnerMachine::build(const StateMachineDescription& description)
{
    std::vector<QAbstractState*> built;
    States states;
    for (const StateDescription& state : description.states) {
        built.push_back(addState(state, description.isFinal(built.size())));
        states.insert(state.name, built.back());
        if (built.size() == 1)
            setInitialState(built.front());
    }
    for (size_t i = 0; i < built.size(); ++i) {
        const StateDescription& state = description.states[i];
        for (const TransitionDescription& transition : state.transitions)
            addTransition(transition, state.name, built[i], states);
    }
}

QAbstractState* InnerMachine::addState(const StateDescription& description, bool isFinal)
{
    QAbstractState* const state =
        isFinal ? static_cast<QAbstractState*>(new QFinalState(this)) : new QState(this);
    const auto run = [this, state](auto signal, const std::function<void()>& action) {
        if (action)
            connect(state, signal, this, [this, action] { callHost(action); });
    };
    run(&QAbstractState::entered, description.action);
    run(&QAbstractState::exited, description.exitAction);
    return state;
}

void InnerMachine::addTransition(const TransitionDescription& description,
                                 const QString& sourceName, QAbstractState* source,
                                 const States& states)
{
    auto* const sourceState = qobject_cast<QState*>(source);
    QAbstractState* const targetState = states.value(description.targetState);
    verifyTransition(description, sourceName, sourceState == nullptr, targetState != nullptr);
    QAbstractTransition* const transition =
        sourceState != nullptr ? makeTransition(description, sourceState) : nullptr;
    if (transition == nullptr)
        return;
    connect(transition, &QAbstractTransition::triggered, this,
            [this, text = firedText(description, sourceName)] {
                if (!m_isAbandoned)
                    LogFormatter(LogLevel::Debug).log(m_module).log(text);
            });
    transition->setTargetState(targetState);
    sourceState->addTransition(transition);
}

QAbstractTransition* InnerMachine::makeTransition(const TransitionDescription& description,
                                                  QState* source)
{
    switch (description.type) {
    case TransitionDescription::Direct:
        return new QSignalTransition(source, SIGNAL(entered()), source);
    case TransitionDescription::Timeout:
        return new DelayedTransition(source, description.timeout);
    case TransitionDescription::Signal: {
        std::function<bool()> guard;
        if (description.guard)
            guard = [this, asked = description.guard] { return callHost(asked); };
        return new GuardedSignalTransition(description.obj, description.signal, source, guard);
    }
    }
    return nullptr;
}

} // namespace zeltools::declarativestatemachine
