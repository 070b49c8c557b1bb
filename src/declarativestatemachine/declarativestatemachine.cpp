#include "declarativestatemachine/declarativestatemachine.h"

#include "declarativestatemachine/innermachine_p.h"
#include "logging/logformatter.h"

#include <utility>

namespace zeltools::declarativestatemachine
{

DeclarativeStateMachine::DeclarativeStateMachine(const LogModule& module, QObject* parent)
    : QObject(parent)
    , m_module(module)
    , m_machine(new InnerMachine(module, {[this] { Q_EMIT stateChanged(); },
                                          [this](int state) { onTimeLimitExceeded(state); },
                                          [this](int number) { Q_EMIT transitionFired(number); }}))
{
    constexpr int restartDelay_ms = 100; // Stopping takes a turn of the event loop.
    m_restartTimer.setSingleShot(true);
    m_restartTimer.setInterval(restartDelay_ms);
    connect(&m_restartTimer, &QTimer::timeout, this, &DeclarativeStateMachine::start);
    connect(m_machine, &QStateMachine::finished, this, [this] { m_isFinished = true; });
    connect(m_machine, &QStateMachine::runningChanged, this,
            &DeclarativeStateMachine::onRunningChanged);
}

DeclarativeStateMachine::~DeclarativeStateMachine()
{
    m_machine->abandon();
}

void DeclarativeStateMachine::setDescription(const StateMachineDescription& description)
{
    m_machine->build(description);
    // The objects whose signals have names here may be gone when a recording is made.
    if (m_names == nullptr)
        m_names = std::make_shared<RecordedNames>(m_machine->index());
    if (m_recorder == nullptr)
        makeRecorder();
}

void DeclarativeStateMachine::start()
{
    m_restartTimer.stop();
    // The inner machine ignores start() until it has stopped.
    m_isStartAwaited = m_isStopAwaited;
    if (m_isStopAwaited)
        return;
    m_machine->start();
    m_isStarting = !isRunning() && m_machine->initialState() != nullptr;
}

void DeclarativeStateMachine::stop()
{
    m_restartTimer.stop();
    m_isStopAwaited = isRunning() || m_isStarting;
    m_isStartAwaited = false;
    m_machine->stop();
}

void DeclarativeStateMachine::restart()
{
    stop();
    m_restartTimer.start();
}

void DeclarativeStateMachine::cancelRestart()
{
    m_restartTimer.stop();
}

bool DeclarativeStateMachine::isRunning() const
{
    return m_machine->isRunning();
}

QString DeclarativeStateMachine::currentState() const
{
    return m_machine->namesOf(m_machine->innermostStates()).join(QLatin1String(", "));
}

QStringList DeclarativeStateMachine::currentStates() const
{
    return m_machine->namesOf(m_machine->activeStates());
}

std::vector<int> DeclarativeStateMachine::currentStateNumbers() const
{
    return m_machine->activeStates();
}

void DeclarativeStateMachine::setRecording(int maximumEntries)
{
    m_maximumEntries = maximumEntries;
    makeRecorder();
}

void DeclarativeStateMachine::makeRecorder()
{
    m_machine->setRecorder(nullptr);
    m_recorder.reset();
    if (m_maximumEntries <= 0 || m_names == nullptr)
        return;
    m_recorder = std::make_unique<MachineRecorder>(
        m_names, m_maximumEntries, m_machine->isUnderWay(), m_machine->activeStates());
    m_machine->setRecorder(m_recorder.get());
}

MachineRecording DeclarativeStateMachine::recording() const
{
    return m_recorder != nullptr ? m_recorder->recording(m_machine->name()) : MachineRecording();
}

// Each signal may destroy this object; the inner machine lives until the event loop runs.
void DeclarativeStateMachine::onRunningChanged()
{
    InnerMachine* const machine = m_machine;
    m_isStarting = false;
    m_isStopAwaited = m_isStopAwaited && isRunning();
    const bool isFinished = std::exchange(m_isFinished, false);
    if (!isRunning() && m_isStartAwaited)
        start();
    LogFormatter(LogLevel::Info).log(m_module)
        << "State machine" << (isRunning() ? "Started" : "Stopped");
    machine->callHost([this] { Q_EMIT runningChanged(); });
    machine->publishChange();
    if (isFinished)
        machine->callHost([this] { Q_EMIT finished(); });
}

// A machine that is to stop is still in its state until the event loop runs.
void DeclarativeStateMachine::onTimeLimitExceeded(int state)
{
    if (m_isStopAwaited)
        return;
    const StateDescription& description = *m_machine->index().state(state).description;
    LogFormatter(LogLevel::Warning)
        .log(m_module)
        .log(QStringLiteral("State %1 has been active for longer than its limit of %2 ms")
                 .arg(description.name, QString::number(description.timeLimit.count())));
    Q_EMIT timeLimitExceeded(description.name);
}

} // namespace zeltools::declarativestatemachine
