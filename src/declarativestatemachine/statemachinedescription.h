#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

/// A sequence as data: DeclarativeStateMachine runs it, toDot() and toScxml() draw it and
/// findProblems() checks it.
///
///     using Transition = TransitionDescription;
///     const Transition drain = Transition::on(&tank, SIGNAL(full()), "Draining");
///     const StateMachineDescription rinse{
///         {{"Filling", [&] { valve.open(); }, {drain}},
///          {"Draining", [&] { valve.close(); }, {Transition::after(5s, "Done")}},
///          {"Done"}}};
namespace zeltools::declarativestatemachine
{

/// A transition from a state to another one or to itself.
struct TransitionDescription
{
    /// The event that the transition waits for.
    enum Type : qint32 {
        Direct = 0,  ///< Taken as soon as the state is entered.
        Timeout = 1, ///< Taken when the state has been active for a given time.
        Signal = 2   ///< Taken when an object emits a signal and the guard allows it.
    };

    Type type = Direct;  ///< An unknown number makes no transition.
    QString targetState; ///< The name of the state that the transition leads to.
    /// The sender of the signal: an object of the machine's thread, or one that outlives the
    /// machine.
    QObject* obj = nullptr;
    const char* signal = nullptr; ///< A normalized text such as `SIGNAL(stopped())`.
    /// Called when the signal arrives, the timeout ends or the state has been entered; an empty
    /// guard always accepts. A timeout or an entry that it refuses is not tried again. If a state
    /// has several timeouts and none has a guard, the first to end triggers the first of the
    /// transitions; with a guard, each triggers its own.
    std::function<bool()> guard = {};
    std::chrono::milliseconds timeout{0}; ///< How long a Timeout transition waits.
    QString description = {};             ///< A label for pictures.
    /// Called when the transition fires: after the exit action of the state that is left and before
    /// the action of the one that is entered. May be empty.
    std::function<void()> action = {};
    /// A guard that gets the arguments of the signal. If both guards are there, both must accept.
    std::function<bool(const QVariantList&)> argumentsGuard = {};
    /// An action that gets the arguments of the signal; called after `action`.
    std::function<void(const QVariantList&)> argumentsAction = {};
    /// The transition calls its actions and leaves no state, so that neither actions of states are
    /// called nor timeouts begin again. `targetState` has no meaning then.
    bool isTargetless = false;

    /// A transition that is taken as soon as its state is entered.
    static TransitionDescription direct(QString target) { return {Direct, std::move(target)}; }
    /// A transition that is taken when its state has been active for the time.
    static TransitionDescription after(std::chrono::milliseconds timeout, QString target)
    {
        return {Timeout, std::move(target), nullptr, nullptr, {}, timeout};
    }
    /// A transition that waits for the signal, in the form of SIGNAL().
    static TransitionDescription on(QObject* obj, const char* signal, QString target,
                                    std::function<bool()> guard = {})
    {
        return {Signal, std::move(target), obj, signal, std::move(guard)};
    }

    /// A transition without a target, for a signal that the state handles and stays.
    static TransitionDescription inside(QObject* obj, const char* signal,
                                        std::function<void(const QVariantList&)> action)
    {
        TransitionDescription transition = on(obj, signal, {});
        transition.argumentsAction = std::move(action);
        transition.isTargetless = true;
        return transition;
    }

    /// Whether the transition asks before it is taken.
    bool hasGuard() const { return guard || argumentsGuard; }
    /// Whether the number of the type is one of Type.
    bool isOfKnownType() const { return type >= Direct && type <= Signal; }
};

/// A state. Its place in the list of the machine determines its role: the first state is the
/// initial one, and the last state is final and has no transitions, unless it is also the first.
///
/// A state may have child states, of which the first one that is not a history is entered with it.
/// A transition leads to any state of the machine, whatever state is around it, and a state reacts
/// to its own transitions while its children are active. Only its kind makes a child final; its
/// parent does not emit anything then. Nest no more than 64 levels, as fromScxml() reads them:
/// copies of a description are recursive.
struct StateDescription
{
    /// The behaviour of a state when it is entered.
    enum Kind : qint32 {
        Ordinary = 0,       ///< Enters its initial child, if it has children.
        Parallel = 1,       ///< All child states are active at the same time.
        ShallowHistory = 2, ///< Stands for the child that was active when its parent was left last.
        DeepHistory = 3,    ///< The same for the innermost states.
        Final = 4           ///< Ends the machine at the top, and only waits inside a state.
    };

    QString name;                      ///< The name by which transitions lead here.
    std::function<void()> action = {}; ///< Called when the state is entered; may be empty.
    std::vector<TransitionDescription> transitions = {}; ///< The transitions that begin here.
    std::function<void()> exitAction = {};     ///< Called when the state is left; may be empty.
    std::vector<StateDescription> states = {}; ///< The inner states, the initial one first.
    /// A history has no children and no actions. Before its parent has been active, it leads to the
    /// target of its first direct transition, or to the initial child without one. The machine
    /// looks it up before it leaves states: a transition that leaves the parent itself, such as one
    /// from the parent to its own history, leads to what was active when the parent was left
    /// before.
    Kind kind = Ordinary;
    /// If the state is active for longer, DeclarativeStateMachine::timeLimitExceeded() is emitted
    /// and a Warning is logged, and the state stays. 0 means no limit.
    std::chrono::milliseconds timeLimit{0};

    /// Whether the state is one of the two kinds of histories.
    bool isHistory() const { return kind == ShallowHistory || kind == DeepHistory; }
};

/// A signal as in TransitionDescription.
struct ExpectedSignal
{
    QObject* obj = nullptr;       ///< The sender.
    const char* signal = nullptr; ///< In the form of SIGNAL().
};

/// A whole machine: its states, its title and the signals that it has to handle.
struct StateMachineDescription
{
    std::vector<StateDescription> states; ///< The outermost states, the initial one first.
    QString name = {};                    ///< A title for pictures.
    /// The signals that the machine has to handle: findProblems() names those that no state takes.
    std::vector<ExpectedSignal> expectedSignals = {};
};

} // namespace zeltools::declarativestatemachine
