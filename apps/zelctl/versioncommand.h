#pragma once

#include "command.h"

/// `zelctl version`: compares two versions as the machine does, or shows the library's version.
ExitStatus runVersion(const CommandParser& parser);
void describeVersion(CommandParser& parser);
