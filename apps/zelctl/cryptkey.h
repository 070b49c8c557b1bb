#pragma once

#include <QString>

class SimpleCrypt;

/// Reads a key of 16 hexadecimal digits, with an optional "0x" and white space around it, from a
/// file and sets it. No other copy of the key stays in memory. Returns the problem with the key, or
/// an empty text.
QString readKeyFile(const QString& path, SimpleCrypt& crypt);
/// Reads the key from the environment variable ZEL_KEY and wipes that.
QString readKeyVariable(SimpleCrypt& crypt);
