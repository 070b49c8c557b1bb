#pragma once

#include "commandparser.h"

#include <QString>

class SimpleCrypt;

/// Starts a command that gets a key: no core file will show the key, and the library prints no
/// warnings, since the results report the same problems in one line.
void startSecretly();
/// Reads a key of 16 hexadecimal digits, with an optional "0x" and white space around it, and sets
/// it. The key comes from the file that the option "key-file" names, or else from the environment
/// variable ZEL_KEY, which is wiped. No other copy of the key stays in memory. Returns the problem
/// with the key, or an empty text.
QString readKey(const CommandParser& parser, SimpleCrypt& crypt);
