#include "declarativestatemachine/descriptioncheck.h"

#include "declarativestatemachine/signalutils.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

// Returns the reason why the transition never leads to its target; empty if there is none.
QString faultOf(const TransitionDescription& transition, const StateMachineDescription& description)
{
    if (description.indexOf(transition.targetState) < 0)
        return QStringLiteral("leads to \"%1\", which is no state").arg(transition.targetState);
    if (!transition.isOfKnownType())
        return QStringLiteral("has a transition of unknown kind %1").arg(transition.type);
    if (transition.type == TransitionDescription::Signal &&
        !signalutils::classContainsSignal(transition.obj, transition.signal)) {
        return QStringLiteral("waits for %1, which does not exist")
            .arg(signalutils::classAndSignalName(transition.obj, transition.signal, true));
    }
    return {};
}

QStringList problemsOf(size_t index, const StateMachineDescription& description)
{
    const StateDescription& state = description.states[index];
    QStringList problems;
    if (description.indexOf(state.name) != int(index))
        problems.append(QStringLiteral("has a name that a later state has too"));
    if (description.isFinal(index)) {
        if (!state.transitions.empty())
            problems.append(QStringLiteral("is final, but has transitions"));
        return problems;
    }
    bool canBeLeft = false;
    int timeouts = 0;
    for (const TransitionDescription& transition : state.transitions) {
        const QString fault = faultOf(transition, description);
        if (!fault.isEmpty())
            problems.append(fault);
        canBeLeft = canBeLeft || (fault.isEmpty() && transition.targetState != state.name);
        timeouts += transition.type == TransitionDescription::Timeout ? 1 : 0;
    }
    if (!canBeLeft)
        problems.append(QStringLiteral("cannot be left"));
    if (timeouts > 1)
        problems.append(QStringLiteral("has %1 timeouts, of which the first to end triggers the "
                                       "first transition")
                            .arg(timeouts));
    return problems;
}

std::vector<bool> findReachable(const StateMachineDescription& description)
{
    std::vector<bool> isReachable(description.states.size());
    std::vector<size_t> open{0};
    while (!open.empty()) {
        const size_t index = open.back();
        open.pop_back();
        if (isReachable[index])
            continue;
        isReachable[index] = true;
        if (description.isFinal(index))
            continue;
        for (const TransitionDescription& transition : description.states[index].transitions) {
            if (faultOf(transition, description).isEmpty())
                open.push_back(size_t(description.indexOf(transition.targetState)));
        }
    }
    return isReachable;
}

} // namespace

QStringList findProblems(const StateMachineDescription& description)
{
    if (description.states.empty())
        return {QStringLiteral("There are no states")};
    const std::vector<bool> isReachable = findReachable(description);
    QStringList lines;
    for (size_t i = 0; i < description.states.size(); ++i) {
        QStringList problems = problemsOf(i, description);
        if (!isReachable[i])
            problems.append(QStringLiteral("cannot be reached"));
        for (const QString& problem : problems)
            lines.append(
                QStringLiteral("State \"%1\" %2").arg(description.states[i].name, problem));
    }
    return lines;
}

} // namespace zeltools::declarativestatemachine
