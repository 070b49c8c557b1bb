#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// Returns the machine in the language of Graphviz; `dot -Tsvg` draws it. The label of a transition
/// has its description and its trigger, "[guard]" for a guard and "/ action" for an action. A
/// transition to a missing state is dashed; one without a target is a line inside its state. A state
/// with children is a frame around them; the children of a parallel state have dashed frames. The
/// description may have mistakes; the function calls no action or guard of it.
ZELTOOLS_EXPORT QString toDot(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
