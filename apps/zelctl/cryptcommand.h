#pragma once

#include "command.h"

/// `zelctl crypt`: encrypts and decrypts files, and shows what their header says. It decrypts
/// its output again before the file gets its name.
ExitStatus runCrypt(const CommandParser& parser);
void describeCrypt(CommandParser& parser);
