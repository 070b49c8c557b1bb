#pragma once

#include "command.h"

/// `zelctl crash`: lists the crash reports of a machine, and shows one with the names of the
/// functions in its stacks. It changes no file.
ExitStatus runCrash(const CommandParser& parser);
void describeCrash(CommandParser& parser);
