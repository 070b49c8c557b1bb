#pragma once

#include "command.h"

/// `zelctl kmsg`: prints the log of the kernel that runs.
ExitStatus runKmsg(const CommandParser& parser);
void describeKmsg(CommandParser& parser);
