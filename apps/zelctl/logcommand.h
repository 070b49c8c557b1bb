#pragma once

#include "command.h"

/// `zelctl log`: prints the log files in a folder, merged by time. It changes no file.
ExitStatus runLog(const CommandParser& parser);
