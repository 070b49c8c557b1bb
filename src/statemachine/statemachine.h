#pragma once

#include <zeltools/zeltools_export.h>

#include <QList>
#include <QMap>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

/// Orders methods by the text of their signatures, for maps; Qt has no order for them.
ZELTOOLS_EXPORT bool operator<(const QMetaMethod& left, const QMetaMethod& right);

/// The base class of the machine's sequences (dispensing, rinsing). States are integers, and
/// signals of other objects, connected to the slot handleSignal(), drive the machine.
///
///     connect(pump, &Pump::stopped, this, qOverload<>(&StateMachine::handleSignal));
///
/// A change of state takes a turn of the event loop: setState() leaves the state immediately, and
/// the machine enters the next one when the event loop runs. A signal that arrives in between is
/// neither lost nor handled in the old state: it waits for the next one. (A queued signal, as from
/// another thread, whose sender is destroyed before it arrives is an Error line.) The machine logs
/// under `Log::StateMachine`.
///
/// A machine belongs to one thread; signals of other threads arrive through queued connections. It
/// may be destroyed in any of its own signals and handlers.
class ZELTOOLS_EXPORT StateMachine : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString state READ stateName NOTIFY stateChanged)

public:
    /// The states that every machine has. A subclass uses other numbers, normally from 0. A machine
    /// that is set to InvalidState does not enter it and stays between two states.
    enum PseudoState {
        InvalidState = -1, ///< Before setInitialState().
        Transition = -2    ///< Between two states.
    };

    /// A signal that reached handleSignal().
    struct SignalReception
    {
        QPointer<const QObject> sender; ///< Null after its destruction.
        QMetaMethod signal; ///< A method of the sender's meta-object, which must stay valid (true
                            ///< except in QML).
        /// Whether the signal came before stateEnter() of the pending transition.
        bool receivedDuringTransition;
    };

    explicit StateMachine(QObject* parent = nullptr);
    /// Calls setInitialState(), so that the event loop enters the state.
    StateMachine(int initialState, QObject* parent);
    ~StateMachine() override;

    /// The name of a state for the log: "Transition", "InvalidState", the name of setStateNames()
    /// or "Undefined (7)". Subclasses may add other names.
    virtual QString stateToString(int state) const;
    /// The text of the current state.
    QString stateName() const { return stateToString(m_currentState); }

    /// Names the states after the enumerators of a Q_ENUM, as a subclass does in its constructor:
    ///
    ///     setStateNames(QMetaEnum::fromType<State>());
    void setStateNames(const QMetaEnum& names) { m_stateNames = names; }

    /// Sets how long the machine may be in a state, for the next time that it enters it; 0, the
    /// default, means no limit. After that time the machine logs a Warning, emits
    /// timeLimitExceeded() and stays in the state.
    void setTimeLimit(int state, std::chrono::milliseconds limit);

    /// The state that the last transition has left, or that a pending one leaves.
    int previousState() const { return m_previousState; }
    /// The current state, or Transition while a transition is pending, including in stateExit().
    int currentState() const { return m_currentState; }
    /// The target of the pending transition, or InvalidState without one.
    int nextState() const { return m_nextState; }

    /// Enters the first state. Later calls return false and log an Error line.
    bool setInitialState(int state);
    /// Leaves the current state for another one, or with `force` also for itself. Returns false
    /// with a log line, and changes nothing, for the current state and while another transition is
    /// pending.
    bool setState(int state, bool force = false);
    /// Leaves the current state and enters it again.
    bool setStateAgain();

    /// Handles a signal immediately.
    void handleSignal(const SignalReception& reception);

public Q_SLOTS:
    /// Completes the pending transition, if there is one, and handles the signals that arrived
    /// meanwhile. If one of them starts another transition, the rest of them is dropped.
    void goToNextState();
    /// Handles the signal that calls this slot: immediately, or, during a transition, at the
    /// beginning of the next state. A call that does not come from a signal logs an Error.
    void handleSignal();

Q_SIGNALS:
    /// Emitted when a state has been left, while currentState() is Transition.
    void stateExit();
    /// Emitted when the new state has become the current one.
    void stateEnter();
    /// Emitted after stateExit() and after stateEnter(), unless these have started or completed a
    /// transition, which has then emitted it.
    void stateChanged();
    /// Emitted once for each time that the machine is in a state for longer than its limit.
    void timeLimitExceeded(int state);

protected:
    /// Called for each handled signal. `sender` is null after its destruction and in its signal
    /// destroyed().
    virtual void onSignal(const QObject* sender, const QMetaMethod& signal,
                          bool receivedDuringTransition);

private:
    void startTimeLimit();
    void onTimeLimit();

    int m_previousState = InvalidState;
    int m_currentState = InvalidState;
    int m_nextState = InvalidState;
    bool m_inTransition = false;
    QList<SignalReception> m_pendingReceptions; // in the order of arrival
    QTimer m_turn{this};
    QTimer m_timeLimit{this};
    QMap<int, std::chrono::milliseconds> m_timeLimits; // those above 0
    QMetaEnum m_stateNames;

protected:
    /// The last reception of each signal that was handled in the current state.
    QMap<QMetaMethod, SignalReception> m_receptions;
    /// The last signal that was handled in the current state.
    QMetaMethod m_lastSignal;
};
