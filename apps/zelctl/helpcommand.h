#pragma once

#include "command.h"

/// `zelctl help`: prints the help of the program or of one command.
ExitStatus runHelp(const CommandParser& parser);
void describeHelp(CommandParser& parser);
