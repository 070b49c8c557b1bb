#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <QStringList>

class Board;

/// Describes how a drink is made: heat, grind until the dose is large enough, and brew; without an
/// answer, vent and brew again. Each state adds its name to the journal when it is entered.
zeltools::declarativestatemachine::StateMachineDescription describeDrink(Board& board,
                                                                         QStringList& journal);
