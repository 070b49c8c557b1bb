#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>
#include <zeltools/declarativestatemachine/statemachinedescription.h>
#include <zeltools/logging/logmodule.h>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

namespace zeltools::declarativestatemachine
{

class InnerMachine;
class MachineRecorder;
class RecordedNames;

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
    Q_PROPERTY(QString currentState READ currentState NOTIFY stateChanged)

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
    ///   of the signal only lacks normalization;
    /// - children of a final state or of a history are left out;
    /// - a history whose direct transition does not lead to a state of its parent leads to the
    ///   initial child instead, and without such a child it is left out;
    /// - a second description is ignored.
    /// If two states have the same name, transitions lead to the later one.
    void setDescription(const StateMachineDescription& description);

    /// Enters the initial state when the event loop runs. Replaces a pending restart.
    void start();
    /// Stops the machine when the event loop runs, without exit actions, and drops a pending
    /// restart.
    void stop();
    /// Stops the machine and starts it once, 100 ms after the last call.
    void restart();
    /// Drops a pending restart, so that the machine stays stopped.
    void cancelRestart();
    /// Whether the machine is in a state: since the event loop has started it, and until the event
    /// loop has stopped it or it has reached a final state.
    bool isRunning() const;

    /// The names of the active states that have no active child, in the order of the description
    /// and joined by ", "; empty while the machine does not run.
    QString currentState() const;
    /// The names of all active states, each before its children.
    QStringList currentStates() const;
    /// The same states by their numbers, which distinguish states of the same name. The states are
    /// numbered from 0 in the order of the description's text, each before its children.
    std::vector<int> currentStateNumbers() const;

    /// Keeps the last entries of what the machine does from now on, at most
    /// MachineRecording::maximumEntries, for which it allocates memory at once: 24 bytes for each
    /// (40 with Qt 6), besides the arguments that it keeps. It may be called at any time and drops
    /// what was recorded before; 0, the default, records nothing.
    void setRecording(int maximumEntries);
    /// The recording up to now. It may be taken while the machine runs, also in its actions and
    /// guards.
    MachineRecording recording() const;

Q_SIGNALS:
    void runningChanged();
    /// Emitted once after each step in which other states became active, and after the machine has
    /// stopped. A state that is left and entered again in one step does not count as another one.
    void stateChanged();
    /// Emitted last when the machine has reached a final state at the top and has stopped.
    void finished();
    /// Emitted once for each entry of a state that is still active when its time limit has passed.
    void timeLimitExceeded(const QString& state);
    /// Emitted when a transition fires, before its actions are called. The transitions are numbered
    /// from 0 in the order of their states (see currentStateNumbers()) and in the order in which
    /// each state lists them.
    void transitionFired(int number);

private:
    void onRunningChanged();
    void onTimeLimitExceeded(int state);
    void makeRecorder();

    const LogModule& m_module;
    InnerMachine* const m_machine; // deletes itself after abandon()
    std::shared_ptr<const RecordedNames> m_names;
    std::unique_ptr<MachineRecorder> m_recorder;
    int m_maximumEntries = 0;
    QTimer m_restartTimer{this};
    bool m_isStarting = false;
    bool m_isStopAwaited = false;
    bool m_isStartAwaited = false; // as soon as it has stopped
    bool m_isFinished = false;
};

} // namespace zeltools::declarativestatemachine
