#pragma once

#include "command.h"

#include <vector>

/// All commands, in the order of the help.
const std::vector<Command>& commands();
/// The command of that name, which may have two words, or nullptr.
const Command* findCommand(const QString& name);
