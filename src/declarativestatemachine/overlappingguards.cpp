#include "declarativestatemachine/overlappingguards.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/triggerkey_p.h"

#include <map>

namespace zeltools::declarativestatemachine
{

namespace
{

QString triggerText(const TransitionDescription& transition)
{
    return transition.type == TransitionDescription::Direct
               ? QStringLiteral("the entry")
               : signalutils::classAndSignalName(transition.obj, transition.signal, true);
}

void findOverlaps(const StateDescription& state, QStringList& lines)
{
    std::map<TriggerKey, const TransitionDescription*> accepting;
    for (const TransitionDescription& transition : state.transitions) {
        const bool isAsked = transition.isOfKnownType() &&
                             transition.type != TransitionDescription::Timeout &&
                             transition.guard && !transition.argumentsGuard;
        if (!isAsked || !transition.guard())
            continue;
        const auto [first, isNew] = accepting.try_emplace(triggerKey(transition), &transition);
        if (!isNew) {
            lines << QStringLiteral("State \"%1\" has transitions %2 and %3 whose guards both "
                                    "accept %4")
                         .arg(state.name, targetText(*first->second), targetText(transition),
                              triggerText(transition));
        }
    }
}

} // namespace

QStringList findOverlappingGuards(const StateMachineDescription& description)
{
    const DescriptionIndex index(description);
    QStringList lines;
    for (const DescriptionIndex::State& state : index.states()) {
        if (!state.isFinal && !state.description->isHistory())
            findOverlaps(*state.description, lines);
    }
    return lines;
}

} // namespace zeltools::declarativestatemachine
