#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// Returns the machine as a State Chart XML document of the W3C, for editors and simulators.
/// Characters that an identifier cannot have become "_". Guards become the conditions `guard1`,
/// `guard2` and so on, which are true until the reader of the document changes them. A timeout
/// becomes an event with a delay, and the description of a transition becomes its log text.
/// Transitions that lead nowhere or start at the final state are left out. The function calls no
/// action or guard of the description.
ZELTOOLS_EXPORT QString toScxml(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
