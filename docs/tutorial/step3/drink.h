#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

class Grinder;

/// A cup of coffee, from the cold boiler to the full cup.
zeltools::declarativestatemachine::StateMachineDescription describeDrink(Grinder& grinder);
