#pragma once

#include "command.h"

/// `zelctl clock`: the simulator's end of a machine's simulated clock (SimulatedDateTimeManager).
/// It sets the clock, or prints the times that the machine asks for.
ExitStatus runClock(const CommandParser& parser);
void describeClock(CommandParser& parser);
