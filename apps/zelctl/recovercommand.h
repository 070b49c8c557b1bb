#pragma once

#include "command.h"

/// Writes the log lines that killed processes have left in their rings.
ExitStatus runLogRecover(const CommandParser& parser);
void describeLogRecover(CommandParser& parser);
