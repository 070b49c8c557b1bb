#pragma once

#include "command.h"

/// `zelctl clock`: the simulator's end of a machine's simulated clock (SimulatedDateTimeManager).
/// Sets it, or prints what the machine asks it to be set to.
ExitStatus runClock(const QStringList& arguments);
