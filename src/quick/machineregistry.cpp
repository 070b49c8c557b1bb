#include "quick/machineregistry_p.h"

#include "declarativestatemachine/declarativestatemachine.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "quick/displaytext_p.h"
#include "statemachine/statemachine.h"

#include <QQmlEngine>
#include <QThread>

#include <algorithm>

namespace zeltools::quick
{

using declarativestatemachine::DeclarativeStateMachine;

MachineRegistry* MachineRegistry::instance()
{
    static auto* const registry = new MachineRegistry;
    return registry;
}

int MachineRegistry::indexOf(const QObject* machine) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.machine == machine; });
    return found == m_entries.end() ? -1 : static_cast<int>(found - m_entries.begin());
}

MachineRegistry::Entry MachineRegistry::entryOf(const QObject* machine) const
{
    const int index = indexOf(machine);
    return index < 0 ? Entry() : m_entries[index];
}

void MachineRegistry::offer(Entry entry)
{
    QObject* const machine = entry.machine;
    if (machine == nullptr || machine->thread() != QThread::currentThread()) {
        LogFormatter(LogLevel::Warning).log(Log::StateMachine)
            << "void zeltools::quick::ViewedMachines::offer()"
            << "A machine of another thread cannot be shown:" << entry.name;
        return;
    }
    // Otherwise the garbage collector of QML would destroy a machine without a parent.
    QQmlEngine::setObjectOwnership(machine, QQmlEngine::CppOwnership);
    const int index = indexOf(machine);
    if (index < 0) {
        m_entries.append(std::move(entry));
        connect(machine, &QObject::destroyed, this, &MachineRegistry::withdraw);
    } else {
        m_entries[index] = std::move(entry);
    }
    Q_EMIT offered(machine);
}

void MachineRegistry::withdraw(QObject* machine)
{
    const int index = indexOf(machine);
    if (index < 0)
        return;
    m_entries.removeAt(index);
    disconnect(machine, nullptr, this, nullptr);
    Q_EMIT withdrawn(machine);
}

namespace viewedmachine
{

namespace
{
constexpr int s_maximumText = 1000;
}

QString stateOf(const QObject* machine)
{
    if (const auto* declarative = qobject_cast<const DeclarativeStateMachine*>(machine))
        return DisplayText::name(declarative->currentState(), s_maximumText);
    const auto* const plain = qobject_cast<const StateMachine*>(machine);
    return plain != nullptr && isRunning(plain)
               ? DisplayText::name(plain->stateName(), s_maximumText)
               : QString();
}

bool isRunning(const QObject* machine)
{
    if (const auto* declarative = qobject_cast<const DeclarativeStateMachine*>(machine))
        return declarative->isRunning();
    const auto* const plain = qobject_cast<const StateMachine*>(machine);
    return plain != nullptr && plain->currentState() != StateMachine::InvalidState;
}

void follow(QObject* machine, QObject* context, const std::function<void()>& callable)
{
    if (auto* const declarative = qobject_cast<DeclarativeStateMachine*>(machine)) {
        QObject::connect(declarative, &DeclarativeStateMachine::stateChanged, context, callable);
        QObject::connect(declarative, &DeclarativeStateMachine::runningChanged, context, callable);
    } else if (auto* const plain = qobject_cast<StateMachine*>(machine)) {
        QObject::connect(plain, &StateMachine::stateChanged, context, callable);
    }
}

} // namespace viewedmachine

} // namespace zeltools::quick
