#include "declarativestatemachine/declarativestatemachine.h"

#include "declarativestatemachine/innermachine_p.h"
#include "logging/logformatter.h"

namespace zeltools::declarativestatemachine
{

DeclarativeStateMachine::DeclarativeStateMachine(const LogModule& module, QObject* parent)
    : QObject(parent)
    , m_module(module)
    , m_machine(new InnerMachine(module))
{
    constexpr int restartDelay_ms = 100; // Stopping takes a turn of the event loop.
    m_restartTimer.setSingleShot(true);
    m_restartTimer.setInterval(restartDelay_ms);
    connect(&m_restartTimer, &QTimer::timeout, this, &DeclarativeStateMachine::start);
    connect(m_machine, &QStateMachine::runningChanged, this, [this] {
        m_isStarting = false;
        m_isStopAwaited = m_isStopAwaited && isRunning();
        if (!isRunning() && m_isStartAwaited)
            start();
        LogFormatter(LogLevel::Info).log(m_module)
            << "State machine" << (isRunning() ? "Started" : "Stopped");
        m_machine->callHost([this] { Q_EMIT runningChanged(); });
    });
}

DeclarativeStateMachine::~DeclarativeStateMachine()
{
    m_machine->abandon();
}

void DeclarativeStateMachine::setDescription(const StateMachineDescription& description)
{
    m_machine->build(description);
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
