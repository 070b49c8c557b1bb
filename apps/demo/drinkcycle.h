#pragma once

#include "linetally.h"

/// Makes one drink: the grinder, the brewer, the payment and the actuator board each work in a
/// thread of their own and log as the real ones do. Returns when all are done.
void makeDrink(int number, LineTally& tally);
