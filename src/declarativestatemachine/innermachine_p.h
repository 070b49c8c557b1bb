#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>
#include <zeltools/logging/logmodule.h>

#include <QMap>
#include <QScopeGuard>
#include <QStateMachine>

class QAbstractTransition;
class QState;

namespace zeltools::declarativestatemachine
{

/// The state machine that a DeclarativeStateMachine builds from its description and runs. While it
/// calls an action, a guard or a slot of the host, it may lose its owner; it then lives until that
/// call has returned:
///
///     running calls | owner | the machine
///     0             | there | waits for the event loop
///     1 or more     | there | is inside callHost()
///     1 or more     | gone  | is stopped; it calls and logs nothing more
///     0             | gone  | is deleted, with the event loop if a call was running
class InnerMachine : public QStateMachine
{
public:
    explicit InnerMachine(const LogModule& module);
    ~InnerMachine() override;

    /// Deletes the machine, now or when the outermost call into the host has returned.
    void abandon();

    /// Builds states and transitions. A fault is a release assertion, after which building
    /// continues.
    void build(const StateMachineDescription& description);

    /// Calls the host and returns the value of the callable, or a default one if the owner is gone.
    template <typename Callable>
    auto callHost(const Callable& callable)
    {
        using Result = decltype(callable());
        if (m_isAbandoned)
            return Result();
        ++m_runningCalls;
        const auto leave = qScopeGuard([this] {
            if (--m_runningCalls == 0 && m_isAbandoned)
                deleteLater();
        });
        return callable();
    }

private:
    using States = QMap<QString, QAbstractState*>;

    QAbstractState* addState(const StateDescription& description, bool isFinal);
    void addTransition(const TransitionDescription& description, const QString& sourceName,
                       QAbstractState* source, const States& states);
    QAbstractTransition* makeTransition(const TransitionDescription& description, QState* source);

    const LogModule& m_module;
    int m_runningCalls = 0;
    bool m_isAbandoned = false;
};

} // namespace zeltools::declarativestatemachine
