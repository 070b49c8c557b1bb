#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

struct MachineRecording;

/// Returns the machine in the language of Graphviz, which toSvg() draws. The label of a transition
/// has its description and its trigger, "[guard]" for a guard and "/ action" for an action. A
/// transition to a missing state is dashed; one without a target is a line inside its state. A
/// state with children is a frame around them; the children of a parallel state have dashed frames.
/// The description may have mistakes; the function calls no action or guard of it.
ZELTOOLS_EXPORT QString toDot(const StateMachineDescription& description);

/// Also shows what a machine of that description has done. The states that are active at the end of
/// the recording are filled, and the states and transitions on its way are bold, with the time
/// spent in a state and the number of times that a transition fired. Entries that the description
/// does not have, or has with another trigger, are left out of the picture and counted in its
/// caption.
ZELTOOLS_EXPORT QString toDot(const StateMachineDescription& description,
                              const MachineRecording& recording);

} // namespace zeltools::declarativestatemachine
