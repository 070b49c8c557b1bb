#pragma once

#include "command.h"

/// `zelctl bundle`: packs what the factory needs to know about a machine into one file, and lists
/// and checks such a file. Built without libarchive, it says so and fails.
ExitStatus runBundle(const CommandParser& parser);
void describeBundle(CommandParser& parser);
