#pragma once

#include "declarativestatemachine/statemachinedescription.h"

namespace support
{

using State = zeltools::declarativestatemachine::StateDescription;
using Transition = zeltools::declarativestatemachine::TransitionDescription;

inline State kindOf(State::Kind kind, const QString& name,
                    const std::vector<Transition>& transitions = {},
                    const std::vector<State>& states = {})
{
    return {name, {}, transitions, {}, states, kind};
}

inline State around(const QString& name, const std::vector<State>& states,
                    const std::vector<Transition>& transitions = {})
{
    return kindOf(State::Ordinary, name, transitions, states);
}

inline Transition guarded(Transition transition, const std::function<bool()>& guard)
{
    transition.guard = guard;
    return transition;
}

inline Transition targetless(Transition transition)
{
    transition.isTargetless = true;
    return transition;
}

} // namespace support
