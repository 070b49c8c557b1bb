#include "statemachine/statemachine.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/lognode.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace
{

LogFormatter logLine(LogLevel::Level level)
{
    return LogFormatter(level).log(Log::StateMachine);
}

// Called before a Debug line, so that names of states are only made for a line that is logged.
bool isDebugged()
{
    return LogNode::isHeard(LogLevel::Debug, Log::StateMachine);
}

// When an object emits destroyed(), it has already cleared all QPointers, and a new one would never
// be cleared.
bool isDestruction(const QMetaMethod& signal)
{
    return signal.enclosingMetaObject() == &QObject::staticMetaObject &&
           signal.name() == "destroyed";
}

} // namespace

bool operator<(const QMetaMethod& left, const QMetaMethod& right)
{
    return std::strcmp(left.methodSignature().constData(), right.methodSignature().constData()) < 0;
}

StateMachine::StateMachine(QObject* parent)
    : QObject(parent)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &StateMachine::goToNextState);
    m_timeLimit.setSingleShot(true);
    m_timeLimit.setTimerType(Qt::PreciseTimer); // Other types may be early.
    connect(&m_timeLimit, &QTimer::timeout, this, &StateMachine::onTimeLimit);
}

StateMachine::StateMachine(int initialState, QObject* parent)
    : StateMachine(parent)
{
    setInitialState(initialState);
}

StateMachine::~StateMachine() = default;

QString StateMachine::stateToString(int state) const
{
    switch (state) {
    case Transition:
        return QStringLiteral("Transition");
    case InvalidState:
        return QStringLiteral("InvalidState");
    default:
        break;
    }
    const char* const name = m_stateNames.valueToKey(state);
    return name != nullptr ? QString::fromUtf8(name) : QStringLiteral("Undefined (%1)").arg(state);
}

void StateMachine::setTimeLimit(int state, std::chrono::milliseconds limit)
{
    using std::chrono::milliseconds;
    if (limit > milliseconds(0))
        m_timeLimits[state] = std::min(limit, milliseconds(std::numeric_limits<int>::max()));
    else
        m_timeLimits.remove(state);
}

void StateMachine::onSignal(const QObject*, const QMetaMethod&, bool) {}

bool StateMachine::setInitialState(int state)
{
    if (m_currentState == InvalidState)
        return setState(state, false);
    logLine(LogLevel::Error) << "bool StateMachine::setInitialState(int)"
                             << ": State machine already in use";
    return false;
}

bool StateMachine::setState(int state, bool force)
{
    if (!force && state == m_currentState) {
        logLine(LogLevel::Warning)
            << "bool StateMachine::setState(int, bool)"
            << "state not set to " << stateToString(state)
            << ", because State is already = " << stateToString(m_currentState);
        return false;
    }
    if (m_inTransition) {
        logLine(LogLevel::Error) << "bool StateMachine::setState(int, bool)"
                                 << "state not set to" << stateToString(state)
                                 << ", because State is already changing from "
                                 << stateToString(m_previousState) << " to "
                                 << stateToString(m_nextState);
        return false;
    }
    m_previousState = m_currentState;
    m_nextState = state;
    m_currentState = Transition;
    m_inTransition = true;
    m_receptions.clear();
    m_pendingReceptions.clear();
    m_lastSignal = QMetaMethod();
    m_timeLimit.stop();

    const QPointer<StateMachine> self(this);
    Q_EMIT stateExit();
    if (self)
        m_turn.start(0);
    if (self && m_inTransition)
        Q_EMIT stateChanged();
    return true;
}

bool StateMachine::setStateAgain()
{
    return setState(m_currentState, true);
}

void StateMachine::goToNextState()
{
    if (!m_inTransition || m_nextState == InvalidState)
        return;
    m_currentState = m_nextState;
    m_inTransition = false;
    m_nextState = InvalidState;
    if (isDebugged())
        logLine(LogLevel::Debug) << "void StateMachine::goToNextState()"
                                 << ": State changed from " << stateToString(m_previousState)
                                 << " to " << stateToString(m_currentState);

    startTimeLimit();

    const QPointer<StateMachine> self(this);
    Q_EMIT stateEnter();
    if (self && !m_inTransition)
        Q_EMIT stateChanged();
    while (self && !m_inTransition && !m_pendingReceptions.isEmpty())
        handleSignal(m_pendingReceptions.takeFirst());
}

void StateMachine::startTimeLimit()
{
    const auto limit = m_timeLimits.constFind(m_currentState);
    if (limit != m_timeLimits.constEnd())
        m_timeLimit.start(*limit);
}

void StateMachine::onTimeLimit()
{
    logLine(LogLevel::Warning) << "State" << stateToString(m_currentState)
                               << "has been active for longer than its limit of"
                               << m_timeLimit.interval() << "ms";
    Q_EMIT timeLimitExceeded(m_currentState);
}

void StateMachine::handleSignal()
{
    const QObject* const from = sender();
    if (from == nullptr) {
        logLine(LogLevel::Error) << "void StateMachine::handleSignal()"
                                 << ": Method called with no sender";
        return;
    }
    const QMetaMethod signal = from->metaObject()->method(senderSignalIndex());
    const SignalReception reception{isDestruction(signal) ? nullptr : from, signal, m_inTransition};
    if (isDebugged())
        logLine(LogLevel::Debug) << "void StateMachine::handleSignal()"
                                 << ": Received signal" << reception.signal.name();
    if (!m_inTransition) {
        handleSignal(reception);
        return;
    }
    if (isDebugged())
        logLine(LogLevel::Debug)
            << "void StateMachine::handleSignal()"
            << ": signal" << reception.signal.name()
            << "received during transition. Reception will occur at beginning of next state";
    m_pendingReceptions.append(reception);
}

void StateMachine::handleSignal(const SignalReception& reception)
{
    if (isDebugged())
        logLine(LogLevel::Debug)
            << "void StateMachine::handleSignal(const StateMachine::SignalReception&)"
            << ": Processing signal" << reception.signal.name();
    // The copy stays valid when the handler changes the state, which clears the lists that may hold
    // the reception.
    const QMetaMethod signal = reception.signal;
    m_receptions.insert(signal, reception);
    m_lastSignal = signal;
    onSignal(reception.sender, signal, reception.receivedDuringTransition);
}
