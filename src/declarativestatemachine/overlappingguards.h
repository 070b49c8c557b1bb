#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

namespace zeltools::declarativestatemachine
{

/// Calls the guards of a description now, each one once, and returns one text for each transition
/// whose guard accepts although that of an earlier one with the same trigger in the same state
/// accepts too, so that the order of the transitions decides:
/// `State "Idle" has transitions to "Heating" and to "Rinsing" whose guards both accept
/// Button::pressed()`.
///
/// A transition without a guard is the last resort of those before it and overlaps with none.
/// Guards of timeouts, which do not compete, and guards that need the arguments of a signal are not
/// called. Call the function from the thread of the guards, in each situation that matters.
ZELTOOLS_EXPORT QStringList findOverlappingGuards(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
