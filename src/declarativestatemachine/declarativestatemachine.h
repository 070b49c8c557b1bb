#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>
#include <zeltools/logging/logmodule.h>

#include <QObject>
#include <QTimer>

namespace zeltools::declarativestatemachine
{

class InnerMachine;

/// Runs a sequence that is described as data. Each transition that fires is logged at Debug under
/// the machine's module (" ^ Transition from Filling to Draining triggered, signal Tank::full"),
/// start and stop at Info.
///
/// Unlike StateMachine, it drops a signal for which the active state has no transition. A circle of
/// direct transitions blocks the event loop.
///
/// A machine belongs to one thread. It may be destroyed in its signals and in the actions and
/// guards of its states.
class ZELTOOLS_EXPORT DeclarativeStateMachine : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    /// The module must outlive the machine.
    explicit DeclarativeStateMachine(const LogModule& module, QObject* parent = nullptr);
    DeclarativeStateMachine(const LogModule&&, QObject* parent = nullptr) = delete;
    ~DeclarativeStateMachine() override;

    /// Builds the states. Call it once, before start(). Each fault is a release assertion, after
    /// which building continues:
    /// - a transition from the final state is left out;
    /// - a transition to a missing state is triggered and logged, but leads nowhere;
    /// - a transition on a signal that the object does not have is never triggered, unless the text
    ///   of the signal only lacks normalization.
    /// If two states have the same name, transitions lead to the later one.
    void setDescription(const StateMachineDescription& description);

    /// Enters the initial state when the event loop runs. Replaces a pending restart.
    void start();
    /// Stops the machine and starts it once, 100 ms after the last call.
    void restart();
    bool isRunning() const;

Q_SIGNALS:
    void runningChanged();

private:
    const LogModule& m_module;
    InnerMachine* const m_machine; // deletes itself after abandon()
    QTimer m_restartTimer{this};
    bool m_isStarting = false;
    bool m_isStopAwaited = false;
    bool m_isStartAwaited = false; // as soon as it has stopped
};

} // namespace zeltools::declarativestatemachine
