#pragma once

#include "command.h"

/// `zelctl sim`: plays the simulator's end of a link from a script, records a link, and plays a
/// recording.
ExitStatus runSim(const CommandParser& parser);
void describeSim(CommandParser& parser);
