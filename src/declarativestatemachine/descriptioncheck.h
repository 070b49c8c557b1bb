#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

namespace zeltools::declarativestatemachine
{

/// What is wrong, or hardly meant, with a description, a line for each; empty when nothing is.
/// `State "Filling" cannot be reached` is one. Found are states that cannot be reached, that have
/// no way on or share their name, transitions that never lead to their target, and two timeouts in
/// one state. Nothing of the description is called.
ZELTOOLS_EXPORT QStringList findProblems(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
