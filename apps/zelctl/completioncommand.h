#pragma once

#include "command.h"

/// `zelctl completion`: prints the script by which a shell completes the command lines of zelctl.
ExitStatus runCompletion(const CommandParser& parser);
void describeCompletion(CommandParser& parser);
