#pragma once

#include "declarativestatemachine/descriptionindex_p.h"

#include <QStringList>

/// The mistakes in the transitions of one state, as findProblems() words them.
namespace zeltools::declarativestatemachine::transitioncheck
{

/// The reason why the transition never leads to its target; empty if there is none.
QString faultOf(const DescriptionIndex::Transition& transition);

/// Faults, and transitions that are never taken since another one before them always is.
QStringList problemsOfTransitions(const DescriptionIndex& index, int state);
/// Faults, and transitions that do not say where the history leads.
QStringList problemsOfHistory(const DescriptionIndex& index, int history);
/// Timeouts that impede each other or the time limit of the state.
QStringList problemsOfTimes(const StateDescription& state);

} // namespace zeltools::declarativestatemachine::transitioncheck
