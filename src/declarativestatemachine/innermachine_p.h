#pragma once

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/machinerecorder_p.h"
#include <zeltools/logging/logmodule.h>

#include <QScopeGuard>
#include <QStateMachine>

#include <optional>

class QAbstractState;
class QAbstractTransition;
class QState;
class QTimer;

namespace zeltools::declarativestatemachine
{

/// The state machine that a DeclarativeStateMachine builds from its description and runs. States
/// and transitions have the numbers of index(). While the machine calls an action, a guard or a
/// slot of the host, it may lose its owner; it then lives until that call has returned:
///
///     running calls | owner | the machine
///     0             | there | waits for the event loop
///     1 or more     | there | is inside callHost()
///     1 or more     | gone  | is stopped; it calls and logs nothing more
///     0             | gone  | is deleted, with the event loop if a call was running
class InnerMachine : public QStateMachine
{
public:
    /// Callables of the owner, which are called until abandon().
    struct Listener
    {
        std::function<void()> stateChanged;
        std::function<void(int state)> timeLimitExceeded;
        std::function<void(int transition)> fired;
    };

    explicit InnerMachine(const LogModule& module, Listener listener = {});
    ~InnerMachine() override;

    /// Deletes the machine, now or when the outermost call into the host has returned.
    void abandon();

    /// Builds states and transitions from a copy of the description. A fault is a release
    /// assertion, after which building continues. A second call is such a fault and does nothing.
    void build(const StateMachineDescription& description);
    /// Needs a description.
    const DescriptionIndex& index() const { return *m_index; }

    /// The recorder must live until it is replaced or the machine is abandoned; null records
    /// nothing.
    void setRecorder(MachineRecorder* recorder) { m_recorder = recorder; }

    /// The name in the description.
    const QString& name() const { return m_description.name; }
    /// Whether the machine has entered its first state and has not stopped.
    bool isUnderWay() const { return m_isUnderWay; }
    /// The active states in the order of the description; empty while the machine does not run.
    std::vector<int> activeStates() const;
    /// The active states that have no active child.
    std::vector<int> innermostStates() const;
    QStringList namesOf(const std::vector<int>& states) const;
    /// Calls Listener::stateChanged if other states are active than at the last call.
    void publishChange();

    /// Makes a transition of the state, without its target; null if the type is unknown.
    virtual QAbstractTransition* makeTransition(const TransitionDescription& description,
                                                int number, QState* source);

    /// The states by their numbers, null for those that are left out.
    virtual void statesBuilt(const std::vector<QAbstractState*>& /*states*/) {}

    /// The states and transitions call these functions while the machine runs.
    void enter(int state);
    void leave(int state);
    bool accepts(int transition, QEvent* event);
    void fire(int transition, QEvent* event);

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

protected:
    /// Calls the guards of the transition.
    virtual bool askGuards(int transition, QEvent* event);

    void beginSelectTransitions(QEvent* event) override;
    void endSelectTransitions(QEvent* event) override;
    void beginMicrostep(QEvent* event) override;
    void endMicrostep(QEvent* event) override;

private:
    struct Status
    {
        bool isActive = false;
        bool isPublished = false; // as active, by publishChange()
        QTimer* timeLimit = nullptr;
    };

    QTimer* makeTimeLimit(int state);
    void forgetStates();

    const LogModule& m_module;
    const Listener m_listener;
    StateMachineDescription m_description;
    std::optional<DescriptionIndex> m_index;
    std::vector<Status> m_statuses;
    std::vector<int> m_touched;        // entered or left since publishChange()
    std::vector<QString> m_firedTexts; // one for each transition
    MachineRecorder* m_recorder = nullptr;
    int m_runningCalls = 0;
    bool m_isAbandoned = false;
    bool m_isUnderWay = false; // between its first entry and its stop
};

} // namespace zeltools::declarativestatemachine
