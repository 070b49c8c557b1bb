#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

/// The machine as a State Chart XML document of the W3C, for editors and simulators. What an
/// identifier cannot hold becomes "_". The guards are the conditions `guard1`, `guard2` and so on,
/// which hold until the reader of the document sets them otherwise; a timeout is an event that is
/// sent with a delay; the description of a transition is what it logs. Transitions that lead
/// nowhere, or from the final state, are left out. Nothing of the description is called.
ZELTOOLS_EXPORT QString toScxml(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
