#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// The machine in the language of Graphviz; `dot -Tsvg` draws it. A transition bears its
/// description and what triggers it, a guard as "[guard]"; one to a state that is not there is
/// dashed. The description need not be sound; nothing of it is called.
ZELTOOLS_EXPORT QString toDot(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
