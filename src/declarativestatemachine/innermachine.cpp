#include "declarativestatemachine/innermachine_p.h"

#include "declarativestatemachine/delayedtransition.h"
#include "declarativestatemachine/describedtransition_p.h"
#include "declarativestatemachine/guardedsignaltransition.h"
#include "declarativestatemachine/machinebuilder_p.h"
#include "declarativestatemachine/signalutils.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"

#include <QSignalTransition>
#include <QState>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace zeltools::declarativestatemachine
{

namespace
{

// All delayed transitions have the same type of event. A timeout of the state around this one, or
// of another region, belongs to the transitions of that state.
class TimeoutOfState : public DelayedTransition
{
public:
    using DelayedTransition::DelayedTransition;

protected:
    bool eventTest(QEvent* e) override
    {
        return DelayedTransition::eventTest(e) && isOfSameState(e);
    }
};

// A timeout that a guard refuses must not trigger another transition of the state before its time.
class OwnTimeout : public DelayedTransition
{
public:
    using DelayedTransition::DelayedTransition;

protected:
    bool eventTest(QEvent* e) override { return DelayedTransition::eventTest(e) && isOwn(e); }
};

QString firedText(const TransitionDescription& transition, const QString& source)
{
    const QString way = transition.isTargetless
                            ? QStringLiteral("inside %1").arg(source)
                            : QStringLiteral("from %1 to %2").arg(source, transition.targetState);
    switch (transition.type) {
    case TransitionDescription::Direct:
        return QStringLiteral(" ^ Transition %1 triggered (direct)").arg(way);
    case TransitionDescription::Timeout:
        return QStringLiteral(" ^ Transition %1 trigerred (timeout %2ms)")
            .arg(way, QString::number(transition.timeout.count()));
    case TransitionDescription::Signal:
        return QStringLiteral(" ^ Transition %1 triggered, signal %2")
            .arg(way, signalutils::classAndSignalName(transition.obj, transition.signal, false));
    }
    return {};
}

QVariantList argumentsOf(QEvent* event)
{
    return event->type() == QEvent::StateMachineSignal
               ? static_cast<QStateMachine::SignalEvent*>(event)->arguments()
               : QVariantList();
}

} // namespace

InnerMachine::InnerMachine(const LogModule& module, Listener listener)
    : m_module(module)
    , m_listener(std::move(listener))
{
    connect(this, &QStateMachine::runningChanged, this, [this](bool isRunning) {
        if (!isRunning)
            forgetStates();
    });
}

InnerMachine::~InnerMachine() = default;

void InnerMachine::abandon()
{
    if (m_runningCalls == 0) {
        delete this;
        return;
    }
    stop();
    m_recorder = nullptr;
    m_isAbandoned = true;
}

void InnerMachine::build(const StateMachineDescription& description)
{
    if (m_index) {
        printReleaseAssertMsg("!m_index", "The machine already has a description", __FILE__,
                              __LINE__);
        return;
    }
    m_description = description;
    m_index.emplace(m_description);
    m_statuses.resize(m_index->states().size());
    for (const DescriptionIndex::Transition& transition : m_index->transitions())
        m_firedTexts.push_back(
            firedText(*transition.description, m_index->nameOf(transition.source)));
    for (size_t i = 0; i < m_statuses.size(); ++i)
        m_statuses[i].timeLimit = makeTimeLimit(static_cast<int>(i));
    MachineBuilder(*this).build();
}

QTimer* InnerMachine::makeTimeLimit(int number)
{
    using std::chrono::milliseconds;
    const milliseconds limit = m_index->state(number).description->timeLimit;
    if (limit <= milliseconds(0))
        return nullptr;
    auto* const timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer); // Other types may be early.
    timer->setInterval(std::min(limit, milliseconds(std::numeric_limits<int>::max())));
    connect(timer, &QTimer::timeout, this, [this, number] {
        if (m_listener.timeLimitExceeded)
            callHost([this, number] { m_listener.timeLimitExceeded(number); });
    });
    return timer;
}

QAbstractTransition* InnerMachine::makeTransition(const TransitionDescription& description,
                                                  int number, QState* source)
{
    switch (description.type) {
    case TransitionDescription::Direct:
        return new DescribedTransition<QSignalTransition>(*this, number, source, SIGNAL(entered()),
                                                          source);
    case TransitionDescription::Timeout:
        if (m_index->state(m_index->transition(number).source).hasGuardedTimeout)
            return new DescribedTransition<OwnTimeout>(*this, number, source, description.timeout);
        return new DescribedTransition<TimeoutOfState>(*this, number, source, description.timeout);
    case TransitionDescription::Signal:
        return new DescribedTransition<GuardedSignalTransition>(*this, number, description.obj,
                                                                description.signal, source);
    }
    return nullptr;
}

std::vector<int> InnerMachine::activeStates() const
{
    std::vector<int> numbers;
    for (size_t i = 0; i < m_statuses.size(); ++i) {
        if (m_statuses[i].isActive)
            numbers.push_back(static_cast<int>(i));
    }
    return numbers;
}

std::vector<int> InnerMachine::innermostStates() const
{
    const std::vector<int> active = activeStates();
    std::vector<bool> hasActiveChild(m_statuses.size());
    for (int number : active) {
        const int parent = m_index->state(number).parent;
        if (parent >= 0)
            hasActiveChild[size_t(parent)] = true;
    }
    std::vector<int> numbers;
    std::copy_if(active.begin(), active.end(), std::back_inserter(numbers),
                 [&](int number) { return !hasActiveChild[size_t(number)]; });
    return numbers;
}

QStringList InnerMachine::namesOf(const std::vector<int>& states) const
{
    QStringList names;
    for (int state : states)
        names.append(m_index->nameOf(state));
    return names;
}

void InnerMachine::publishChange()
{
    bool hasChanged = false;
    for (int number : m_touched) {
        Status& status = m_statuses[size_t(number)];
        hasChanged = hasChanged || status.isActive != status.isPublished;
        status.isPublished = status.isActive;
    }
    m_touched.clear();
    if (hasChanged && m_listener.stateChanged)
        callHost(m_listener.stateChanged);
}

void InnerMachine::beginSelectTransitions(QEvent*)
{
    if (m_recorder != nullptr)
        m_recorder->stepBegun();
}

// If there are transitions, the step goes on with beginMicrostep() before the host is called.
void InnerMachine::endSelectTransitions(QEvent*)
{
    if (m_recorder != nullptr)
        m_recorder->stepEnded();
}

void InnerMachine::beginMicrostep(QEvent*)
{
    if (m_recorder != nullptr)
        m_recorder->stepGoesOn();
}

void InnerMachine::endMicrostep(QEvent*)
{
    if (m_recorder != nullptr)
        m_recorder->stepEnded();
    publishChange();
}

void InnerMachine::enter(int state)
{
    if (!m_isUnderWay && m_recorder != nullptr)
        m_recorder->started();
    m_isUnderWay = true;
    Status& status = m_statuses[size_t(state)];
    status.isActive = true;
    m_touched.push_back(state);
    if (status.timeLimit != nullptr)
        status.timeLimit->start();
    if (m_recorder != nullptr)
        m_recorder->entered(state);
    const auto& action = m_index->state(state).description->action;
    if (action)
        callHost(action);
}

void InnerMachine::leave(int state)
{
    Status& status = m_statuses[size_t(state)];
    status.isActive = false;
    m_touched.push_back(state);
    if (status.timeLimit != nullptr)
        status.timeLimit->stop();
    if (m_recorder != nullptr)
        m_recorder->left(state);
    const auto& action = m_index->state(state).description->exitAction;
    if (action)
        callHost(action);
}

bool InnerMachine::askGuards(int transition, QEvent* event)
{
    const TransitionDescription& description = *m_index->transition(transition).description;
    if (description.guard && !callHost(description.guard))
        return false;
    return !description.argumentsGuard ||
           callHost([&] { return description.argumentsGuard(argumentsOf(event)); });
}

bool InnerMachine::accepts(int transition, QEvent* event)
{
    const bool isAccepted = askGuards(transition, event);
    if (m_recorder != nullptr)
        m_recorder->guardChecked(transition, isAccepted, argumentsOf(event));
    return isAccepted;
}

void InnerMachine::fire(int transition, QEvent* event)
{
    if (m_isAbandoned)
        return;
    LogFormatter(LogLevel::Debug).log(m_module).log(m_firedTexts[size_t(transition)]);
    const TransitionDescription& description = *m_index->transition(transition).description;
    if (m_recorder != nullptr)
        m_recorder->fired(transition, argumentsOf(event));
    if (m_listener.fired)
        callHost([this, transition] { m_listener.fired(transition); });
    if (description.action)
        callHost(description.action);
    if (description.argumentsAction)
        callHost([&] { description.argumentsAction(argumentsOf(event)); });
}

void InnerMachine::forgetStates()
{
    bool isFinished = false;
    for (int number : activeStates()) {
        const DescriptionIndex::State& state = m_index->state(number);
        isFinished = isFinished || (state.isFinal && state.parent < 0);
        Status& status = m_statuses[size_t(number)];
        status.isActive = false;
        m_touched.push_back(number);
        if (status.timeLimit != nullptr)
            status.timeLimit->stop();
    }
    m_isUnderWay = false;
    if (m_recorder != nullptr)
        m_recorder->stopped(isFinished);
}

} // namespace zeltools::declarativestatemachine
