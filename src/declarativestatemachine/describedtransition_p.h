#pragma once

#include "declarativestatemachine/innermachine_p.h"

#include <utility>

namespace zeltools::declarativestatemachine
{

/// A transition of the base class `Kind` that asks its machine for the guards of the description
/// when its event has come, and tells it when it fires.
template <typename Kind>
class DescribedTransition final : public Kind
{
public:
    /// The other arguments are those of the base class.
    template <typename... Arguments>
    DescribedTransition(InnerMachine& machine, int number, Arguments&&... arguments)
        : Kind(std::forward<Arguments>(arguments)...)
        , m_machine(machine)
        , m_number(number)
        , m_hasGuard(machine.index().transition(number).description->hasGuard())
    {
    }

protected:
    bool eventTest(QEvent* event) override
    {
        return Kind::eventTest(event) && (!m_hasGuard || m_machine.accepts(m_number, event));
    }
    void onTransition(QEvent* event) override
    {
        Kind::onTransition(event);
        m_machine.fire(m_number, event);
    }

private:
    InnerMachine& m_machine;
    const int m_number;
    const bool m_hasGuard;
};

} // namespace zeltools::declarativestatemachine
