#include "declarativestatemachine/declarativestatemachine.h"

#include "declarativestatemachine/delayedtransition.h"
#include "declarativestatemachine/guardedsignaltransition.h"
#include "declarativestatemachine/signalutils.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"

#include <QFinalState>
#include <QPointer>
#include <QScopeGuard>
#include <QSignalTransition>
#include <QState>
#include <QStateMachine>

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

// Building goes on after a check that failed.
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

// Calls an action, a guard or a slot of the host, which may destroy this object. The inner machine
// is at work then: it goes when the call has come back to it, and control from it to the event
// loop.
template <typename Callable>
auto DeclarativeStateMachine::callOut(const Callable& callable)
{
    const QPointer<DeclarativeStateMachine> self(this);
    QStateMachine* const machine = m_machine.get();
    const bool isOutermost = ++m_callsOut == 1;
    const auto leave = qScopeGuard([&] {
        if (DeclarativeStateMachine* const owner = self)
            --owner->m_callsOut;
        else if (isOutermost)
            machine->deleteLater();
    });
    return callable();
}

DeclarativeStateMachine::DeclarativeStateMachine(const LogModule& module, QObject* parent)
    : QObject(parent)
    , m_module(module)
    , m_machine(std::make_unique<QStateMachine>())
{
    constexpr int restartDelay_ms = 100; // the stop takes a turn of the event loop
    m_restartTimer.setSingleShot(true);
    m_restartTimer.setInterval(restartDelay_ms);
    connect(&m_restartTimer, &QTimer::timeout, this, &DeclarativeStateMachine::start);
    connect(m_machine.get(), &QStateMachine::runningChanged, this, [this] {
        m_isStarting = false;
        m_isStopAwaited = m_isStopAwaited && isRunning();
        if (!isRunning() && m_isStartAwaited)
            start();
        LogFormatter(LogLevel::Info).log(m_module)
            << "State machine" << (isRunning() ? "Started" : "Stopped");
        callOut([this] { Q_EMIT runningChanged(); });
    });
}

DeclarativeStateMachine::~DeclarativeStateMachine()
{
    if (m_callsOut > 0) {
        m_machine->stop();
        (void)m_machine.release(); // callOut() sees to it
    }
}

void DeclarativeStateMachine::setDescription(const StateMachineDescription& description)
{
    std::vector<QAbstractState*> built;
    States states;
    for (const StateDescription& state : description.states) {
        built.push_back(addState(state, description.isFinal(built.size())));
        states.insert(state.name, built.back());
        if (built.size() == 1)
            m_machine->setInitialState(built.front());
    }
    for (size_t i = 0; i < built.size(); ++i) {
        const StateDescription& state = description.states[i];
        for (const TransitionDescription& transition : state.transitions)
            addTransition(transition, state.name, built[i], states);
    }
}

QAbstractState* DeclarativeStateMachine::addState(const StateDescription& description, bool isFinal)
{
    QAbstractState* const state =
        isFinal ? static_cast<QAbstractState*>(new QFinalState(m_machine.get()))
                : new QState(m_machine.get());
    const auto run = [this, state](auto signal, const std::function<void()>& action) {
        if (action)
            connect(state, signal, this, [this, action] { callOut(action); });
    };
    run(&QAbstractState::entered, description.action);
    run(&QAbstractState::exited, description.exitAction);
    return state;
}

void DeclarativeStateMachine::addTransition(const TransitionDescription& description,
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
                LogFormatter(LogLevel::Debug).log(m_module).log(text);
            });
    transition->setTargetState(targetState);
    sourceState->addTransition(transition);
}

QAbstractTransition*
DeclarativeStateMachine::makeTransition(const TransitionDescription& description, QState* source)
{
    switch (description.type) {
    case TransitionDescription::Direct:
        return new QSignalTransition(source, SIGNAL(entered()), source);
    case TransitionDescription::Timeout:
        return new DelayedTransition(source, description.timeout);
    case TransitionDescription::Signal: {
        std::function<bool()> guard;
        if (description.guard) {
            // The rest of the guards are asked even when one of them has destroyed this object.
            guard = [self = QPointer<DeclarativeStateMachine>(this), asked = description.guard] {
                DeclarativeStateMachine* const machine = self;
                return machine != nullptr && machine->callOut(asked);
            };
        }
        return new GuardedSignalTransition(description.obj, description.signal, source, guard);
    }
    }
    return nullptr;
}

void DeclarativeStateMachine::start()
{
    m_restartTimer.stop();
    // The inner machine would forget a start that comes before the stop has had its turn.
    m_isStartAwaited = m_isStopAwaited;
    if (m_isStopAwaited)
        return;
    m_machine->start();
    m_isStarting = !isRunning() && m_machine->initialState() != nullptr;
}

void DeclarativeStateMachine::restart()
{
    m_isStopAwaited = isRunning() || m_isStarting;
    m_isStartAwaited = false;
    m_machine->stop();
    m_restartTimer.start();
}

bool DeclarativeStateMachine::isRunning() const
{
    return m_machine->isRunning();
}

} // namespace zeltools::declarativestatemachine
