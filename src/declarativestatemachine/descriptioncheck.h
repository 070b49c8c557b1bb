#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

namespace zeltools::declarativestatemachine
{

/// Returns one text for each probable mistake in a description, such as
/// `State "Filling" cannot be reached`. The function finds states that cannot be reached or left,
/// duplicate names, transitions that never lead to their target, and two timeouts in one state. It
/// calls no action or guard of the description.
ZELTOOLS_EXPORT QStringList findProblems(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
