#pragma once

#include "command.h"

/// `zelctl env`: shows and edits the environment file of a machine, and shows the catalogue of
/// switches. An edit is on the storage when the command is done. The command may be killed at
/// any moment.
ExitStatus runEnv(const CommandParser& parser);
void describeEnv(CommandParser& parser);
