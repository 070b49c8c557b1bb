#pragma once

#include "declarativestatemachine/innermachine_p.h"

class QAbstractState;
class QState;

namespace zeltools::declarativestatemachine
{

/// Builds the states and transitions of an InnerMachine, which own themselves as its children. Each
/// fault of the description is a release assertion, after which building continues.
class MachineBuilder
{
public:
    explicit MachineBuilder(InnerMachine& machine)
        : m_machine(machine)
        , m_index(machine.index())
    {
    }
    Q_DISABLE_COPY(MachineBuilder)

    void build();

private:
    QAbstractState* addState(int number);
    QAbstractState* makeState(int number, QState* parent);
    void setDefaultOf(int history);
    int defaultOf(int history) const;
    void addTransition(int number);

    InnerMachine& m_machine;
    const DescriptionIndex& m_index;
    std::vector<QAbstractState*> m_states = {}; // null for those that are left out
};

} // namespace zeltools::declarativestatemachine
