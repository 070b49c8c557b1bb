#include "declarativestatemachine/recordednames_p.h"

#include "declarativestatemachine/descriptionindex_p.h"
#include "declarativestatemachine/signalutils.h"

namespace zeltools::declarativestatemachine
{

namespace
{

QString triggerText(const TransitionDescription& transition)
{
    switch (transition.type) {
    case TransitionDescription::Direct:
        return QStringLiteral("direct");
    case TransitionDescription::Timeout:
        return QStringLiteral("timeout %1ms").arg(transition.timeout.count());
    case TransitionDescription::Signal:
        return QLatin1String("signal ") +
               signalutils::classAndSignalName(transition.obj, transition.signal, true);
    }
    return {};
}

} // namespace

RecordedNames::RecordedNames(const DescriptionIndex& index)
{
    for (const DescriptionIndex::State& state : index.states()) {
        const QString& name = state.description->name;
        std::vector<int>& numbers = m_numbers[name];
        numbers.push_back(stateCount());
        m_states.push_back({name, static_cast<int>(numbers.size())});
        m_firstTransitions.push_back(state.firstTransition);
    }
    for (const DescriptionIndex::Transition& transition : index.transitions()) {
        const int first = m_firstTransitions[size_t(transition.source)];
        const int number = static_cast<int>(m_transitions.size()) - first + 1;
        m_transitions.push_back({state(transition.source), number});
        m_triggers.push_back(triggerText(*transition.description));
    }
}

int RecordedNames::numberOf(const MachineRecording::State& state) const
{
    const auto found = m_numbers.constFind(state.name);
    if (found == m_numbers.cend() || state.copy < 1 || size_t(state.copy) > found->size())
        return -1;
    return (*found)[size_t(state.copy) - 1];
}

int RecordedNames::numberOf(const MachineRecording::Transition& transition) const
{
    const int source = numberOf(transition.source);
    if (source < 0 || transition.number < 1)
        return -1;
    const size_t first = size_t(m_firstTransitions[size_t(source)]);
    const size_t number = first + size_t(transition.number) - 1;
    const bool isThere = number < m_transitions.size() && m_transitions[number] == transition;
    return isThere ? static_cast<int>(number) : -1;
}

} // namespace zeltools::declarativestatemachine
