#pragma once

#include "declarativestatemachine/innermachine_p.h"

#include <utility>

namespace zeltools::declarativestatemachine
{

/// A state of the base class `Kind` (QState or QFinalState) that tells its machine when it is
/// entered and left, before it emits its signals.
template <typename Kind>
class DescribedState final : public Kind
{
public:
    DescribedState(InnerMachine& machine, int number, QState* parent)
        : Kind(parent)
        , m_machine(machine)
        , m_number(number)
    {
    }

protected:
    void onEntry(QEvent* event) override
    {
        Kind::onEntry(event);
        m_machine.enter(m_number);
    }
    void onExit(QEvent* event) override
    {
        Kind::onExit(event);
        m_machine.leave(m_number);
    }

private:
    InnerMachine& m_machine;
    const int m_number;
};

} // namespace zeltools::declarativestatemachine
