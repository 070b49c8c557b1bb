#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

class Board;

/// How a drink is made: heat, grind until the dose is enough, brew, and vent and brew again when
/// nothing flows. The states note their names in the journal as they are entered.
zeltools::declarativestatemachine::StateMachineDescription describeDrink(Board& board,
                                                                         QStringList& journal);
