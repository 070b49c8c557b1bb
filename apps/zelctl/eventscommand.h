#pragma once

#include "command.h"

/// `zelctl events`: prints a page of the event files in a folder, oldest event first. It changes no
/// file. Events may be missing if the machine rotates its files at that moment.
ExitStatus runEvents(const CommandParser& parser);
void describeEvents(CommandParser& parser);
