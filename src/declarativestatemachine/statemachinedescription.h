#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

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
    enum Type : qint32 {
        Direct = 0,  ///< as soon as the state is entered
        Timeout = 1, ///< when the state has been active for a given time
        Signal = 2   ///< when an object emits a signal and the guard allows it
    };

    Type type = Direct; ///< an unknown number makes no transition
    QString targetState;
    /// The sender of the signal: an object of the machine's thread, or one that outlives the
    /// machine.
    QObject* obj = nullptr;
    const char* signal = nullptr;     ///< a normalized text such as `SIGNAL(stopped())`
    std::function<bool()> guard = {}; ///< called for each signal; an empty one accepts all
    std::chrono::milliseconds timeout{0};
    QString description = {}; ///< a label for pictures

    static TransitionDescription direct(QString target) { return {Direct, std::move(target)}; }
    static TransitionDescription after(std::chrono::milliseconds timeout, QString target)
    {
        return {Timeout, std::move(target), nullptr, nullptr, {}, timeout};
    }
    static TransitionDescription on(QObject* obj, const char* signal, QString target,
                                    std::function<bool()> guard = {})
    {
        return {Signal, std::move(target), obj, signal, std::move(guard)};
    }

    bool isOfKnownType() const { return type >= Direct && type <= Signal; }
};

/// A state. Its place in the list determines its role: the first state is the initial one, and the
/// last state is final and has no transitions, unless it is also the first.
struct StateDescription
{
    QString name;
    std::function<void()> action = {}; ///< called when the state is entered; may be empty
    std::vector<TransitionDescription> transitions = {};
    std::function<void()> exitAction = {}; ///< called when the state is left; may be empty
};

struct StateMachineDescription
{
    std::vector<StateDescription> states;
    QString name = {}; ///< a title for pictures

    bool isFinal(size_t index) const { return index > 0 && index + 1 == states.size(); }
    /// The index of the state to which transitions of that name lead, which is the last one with
    /// the name; -1 if no state has it.
    int indexOf(const QString& stateName) const
    {
        int index = static_cast<int>(states.size()) - 1;
        while (index >= 0 && states[static_cast<size_t>(index)].name != stateName)
            --index;
        return index;
    }
};

} // namespace zeltools::declarativestatemachine
