#pragma once

#include "command.h"

/// `zelctl hex`: brings hexadecimal text into one form, and converts between it and bytes.
ExitStatus runHex(const CommandParser& parser);
void describeHex(CommandParser& parser);
