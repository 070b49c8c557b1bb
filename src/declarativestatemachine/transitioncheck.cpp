#include "declarativestatemachine/transitioncheck_p.h"

#include "declarativestatemachine/historyreturn_p.h"
#include "declarativestatemachine/triggerkey_p.h"

#include <algorithm>
#include <set>

namespace zeltools::declarativestatemachine::transitioncheck
{

namespace
{

const DescriptionIndex::Transition& transitionOf(const DescriptionIndex& index, int state,
                                                 size_t number)
{
    return index.transitions()[size_t(index.state(state).firstTransition) + number];
}

void appendFault(QStringList& problems, const DescriptionIndex::Transition& transition)
{
    const QString fault = faultOf(transition);
    if (!fault.isEmpty())
        problems.append(fault);
}

} // namespace

QString faultOf(const DescriptionIndex::Transition& transition)
{
    const TransitionDescription& description = *transition.description;
    if (transition.target < 0 && !description.isTargetless)
        return QStringLiteral("leads to \"%1\", which is not a state").arg(description.targetState);
    if (!description.isOfKnownType())
        return QStringLiteral("has a transition of unknown kind %1").arg(description.type);
    if (description.type == TransitionDescription::Signal &&
        !signalutils::classContainsSignal(description.obj, description.signal)) {
        return QStringLiteral("waits for %1, which does not exist")
            .arg(signalutils::classAndSignalName(description.obj, description.signal, true));
    }
    return {};
}

QStringList problemsOfTransitions(const DescriptionIndex& index, int state)
{
    QStringList problems;
    std::set<TriggerKey> unguarded;
    for (size_t i = 0; i < index.state(state).description->transitions.size(); ++i) {
        const DescriptionIndex::Transition& transition = transitionOf(index, state, i);
        appendFault(problems, transition);
        const TransitionDescription& description = *transition.description;
        if (transition.target >= 0 && index.state(transition.target).description->isHistory() &&
            leavesParentOfHistory(index, state, transition.target)) {
            problems << QStringLiteral("has a transition to the history \"%1\" that leaves the "
                                       "parent of this history itself")
                            .arg(description.targetState);
        }
        if (description.type == TransitionDescription::Timeout)
            continue;
        const TriggerKey key = triggerKey(description);
        if (unguarded.count(key) > 0 && faultOf(transition).isEmpty()) {
            problems << QStringLiteral("has a transition %1 that is never taken, because one "
                                       "before it has the same trigger and no guard")
                            .arg(targetText(description));
        }
        if (!description.hasGuard())
            unguarded.insert(key);
    }
    return problems;
}

QStringList problemsOfHistory(const DescriptionIndex& index, int history)
{
    QStringList problems;
    const auto& transitions = index.state(history).description->transitions;
    const int parent = index.state(history).parent;
    int counting = 0;
    for (size_t i = 0; i < transitions.size(); ++i) {
        const DescriptionIndex::Transition& transition = transitionOf(index, history, i);
        appendFault(problems, transition);
        counting += transitions[i].type == TransitionDescription::Direct ? 1 : 0;
        const int target = transition.target;
        if (parent >= 0 && target >= 0 && (target == parent || !index.contains(parent, target))) {
            problems << QStringLiteral("leads to \"%1\", which is not in the same state")
                            .arg(transitions[i].targetState);
        }
    }
    if (transitions.size() > 1 || counting != int(transitions.size()))
        problems << QStringLiteral(
            "is a history, for which only the first direct transition counts");
    return problems;
}

QStringList problemsOfTimes(const StateDescription& state)
{
    std::vector<const TransitionDescription*> timeouts;
    for (const TransitionDescription& transition : state.transitions) {
        if (transition.type == TransitionDescription::Timeout)
            timeouts.push_back(&transition);
    }
    const bool hasGuard = std::any_of(timeouts.begin(), timeouts.end(),
                                      [](const auto* timeout) { return timeout->hasGuard(); });
    if (timeouts.size() > 1 && !hasGuard) {
        return {QStringLiteral("has %1 timeouts, of which the first to end triggers the first "
                               "transition")
                    .arg(timeouts.size())};
    }
    for (const TransitionDescription* timeout : timeouts) {
        if (state.timeLimit.count() > 0 && timeout->timeout < state.timeLimit &&
            !timeout->hasGuard() && !timeout->isTargetless) {
            return {QStringLiteral("has a time limit of %1 ms, but its timeout ends after %2 ms")
                        .arg(state.timeLimit.count())
                        .arg(timeout->timeout.count())};
        }
    }
    return {};
}

} // namespace zeltools::declarativestatemachine::transitioncheck
