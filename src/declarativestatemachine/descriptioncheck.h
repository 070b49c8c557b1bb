#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

namespace zeltools::declarativestatemachine
{

/// Returns one text for each probable mistake in a description, such as
/// `State "Filling" cannot be reached`. The function finds:
/// - states that cannot be reached or left;
/// - circles of direct transitions, which block the event loop;
/// - duplicate names, and states of a kind that cannot have what they have;
/// - transitions that never lead to their target, or come after one with the same trigger and no
///   guard;
/// - transitions to a history that leave the parent of this history themselves;
/// - two timeouts without guards in one state, and a timeout that ends before the time limit;
/// - expected signals that no state takes.
///
/// It calls no action or guard of the description, and assumes that a guard may accept or refuse.
ZELTOOLS_EXPORT QStringList findProblems(const StateMachineDescription& description);

} // namespace zeltools::declarativestatemachine
