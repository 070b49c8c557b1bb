#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// Returns the machine in the language of Graphviz; `dot -Tsvg` draws it. The label of a transition
/// has its description and its trigger, and "[guard]" for a guard. A transition to a missing state
/// is dashed. The description may have mistakes; the function calls no action or guard of it.
ZELTOOLS_EXPORT QString toDot(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
