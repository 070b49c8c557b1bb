#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>

#include <QHash>
#include <QMap>

#include <vector>

namespace zeltools::declarativestatemachine
{

class DescriptionIndex;

/// The names under which a recording knows the states and transitions of a description, which are
/// numbered as in DescriptionIndex. It keeps no reference to the description, whose objects may be
/// destroyed before the recording is made.
class RecordedNames
{
public:
    explicit RecordedNames(const DescriptionIndex& index);

    /// The event for which a transition waits, as in MachineRecording::Entry::trigger.
    const QString& triggerOf(int transition) const { return m_triggers[size_t(transition)]; }
    const MachineRecording::State& state(int number) const { return m_states[size_t(number)]; }
    const MachineRecording::Transition& transition(int number) const
    {
        return m_transitions[size_t(number)];
    }
    int stateCount() const { return static_cast<int>(m_states.size()); }

    /// The number of the state or transition, -1 if the description has none of that name.
    int numberOf(const MachineRecording::State& state) const;
    int numberOf(const MachineRecording::Transition& transition) const;

private:
    std::vector<MachineRecording::State> m_states;
    std::vector<MachineRecording::Transition> m_transitions;
    std::vector<QString> m_triggers;
    QHash<QString, std::vector<int>> m_numbers; // of the states with that name
    std::vector<int> m_firstTransitions;
};

} // namespace zeltools::declarativestatemachine
