#pragma once

#include <zeltools/zeltools_export.h>

#include <QList>
#include <QMap>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QTimer>

/// Orders methods by the text of their signatures, for maps; Qt has no order for them.
ZELTOOLS_EXPORT bool operator<(const QMetaMethod& left, const QMetaMethod& right);

/// Base class of the machine's sequences (dispensing, rinsing): states are integers, and signals of
/// other objects, connected to the slot handleSignal(), drive them.
///
///     connect(pump, &Pump::stopped, this, qOverload<>(&StateMachine::handleSignal));
///
/// A change of state takes a turn of the event loop: setState() leaves the state at once, the next
/// one is entered when the event loop runs. A signal that comes in between is neither lost nor
/// handled in the old state: it waits for the next one. (One that is queued, as from another
/// thread, and whose sender is destroyed before it arrives is an Error line.) All of it is logged
/// under `Log::StateMachine`.
///
/// Everything belongs to one thread; signals of other threads come through queued connections. The
/// machine may be destroyed in any of its own signals and handlers.
class ZELTOOLS_EXPORT StateMachine : public QObject
{
    Q_OBJECT

public:
    /// A subclass numbers its states otherwise, normally from 0. A machine that is sent to
    /// InvalidState does not arrive there: it stays between two states.
    enum PseudoState {
        InvalidState = -1, ///< before setInitialState()
        Transition = -2    ///< between two states
    };

    /// A signal that reached handleSignal().
    struct SignalReception
    {
        QPointer<const QObject> sender; ///< null when it has been destroyed since
        QMetaMethod
            signal; ///< of the sender's meta-object, which must live on (as all but QML's do)
        bool receivedDuringTransition;
    };

    explicit StateMachine(QObject* parent = nullptr);
    StateMachine(int initialState, QObject* parent);
    ~StateMachine() override;

    /// The name of a state in the log: "Transition", "InvalidState" or "Undefined (7)"; subclasses
    /// name theirs.
    virtual QString stateToString(int state) const;

    int previousState() const { return m_previousState; }
    /// Transition while one is pending, in stateExit() already.
    int currentState() const { return m_currentState; }
    /// Where the pending transition leads; InvalidState when there is none.
    int nextState() const { return m_nextState; }

    /// Enters the first state. Works once; false and an Error line after that.
    bool setInitialState(int state);
    /// Leaves the current state for another; with `force` also for itself. False and a log line,
    /// with nothing changed, when that is the current state or another transition is pending.
    bool setState(int state, bool force = false);
    /// Leaves the current state and enters it again.
    bool setStateAgain();

    /// Handles a signal now.
    void handleSignal(const SignalReception& reception);

public Q_SLOTS:
    /// Completes the pending transition, if there is one, and handles the signals that came
    /// meanwhile until one of them starts another: the rest of them is then dropped.
    void goToNextState();
    /// Takes in the signal that called it: handles it now, or, during a transition, at the
    /// beginning of the next state. Called otherwise than by a signal it logs an Error.
    void handleSignal();

Q_SIGNALS:
    void stateExit();
    void stateEnter();

protected:
    /// Called for each signal that is handled; `sender` is null when it has been destroyed since,
    /// and in its signal destroyed().
    virtual void onSignal(const QObject* sender, const QMetaMethod& signal,
                          bool receivedDuringTransition);

private:
    int m_previousState = InvalidState;
    int m_currentState = InvalidState;
    int m_nextState = InvalidState;
    bool m_inTransition = false;
    QList<SignalReception> m_pendingReceptions; // in the order of arrival
    QTimer m_turn{this};

protected:
    /// The last reception of each signal that was handled in the current state.
    QMap<QMetaMethod, SignalReception> m_receptions;
    /// The signal handled last in the current state.
    QMetaMethod m_lastSignal;
};
