#pragma once

#include "linetally.h"

/// Makes one drink: the grinder, the brewer, the payment and the actuator board each work and log
/// in a thread of their own. Returns when all have finished.
void makeDrink(int number, LineTally& tally);
